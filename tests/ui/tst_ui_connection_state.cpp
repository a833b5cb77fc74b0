#include "ConnectionState.h"
#include "UiTestSupport.h"

#include <QTest>

class TestUiConnectionState : public QObject
{
    Q_OBJECT

    static QString value(const ConnectionState &c, const QString &label)
    {
        for (const DetailRow &row : c.rows)
            if (row.label == label)
                return row.value;
        return QStringLiteral("<missing>");
    }

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void noStatus()
    {
        const ConnectionState c = connectionState(std::nullopt, false);
        const QList<DetailRow> expected = {
            {"Agent version", "Checking\u2026"},
            {"Service version", "Legacy v1 service"},
            {"Compatibility", "Not checked yet"},
            {"Latest compatible agent", "Not advertised by legacy service"},
            {"Online compatible targets", "0"},
            {"Last contact", "Not yet"},
            {"Last successful backup", "Not yet"},
            {"Last backup duration", "Duration not available"},
            {"Latest backup result", "Not yet"},
        };
        QCOMPARE(c.rows, expected);
        QVERIFY(!c.showUpdateCard);
        QCOMPARE(c.checkLabel, QStringLiteral("Check service"));
        QVERIFY(c.checkEnabled);
    }

    void fullStatus()
    {
        AgentUIStatus s = UiTest::status();
        s.agentVersion = "2.3.0";
        s.runtime.serviceVersion = "5.1";
        s.runtime.compatibility = "legacy-v1";
        s.runtime.latestAgentVersion = "2.3.0";
        s.runtime.authorizedTargets = 3;
        s.runtime.lastContactAt = "2025-03-01T12:05:09Z";
        s.runtime.lastBackupAt = "2025-02-28T22:00:00Z";
        s.runtime.recoveryReady = true;
        BackupProgressStatus p = UiTest::progress("completed");
        p.elapsedSeconds = 3723;
        s.runtime.backupProgress = p;
        const ConnectionState c = connectionState(s, false);
        const QList<DetailRow> expected = {
            {"Agent version", "2.3.0"},
            {"Service version", "5.1"},
            {"Compatibility", "Compatible legacy v1 protocol"},
            {"Latest compatible agent", "2.3.0"},
            {"Online compatible targets", "3"},
            {"Last contact", "Mar 1, 2025 at 2:05 PM"},
            {"Last successful backup", "Mar 1, 2025 at 12:00 AM"},
            {"Last backup duration", "1 hr 2 min 3 sec"},
            {"Latest backup result", "Recovery Ready"},
        };
        QCOMPARE(c.rows, expected);
        QCOMPARE(c.checkLabel, QStringLiteral("Check connection"));
    }

    void enrolledWithoutServiceVersionIsLegacy()
    {
        AgentUIStatus s = UiTest::status();
        QCOMPARE(value(connectionState(s, false), "Service version"),
                 QStringLiteral("Legacy v1 service"));
    }

    void compatibilityWords_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("text");
        QTest::newRow("compatible") << "compatible"
                                    << "Compatible with signed service policy";
        QTest::newRow("legacy") << "legacy-v1"
                                << "Compatible legacy v1 protocol";
        QTest::newRow("capital C") << "Compatible"
                                   << "Not checked yet";
        QTest::newRow("unknown") << "incompatible"
                                 << "Not checked yet";
        QTest::newRow("empty") << ""
                               << "Not checked yet";
    }
    void compatibilityWords()
    {
        QFETCH(QString, word);
        QFETCH(QString, text);
        AgentUIStatus s = UiTest::status();
        s.runtime.compatibility = word;
        QCOMPARE(value(connectionState(s, false), "Compatibility"), text);
    }

    void latestBackupResult()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.recoveryReady = true;
        QCOMPARE(value(connectionState(s, false), "Latest backup result"),
                 QStringLiteral("Not yet"));
        s.runtime.lastBackupAt = "2025-03-01T12:05:09Z";
        QCOMPARE(value(connectionState(s, false), "Latest backup result"),
                 QStringLiteral("Recovery Ready"));
        s.runtime.recoveryReady = false;
        QCOMPARE(value(connectionState(s, false), "Latest backup result"),
                 QStringLiteral("Successful empty backup"));
        s.runtime.recoveryReady.reset();
        QCOMPARE(value(connectionState(s, false), "Latest backup result"),
                 QStringLiteral("Completed; verification type unavailable"));
    }

    void unparsableDatesReadNotYet()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.lastContactAt = "2025-03-01T12:05:09.5Z";
        s.runtime.lastBackupAt = "";
        const ConnectionState c = connectionState(s, false);
        QCOMPARE(value(c, "Last contact"), QStringLiteral("Not yet"));
        QCOMPARE(value(c, "Last successful backup"), QStringLiteral("Not yet"));
        // A present but unreadable time stamp still counts as a last backup.
        QCOMPARE(value(c, "Latest backup result"),
                 QStringLiteral("Completed; verification type unavailable"));
    }

    void negativeTargetCountIsShownAsSent()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.authorizedTargets = -2;
        QCOMPARE(value(connectionState(s, false), "Online compatible targets"),
                 QStringLiteral("-2"));
    }

    void runningBackupRow()
    {
        AgentUIStatus s = UiTest::status("backing-up");
        s.runtime.active = true;
        BackupProgressStatus p = UiTest::progress("uploading");
        p.elapsedSeconds = 65;
        s.runtime.backupProgress = p;
        const ConnectionState c = connectionState(s, false);
        QCOMPARE(c.rows.at(7), (DetailRow{"Current backup elapsed", "1 min 5 sec"}));
    }

    void updateCard()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.agentUpdateAvailable = true;
        s.runtime.latestAgentVersion = s.agentVersion;
        QVERIFY(!connectionState(s, false).showUpdateCard);
        s.runtime.latestAgentVersion = "2.4.1";
        QVERIFY(connectionState(s, false).showUpdateCard);
        s.runtime.latestAgentVersion.reset();
        QVERIFY(connectionState(s, false).showUpdateCard);
        s.runtime.agentUpdateAvailable = false;
        QVERIFY(!connectionState(s, false).showUpdateCard);
    }

    void busyDisablesButtonsButRowsStillUpdate()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.agentUpdateAvailable = true;
        s.runtime.latestAgentVersion = "2.4.1";
        const ConnectionState idle = connectionState(s, false);
        QVERIFY(idle.installEnabled);
        QVERIFY(idle.checkEnabled);
        s.runtime.authorizedTargets = 7;
        const ConnectionState busy = connectionState(s, true);
        QVERIFY(!busy.installEnabled);
        QVERIFY(!busy.checkEnabled);
        QCOMPARE(value(busy, "Online compatible targets"), QStringLiteral("7"));
        QVERIFY(busy.showUpdateCard);
    }

    void checkLabelFollowsEnrollment()
    {
        QCOMPARE(connectionState(UiTest::status("setup-required", false), false).checkLabel,
                 QStringLiteral("Check service"));
        QCOMPARE(connectionState(UiTest::status("connected", true), false).checkLabel,
                 QStringLiteral("Check connection"));
    }
};

QTEST_GUILESS_MAIN(TestUiConnectionState)
#include "tst_ui_connection_state.moc"
