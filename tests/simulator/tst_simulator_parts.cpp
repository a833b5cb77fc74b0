// The stand-in's building blocks: invitations, skip patterns, versions, the
// command line, crash-safe files and the size of the status report.
#include "AgentDocuments.h"
#include "AtomicFile.h"
#include "CommandLine.h"
#include "Invitation.h"
#include "SimCommands.h"
#include "SimState.h"
#include "SkipPatterns.h"
#include "StatusReport.h"
#include "Versions.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestSimulatorParts : public QObject
{
    Q_OBJECT

private slots:
    void madeInvitationsVerify()
    {
        const QByteArray invitation = Invitation::make(QStringLiteral("Studio Mac"));
        QVERIFY(invitation.startsWith("zqb-invite-v1."));
        QVERIFY(invitation.size() >= Invitation::minimumLength);
        const Invitation::Verdict verdict = Invitation::verify(invitation);
        QVERIFY2(verdict.valid, qPrintable(verdict.problem));
        QCOMPARE(verdict.target.name, QStringLiteral("Studio Mac"));
        QVERIFY(!verdict.target.deviceId.isEmpty());
        QCOMPARE(verdict.digest.size(), 64);
        QVERIFY(!verdict.digest.contains(invitation));
    }

    void invitationsDiffer()
    {
        const QByteArray first = Invitation::make(QStringLiteral("A"));
        const QByteArray second = Invitation::make(QStringLiteral("A"));
        QVERIFY(first != second);
        QVERIFY(Invitation::verify(first).digest != Invitation::verify(second).digest);
    }

    void surroundingWhitespaceIsIgnored()
    {
        const QByteArray invitation = Invitation::make(QStringLiteral("Studio Mac"));
        QVERIFY(Invitation::verify("\n\t  " + invitation + " \r\n\n").valid);
    }

    void refusedInvitations_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem");
        const QByteArray good = Invitation::make(QStringLiteral("Studio Mac"));
        const qsizetype lastDot = good.lastIndexOf('.');
        QByteArray badChecksum = good;
        badChecksum[badChecksum.size() - 1] = badChecksum.endsWith('0') ? '1' : '0';
        QByteArray badPayload = good;
        badPayload[20] = badPayload[20] == 'A' ? 'B' : 'A';
        // A checksum that fits a payload that is not an invitation's.
        const QByteArray notJson =
            QByteArray("zqb-invite-v1.") +
            QByteArray("just some words, nothing more")
                .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
        const QByteArray signedNotJson =
            notJson + '.' +
            QCryptographicHash::hash(notJson, QCryptographicHash::Sha256).left(8).toHex();

        QTest::newRow("empty") << QByteArray() << "it is empty.";
        QTest::newRow("blank lines") << QByteArray("\n \n") << "it is empty.";
        QTest::newRow("39 characters") << good.left(39) << "it is shorter than 40 characters";
        QTest::newRow("other prefix")
            << QByteArray("zqb-invite-v2.").append(good.mid(14)) << "it does not start with";
        QTest::newRow("checksum changed") << badChecksum << "its checksum does not match";
        QTest::newRow("payload changed") << badPayload << "its checksum does not match";
        QTest::newRow("checksum missing") << good.left(lastDot) << "it does not have the parts";
        QTest::newRow("extra part") << good + ".abc"
                                    << "it does not have the parts";
        QTest::newRow("inner space") << QByteArray(good).insert(30, ' ') << "characters";
        QTest::newRow("not ascii") << QByteArray(good).append("\xc3\xa9") << "characters";
        QTest::newRow("too long") << good + QByteArray(3000, 'a') << "longer than any invitation";
        QTest::newRow("payload not an invitation")
            << signedNotJson << "its contents are not readable";
    }

    void refusedInvitations()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, problem);
        const Invitation::Verdict verdict = Invitation::verify(text);
        QVERIFY(!verdict.valid);
        QVERIFY2(verdict.problem.contains(problem), qPrintable(verdict.problem));
        QVERIFY(verdict.target.name.isEmpty());
        QVERIFY(verdict.digest.isEmpty());
    }

    void wipingZeroesTheBuffer()
    {
        QByteArray secret = Invitation::make(QStringLiteral("x"));
        const char *data = secret.constData();
        Invitation::wipe(secret);
        QCOMPARE(secret.constData(), data);
        QCOMPARE(secret, QByteArray(secret.size(), '\0'));
    }

    void skipPatterns_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("skipped");
        QTest::newRow("exact") << ".DS_Store" << true;
        QTest::newRow("glob star") << "build.tmp" << true;
        QTest::newRow("glob star hidden") << ".hidden.tmp" << true;
        QTest::newRow("glob question") << "cache-1" << true;
        QTest::newRow("glob question two") << "cache-12" << false;
        QTest::newRow("glob class") << "Thumbs.db" << true;
        QTest::newRow("case matters") << ".ds_store" << false;
        QTest::newRow("suffix only") << "tmp" << false;
        QTest::newRow("unrelated") << "report.pdf" << false;
    }

    void skipPatterns()
    {
        QFETCH(QString, name);
        QFETCH(bool, skipped);
        const SkipPatterns patterns({QStringLiteral(".DS_Store"), QStringLiteral("*.tmp"),
                                     QStringLiteral("cache-?"), QStringLiteral("[Tt]humbs.db")});
        QCOMPARE(patterns.matches(name), skipped);
    }

    void noPatternsSkipNothing()
    {
        QVERIFY(!SkipPatterns(QStringList{}).matches(QStringLiteral("a")));
    }

    void versions()
    {
        QVERIFY(Versions::isValid(QStringLiteral("2.4.1")));
        QVERIFY(Versions::isValid(QStringLiteral("3.0.0-rc1")));
        QVERIFY(!Versions::isValid(QStringLiteral("")));
        QVERIFY(!Versions::isValid(QStringLiteral("v2")));
        QVERIFY(!Versions::isValid(QStringLiteral("1.2.3.4.5")));
        QVERIFY(!Versions::isValid(QStringLiteral("1.0; rm -rf")));
        QVERIFY(Versions::compare(QStringLiteral("1.0.0"), QStringLiteral("1.1.0")) < 0);
        QVERIFY(Versions::compare(QStringLiteral("1.10.0"), QStringLiteral("1.9.0")) > 0);
        QCOMPARE(Versions::compare(QStringLiteral("1.0"), QStringLiteral("1.0.0")), 0);
        QVERIFY(Versions::compare(QStringLiteral("2.0.0-rc1"), QStringLiteral("2.0.0")) < 0);
    }

    void commandLineTakesStateAnywhere()
    {
        const CommandLine last = CommandLine::parse({"ui-status", "--state", "/s t"});
        QVERIFY(last.problem.isEmpty());
        QCOMPARE(last.command, QStringLiteral("ui-status"));
        QCOMPARE(last.stateDirectory, QStringLiteral("/s t"));
        const CommandLine first =
            CommandLine::parse({"--state=/x", "enroll", "--invitation-stdin"});
        QVERIFY(first.problem.isEmpty());
        QCOMPARE(first.command, QStringLiteral("enroll"));
        QCOMPARE(first.stateDirectory, QStringLiteral("/x"));
    }

    void commandLineRefusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("missing flag") << QStringList{"configure"};
        QTest::newRow("wrong flag") << QStringList{"configure", "--invitation-stdin"};
        QTest::newRow("operand") << QStringList{"ui-status", "now"};
        QTest::newRow("state without value") << QStringList{"ui-status", "--state"};
        QTest::newRow("state twice") << QStringList{"ui-status", "--state", "a", "--state", "b"};
        QTest::newRow("flag with value") << QStringList{"configure", "--json-stdin=x"};
        QTest::newRow("missing operand") << QStringList{"set-condition"};
    }

    void commandLineRefusals()
    {
        QFETCH(QStringList, arguments);
        QVERIFY(!CommandLine::parse(arguments).problem.isEmpty());
    }

    void speedFactor()
    {
        QCOMPARE(SimCommands::speedFactor(QString()), 1.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("1000")), 1000.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("0.5")), 0.5);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("0")), 1.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("-3")), 1.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("fast")), 1.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("inf")), 1.0);
        QCOMPARE(SimCommands::speedFactor(QStringLiteral("1e12")), 1e6);
    }

    void atomicWriteReplacesWholeFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("record.json"));
        QVERIFY(AtomicFile::write(path, "first"));
        QVERIFY(AtomicFile::write(path, "second, longer"));
        QCOMPARE(AtomicFile::read(path).value_or(QByteArray()), QByteArray("second, longer"));
        // No temporary file is left beside it.
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"record.json"});
        QVERIFY(!AtomicFile::read(dir.filePath(QStringLiteral("missing"))));
        QVERIFY(!AtomicFile::read(path, 3));
    }

    void atomicWriteReportsFailure()
    {
        QString problem;
        QVERIFY(!AtomicFile::write(QStringLiteral("/nonexistent-dir/x.json"), "data", &problem));
        QVERIFY(!problem.isEmpty());
    }

    void statusReportStaysShortWithManyLongFolders()
    {
        QTemporaryDir dir;
        SimState state(dir.path());
        AgentSettings settings = SimState::defaultSettings();
        for (int i = 0; i < 3000; ++i) // some 1.1 MB
            settings.sources.append(QStringLiteral("/Users/someone/") + QString(180, QChar(u'é')) +
                                    QString::number(i));
        QVERIFY(state.saveSettings(settings, nullptr));
        const QByteArray document = StatusReport::render(StatusReport::build(state, false));
        QVERIFY2(document.size() <= StatusReport::sizeLimit, QByteArray::number(document.size()));
        const auto decoded = AgentDocuments::decodeStatus(document);
        QVERIFY(decoded);
        QVERIFY(decoded->settings.sources.size() < 3000);
        QVERIFY(decoded->settings.sources.size() > 2000);
        QVERIFY(
            decoded->runtime.lastError.value_or(QString()).contains(QStringLiteral("leaves out")));
        // The stored settings keep every folder.
        QCOMPARE(state.settings().sources.size(), 3000);
    }

    void statusReportUntouchedWhenShort()
    {
        QTemporaryDir dir;
        SimState state(dir.path());
        const AgentUIStatus status = StatusReport::build(state, false);
        QCOMPARE(StatusReport::render(status), AgentDocuments::encode(status));
    }
};

QTEST_GUILESS_MAIN(TestSimulatorParts)
#include "tst_simulator_parts.moc"
