#include "BadgeState.h"
#include "UiTestSupport.h"

#include <QTest>

class TestUiBadgeState : public QObject
{
    Q_OBJECT

    static RuntimeStatus running(const BackupProgressStatus &p)
    {
        RuntimeStatus r = UiTest::status("backing-up").runtime;
        r.active = true;
        r.backupProgress = p;
        return r;
    }

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void noRecord()
    {
        const BadgeState b = badgeState(std::nullopt);
        QCOMPARE(b.dot, ColorRole::Red);
        QCOMPARE(b.title, QStringLiteral("Checking status"));
        QCOMPARE(b.message, QStringLiteral("Reading the local ZQB Agent state\u2026"));
        QVERIFY(!b.errorLine);
        QVERIFY(!b.progress);
    }

    void dotColour_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("reachable");
        QTest::addColumn<ColorRole>("dot");
        QTest::addColumn<QString>("title");
        QTest::newRow("setup, reachable")
            << "setup-required" << true << ColorRole::Blue << "Setup Required";
        QTest::newRow("setup, unreachable")
            << "setup-required" << false << ColorRole::Red << "Setup Required";
        QTest::newRow("connected") << "connected" << false << ColorRole::Green << "Connected";
        QTest::newRow("backing up") << "backing-up" << true << ColorRole::Blue << "Backing Up";
        QTest::newRow("waiting") << "waiting-for-target" << true << ColorRole::Orange
                                 << "Waiting For Target";
        QTest::newRow("paused") << "paused" << true << ColorRole::Orange << "Paused";
        QTest::newRow("unknown word")
            << "rebuilding-index" << true << ColorRole::Red << "Rebuilding Index";
        QTest::newRow("other case") << "Connected" << true << ColorRole::Red << "Connected";
        QTest::newRow("shouting") << "DISK-FULL" << true << ColorRole::Red << "Disk Full";
        QTest::newRow("empty") << "" << true << ColorRole::Red << "";
    }
    void dotColour()
    {
        QFETCH(QString, state);
        QFETCH(bool, reachable);
        QFETCH(ColorRole, dot);
        QFETCH(QString, title);
        RuntimeStatus r = UiTest::status(state).runtime;
        r.serviceReachable = reachable;
        const BadgeState b = badgeState(r);
        QCOMPARE(b.dot, dot);
        QCOMPARE(b.title, title);
        QCOMPARE(b.message, QStringLiteral("Engine message"));
    }

    void errorLine()
    {
        RuntimeStatus r = UiTest::status().runtime;
        QVERIFY(!badgeState(r).errorLine);
        r.lastError = QString();
        QVERIFY(!badgeState(r).errorLine);
        r.lastError = QStringLiteral("Target unreachable");
        QCOMPARE(badgeState(r).errorLine, std::optional<QString>("Target unreachable"));
    }

    void progressBlockNeedsActiveAndProgress()
    {
        RuntimeStatus r = UiTest::status().runtime;
        r.active = true;
        QVERIFY(!badgeState(r).progress);
        r.active = false;
        r.backupProgress = UiTest::progress("uploading");
        QVERIFY(!badgeState(r).progress);
        r.active = true;
        QVERIFY(badgeState(r).progress);
    }

    void uploadingCapsTheFraction()
    {
        BackupProgressStatus p = UiTest::progress("uploading");
        p.totalObjects = 10;
        p.objectsUploaded = 7;
        p.objectsReused = 6;
        const BadgeProgress b = *badgeState(running(p)).progress;
        QCOMPARE(b.fraction, std::optional<double>(1.0));
        QCOMPARE(b.phaseLine, QStringLiteral("7/10 uploaded \u00b7 6 reused"));
    }

    void objectPhasesMeasureObjects()
    {
        for (const char *phase : {"uploading", "waiting-for-receipts", "committing", "verifying"}) {
            BackupProgressStatus p = UiTest::progress(phase);
            p.totalObjects = 8;
            p.objectsUploaded = 1;
            p.objectsReused = 1;
            p.totalBytes = 100;
            p.bytesScanned = 100;
            QCOMPARE(progressFraction(p), std::optional<double>(0.25));
        }
    }

    void counterSumOverflowFillsTheBar()
    {
        BackupProgressStatus p = UiTest::progress("uploading");
        p.totalObjects = 5;
        p.objectsUploaded = std::numeric_limits<quint64>::max();
        p.objectsReused = 2;
        QCOMPARE(progressFraction(p), std::optional<double>(1.0));
    }

    void uploadingWithoutObjectsIsIndeterminate()
    {
        BackupProgressStatus p = UiTest::progress("uploading");
        p.totalBytes = 10;
        p.bytesScanned = 5;
        QVERIFY(!badgeState(running(p)).progress->fraction);
    }

    void bytePhasesMeasureBytes()
    {
        for (const char *phase : {"scanning", "chunking", "finalizing"}) {
            BackupProgressStatus p = UiTest::progress(phase);
            p.totalBytes = 200;
            p.bytesScanned = 50;
            p.totalObjects = 10;
            p.objectsUploaded = 10;
            QCOMPARE(progressFraction(p), std::optional<double>(0.25));
            p.bytesScanned = 900;
            QCOMPARE(progressFraction(p), std::optional<double>(1.0));
        }
    }

    void scanningWithoutBytesIsIndeterminate()
    {
        const BadgeProgress b = *badgeState(running(UiTest::progress("scanning"))).progress;
        QVERIFY(!b.fraction);
        QCOMPARE(b.phaseLine, QStringLiteral("0/0 files \u00b7 0 objects ready"));
    }

    void queryingIsIndeterminate()
    {
        BackupProgressStatus p = UiTest::progress("querying");
        p.totalObjects = 12;
        p.objectsUploaded = 3;
        p.totalBytes = 12;
        const BadgeProgress b = *badgeState(running(p)).progress;
        QVERIFY(!b.fraction);
        QCOMPARE(b.phaseLine, QStringLiteral("Checking target inventory"));
    }

    void phaseLines_data()
    {
        QTest::addColumn<QString>("phase");
        QTest::addColumn<QString>("line");
        QTest::newRow("preflight") << "preflight"
                                   << "Checking 11 files";
        QTest::newRow("resuming") << "resuming"
                                  << "Validating 33 prepared objects";
        QTest::newRow("scanning") << "scanning"
                                  << "11/22 files \u00b7 33 objects ready";
        QTest::newRow("chunking") << "chunking"
                                  << "11/22 files \u00b7 33 objects ready";
        QTest::newRow("finalizing") << "finalizing"
                                    << "11/22 files \u00b7 33 objects ready";
        QTest::newRow("querying") << "querying"
                                  << "Checking target inventory";
        QTest::newRow("uploading") << "uploading"
                                   << "55/44 uploaded \u00b7 66 reused";
        QTest::newRow("receipts") << "waiting-for-receipts"
                                  << "Waiting for durable receipts";
        QTest::newRow("committing") << "committing"
                                    << "Committing recovery point";
        QTest::newRow("verifying") << "verifying"
                                   << "Verifying recovery point";
        QTest::newRow("unknown") << "defragmenting"
                                 << "Backup active";
        QTest::newRow("other case") << "Uploading"
                                    << "Backup active";
    }
    void phaseLines()
    {
        QFETCH(QString, phase);
        QFETCH(QString, line);
        BackupProgressStatus p = UiTest::progress(phase);
        p.filesScanned = 11;
        p.totalFiles = 22;
        p.objectsPrepared = 33;
        p.totalObjects = 44;
        p.objectsUploaded = 55;
        p.objectsReused = 66;
        p.bytesUploaded = 77;
        QCOMPARE(phaseLine(p), line);
    }

    void folderPrefix()
    {
        BackupProgressStatus p = UiTest::progress("querying");
        p.sourceCount = 1;
        p.sourceIndex = 1;
        QCOMPARE(phaseLine(p), QStringLiteral("Checking target inventory"));
        p.sourceCount = 3;
        p.sourceIndex = 2;
        QCOMPARE(phaseLine(p), QStringLiteral("Folder 2/3 \u00b7 Checking target inventory"));
        p.sourceIndex = 0; // shown as sent, nothing added
        QCOMPARE(phaseLine(p), QStringLiteral("Folder 0/3 \u00b7 Checking target inventory"));
    }

    void hugeCountersPrintInFull()
    {
        BackupProgressStatus p = UiTest::progress("uploading");
        p.objectsUploaded = std::numeric_limits<quint64>::max();
        p.totalObjects = std::numeric_limits<quint64>::max();
        QCOMPARE(phaseLine(p), QStringLiteral("18446744073709551615/18446744073709551615 uploaded "
                                              "\u00b7 0 reused"));
    }

    void timingLines()
    {
        BackupProgressStatus p = UiTest::progress("uploading");
        BadgeProgress b = *badgeState(running(p)).progress;
        QVERIFY(!b.lastProgressLine);
        QVERIFY(!b.elapsedLine);

        p.lastProgressAt = QStringLiteral("2025-03-01T14:05:09Z");
        p.elapsedSeconds = 0;
        b = *badgeState(running(p)).progress;
        QCOMPARE(b.lastProgressLine, std::optional<QString>("Last progress 4:05:09 PM"));
        QCOMPARE(b.elapsedLine, std::optional<QString>("Elapsed time 0 sec"));

        p.lastProgressAt = QStringLiteral("2025-03-01T14:05:09.250Z");
        p.elapsedSeconds = 3661;
        b = *badgeState(running(p)).progress;
        QCOMPARE(b.lastProgressLine, std::optional<QString>("Last progress recently"));
        QCOMPARE(b.elapsedLine, std::optional<QString>("Elapsed time 1 hr 1 min 1 sec"));
    }
};

QTEST_GUILESS_MAIN(TestUiBadgeState)
#include "tst_ui_badge_state.moc"
