// Backups with the stand-in engine: real folder trees, skip patterns, the
// phases seen from a concurrent ui-status, crashes, and scheduled backups
// started in the background.
#include "SimProcess.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace {

const QStringList phaseOrder = {
    "preflight",  "scanning",  "chunking", "uploading", "waiting-for-receipts",
    "committing", "verifying", "completed"};

bool writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

class TestSimulatorBackup : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_files;

    // A tree with kept files, skipped names, a skipped folder and a link that
    // points out of the folder.
    QString makeTree()
    {
        const QString root = m_files.filePath(QStringLiteral("tree-%1").arg(++m_trees));
        bool ok = writeFile(root + "/a.txt", "hello") &&
                  writeFile(root + "/notes.tmp", "skip me") &&
                  writeFile(root + "/.DS_Store", "skip me too") &&
                  writeFile(root + "/docs/b.md", "abc") &&
                  writeFile(root + "/docs/deep/c.bin", QByteArray(5 * 1024 * 1024, 'c')) &&
                  writeFile(root + "/docs/cache/x.txt", "in a skipped folder") &&
                  writeFile(root + "-outside/secret.txt", "not in the backup");
        ok = ok && QFile::link(root + "-outside", root + "/docs/outside-link");
        return ok ? root : QString();
    }

    int m_trees = 0;

    void prepare(SimProcess &sim, const QStringList &sources,
                 const QStringList &exclusions = {QStringLiteral(".DS_Store"),
                                                  QStringLiteral("*.tmp"), QStringLiteral("cache")})
    {
        QVERIFY(sim.enroll());
        QVERIFY(sim.configure(settingsFor(sources, exclusions)));
    }

