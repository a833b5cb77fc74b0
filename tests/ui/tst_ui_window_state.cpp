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
        QCOMPARE(w.versionLine, QStringLiteral("ZQB Agent 1.0.0"));
        QCOMPARE(w.capsule.label, QStringLiteral("Checking latest\u2026"));
        QCOMPARE(w.connectionBox, ConnectionBox::Restoring);
        QVERIFY(!w.backUpNowEnabled);
        QVERIFY(w.saveEnabled);
        QCOMPARE(w.badge.title, QStringLiteral("Checking status"));
        in.busy = true;
        QVERIFY(!windowState(in).saveEnabled);
        in.appVersion.clear();
        QCOMPARE(windowState(in).versionLine, QStringLiteral("ZQB Agent Unknown"));
    }

    void runningVersionComesFromTheEngine()
    {
        WindowInputs in = enrolled();
        in.appVersion = "1.0.0";
        QCOMPARE(windowState(in).versionLine, QStringLiteral("ZQB Agent 1.9.0"));
        in.status->agentVersion.clear(); // shown as sent, no fallback
        QCOMPARE(windowState(in).versionLine, QStringLiteral("ZQB Agent "));
    }

    void connectBoxAndEnrollButton()
    {
        WindowInputs in;
        in.status = UiTest::status("setup-required", false);
        WindowState w = windowState(in);
        QCOMPARE(w.connectionBox, ConnectionBox::Connect);
        QVERIFY(!w.enrollEnabled);
        in.invitation = QString(39, QLatin1Char('x'));
        QVERIFY(!windowState(in).enrollEnabled);
        in.invitation = QString(40, QLatin1Char('x'));
        QVERIFY(windowState(in).enrollEnabled);
        in.busy = true;
        QVERIFY(!windowState(in).enrollEnabled);
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
        QVERIFY(!windowState(in).enrollEnabled);
        in.invitation = accented + QLatin1Char(' '); // blanks count, no trimming
        QVERIFY(windowState(in).enrollEnabled);
    }

    void enrolledShowsNoConnectionBox()
    {
        QCOMPARE(windowState(enrolled()).connectionBox, ConnectionBox::None);
    }

    void backUpNowNeedsEnrollmentAndFolders()
    {
        WindowInputs in = enrolled({});
        QVERIFY(!windowState(in).backUpNowEnabled);
        QVERIFY(windowState(in).showNoFolders);
        in.sources = {"/new/folder"};
        QVERIFY(windowState(in).backUpNowEnabled);
        QVERIFY(!windowState(in).showNoFolders);
        in.busy = true;
        QVERIFY(!windowState(in).backUpNowEnabled);
        in.busy = false;
        in.status->runtime.enrolled = false;
        QVERIFY(!windowState(in).backUpNowEnabled);
    }

    void foldersListedInModelOrderWithDuplicates()
    {
        const QStringList sources = {"/b", "/a", "/b"};
        QCOMPARE(windowState(enrolled(sources)).folders, sources);
    }

    void allowMeteredFollowsCurrentNetwork()
    {
        WindowInputs in = enrolled();
        QVERIFY(!windowState(in).allowMeteredEnabled);
        in.currentNetworkMetered = true;
        QVERIFY(windowState(in).allowMeteredEnabled);
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
        QCOMPARE(w.connectTitle, QStringLiteral("Connect this Mac"));
        QVERIFY(w.fullDiskAccessVisible);
#else
        QCOMPARE(w.subtitle, QStringLiteral("Simple, encrypted protection for this computer"));
        QCOMPARE(w.connectTitle, QStringLiteral("Connect this computer"));
        QCOMPARE(w.enrollLabel, QStringLiteral("Enroll this computer"));
        QCOMPARE(w.restoringText,
                 QStringLiteral("Reading this computer's existing ZQB enrollment\u2026"));
        QVERIFY(!w.fullDiskAccessVisible);
#endif
        QCOMPARE(w.connectText,
                 QStringLiteral("On the target Mac, choose Settings \u2192 Remote backup target "
                                "\u2192 Enroll an agent. Paste its one-time invitation here."));
    }

    void capsuleFollowsVersionStatus()
    {
        WindowInputs in = enrolled();
        in.status->runtime.agentUpdateAvailable = true;
        in.status->runtime.latestAgentVersion = "2.4.1";
        const VersionCapsuleState c = windowState(in).capsule;
        QCOMPARE(c.label, QStringLiteral("Update available: 2.4.1"));
        QCOMPARE(c.color, ColorRole::Blue);
        QCOMPARE(c.symbol, Symbol::ArrowDownCircle);
        QVERIFY(windowState(in).connection.showUpdateCard);
    }
};

QTEST_GUILESS_MAIN(TestUiWindowState)
#include "tst_ui_window_state.moc"
