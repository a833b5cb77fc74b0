// The stand-in engine's commands, run as separate processes the way the app
// runs them, each against a fresh temporary state directory.
#include "SimProcess.h"

#include <QRegularExpression>

namespace {

const QRegularExpression
    timestampForm(QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ\\z"));

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

class TestSimulatorCommands : public QObject
{
    Q_OBJECT

private slots:
    void injectedFaultsSpoilTheNextRunsInOrder()
    {
        SimProcess sim;
        QVERIFY(sim.run({"inject-fault", "crash", "--times", "2"}).succeeded());
        QVERIFY(sim.run({"inject-fault", "garbage"}).succeeded());
        QVERIFY(sim.run({"inject-fault", "hang", "--on", "check-service"}).succeeded());
        // Other commands are not touched.
        QVERIFY(
            sim.run(
                   {"configure-transfer", "--json-stdin"},
                   QByteArray(
                       R"({"schema":"zqb.agent-transfer-policy.v1","paused":false,"bandwidthLimitKibPerSecond":0,)"
                       R"("currentNetworkMetered":false,"allowMeteredNetwork":false,"retryAttempts":3})"))
                .succeeded());

        for (int i = 0; i < 2; ++i) {
            QProcess crash;
            crash.setProcessEnvironment(sim.environment());
            crash.setStandardInputFile(QProcess::nullDevice());
            crash.start(SimProcess::program(), {"ui-status", "--state", sim.stateDirectory()});
            QVERIFY(crash.waitForFinished(10000));
            QCOMPARE(crash.exitStatus(), QProcess::CrashExit);
            QVERIFY(crash.readAllStandardOutput().isEmpty());
        }
        const SimResult garbage = sim.run({"ui-status"});
        QVERIFY(garbage.succeeded());
        QVERIFY(!garbage.output.isEmpty());
        QVERIFY(!AgentDocuments::decodeStatus(garbage.output));
        QVERIFY(QString::fromUtf8(garbage.output).toUtf8() != garbage.output); // not UTF-8
        QVERIFY(sim.status()); // the faults are used up: a document again

        const SimResult hang = sim.run({"check-service"}, std::nullopt, 1500);
        QVERIFY(!hang.finished);
        QVERIFY(sim.run({"check-service"}).succeeded());
    }

    void injectFaultUsageErrors()
    {
        SimProcess sim;
        QCOMPARE(sim.run({"inject-fault", "melt"}).exitCode, 2);
        QCOMPARE(sim.run({"inject-fault", "hang", "--on", "make-invitation"}).exitCode, 2);
        QCOMPARE(sim.run({"inject-fault", "hang", "--times", "0"}).exitCode, 2);
        QVERIFY(sim.status());
    }

    void freshStateNeedsSetup()
    {
        SimProcess sim;
        QVERIFY(!QDir(sim.stateDirectory()).exists());
        const SimResult result = sim.run({QStringLiteral("ui-status")});
        QVERIFY(result.succeeded());
        QVERIFY(QDir(sim.stateDirectory()).exists());
        QVERIFY(result.error.isEmpty());
        const auto status = AgentDocuments::decodeStatus(result.output.trimmed());
        QVERIFY(status);
        QCOMPARE(status->runtime.state, QStringLiteral("setup-required"));
        QVERIFY(status->runtime.serviceReachable);
        QVERIFY(!status->runtime.enrolled);
        QCOMPARE(status->runtime.authorizedTargets, 0);
        QCOMPARE(status->runtime.compatibility, QStringLiteral("compatible"));
        QVERIFY(status->runtime.serviceVersion.has_value());
        QCOMPARE(status->runtime.latestAgentVersion, std::optional<QString>(status->agentVersion));
        QVERIFY(!status->runtime.agentUpdateAvailable);
        QVERIFY(!status->runtime.active);
        QVERIFY(!status->runtime.backupProgress);
        QVERIFY(!status->runtime.lastBackupAt);
        QVERIFY(status->runtime.message.contains(QStringLiteral("this computer")));
        QCOMPARE(status->settings.schema, QStringLiteral("zqb.agent-settings.v1"));
        QCOMPARE(status->settings.intervalMinutes, 240);
        QCOMPARE(status->settings.exclusions,
                 (QStringList{".DS_Store", ".Spotlight-V100", ".Trashes", ".fseventsd"}));
        QCOMPARE(status->transferPolicy, TransferPolicy{});
        QVERIFY(result.output.size() < 8192);
    }

    void stateOptionMayComeFirst()
    {
        SimProcess sim;
        QProcess process;
        process.setProcessEnvironment(sim.environment());
        process.start(SimProcess::program(), {QStringLiteral("--state"), sim.stateDirectory(),
                                              QStringLiteral("ui-status")});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(AgentDocuments::decodeStatus(process.readAllStandardOutput().trimmed()));
    }

    void environmentReplacesStateDirectory()
    {
        SimProcess sim;
        QTemporaryDir other;
        const QString replaced = other.filePath(QStringLiteral("elsewhere"));
        sim.environment().insert(QStringLiteral("ZQB_SIM_STATE"), replaced);
        QVERIFY(sim.enroll());
        QVERIFY(QFile::exists(replaced + QStringLiteral("/agent.json")));
        QVERIFY(!QDir(sim.stateDirectory()).exists());
        // An empty value does not count.
        sim.environment().insert(QStringLiteral("ZQB_SIM_STATE"), QString());
        QCOMPARE(sim.status()->runtime.state, QStringLiteral("setup-required"));
        QVERIFY(QDir(sim.stateDirectory()).exists());
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("unknown command") << words("frobnicate");
        QTest::newRow("no command") << QStringList{};
        QTest::newRow("enroll without flag") << words("enroll");
        QTest::newRow("configure without flag") << words("configure");
        QTest::newRow("configure-transfer with wrong flag")
            << words("configure-transfer --invitation-stdin");
        QTest::newRow("ui-status with operand") << words("ui-status now");
        QTest::newRow("unknown option") << words("backup-all --fast");
        QTest::newRow("bad condition") << words("set-condition sideways");
        QTest::newRow("bad version") << words("advertise-update latest");
        QTest::newRow("bad ready descriptor") << words("backup-all --ready-fd 1");
    }

    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        SimProcess sim;
        const SimResult result = sim.run(arguments);
        QVERIFY(result.finished);
        QCOMPARE(result.exitCode, 2);
        QVERIFY(result.output.isEmpty());
        QVERIFY(result.errorText().contains(QStringLiteral("Usage: zqb-engine-sim")));
    }

    void stateIsRequired()
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("ZQB_SIM_STATE"));
        process.setProcessEnvironment(environment);
        process.start(SimProcess::program(), {QStringLiteral("ui-status")});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 2);
        QVERIFY(process.readAllStandardError().contains("--state"));
    }

    void helpGoesToStandardOutput()
    {
        SimProcess sim;
        const SimResult result = sim.run({QStringLiteral("help")});
        QVERIFY(result.succeeded());
        for (const char *command : {"ui-status", "check-service", "run-once", "enroll", "configure",
                                    "configure-transfer", "backup-all", "autonomous-update",
                                    "make-invitation", "set-condition", "advertise-update"})
            QVERIFY2(result.output.contains(command), command);
    }

    void checkServiceRecordsContact()
    {
        SimProcess sim;
        QVERIFY(!sim.status()->runtime.lastContactAt);
        const SimResult result = sim.run({QStringLiteral("check-service")});
        QVERIFY(result.succeeded());
        QCOMPARE(result.outputText(), QStringLiteral("The ZQB service is reachable."));
        const auto contact = sim.status()->runtime.lastContactAt;
        QVERIFY(contact);
        QVERIFY2(timestampForm.match(*contact).hasMatch(), qPrintable(*contact));
    }

    void checkServiceWhileOffline()
    {
        SimProcess sim;
        QVERIFY(sim.run(words("set-condition offline")).succeeded());
        const SimResult result = sim.run({QStringLiteral("check-service")});
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errorText(),
            QStringLiteral(
                "The ZQB service is not reachable. Check the network connection, then try again."));
        const auto status = sim.status();
        QVERIFY(!status->runtime.lastContactAt);
        QVERIFY(!status->runtime.serviceReachable);
        QCOMPARE(status->runtime.state, QStringLiteral("setup-required"));
    }

    void enrollWithMadeInvitation()
    {
        SimProcess sim;
        const QByteArray invitation = sim.invitation(QStringLiteral("Studio Mac"));
        QVERIFY(invitation.size() >= 40);
        const SimResult result =
            sim.run({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")},
                    "\n  " + invitation + " \n\n");
        QVERIFY2(result.succeeded(), result.error);
        QVERIFY(!result.output.contains(invitation));
        QVERIFY(!result.error.contains(invitation));
        const auto status = sim.status();
        QCOMPARE(status->runtime.state, QStringLiteral("connected"));
        QVERIFY(status->runtime.enrolled);
        QVERIFY(status->runtime.repositoryReady);
        QCOMPARE(status->runtime.authorizedTargets, 1);
        QVERIFY(status->runtime.message.contains(QStringLiteral("Studio Mac")));
        QVERIFY(status->runtime.lastContactAt);
        // The invitation, its payload and its checksum are stored nowhere.
        const QList<QByteArray> parts = invitation.split('.');
        for (const QByteArray &content : sim.snapshot()) {
            QVERIFY(!content.contains(invitation));
            QVERIFY(!content.contains(parts.at(1)));
            QVERIFY(!content.contains(parts.at(2)));
        }
    }

    void invalidInvitationsAreRefused_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("short") << QByteArray("zqb-invite-v1.abc.def\n");
        QTest::newRow("forty letters") << QByteArray(40, 'x') + '\n';
        QTest::newRow("checksum changed") << QByteArray("CHANGE");
        QTest::newRow("huge") << QByteArray(100000, 'a');
        QTest::newRow("binary") << QByteArray(
            "\x00\xff\xfe zqb-invite-v1.aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", 53);
    }

    void invalidInvitationsAreRefused()
    {
        QFETCH(QByteArray, input);
        SimProcess sim;
        QVERIFY(sim.status());
        if (input == "CHANGE") {
            input = sim.invitation();
            input[input.size() - 1] = input.endsWith('a') ? 'b' : 'a';
        }
        const auto before = sim.snapshot();
        const SimResult result =
            sim.run({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")}, input);
        QVERIFY(result.finished);
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.output.isEmpty());
        QVERIFY2(result.errorText().startsWith(QStringLiteral("The invitation is not valid: ")),
                 result.error);
        QVERIFY(!result.errorText().contains(QLatin1Char('\n')));
        if (input.size() > 20)
            QVERIFY(!result.error.contains(input.trimmed().right(20)));
        QCOMPARE(sim.snapshot(), before);
        QCOMPARE(sim.status()->runtime.state, QStringLiteral("setup-required"));
    }

    void invitationWorksOnce()
    {
        SimProcess sim;
        const QByteArray invitation = sim.invitation();
        const QStringList enroll{QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")};
        QVERIFY(sim.run(enroll, invitation + '\n').succeeded());
        const SimResult again = sim.run(enroll, invitation + '\n');
        QCOMPARE(again.exitCode, 1);
        QVERIFY(again.errorText().contains(QStringLiteral("already been used")));
        // A new invitation from another target replaces the enrollment.
        QVERIFY(sim.run(enroll, sim.invitation(QStringLiteral("Office Mac")) + '\n').succeeded());
        QVERIFY(sim.status()->runtime.message.contains(QStringLiteral("Office Mac")));
    }

    void enrollWhileOfflineIsRefused()
    {
        SimProcess sim;
        QVERIFY(sim.run(words("set-condition offline")).succeeded());
        QVERIFY(!sim.enroll());
        QVERIFY(!sim.status()->runtime.enrolled);
    }

    void runOnceNeedsEnrollment()
    {
        SimProcess sim;
        const SimResult result = sim.run({QStringLiteral("run-once")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.errorText().contains(QStringLiteral("not enrolled")));
    }

    void runOnceContactsTarget()
    {
        SimProcess sim;
        QVERIFY(sim.enroll());
        const SimResult result = sim.run({QStringLiteral("run-once")});
        QVERIFY(result.succeeded());
        QCOMPARE(result.outputText(), QStringLiteral("Connected to the authorized target."));
        QVERIFY(sim.status()->runtime.lastContactAt);
    }

    void offlineTargetIsWaitedFor()
    {
        SimProcess sim;
        QVERIFY(sim.enroll());
        QVERIFY(sim.run(words("set-condition offline")).succeeded());
        auto status = sim.status();
        QCOMPARE(status->runtime.state, QStringLiteral("waiting-for-target"));
        QVERIFY(!status->runtime.serviceReachable);
        QCOMPARE(status->runtime.authorizedTargets, 0);
        const SimResult result = sim.run({QStringLiteral("run-once")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.errorText().contains(QStringLiteral("not reachable")));
        QVERIFY(sim.run(words("set-condition online")).succeeded());
        QCOMPARE(sim.status()->runtime.state, QStringLiteral("connected"));
    }

    void configureStoresSettings()
    {
        SimProcess sim;
        // The app escapes every solidus; both forms are read.
        const QByteArray document =
            R"({"schema":"zqb.agent-settings.v1","enabled":true,"intervalMinutes":60,)"
            R"("sources":["\/Users\/alice\/Documents","/srv/data"],"exclusions":["*.tmp",".DS_Store"]})";
        const SimResult result =
            sim.run({QStringLiteral("configure"), QStringLiteral("--json-stdin")}, document);
        QVERIFY2(result.succeeded(), result.error);
        const auto status = sim.status();
        QVERIFY(status->settings.enabled);
        QCOMPARE(status->settings.intervalMinutes, 60);
        QCOMPARE(status->settings.sources, (QStringList{"/Users/alice/Documents", "/srv/data"}));
        QCOMPARE(status->settings.exclusions, (QStringList{"*.tmp", ".DS_Store"}));
    }

    void configureRefusesBadDocuments_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("problem");
        const QByteArray head =
            R"({"schema":"zqb.agent-settings.v1","enabled":false,"intervalMinutes":60,)";
        QTest::newRow("empty") << QByteArray() << "does not have the fields";
        QTest::newRow("not json") << QByteArray("folders please") << "does not have the fields";
        QTest::newRow("array") << QByteArray("[]") << "does not have the fields";
        QTest::newRow("no exclusions") << head + R"("sources":[]})"
                                       << "does not have the fields";
        QTest::newRow("enabled as 1")
            << QByteArray(
                   R"({"schema":"s","enabled":1,"intervalMinutes":60,"sources":[],"exclusions":[]})")
            << "does not have the fields";
        QTest::newRow("interval as fraction")
            << QByteArray(
                   R"({"schema":"s","enabled":true,"intervalMinutes":60.5,"sources":[],"exclusions":[]})")
            << "does not have the fields";
        QTest::newRow("number in sources") << head + R"("sources":[1],"exclusions":[]})"
                                           << "does not have the fields";
        QTest::newRow("interval zero")
            << QByteArray(
                   R"({"schema":"s","enabled":true,"intervalMinutes":0,"sources":[],"exclusions":[]})")
            << "intervalMinutes";
        QTest::newRow("relative folder") << head + R"("sources":["Documents"],"exclusions":[]})"
                                         << "absolute path";
        QTest::newRow("slash in pattern") << head + R"("sources":[],"exclusions":["a/b"]})"
                                          << "cannot contain";
        QTest::newRow("empty pattern") << head + R"("sources":[],"exclusions":[""]})"
                                       << "skip pattern";
        QByteArray many = head + R"("sources":[)";
        for (int i = 0; i < 8000; ++i) // some 970 KB: under 1 MiB, over the settings' limit
            many += (i ? "," : "") + QByteArray("\"/Users/alice/") + QByteArray(100, 'd') +
                    QByteArray::number(i) + '"';
        many += R"(],"exclusions":[]})";
        QTest::newRow("too many folders") << many << "bytes in all";
    }

    void configureRefusesBadDocuments()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, problem);
        SimProcess sim;
        QVERIFY(sim.configure(settingsFor({QStringLiteral("/kept")})));
        const auto before = sim.snapshot();
        const SimResult result =
            sim.run({QStringLiteral("configure"), QStringLiteral("--json-stdin")}, document);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(
            result.errorText().startsWith(QStringLiteral("The folder settings are not valid: ")),
            result.error);
        QVERIFY2(result.errorText().contains(problem), result.error);
        QCOMPARE(sim.snapshot(), before);
        QCOMPARE(sim.status()->settings.sources, QStringList{QStringLiteral("/kept")});
    }

    void aThousandLongFoldersComeBackWhole()
    {
        SimProcess sim;
        QVERIFY(sim.enroll());
        AgentSettings settings =
            settingsFor({}, {QStringLiteral("*.tmp"), QStringLiteral(".DS_Store")});
        for (int i = 0; i < 1000; ++i) {
            const QString path =
                QStringLiteral("/Users/alice/Projects/%1/").arg(i, 4, 10, QLatin1Char('0'));
            settings.sources.append(path + QString(200 - path.size(), QLatin1Char('p')));
        }
        QVERIFY(sim.configure(settings));
        QVERIFY(sim.run({QStringLiteral("set-condition"), QStringLiteral("offline")}).succeeded());
        const SimResult result = sim.run({QStringLiteral("ui-status")});
        QVERIFY(result.succeeded());
        QVERIFY2(result.output.size() > 200'000, QByteArray::number(result.output.size()));
        const auto status = AgentDocuments::decodeStatus(result.output.trimmed());
        QVERIFY(status);
        QCOMPARE(status->settings.sources, settings.sources);
        QVERIFY(!status->runtime.lastError);
    }

    void handWrittenHugeSettingsStillGiveShortStatus()
    {
        SimProcess sim;
        QVERIFY(sim.status());
        AgentSettings settings = settingsFor({});
        for (int i = 0; i < 6000; ++i) // some 1.3 MB
            settings.sources.append(QStringLiteral("/Volumes/Archive/") +
                                    QString(200, QLatin1Char('x')) + QString::number(i));
        QFile file(sim.statePath(QStringLiteral("settings.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(AgentDocuments::encode(settings));
        file.close();
        const SimResult result = sim.run({QStringLiteral("ui-status")});
        QVERIFY(result.succeeded());
        QVERIFY2(result.output.size() < 1024 * 1024, QByteArray::number(result.output.size()));
        const auto status = AgentDocuments::decodeStatus(result.output.trimmed());
        QVERIFY(status);
        QVERIFY(status->settings.sources.size() > 4000);
        QVERIFY(
            status->runtime.lastError.value_or(QString()).contains(QStringLiteral("leaves out")));
    }

    void unreadableStateFileIsReported()
    {
        SimProcess sim;
        QVERIFY(sim.status());
        QFile file(sim.statePath(QStringLiteral("settings.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"schema\":");
        file.close();
        const auto status = sim.status();
        QVERIFY(status);
        QCOMPARE(status->settings.intervalMinutes, 240);
        QVERIFY(status->runtime.lastError.value_or(QString()).contains(
            QStringLiteral("folder settings")));
    }

    void configureTransferStoresPolicy()
    {
        SimProcess sim;
        QVERIFY(sim.enroll());
        TransferPolicy policy;
        policy.paused = true;
        policy.bandwidthLimitKibPerSecond = 2048;
        policy.currentNetworkMetered = true;
        policy.allowMeteredNetwork = true;
        policy.preferredTargetDeviceId = QStringLiteral("TARGET-1");
        QVERIFY(sim.configureTransfer(policy));
        auto status = sim.status();
        QCOMPARE(status->transferPolicy, policy);
        QCOMPARE(status->runtime.state, QStringLiteral("paused"));

        // The app never sends a preferred device: the chosen one stays.
        policy.paused = false;
        policy.preferredTargetDeviceId.reset();
        QVERIFY(sim.configureTransfer(policy));
        status = sim.status();
        QCOMPARE(status->transferPolicy.preferredTargetDeviceId,
                 std::optional<QString>(QStringLiteral("TARGET-1")));
        QVERIFY(!status->transferPolicy.paused);
        QCOMPARE(status->runtime.state, QStringLiteral("connected"));
    }

    void configureTransferRefusesBadDocuments_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("not json") << QByteArray("{");
        QTest::newRow("missing retryAttempts")
            << QByteArray(R"({"schema":"s","paused":false,"bandwidthLimitKibPerSecond":0,)"
                          R"("currentNetworkMetered":false,"allowMeteredNetwork":false})");
        QTest::newRow("paused as string") << QByteArray(
            R"({"schema":"s","paused":"no","bandwidthLimitKibPerSecond":0,)"
            R"("currentNetworkMetered":false,"allowMeteredNetwork":false,"retryAttempts":3})");
        QTest::newRow("negative bandwidth") << QByteArray(
            R"({"schema":"s","paused":false,"bandwidthLimitKibPerSecond":-1,)"
            R"("currentNetworkMetered":false,"allowMeteredNetwork":false,"retryAttempts":3})");
        QTest::newRow("bandwidth beyond 64 bits") << QByteArray(
            R"({"schema":"s","paused":false,"bandwidthLimitKibPerSecond":9223372036854775808,)"
            R"("currentNetworkMetered":false,"allowMeteredNetwork":false,"retryAttempts":3})");
    }

    void configureTransferRefusesBadDocuments()
    {
        QFETCH(QByteArray, document);
        SimProcess sim;
        QVERIFY(sim.status());
        const auto before = sim.snapshot();
        const SimResult result = sim.run(
            {QStringLiteral("configure-transfer"), QStringLiteral("--json-stdin")}, document);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(
            result.errorText().startsWith(QStringLiteral("The transfer policy is not valid: ")),
            result.error);
        QCOMPARE(sim.snapshot(), before);
    }

    void meteredNetworkIsMentioned()
    {
        SimProcess sim;
        QVERIFY(sim.enroll());
        TransferPolicy policy;
        policy.currentNetworkMetered = true;
        QVERIFY(sim.configureTransfer(policy));
        QVERIFY(sim.status()->runtime.message.contains(QStringLiteral("metered")));
    }

    void updateCycle()
    {
        SimProcess sim;
        const QString installed = sim.status()->agentVersion;
        SimResult result = sim.run({QStringLiteral("autonomous-update")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.errorText().startsWith(
            QStringLiteral("No verified ZQB Agent update is available.")));

        QVERIFY(sim.run({QStringLiteral("advertise-update"), QStringLiteral("9.1.0")}).succeeded());
        auto status = sim.status();
        QVERIFY(status->runtime.agentUpdateAvailable);
        QCOMPARE(status->runtime.latestAgentVersion,
                 std::optional<QString>(QStringLiteral("9.1.0")));
        QCOMPARE(status->agentVersion, installed);

        result = sim.run({QStringLiteral("autonomous-update")});
        QVERIFY(result.succeeded());
        QCOMPARE(result.outputText(),
                 QStringLiteral("Installed the verified ZQB Agent update 9.1.0."));
        status = sim.status();
        QCOMPARE(status->agentVersion, QStringLiteral("9.1.0"));
        QVERIFY(!status->runtime.agentUpdateAvailable);
        QCOMPARE(sim.run({QStringLiteral("autonomous-update")}).exitCode, 1);
    }

    void olderAdvertisedVersionOffersNothing()
    {
        SimProcess sim;
        QVERIFY(sim.run({QStringLiteral("advertise-update"), QStringLiteral("0.1")}).succeeded());
        QVERIFY(!sim.status()->runtime.agentUpdateAvailable);
        QCOMPARE(sim.run({QStringLiteral("autonomous-update")}).exitCode, 1);
    }

    void updateNeedsTheService()
    {
        SimProcess sim;
        QVERIFY(sim.run({QStringLiteral("advertise-update"), QStringLiteral("9.1.0")}).succeeded());
        QVERIFY(sim.run(words("set-condition offline")).succeeded());
        const SimResult result = sim.run({QStringLiteral("autonomous-update")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(result.errorText().contains(QStringLiteral("not reachable")));
    }

    void compatibilityWordIsReported()
    {
        SimProcess sim;
        QVERIFY(sim.run({QStringLiteral("set-compatibility"), QStringLiteral("legacy-v1")})
                    .succeeded());
        QCOMPARE(sim.status()->runtime.compatibility, QStringLiteral("legacy-v1"));
        QCOMPARE(
            sim.run({QStringLiteral("set-compatibility"), QStringLiteral("Not A Word")}).exitCode,
            2);
    }
};

QTEST_GUILESS_MAIN(TestSimulatorCommands)
#include "tst_simulator_commands.moc"