private slots:
    void backupOfTreeHonoursSkipPatterns()
    {
        SimProcess sim;
        const QString tree = makeTree();
        QVERIFY(!tree.isEmpty());
        prepare(sim, {tree});
        const SimResult result = sim.run({QStringLiteral("backup-all")});
        QVERIFY2(result.succeeded(), result.error);
        QCOMPARE(result.outputText().count(QLatin1Char('\n')), 0);
        QVERIFY2(result.outputText().startsWith(QStringLiteral("Backed up 4 files")),
                 result.output);

        const auto status = sim.status();
        QVERIFY(status);
        const RuntimeStatus &runtime = status->runtime;
        QCOMPARE(runtime.state, QStringLiteral("connected"));
        QVERIFY(!runtime.active);
        QCOMPARE(runtime.recoveryReady, std::optional<bool>(true));
        QVERIFY(runtime.lastBackupAt);
        QVERIFY(runtime.lastBackupAttemptAt);
        QVERIFY(!runtime.lastError);
        QVERIFY(runtime.backupProgress);
        const BackupProgressStatus &progress = *runtime.backupProgress;
        QCOMPARE(progress.phase, QStringLiteral("completed"));
        // a.txt, docs/b.md, docs/deep/c.bin and the link (kept as a link).
        QCOMPARE(progress.totalFiles, 4u);
        QCOMPARE(progress.filesScanned, 4u);
        QCOMPARE(progress.totalBytes, quint64(5 + 3 + 5 * 1024 * 1024));
        QCOMPARE(progress.bytesScanned, progress.totalBytes);
        // One object per started 4 MiB, at least one per file: 1 + 1 + 2 + 1.
        QCOMPARE(progress.totalObjects, 5u);
        QCOMPARE(progress.objectsPrepared, 5u);
        QCOMPARE(progress.objectsUploaded, 5u);
        QCOMPARE(progress.objectsReused, 0u);
        QCOMPARE(progress.bytesUploaded, progress.totalBytes);
        QCOMPARE(progress.sourceIndex, 1);
        QCOMPARE(progress.sourceCount, 1);
        QVERIFY(progress.elapsedSeconds);
        QVERIFY(
            QRegularExpression(QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ\\z"))
                .match(progress.lastProgressAt.value_or(QString()))
                .hasMatch());
    }

    void secondBackupReusesObjects()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        QVERIFY(sim.run({QStringLiteral("backup-all")}).succeeded());
        QVERIFY(writeFile(tree + "/new.txt", "new"));
        QVERIFY(sim.run({QStringLiteral("backup-all")}).succeeded());
        const BackupProgressStatus progress = *sim.status()->runtime.backupProgress;
        QCOMPARE(progress.totalObjects, 6u);
        QCOMPARE(progress.objectsReused, 5u);
        QCOMPARE(progress.objectsUploaded, 1u);
        QCOMPARE(progress.bytesUploaded, 3u);
    }

    void severalFoldersAreCounted()
    {
        SimProcess sim;
        const QString first = makeTree();
        const QString second = m_files.filePath(QStringLiteral("second"));
        QVERIFY(writeFile(second + "/one", "1") && writeFile(second + "/two", "22"));
        prepare(sim, {first, second});
        QVERIFY(sim.run({QStringLiteral("backup-all")}).succeeded());
        const BackupProgressStatus progress = *sim.status()->runtime.backupProgress;
        QCOMPARE(progress.sourceCount, 2);
        QCOMPARE(progress.sourceIndex, 2);
        QCOMPARE(progress.totalFiles, 6u);
    }

    void emptyFolderGivesEmptyBackup()
    {
        SimProcess sim;
        const QString empty = m_files.filePath(QStringLiteral("empty"));
        QVERIFY(QDir().mkpath(empty + "/only-skipped"));
        QVERIFY(writeFile(empty + "/only-skipped/x.tmp", "skipped"));
        prepare(sim, {empty});
        const SimResult result = sim.run({QStringLiteral("backup-all")});
        QVERIFY2(result.succeeded(), result.error);
        QVERIFY(result.outputText().contains(QStringLiteral("empty")));
        const auto status = sim.status();
        QCOMPARE(status->runtime.recoveryReady, std::optional<bool>(false));
        QVERIFY(status->runtime.lastBackupAt);
        QCOMPARE(status->runtime.backupProgress->totalFiles, 0u);
        QCOMPARE(status->runtime.backupProgress->phase, QStringLiteral("completed"));
    }

    void missingFolderIsReported()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree, QStringLiteral("/nonexistent/zqb-folder")});
        QVERIFY(sim.run({QStringLiteral("backup-all")}).succeeded());
        const auto status = sim.status();
        QCOMPARE(status->runtime.recoveryReady, std::optional<bool>(true));
        QVERIFY(status->runtime.lastError.value_or(QString()).contains(
            QStringLiteral("/nonexistent/zqb-folder")));
    }

    void unreadableEntriesAreSkipped()
    {
        if (::geteuid() == 0)
            QSKIP("Permissions do not restrict the superuser.");
        SimProcess sim;
        const QString tree = makeTree();
        QVERIFY(writeFile(tree + "/locked.txt", "no"));
        QVERIFY(QFile::setPermissions(tree + "/locked.txt", QFileDevice::Permissions()));
        prepare(sim, {tree});
        QVERIFY(sim.run({QStringLiteral("backup-all")}).succeeded());
        const auto status = sim.status();
        QCOMPARE(status->runtime.backupProgress->totalFiles, 4u);
        QVERIFY(status->runtime.lastError.value_or(QString()).contains(
            QStringLiteral("1 item could not be read")));
        QFile::setPermissions(tree + "/locked.txt",
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QString>("message");
        QTest::newRow("not enrolled") << "not enrolled"
                                      << "not enrolled";
        QTest::newRow("no folders") << "no folders"
                                    << "No folders are configured";
        QTest::newRow("paused") << "paused"
                                << "Network transfers are paused";
        QTest::newRow("offline") << "offline"
                                 << "not reachable";
        QTest::newRow("metered") << "metered"
                                 << "metered";
    }

    void refusals()
    {
        QFETCH(QString, situation);
        QFETCH(QString, message);
        SimProcess sim;
        const QString tree = makeTree();
        if (situation != QLatin1String("not enrolled"))
            QVERIFY(sim.enroll());
        QVERIFY(sim.configure(settingsFor(
            situation == QLatin1String("no folders") ? QStringList{} : QStringList{tree})));
        TransferPolicy policy;
        policy.paused = situation == QLatin1String("paused");
        policy.currentNetworkMetered = situation == QLatin1String("metered");
        QVERIFY(sim.configureTransfer(policy));
        if (situation == QLatin1String("offline"))
            QVERIFY(
                sim.run({QStringLiteral("set-condition"), QStringLiteral("offline")}).succeeded());
        const auto before = sim.snapshot();
        const SimResult result = sim.run({QStringLiteral("backup-all")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.errorText().contains(message), result.error);
        QVERIFY(!result.errorText().contains(QLatin1Char('\n')));
        const auto after = sim.snapshot();
        QCOMPARE(after.value(QStringLiteral("agent.json")),
                 before.value(QStringLiteral("agent.json")));
        QVERIFY(!after.contains(QStringLiteral("progress.json")));
    }

    void statusDuringBackupShowsProgress()
    {
        SimProcess sim;
        const QString tree = makeTree();
        const QString second = m_files.filePath(QStringLiteral("progress-second"));
        QVERIFY(writeFile(second + "/one", "1"));
        prepare(sim, {tree, second});
        // Slow enough that even the shortest phase spans a few status polls,
        // however long one poll takes on this machine.
        const double speed = std::clamp(1.0 / (3 * sim.pollSeconds()), 0.5, 8.0);
        sim.setSpeed(QString::number(speed));
        QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(backup->waitForStarted(5000));

        QStringList phasesSeen;
        bool sawCounters = false;
        while (backup->state() != QProcess::NotRunning) {
            const auto status = sim.status();
            QVERIFY(status);
            const RuntimeStatus &runtime = status->runtime;
            if (runtime.active) {
                QCOMPARE(runtime.state, QStringLiteral("backing-up"));
                QVERIFY(runtime.message.startsWith(QStringLiteral("Backing up to Studio Mac")));
                if (runtime.backupProgress) {
                    const BackupProgressStatus &progress = *runtime.backupProgress;
                    if (!phasesSeen.contains(progress.phase))
                        phasesSeen.append(progress.phase);
                    QCOMPARE(progress.sourceCount, 2);
                    QVERIFY(progress.sourceIndex >= 1 && progress.sourceIndex <= 2);
                    QVERIFY(progress.filesScanned <= progress.totalFiles ||
                            progress.phase == "preflight");
                    QVERIFY(progress.objectsUploaded + progress.objectsReused <=
                            progress.totalObjects);
                    QVERIFY(
                        !progress.lastProgressAt.value_or(QString()).contains(QLatin1Char('.')));
                    if (progress.phase == QLatin1String("uploading") && progress.totalObjects == 6)
                        sawCounters = true;
                }
            }
            backup->waitForFinished(15);
        }
        QCOMPARE(backup->exitCode(), 0);
        QVERIFY2(phasesSeen.size() >= 5, qPrintable(phasesSeen.join(QLatin1Char(','))));
        QVERIFY(sawCounters);
        // Phases appear in their order.
        for (qsizetype i = 1; i < phasesSeen.size(); ++i)
            QVERIFY2(phaseOrder.indexOf(phasesSeen.at(i - 1)) <
                         phaseOrder.indexOf(phasesSeen.at(i)),
                     qPrintable(phasesSeen.join(QLatin1Char(','))));

        const auto after = sim.status();
        QVERIFY(!after->runtime.active);
        QCOMPARE(after->runtime.state, QStringLiteral("connected"));
        QCOMPARE(after->runtime.backupProgress->phase, QStringLiteral("completed"));
    }

    void killedBackupLeavesReadableState()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        sim.paceForPolls(6);
        QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(backup->waitForStarted(5000));
        QVERIFY(sim.waitForRunningBackup());
        ::kill(pid_t(backup->processId()), SIGKILL);
        QVERIFY(backup->waitForFinished(5000));

        sim.setSpeed(QStringLiteral("1000"));
        const auto status = sim.status();
        QVERIFY(status);
        QVERIFY(!status->runtime.active);
        QCOMPARE(status->runtime.state, QStringLiteral("connected"));
        QVERIFY(!status->runtime.lastBackupAt);
        QVERIFY(status->runtime.lastBackupAttemptAt);
        QVERIFY(
            status->runtime.lastError.value_or(QString()).contains(QStringLiteral("interrupted")));
        // Every state file is whole JSON.
        const auto files = sim.snapshot();
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            if (it.key().endsWith(QLatin1String(".json")))
                QVERIFY2(it.value().trimmed().endsWith('}'), qPrintable(it.key()));
        }
        // The lock died with the process: the next backup runs.
        const SimResult again = sim.run({QStringLiteral("backup-all")});
        QVERIFY2(again.succeeded(), again.error);
        QVERIFY(!sim.status()->runtime.lastError);
    }

    void killedDuringManyWritesNeverLeavesHalfFiles()
    {
        // Kill at varying moments while progress is written many times a second.
        SimProcess sim;
        const QString tree = m_files.filePath(QStringLiteral("many"));
        for (int i = 0; i < 400; ++i)
            QVERIFY(writeFile(tree + QStringLiteral("/f%1").arg(i), QByteArray::number(i)));
        prepare(sim, {tree});
        sim.setSpeed(QStringLiteral("40"));
        for (int round = 0; round < 5; ++round) {
            QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
            QVERIFY(backup->waitForStarted(5000));
            QTest::qWait(20 + 37 * round);
            ::kill(pid_t(backup->processId()), SIGKILL);
            QVERIFY(backup->waitForFinished(5000));
            const SimResult result = sim.run({QStringLiteral("ui-status")});
            QVERIFY(result.succeeded());
            QVERIFY(AgentDocuments::decodeStatus(result.output.trimmed()));
            QFile progress(sim.statePath(QStringLiteral("progress.json")));
            if (progress.open(QIODevice::ReadOnly))
                QVERIFY(progress.readAll().trimmed().endsWith('}'));
        }
    }

    void backgroundRunSkipsWhileBackupRuns()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        sim.paceForPolls(8);
        QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(backup->waitForStarted(5000));
        QVERIFY(sim.waitForRunningBackup());
        const QByteArray agentBefore = sim.snapshot().value(QStringLiteral("agent.json"));

        // A second run started in the background leaves at once and changes nothing.
        QElapsedTimer timer;
        timer.start();
        const SimResult background =
            sim.run({QStringLiteral("backup-all"), QStringLiteral("--background")});
        QVERIFY(background.succeeded());
        QVERIFY(timer.elapsed() < 2000 * sim.pollSeconds() + 1000);
        QVERIFY(background.output.isEmpty());
        QCOMPARE(sim.snapshot().value(QStringLiteral("agent.json")), agentBefore);
        QVERIFY(sim.waitForRunningBackup(0)); // the first one is still running
        // A second user-started run waits for the first instead of running beside it.
        QProcess *waiting = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(waiting->waitForStarted(5000));
        QVERIFY(!waiting->waitForFinished(300));
        QVERIFY(backup->waitForFinished(120000));
        QVERIFY(waiting->waitForFinished(120000));
        QCOMPARE(backup->exitCode(), 0);
        QCOMPARE(waiting->exitCode(), 0);
    }

    void offlineDuringBackupFailsIt()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        sim.paceForPolls(4);
        QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(backup->waitForStarted(5000));
        QVERIFY(sim.waitForRunningBackup());
        QVERIFY(sim.run({QStringLiteral("set-condition"), QStringLiteral("offline")}).succeeded());
        QVERIFY(backup->waitForFinished(120000));
        QCOMPARE(backup->exitCode(), 1);
        QVERIFY(backup->readAllStandardError().contains("went offline"));
        const auto status = sim.status();
        QCOMPARE(status->runtime.backupProgress->phase, QStringLiteral("failed"));
        QVERIFY(!status->runtime.lastBackupAt);
        QCOMPARE(status->runtime.state, QStringLiteral("waiting-for-target"));
    }

    void scheduledBackupStartsInBackground()
    {
        SimProcess sim;
        const QString tree = makeTree();
        QVERIFY(sim.enroll());
        sim.paceForPolls(8); // measured before the schedule is on, or it would start a backup
        AgentSettings settings = settingsFor({tree});
        settings.enabled = true;
        QVERIFY(sim.configure(settings));

        // Run through a pipe that is read to its end, as the app reads the
        // engine: the background backup must not hold it open.
        QProcess shell;
        shell.setProcessEnvironment(sim.environment());
        QElapsedTimer timer;
        timer.start();
        shell.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), QStringLiteral("\"$0\" ui-status --state \"$1\" | cat"),
                     SimProcess::program(), sim.stateDirectory()});
        QVERIFY(shell.waitForFinished(10000));
        QVERIFY2(timer.elapsed() < 4000 * sim.pollSeconds() + 1000,
                 QByteArray::number(timer.elapsed()));
        const auto first = AgentDocuments::decodeStatus(shell.readAllStandardOutput().trimmed());
        QVERIFY(first);
        QVERIFY(first->runtime.active);
        QCOMPARE(first->runtime.state, QStringLiteral("backing-up"));
        QVERIFY(first->runtime.backupProgress);
        // The pipe closed while the backup was still running.
        QVERIFY(sim.waitForRunningBackup(0));

        // The periodic refresh sees it progress and finish.
        const auto done = sim.statusWhen([](const AgentUIStatus &s) { return !s.runtime.active; });
        QVERIFY(done);
        QVERIFY(done->runtime.lastBackupAt);
        QCOMPARE(done->runtime.recoveryReady, std::optional<bool>(true));
        // Not due again until the interval has passed.
        QVERIFY(!sim.status()->runtime.active);
        QCOMPARE(sim.run({QStringLiteral("run-once")}).outputText(),
                 QStringLiteral("Connected to the authorized target."));
    }

    void runOnceStartsDueBackup()
    {
        SimProcess sim;
        const QString tree = makeTree();
        QVERIFY(sim.enroll());
        AgentSettings settings = settingsFor({tree});
        settings.enabled = true;
        QVERIFY(sim.configure(settings));
        sim.setSpeed(QStringLiteral("20"));
        const SimResult result = sim.run({QStringLiteral("run-once")});
        QVERIFY(result.succeeded());
        QCOMPARE(
            result.outputText(),
            QStringLiteral("Connected to the authorized target. A scheduled backup has started."));
        QVERIFY(sim.statusWhen(
            [](const AgentUIStatus &s) { return s.runtime.lastBackupAt && !s.runtime.active; }));
    }

    void disabledScheduleStartsNothing()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        QVERIFY(!sim.status()->runtime.active);
        QCOMPARE(sim.run({QStringLiteral("run-once")}).outputText(),
                 QStringLiteral("Connected to the authorized target."));
        QTest::qWait(100);
        const auto status = sim.status();
        QVERIFY(!status->runtime.active);
        QVERIFY(!status->runtime.lastBackupAttemptAt);
    }

    void autonomousUpdateWaitsForBackup()
    {
        SimProcess sim;
        const QString tree = makeTree();
        prepare(sim, {tree});
        QVERIFY(sim.run({QStringLiteral("advertise-update"), QStringLiteral("9.0.0")}).succeeded());
        sim.paceForPolls(4);
        QProcess *backup = sim.start({QStringLiteral("backup-all")}, this);
        QVERIFY(backup->waitForStarted(5000));
        QVERIFY(sim.waitForRunningBackup());
        const SimResult refused = sim.run({QStringLiteral("autonomous-update")});
        QCOMPARE(refused.exitCode, 1);
        QVERIFY(refused.errorText().contains(QStringLiteral("A backup is running")));
        QVERIFY(backup->waitForFinished(120000));
        QVERIFY(sim.run({QStringLiteral("autonomous-update")}).succeeded());
    }
};

QTEST_GUILESS_MAIN(TestSimulatorBackup)
#include "tst_simulator_backup.moc"
