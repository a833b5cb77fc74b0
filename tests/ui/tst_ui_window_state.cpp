#include "UiTestSupport.h"
#include "WindowState.h"

#include <QTest>

class TestUiWindowState : public QObject
{
    Q_OBJECT

    static WindowInputs enrolled(QStringList sources = {"/home/ann/Documents"})
    {
        WindowInputs in;
        in.status = UiTest::status("connected", true);
        in.sources = sources;
        return in;
    }

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void noStatusYet()
    {
        WindowInputs in;
        in.appVersion = "1.0.0";
        WindowState w = windowState(in);
        QCOMPARE(w.header.versionLine, QStringLiteral("ZQB Agent 1.0.0"));
        QCOMPARE(w.header.capsule.label, QStringLiteral("Checking latest\u2026"));
        QVERIFY(w.restoring.visible);
        QVERIFY(!w.connect.visible);
        QVERIFY(!w.schedule.backUpNowEnabled);
        QVERIFY(w.schedule.saveEnabled);
        QCOMPARE(w.badge.title, QStringLiteral("Checking status"));
        in.busy = true;
        QVERIFY(!windowState(in).schedule.saveEnabled);
        in.appVersion.clear();
        QCOMPARE(windowState(in).header.versionLine, QStringLiteral("ZQB Agent Unknown"));
    }

    void runningVersionComesFromTheEngine()
    {
        WindowInputs in = enrolled();
        in.appVersion = "1.0.0";
        QCOMPARE(windowState(in).header.versionLine, QStringLiteral("ZQB Agent 1.9.0"));
        in.status->agentVersion.clear(); // shown as sent, no fallback
        QCOMPARE(windowState(in).header.versionLine, QStringLiteral("ZQB Agent "));
    }

    void connectBoxAndEnrollButton()
    {
        WindowInputs in;
        in.status = UiTest::status("setup-required", false);
        WindowState w = windowState(in);
        QVERIFY(w.connect.visible);
        QVERIFY(!w.restoring.visible);
        QVERIFY(!w.connect.enrollEnabled);
        in.invitation = QString(39, QLatin1Char('x'));
        QVERIFY(!windowState(in).connect.enrollEnabled);
        in.invitation = QString(40, QLatin1Char('x'));
        QVERIFY(windowState(in).connect.enrollEnabled);
        in.busy = true;
        QVERIFY(!windowState(in).connect.enrollEnabled);
    }

    void invitationCountsUserPerceivedCharactersUntrimmed()
    {
        WindowInputs in;
        in.status = UiTest::status("setup-required", false);
        // 39 letters each with a combining accent: 78 code units, 39 characters.
        QString accented;
        for (int i = 0; i < 39; ++i)
            accented += QStringLiteral("e\u0301");
        in.invitation = accented;
        QVERIFY(!windowState(in).connect.enrollEnabled);
        in.invitation = accented + QLatin1Char(' '); // blanks count, no trimming
        QVERIFY(windowState(in).connect.enrollEnabled);
    }

    void enrolledShowsNoConnectionBox()
    {
        const WindowState w = windowState(enrolled());
        QVERIFY(!w.connect.visible);
        QVERIFY(!w.restoring.visible);
    }

    void backUpNowNeedsEnrollmentAndFolders()
    {
        WindowInputs in = enrolled({});
        QVERIFY(!windowState(in).schedule.backUpNowEnabled);
        QVERIFY(windowState(in).folders.showNoFolders);
        in.sources = {"/new/folder"};
        QVERIFY(windowState(in).schedule.backUpNowEnabled);
        QVERIFY(!windowState(in).folders.showNoFolders);
        in.busy = true;
        QVERIFY(!windowState(in).schedule.backUpNowEnabled);
        in.busy = false;
        in.status->runtime.enrolled = false;
        QVERIFY(!windowState(in).schedule.backUpNowEnabled);
    }

    void foldersListedInModelOrderWithDuplicates()
    {
        const QStringList sources = {"/b", "/a", "/b"};
        QCOMPARE(windowState(enrolled(sources)).folders.paths, sources);
    }

    void allowMeteredFollowsCurrentNetwork()
    {
        WindowInputs in = enrolled();
        QVERIFY(!windowState(in).network.allowMeteredEnabled);
        in.currentNetworkMetered = true;
        QVERIFY(windowState(in).network.allowMeteredEnabled);
    }

    void controlsShowTheModelFields()
    {
        WindowInputs in = enrolled();
        in.scheduleEnabled = true;
        in.intervalMinutes = 60;
        in.exclusionText = "node_modules, <b>*.tmp</b>";
        in.transfersPaused = true;
        in.bandwidthLimitKibPerSecond = 640;
        in.allowMeteredNetwork = true;
        const WindowState w = windowState(in);
        QVERIFY(w.schedule.enabled);
        QCOMPARE(w.schedule.intervalMinutes, 60);
        QCOMPARE(w.skipPatterns.text, QStringLiteral("node_modules, <b>*.tmp</b>"));
        QVERIFY(w.network.paused);
        QCOMPARE(w.network.bandwidthLimitKibPerSecond, 640);
        QVERIFY(!w.network.currentNetworkMetered);
        QVERIFY(w.network.allowMeteredNetwork); // kept while it does not apply
    }

    void cards()
    {
        WindowInputs in = enrolled();
        QVERIFY(!windowState(in).errorCard);
        QVERIFY(!windowState(in).noticeCard);
        in.error = "Bad";
        in.notice = "";
        const WindowState w = windowState(in);
        QCOMPARE(w.errorCard, std::optional<QString>("Bad"));
        QCOMPARE(w.noticeCard, std::optional<QString>(""));
    }

    void localWording()
    {
        const WindowState w = windowState(WindowInputs{});
#ifdef Q_OS_MACOS
        QCOMPARE(w.connect.title, QStringLiteral("Connect this Mac"));
        QVERIFY(w.folders.fullDiskAccessVisible);
#else
        QCOMPARE(w.header.subtitle,
                 QStringLiteral("Simple, encrypted protection for this computer"));
        QCOMPARE(w.connect.title, QStringLiteral("Connect this computer"));
        QCOMPARE(w.connect.enrollLabel, QStringLiteral("Enroll this computer"));
        QCOMPARE(w.restoring.text,
                 QStringLiteral("Reading this computer's existing ZQB enrollment\u2026"));
        QVERIFY(!w.folders.fullDiskAccessVisible);
#endif
        QCOMPARE(w.connect.text,
                 QStringLiteral("On the target Mac, choose Settings \u2192 Remote backup target "
                                "\u2192 Enroll an agent. Paste its one-time invitation here."));
    }

    void capsuleFollowsVersionStatus()
    {
        WindowInputs in = enrolled();
        in.status->runtime.agentUpdateAvailable = true;
        in.status->runtime.latestAgentVersion = "2.4.1";
        const VersionCapsuleState c = windowState(in).header.capsule;
        QCOMPARE(c.label, QStringLiteral("Update available: 2.4.1"));
        QCOMPARE(c.color, ColorRole::Blue);
        QCOMPARE(c.symbol, Symbol::ArrowDownCircle);
        QVERIFY(windowState(in).connection.showUpdateCard);
    }
};

QTEST_GUILESS_MAIN(TestUiWindowState)
#include "tst_ui_window_state.moc"
