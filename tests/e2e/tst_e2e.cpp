// The whole system with real processes: the app under a real X server or a
// real Wayland compositor (ZQB_E2E_PLATFORM), the stand-in engine, a private
// session bus, a real notification server and a tray host. Each test builds
// its own desktop and tears it down.
#include "E2eSession.h"
#include "IconTint.h"
#include "X11RootMessages.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString connectBox = QStringLiteral("Connect this computer");
const QString enrollButton = QStringLiteral("Enroll this computer");
const QString invitationField = QStringLiteral("One-time invitation");
const QString restoringText = QStringLiteral("Reading this computer's existing ZQB enrollment…");
const QString windowTitle = QStringLiteral("ZQB Agent");
const QString notInstalled = QStringLiteral("The ZQB Agent background engine is not installed.");

// Generous bounds: a loaded CI machine may be slow, but nothing waits forever.
constexpr int startupMs = 30000;
constexpr int actionMs = 30000;

// Pictures taken under Wayland sit beside the X11 ones, named wayland-*.
QString screenshotPath(const QString &name)
{
    const QString dir = qEnvironmentVariable("ZQB_E2E_SCREENSHOTS");
    if (dir.isEmpty())
        return {};
    const bool wayland = E2eSession::platformUnderTest() == E2eSession::Platform::Wayland;
    return QDir(dir).filePath(wayland ? QStringLiteral("wayland-") + name : name);
}

// What the desktop itself shows, where it can tell: the compositor has the
// window mapped (under X11 the app's own word is all there is).
bool desktopShowsWindow(const E2eSession &session)
{
    if (session.platform() != E2eSession::Platform::Wayland)
        return true;
    return session.compositorWindow(windowTitle)[QStringLiteral("visible")].toBool();
}

// Engine runs that inherited a launcher's activation token (the wrapper notes them).
int runsWithToken(const E2eSession &session)
{
    int count = 0;
    for (const QString &run : session.engineRuns())
        if (run.startsWith(QStringLiteral("XDG_ACTIVATION_TOKEN=")) ||
            run.startsWith(QStringLiteral("DESKTOP_STARTUP_ID=")))
            ++count;
    return count;
}

QString tint(const E2eSession &session)
{
    return tintName(session.trayIcon());
}

QString engineState(const E2eSession &session)
{
    const QJsonObject status =
        QJsonDocument::fromJson(session.runEngine({QStringLiteral("ui-status")})).object();
    return status[QStringLiteral("runtime")][QStringLiteral("state")].toString();
}

int countRuns(const E2eSession &session, const QString &command)
{
    int count = 0;
    for (const QString &run : session.engineRuns())
        if (run.section(QLatin1Char(' '), 0, 0) == command)
            ++count;
    return count;
}

// The app's own copy of its engine, in the session's folder, so a test can
// move it away and back as an update would.
QString giveTheAppItsOwnEngine(E2eSession &session)
{
    const QString engine = session.path(QStringLiteral("engine/zqb-agent"));
    QDir().mkpath(session.path(QStringLiteral("engine")));
    if (!QFile::copy(QStringLiteral(ZQB_E2E_ENGINE_WRAPPER), engine))
        return {};
    session.setAppEnvironment(QStringLiteral("ZQB_E2E_ENGINE"), engine);
    return engine;
}

// Spoilt engine runs still queued in the stand-in's state.
int pendingFaults(const E2eSession &session)
{
    QFile faults(session.stateDirectory() + QStringLiteral("/faults"));
    if (!faults.open(QIODevice::ReadOnly))
        return 0;
    return int(faults.readAll().count('\n'));
}

bool injectFault(const E2eSession &session, const QString &kind, int times = 1)
{
    int code = -1;
    session.runEngine(
        {QStringLiteral("inject-fault"), kind, QStringLiteral("--times"), QString::number(times)},
        {}, &code);
    return code == 0;
}

// A backup that completes behind the app's back, as a scheduled one does.
// Started in a new second, so its completion time differs from the last one's.
bool backUpBehindTheApp(const E2eSession &session)
{
    QTest::qWait(1100);
    int code = -1;
    session.runEngine({QStringLiteral("backup-all")}, {}, &code);
    return code == 0;
}

