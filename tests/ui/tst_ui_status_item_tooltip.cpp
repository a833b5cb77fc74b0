// The tray item's tooltip: the badge's title for each state and, while a
// backup runs, the badge's progress line beneath it.
#include "StatusItemToolTip.h"
#include "UiTestSupport.h"

#include <QTest>

Q_DECLARE_METATYPE(BackupProgressStatus)

class TestUiStatusItemToolTip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void noStatusYet()
    {
        QCOMPARE(statusItemToolTip(std::nullopt), QStringLiteral("Checking status"));
    }

    void eachState_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("tip");
        QTest::newRow("connected") << "connected"
                                   << "Connected";
        QTest::newRow("setup") << "setup-required"
                               << "Setup Required";
        QTest::newRow("waiting") << "waiting-for-target"
                                 << "Waiting For Target";
        QTest::newRow("paused") << "paused"
                                << "Paused";
        QTest::newRow("backing up, no progress yet") << "backing-up"
                                                     << "Backing Up";
        QTest::newRow("a word the app does not know") << "rebuilding-index"
                                                      << "Rebuilding Index";
    }
    void eachState()
    {
        QFETCH(QString, state);
        QFETCH(QString, tip);
        RuntimeStatus r = UiTest::status(state).runtime;
        r.lastError = QStringLiteral("Something failed");
        // Neither the engine's message nor its last error: the title only.
        QCOMPARE(statusItemToolTip(r), tip);
    }

    void runningBackupAddsTheProgressLine_data()
    {
        QTest::addColumn<BackupProgressStatus>("progress");
        QTest::addColumn<QString>("tip");
        BackupProgressStatus upload = UiTest::progress("uploading");
        upload.sourceIndex = 2;
        upload.sourceCount = 3;
        upload.totalObjects = 10;
        upload.objectsUploaded = 7;
        upload.objectsReused = 1;
        upload.elapsedSeconds = 75;
        upload.lastProgressAt = QStringLiteral("2026-11-22T14:05:09Z");
        QTest::newRow("uploading, folder 2 of 3")
            << upload << "Backing Up\nFolder 2/3 \u00b7 7/10 uploaded \u00b7 1 reused";
        BackupProgressStatus scan = UiTest::progress("scanning");
        scan.filesScanned = 4;
        scan.totalFiles = 9;
        scan.objectsPrepared = 2;
        QTest::newRow("scanning, one folder")
            << scan << "Backing Up\n4/9 files \u00b7 2 objects ready";
        QTest::newRow("verifying")
            << UiTest::progress("verifying") << "Backing Up\nVerifying recovery point";
    }
    void runningBackupAddsTheProgressLine()
    {
        QFETCH(BackupProgressStatus, progress);
        QFETCH(QString, tip);
        RuntimeStatus r = UiTest::status("backing-up").runtime;
        r.active = true;
        r.backupProgress = progress;
        QCOMPARE(statusItemToolTip(r), tip);
    }

    void progressOnlyWhileActive()
    {
        // A finished backup's last progress record is not a running backup.
        RuntimeStatus r = UiTest::status("connected").runtime;
        r.active = false;
        r.backupProgress = UiTest::progress("uploading");
        QCOMPARE(statusItemToolTip(r), QStringLiteral("Connected"));
    }
};

QTEST_APPLESS_MAIN(TestUiStatusItemToolTip)
#include "tst_ui_status_item_tooltip.moc"