// Status reads of this session's engine running right now (other tests'
// engines run beside them, with their own state).
int statusReadsAlive(const E2eSession &session)
{
    const QByteArray state = "ZQB_SIM_STATE=" + session.stateDirectory().toUtf8();
    int alive = 0;
    for (const QString &pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        const QByteArrayView command("\0ui-status\0", 11); // an argument, not the start of one
        if (!cmdline.open(QIODevice::ReadOnly) || !cmdline.readAll().contains(command))
            continue;
        QFile environ(QStringLiteral("/proc/%1/environ").arg(pid));
        if (environ.open(QIODevice::ReadOnly) && environ.readAll().split('\0').contains(state))
            ++alive;
    }
    return alive;
}

} // namespace

#define START_DESKTOP(session)                                                                     \
    do {                                                                                           \
        QString why;                                                                               \
        QVERIFY2((session).startDesktop(&why), qPrintable(why));                                   \
    } while (false)

#define START_APP(session, ...)                                                                    \
    do {                                                                                           \
        QString why;                                                                               \
        QVERIFY2((session).startApp(&why, ##__VA_ARGS__), qPrintable(why));                        \
    } while (false)

class EndToEndTest : public QObject
{
    Q_OBJECT

    // Enrolls the stand-in engine's state directly, as if done on an earlier day.
    static void enrollBeforehand(const E2eSession &session)
    {
        const QByteArray invitation = session.runEngine({QStringLiteral("make-invitation")});
        int code = -1;
        session.runEngine({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")},
                          invitation.trimmed() + '\n', &code);
        QCOMPARE(code, 0);
    }

    // Real files in one folder, stored as the engine's only folder to protect.
    static QString protectOneFolder(const E2eSession &session)
    {
        const QString folder = session.path(QStringLiteral("folders/Pictures"));
        QDir().mkpath(folder);
        for (int i = 0; i < 6; ++i) {
            QFile file(folder + QStringLiteral("/photo-%1.jpg").arg(i));
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray(2000 + i, 'p'));
        }
        const QJsonObject document{{"schema", "zqb.agent-settings.v1"},
                                   {"enabled", false},
                                   {"intervalMinutes", 240},
                                   {"sources", QJsonArray{folder}},
                                   {"exclusions", QJsonArray{}}};
        const QByteArray settings = QJsonDocument(document).toJson(QJsonDocument::Compact);
        int code = -1;
        session.runEngine({QStringLiteral("configure"), QStringLiteral("--json-stdin")}, settings,
                          &code);
        return code == 0 ? folder : QString();
    }

private slots:
    void initTestCase() { E2eSession::becomeSubreaper(); }

    void freshStateEnrollsAndTurnsGreen()
    {
        E2eSession session;
        START_DESKTOP(session);
        START_APP(session);

        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(connectBox), startupMs);
        QCOMPARE(session.window()[QStringLiteral("title")].toString(), QStringLiteral("ZQB Agent"));
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QCOMPARE(session.trayProperties().value(QStringLiteral("Status")).toString(),
                 QStringLiteral("Active"));
        // Not enrolled yet: the engine is not connected, so the item is orange.
        QTRY_COMPARE_WITH_TIMEOUT(tint(session), QStringLiteral("orange"), actionMs);
        if (const QString file = screenshotPath(QStringLiteral("e2e-first-launch.png"));
            !file.isEmpty())
            QVERIFY(session.screenshot(file));

        const QString invitation =
            QString::fromUtf8(session.runEngine({QStringLiteral("make-invitation")}).trimmed());
        QVERIFY(invitation.size() >= 40);
        QVERIFY(session.type(invitationField, invitation));
        QTRY_VERIFY2_WITH_TIMEOUT(session.canClick(enrollButton),
                                  qPrintable(session.describeWidgets()), actionMs);
        QVERIFY(session.click(enrollButton));

        QTRY_VERIFY_WITH_TIMEOUT(!session.showsText(connectBox), actionMs);
        QTRY_COMPARE_WITH_TIMEOUT(engineState(session), QStringLiteral("connected"), actionMs);
        QTRY_COMPARE_WITH_TIMEOUT(tint(session), QStringLiteral("green"), actionMs);
        // The secret went to the engine on standard input only.
        QVERIFY(countRuns(session, QStringLiteral("enroll")) == 1);
        for (const QString &run : session.engineRuns())
            QVERIFY2(!run.contains(invitation), "the invitation appeared in engine arguments");
        if (const QString file = screenshotPath(QStringLiteral("e2e-after-enrollment.png"));
            !file.isEmpty())
            QVERIFY(session.screenshot(file));
    }

    void backupNotifiesRecoveryReady()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);

        // Some real files to protect.
        const QString folder = session.prepareFolderToProtect();
        QVERIFY(!folder.isEmpty());

        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Last successful backup")),
                                 startupMs);
        QTRY_COMPARE_WITH_TIMEOUT(session.valueBeside(QStringLiteral("Last successful backup")),
                                  QStringLiteral("Not yet"), startupMs);
        // An unsaved folder lasts until the next status refresh (every 15 s), so
        // on a slow machine a refresh may land between choosing the folder and
        // pressing the button: then choose it again.
        bool pressed = false;
        for (int attempt = 0; attempt < 5 && !pressed; ++attempt) {
            QTRY_VERIFY_WITH_TIMEOUT(session.canClick(QStringLiteral("Add folders…")), startupMs);
            QVERIFY(session.click(QStringLiteral("Add folders…")));
            const bool ready = QTest::qWaitFor(
                [&] {
                    return session.showsText(folder) &&
                           session.canClick(QStringLiteral("Back up now"));
                },
                actionMs);
            pressed = ready && session.click(QStringLiteral("Back up now"));
        }
        QVERIFY2(pressed, qPrintable(session.describeWidgets()));

        QTRY_VERIFY_WITH_TIMEOUT(!session.notifications().isEmpty(), actionMs);
        const QStringList shown = session.notifications();
        QCOMPARE(shown.size(), 1);
        const QStringList parts = shown.constFirst().split(QLatin1Char('\t'));
        QCOMPARE(parts.value(0), QStringLiteral("ZQB Agent"));
        QCOMPARE(parts.value(1), QStringLiteral("ZQB backup Recovery Ready"));
        QCOMPARE(parts.value(2), QStringLiteral("The authorized target returned signed zero-error "
                                                "verification for non-empty data."));
        QTRY_VERIFY_WITH_TIMEOUT(
            session.valueBeside(QStringLiteral("Last successful backup")) != "Not yet", actionMs);
        const QString date = session.valueBeside(QStringLiteral("Last successful backup"));
        QVERIFY2(date.contains(QRegularExpression(QStringLiteral("\\d"))), qPrintable(date));
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Recovery Ready")), actionMs);
        QVERIFY(session.engineRuns().join('\n').contains(QStringLiteral("backup-all")));
        if (const QString file = screenshotPath(QStringLiteral("e2e-after-backup.png"));
            !file.isEmpty())
            QVERIFY(session.screenshot(file));
    }

    void trayMenuOpensChecksAndQuits()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);

        QString why;
        QList<E2eSession::MenuEntry> menu;
        QTRY_VERIFY_WITH_TIMEOUT((menu = session.trayMenu(&why)).size() == 4, startupMs);
        QCOMPARE(menu[0].label, QStringLiteral("Open ZQB Agent"));
        QVERIFY(menu[0].shortcut.isEmpty());
        QCOMPARE(menu[1].label, QStringLiteral("Check Connection"));
        QVERIFY(menu[1].shortcut.isEmpty());
        QVERIFY(menu[2].separator);
        QCOMPARE(menu[3].label, QStringLiteral("Quit ZQB Agent"));
        QCOMPARE(menu[3].shortcut.join(QLatin1Char('+')).toLower(), QStringLiteral("control+q"));
        for (const auto &entry : menu)
            QVERIFY(entry.enabled && entry.visible);

        // Closing the window leaves the app and its status item running.
        QTRY_COMPARE_WITH_TIMEOUT(tint(session), QStringLiteral("green"), actionMs);
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        QTest::qWait(300);
        QCOMPARE(session.app().state(), QProcess::Running);
        QVERIFY(!session.trayItem().isEmpty());

        QVERIFY(session.triggerTrayEntry(QStringLiteral("Open ZQB Agent")));
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(desktopShowsWindow(session), actionMs);

        // Enrolled: the connection check contacts the target ("run-once").
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        const int checksBefore = countRuns(session, QStringLiteral("run-once"));
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Check Connection")));
        QTRY_COMPARE_WITH_TIMEOUT(countRuns(session, QStringLiteral("run-once")), checksBefore + 1,
                                  actionMs);
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);

        QVERIFY(session.triggerTrayEntry(QStringLiteral("Quit ZQB Agent")));
        QTRY_COMPARE_WITH_TIMEOUT(session.app().state(), QProcess::NotRunning, actionMs);
        QCOMPARE(session.app().exitStatus(), QProcess::NormalExit);
        QCOMPARE(session.app().exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(session.trayItem().isEmpty(), actionMs);
    }

    void hungEngineLeavesWindowAndTrayResponsive()
    {
        E2eSession session;
        START_DESKTOP(session);
        // Every status read hangs forever, the first one included.
        START_APP(session, QStringLiteral("ui-status"));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(restoringText), startupMs);

        QVERIFY(session.probeRoundTrip() >= 0);
        QVERIFY2(session.probeRoundTrip() < 2000, "the window stopped answering");
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QCOMPARE(session.trayMenu().size(), 4);
        QCOMPARE(tint(session), QStringLiteral("grey")); // no status has arrived

        // The window still redraws: typing shows up, and it comes back when reopened.
        const int paintsBefore = session.paints();
        QVERIFY(session.type(QStringLiteral("Comma-separated names, such as node_modules, *.tmp"),
                             QStringLiteral(", build")));
        QTRY_VERIFY_WITH_TIMEOUT(session.paints() > paintsBefore, actionMs);
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        const int paintsHidden = session.paints();
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Open ZQB Agent")));
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QTRY_VERIFY_WITH_TIMEOUT(session.paints() > paintsHidden, actionMs);

        // The menu still works while the status read hangs: a check still runs.
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Check Connection")));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("check-service")) >= 1,
                                 actionMs);

        QVERIFY(session.triggerTrayEntry(QStringLiteral("Quit ZQB Agent")));
        QTRY_COMPARE_WITH_TIMEOUT(session.app().state(), QProcess::NotRunning, actionMs);
        QCOMPARE(session.app().exitCode(), 0);
    }

    void engineMissingForAWhileIsToldThenRecovered()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);
        QVERIFY(!protectOneFolder(session).isEmpty());
        const QString engine = giveTheAppItsOwnEngine(session);
        QVERIFY(!engine.isEmpty());
        // No periodic refresh within the test's checks: its dispatch would
        // clear the error card the checks look for.
        session.setAppEnvironment(QStringLiteral("ZQB_E2E_REFRESH_MS"), QStringLiteral("90000"));
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Connected")), startupMs);

        // Moved away, as during an update; meanwhile the target goes offline.
        QVERIFY(QFile::rename(engine, engine + QStringLiteral(".away")));
        session.runEngine({QStringLiteral("set-condition"), QStringLiteral("offline")});
        QTRY_VERIFY_WITH_TIMEOUT(session.canClick(QStringLiteral("Save settings")), actionMs);
        QVERIFY(session.click(QStringLiteral("Save settings")));
        QTRY_VERIFY2_WITH_TIMEOUT(session.showsText(notInstalled),
                                  qPrintable(session.describeWidgets()), actionMs);
        QCOMPARE(session.app().state(), QProcess::Running);
        QVERIFY(session.showsText(QStringLiteral("Connected"))); // the last state known

        // Back: the next refresh shows the engine's current state.
        QVERIFY(QFile::rename(engine + QStringLiteral(".away"), engine));
        QTRY_VERIFY_WITH_TIMEOUT(session.canClick(QStringLiteral("Save settings")), actionMs);
        QVERIFY(session.click(QStringLiteral("Save settings")));
        QTRY_VERIFY2_WITH_TIMEOUT(session.showsText(QStringLiteral("Waiting For Target")),
                                  qPrintable(session.describeWidgets()), actionMs);
        QVERIFY(!session.showsText(notInstalled));
        QCOMPARE(countRuns(session, QStringLiteral("configure")), 1); // once it was back
    }

    void crashesGarbageAndAHangLoseNoBackup()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);
        QVERIFY(!protectOneFolder(session).isEmpty());
        session.setAppEnvironment(QStringLiteral("ZQB_E2E_REFRESH_MS"), QStringLiteral("500"));
        session.setAppEnvironment(QStringLiteral("ZQB_E2E_STATUS_READ_LIMIT_MS"),
                                  QStringLiteral("4000"));
        // A backup from before the start: the first status read shows it, and
        // only backups after that are news.
        QVERIFY(backUpBehindTheApp(session));
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Recovery Ready")), startupMs);

        // Status reads crash by a signal, again and again; a backup completes meanwhile.
        QVERIFY(injectFault(session, QStringLiteral("crash"), 20));
        QTRY_VERIFY_WITH_TIMEOUT(pendingFaults(session) < 20, actionMs);
        QVERIFY(backUpBehindTheApp(session));
        QVERIFY(pendingFaults(session) > 0); // it completed while the reads crashed
        QTRY_COMPARE_WITH_TIMEOUT(pendingFaults(session), 0, actionMs);
        QTRY_COMPARE_WITH_TIMEOUT(session.notifications().size(), 1, actionMs);
        QCOMPARE(session.app().state(), QProcess::Running);

        // One status document of garbage, then a backup.
        QVERIFY(injectFault(session, QStringLiteral("garbage")));
        QTRY_COMPARE_WITH_TIMEOUT(pendingFaults(session), 0, actionMs);
        QVERIFY(backUpBehindTheApp(session));
        QTRY_VERIFY2_WITH_TIMEOUT(session.notifications().size() == 2,
                                  qPrintable(session.engineRuns().mid(-6).join('\n') + '\n' +
                                             session.notifications().join('\n') + '\n' +
                                             session.runEngine({QStringLiteral("ui-status")})),
                                  actionMs);

        // One status read hangs; a backup completes while it does. The app
        // holds that one read only, ends it, and reads again.
        QVERIFY(injectFault(session, QStringLiteral("hang")));
        QTRY_COMPARE_WITH_TIMEOUT(pendingFaults(session), 0, actionMs);
        QVERIFY(backUpBehindTheApp(session));
        int mostReads = 0;
        QElapsedTimer clock;
        clock.start();
        while (session.notifications().size() < 3 && clock.elapsed() < actionMs) {
            mostReads = std::max(mostReads, statusReadsAlive(session));
            QTest::qWait(50);
        }
        QCOMPARE(session.notifications().size(), 3);
        QCOMPARE(mostReads, 1);

        // Each backup was told once, and the window follows the engine again.
        QTest::qWait(2000);
        const QStringList shown = session.notifications();
        QCOMPARE(shown.size(), 3);
        for (const QString &one : shown)
            QCOMPARE(one.section(QLatin1Char('\t'), 1, 1),
                     QStringLiteral("ZQB backup Recovery Ready"));
        session.runEngine({QStringLiteral("set-condition"), QStringLiteral("offline")});
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Waiting For Target")), actionMs);
        QVERIFY(session.probeRoundTrip() >= 0);
    }

    void notificationServerRestartLosesNoAnnouncement()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);
        QVERIFY(!protectOneFolder(session).isEmpty());
        session.setAppEnvironment(QStringLiteral("ZQB_E2E_REFRESH_MS"), QStringLiteral("500"));
        // A backup from before the start: the first status read shows it, and
        // only backups after that are news.
        QVERIFY(backUpBehindTheApp(session));
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Recovery Ready")), startupMs);

        QVERIFY(backUpBehindTheApp(session));
        QTRY_COMPARE_WITH_TIMEOUT(session.notifications().size(), 1, actionMs);

        QString why;
        QVERIFY2(session.restartNotificationServer(&why), qPrintable(why));
        QVERIFY(backUpBehindTheApp(session));
        QTRY_COMPARE_WITH_TIMEOUT(session.notifications().size(), 2, actionMs);
        QTest::qWait(1500);
        QCOMPARE(session.notifications().size(), 2);
        QCOMPARE(session.app().state(), QProcess::Running);
    }

    void backgroundStartFollowsTheEngineWithoutTheWindow()
    {
        E2eSession session;
        START_DESKTOP(session);
        enrollBeforehand(session);
        QVERIFY(!protectOneFolder(session).isEmpty());
        // An earlier backup, so the next one is news when it completes.
        int code = -1;
        session.runEngine({QStringLiteral("backup-all")}, {}, &code);
        QCOMPARE(code, 0);

        // As the session's autostart starts it at login; refreshes every 0.5 s
        // instead of 15 so the test can watch a whole backup through the tray.
        QString why;
        QVERIFY2(session.startAppInBackground(&why, 500), qPrintable(why));
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QTRY_COMPARE_WITH_TIMEOUT(tint(session), QStringLiteral("green"), actionMs);
        QTRY_COMPARE_WITH_TIMEOUT(session.trayToolTip(), QStringLiteral("Connected"), actionMs);
        QVERIFY(countRuns(session, QStringLiteral("ui-status")) >= 1);
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 3, actionMs);

        // The engine backs up on its own (as its schedule would), slowly
        // enough for several refreshes to see it running.
        QProcess backup;
        QProcessEnvironment env = session.environment();
        env.insert(QStringLiteral("ZQB_SIM_SPEED"), QStringLiteral("3"));
        backup.setProcessEnvironment(env);
        backup.start(
            QStringLiteral(ZQB_E2E_ENGINE_SIM),
            {QStringLiteral("backup-all"), QStringLiteral("--state"), session.stateDirectory()});
        QVERIFY(backup.waitForStarted(10000));

        QStringList tips;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 60000) {
            const QString tip = session.trayToolTip();
            if (!tip.isEmpty() && (tips.isEmpty() || tips.constLast() != tip))
                tips << tip;
            if (backup.state() == QProcess::NotRunning && !session.notifications().isEmpty() &&
                tip == QStringLiteral("Connected"))
                break;
            QTest::qWait(100);
        }
        QCOMPARE(backup.exitCode(), 0);
        // "Connected", then the running backup's title and progress, then "Connected" again.
        const QString joined = tips.join(QStringLiteral(" | "));
        qInfo("tooltips seen: %s", qPrintable(QString(joined).replace(QLatin1Char('\n'), "\\n")));
        QVERIFY2(tips.size() >= 3, qPrintable(joined));
        QCOMPARE(tips.constFirst(), QStringLiteral("Connected"));
        QCOMPARE(tips.constLast(), QStringLiteral("Connected"));
        const QRegularExpression running(
            QStringLiteral("^Backing Up\n(Checking \\d+ files|\\d+/\\d+ files \u00b7 \\d+ objects "
                           "ready|\\d+/\\d+ uploaded \u00b7 \\d+ reused|Checking target inventory|"
                           "Waiting for durable receipts|Committing recovery point|"
                           "Verifying recovery point)$"));
        int progressTips = 0;
        for (const QString &tip : std::as_const(tips))
            progressTips += running.match(tip).hasMatch() ? 1 : 0;
        QVERIFY2(progressTips >= 1, qPrintable(joined));

        // Announced once, by the periodic refresh, with the window never shown.
        const QStringList shown = session.notifications();
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.constFirst().section(QLatin1Char('\t'), 1, 1),
                 QStringLiteral("ZQB backup Recovery Ready"));
        QCOMPARE(session.window()[QStringLiteral("visible")].toBool(), false);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 0);
        QCOMPARE(session.paints(), 0);
        QCOMPARE(countRuns(session, QStringLiteral("backup-all")), 0); // the app started none

        // "Open ZQB Agent" shows what the model already knows.
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Open ZQB Agent")));
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Recovery Ready")), actionMs);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(QStringLiteral("Connected")), actionMs);
        QCOMPARE(session.notifications().size(), 1);
        if (const QString file = screenshotPath(QStringLiteral("e2e-opened-after-background.png"));
            !file.isEmpty())
            QVERIFY(session.screenshot(file));
    }

    void withoutATrayTheAppStillWorks()
    {
        E2eSession session;
        session.setWithTray(false);
        START_DESKTOP(session);
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(connectBox), startupMs);
        // Closing the window keeps the app; launching it again brings the window back.
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        QTest::qWait(300);
        QCOMPARE(session.app().state(), QProcess::Running);
        QProcess *second = session.launchAgain();
        QVERIFY(second->waitForFinished(startupMs));
        QCOMPARE(second->exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);
        QVERIFY(session.showsText(connectBox));
    }

    // At login the app may start before the panel's tray, and a tray may
    // restart: the item reaches each tray host that appears, as it was.
    void trayHostLateAndRestarted()
    {
        E2eSession session;
        session.setWithTray(false);
        START_DESKTOP(session);
        enrollBeforehand(session);
        QString why;
        QVERIFY2(session.startAppInBackground(&why), qPrintable(why));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);
        QTest::qWait(500);

        for (int start = 1; start <= 3; ++start) {
            QVERIFY2(session.startTray(&why), qPrintable(why));
            QTRY_VERIFY2_WITH_TIMEOUT(!session.trayItem().isEmpty(),
                                      qPrintable(QStringLiteral("tray start %1").arg(start)),
                                      startupMs);
            const QVariantMap item = session.trayProperties();
            QCOMPARE(item.value(QStringLiteral("Title")).toString(), QStringLiteral("ZQB Agent"));
            QCOMPARE(item.value(QStringLiteral("Id")).toString(), QStringLiteral("ZQB Agent"));
            // The look and tooltip of the state heard before this host came.
            QTRY_COMPARE_WITH_TIMEOUT(tint(session), QStringLiteral("green"), actionMs);
            QCOMPARE(session.trayToolTip(), QStringLiteral("Connected"));
            QString menuWhy;
            const QList<E2eSession::MenuEntry> menu = session.trayMenu(&menuWhy);
            QVERIFY2(menu.size() == 4, qPrintable(menuWhy));
            QCOMPARE(menu[0].label, QStringLiteral("Open ZQB Agent"));
            QCOMPARE(menu[1].label, QStringLiteral("Check Connection"));
            QVERIFY(menu[2].separator);
            QCOMPARE(menu[3].label, QStringLiteral("Quit ZQB Agent"));
            if (start == 3)
                break;
            // The panel crashes; the app runs on without a tray until the next one.
            session.stopTray();
            QTest::qWait(300);
            QCOMPARE(session.app().state(), QProcess::Running);
        }

        // The item of the last host works: it opens the window.
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Open ZQB Agent")));
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);
    }

    void secondLaunchBringsTheWindowForward()
    {
        E2eSession session;
        START_DESKTOP(session);
        START_APP(session);
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());

        QProcess *second = session.launchAgain();
        QVERIFY(second->waitForFinished(startupMs));
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(desktopShowsWindow(session), actionMs);
        if (session.platform() == E2eSession::Platform::Wayland)
            QTRY_COMPARE_WITH_TIMEOUT(session.focusedWindowTitle(), windowTitle, actionMs);
        QCOMPARE(session.app().state(), QProcess::Running);
        QVERIFY(!session.trayItem().isEmpty()); // still exactly one status item
    }

    // X11 with a panel that has only an XEmbed tray (no StatusNotifierItem
    // host) that starts after the app: the icon docks in it.
    void x11XEmbedTrayGetsTheIcon()
    {
        E2eSession session;
        if (session.platform() != E2eSession::Platform::X11)
            QSKIP("XEmbed trays are X11's");
        session.setWithTray(false);
        START_DESKTOP(session);
        QString why;
        QVERIFY2(session.startAppInBackground(&why), qPrintable(why));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);
        X11RootMessages tray(session.display());
        QVERIFY(tray.becomeXEmbedTray());
        QTRY_VERIFY_WITH_TIMEOUT((tray.read(), tray.dockRequests().size() == 1), startupMs);
        QVERIFY(session.trayItem().isEmpty());
    }

    // A panel that offers both trays: the icon goes to its StatusNotifierItem
    // host, which the panel's tests and screen readers read, not to XEmbed.
    void x11BothTraysPreferTheStatusNotifierHost()
    {
        E2eSession session;
        if (session.platform() != E2eSession::Platform::X11)
            QSKIP("XEmbed trays are X11's");
        session.setWithTray(false);
        START_DESKTOP(session);
        QString why;
        QVERIFY2(session.startAppInBackground(&why), qPrintable(why));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);
        X11RootMessages tray(session.display());
        QVERIFY(tray.becomeXEmbedTray());
        QVERIFY2(session.startTray(&why), qPrintable(why));
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QCOMPARE(session.trayProperties().value(QStringLiteral("Id")).toString(),
                 QStringLiteral("ZQB Agent"));
        QTest::qWait(3000); // longer than the app waits before settling for XEmbed
        tray.read();
        QCOMPARE(tray.dockRequests().size(), 0);
    }

    // X11: a launcher that started the app again with a startup id sees its
    // "starting" feedback end, and the window asks for the focus with the
    // launch's time; no engine inherits the id.
    void x11LaunchEndsTheStartupNotification()
    {
        E2eSession session;
        if (session.platform() != E2eSession::Platform::X11)
            QSKIP("startup ids are how X11 launchers hand on the focus");
        START_DESKTOP(session);
        X11RootMessages root(session.display());
        QVERIFY(root.isConnected());
        const QString firstId = QStringLiteral("zqb-e2e-launcher-1_TIME1000");
        START_APP(session, QString(), firstId);
        QTRY_VERIFY_WITH_TIMEOUT((root.read(), root.startupMessages().contains(
                                                  QStringLiteral("remove: ID=") + firstId)),
                                 startupMs);
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);

        // Closed, then launched again from the applications menu.
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        const QString secondId = QStringLiteral("zqb-e2e-launcher-2_TIME2000");
        QProcess *second = session.launchAgain(secondId, QStringLiteral("DESKTOP_STARTUP_ID"));
        QVERIFY(second->waitForFinished(startupMs));
        QCOMPARE(second->exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("visible")].toBool(), actionMs);
        QTRY_VERIFY_WITH_TIMEOUT((root.read(), root.startupMessages().contains(
                                                  QStringLiteral("remove: ID=") + secondId)),
                                 actionMs);
        bool askedWithTheLaunchTime = false;
        for (const X11RootMessages::ActivationRequest &request : root.activationRequests())
            askedWithTheLaunchTime |= request.source == 1 && request.time == 2000;
        QVERIFY(askedWithTheLaunchTime);

        // Launched again while shown: the same again, one window.
        const QString thirdId = QStringLiteral("zqb-e2e-launcher-3_TIME3000");
        QProcess *third = session.launchAgain(thirdId, QStringLiteral("DESKTOP_STARTUP_ID"));
        QVERIFY(third->waitForFinished(startupMs));
        QTRY_VERIFY_WITH_TIMEOUT((root.read(), root.startupMessages().contains(
                                                  QStringLiteral("remove: ID=") + thirdId)),
                                 actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);

        const int checksBefore = countRuns(session, QStringLiteral("check-service"));
        QTRY_VERIFY_WITH_TIMEOUT(!session.trayItem().isEmpty(), startupMs);
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Check Connection")));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("check-service")) > checksBefore,
                                 actionMs);
        QCOMPARE(runsWithToken(session), 0);
    }

    // Wayland: a compositor hands the focus to a window only with an
    // activation token from whoever launched it. The app's own launch token
    // and the one a second launch brings are used, and no engine inherits them.
    void activationTokenTakesTheFocus()
    {
        E2eSession session;
        if (session.platform() != E2eSession::Platform::Wayland)
            QSKIP("activation tokens are how Wayland compositors hand on the focus");
        START_DESKTOP(session);
        const QString launchToken = session.newActivationToken();
        QVERIFY(!launchToken.isEmpty());
        START_APP(session, QString(), launchToken);
        QTRY_VERIFY_WITH_TIMEOUT(desktopShowsWindow(session), startupMs);
        QTRY_COMPARE_WITH_TIMEOUT(session.focusedWindowTitle(), windowTitle, startupMs);
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("ui-status")) >= 1, startupMs);

        // Another program's window takes the focus; the app's stays open behind it.
        const QString other = QStringLiteral("Another program");
        QString why;
        QVERIFY2(session.showOtherWindow(other, &why), qPrintable(why));
        QVERIFY(desktopShowsWindow(session));

        // Launched again from somewhere that had no token: the window is
        // still there and shown, but this compositor does not let it take
        // the focus from the other program.
        QProcess *plain = session.launchAgain();
        QVERIFY(plain->waitForFinished(startupMs));
        QCOMPARE(plain->exitCode(), 0);
        QTest::qWait(1000);
        QVERIFY(desktopShowsWindow(session));
        QCOMPARE(session.focusedWindowTitle(), other);

        // Launched again from a launcher with a token: the window comes forward.
        const QString token = session.newActivationToken();
        QVERIFY(!token.isEmpty());
        QVERIFY(token != launchToken);
        QProcess *second = session.launchAgain(token);
        QVERIFY(second->waitForFinished(startupMs));
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(session.focusedWindowTitle(), windowTitle, actionMs);
        QTRY_VERIFY_WITH_TIMEOUT(session.window()[QStringLiteral("active")].toBool(), actionMs);
        QCOMPARE(session.window()[QStringLiteral("windows")].toInt(), 1);

        // Closed, then brought back by a launch with a token: shown and
        // focused. This launcher (as GNOME 43's does) hands the token on in
        // DESKTOP_STARTUP_ID.
        QVERIFY(session.closeWindow());
        QTRY_VERIFY(!session.window()[QStringLiteral("visible")].toBool());
        QTRY_VERIFY_WITH_TIMEOUT(!desktopShowsWindow(session), actionMs);
        QProcess *third = session.launchAgain(session.newActivationToken(),
                                              QStringLiteral("DESKTOP_STARTUP_ID"));
        QVERIFY(third->waitForFinished(startupMs));
        QCOMPARE(third->exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(desktopShowsWindow(session), actionMs);
        QTRY_COMPARE_WITH_TIMEOUT(session.focusedWindowTitle(), windowTitle, actionMs);

        // Engines started after all that never saw a token.
        const int checksBefore = countRuns(session, QStringLiteral("check-service"));
        QVERIFY(session.triggerTrayEntry(QStringLiteral("Check Connection")));
        QTRY_VERIFY_WITH_TIMEOUT(countRuns(session, QStringLiteral("check-service")) > checksBefore,
                                 actionMs);
        QVERIFY(countRuns(session, QStringLiteral("ui-status")) >= 1);
        QCOMPARE(runsWithToken(session), 0);
    }
};

QTEST_GUILESS_MAIN(EndToEndTest)
#include "tst_e2e.moc"
