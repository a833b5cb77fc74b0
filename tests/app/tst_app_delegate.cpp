// The tray status item and window management, offscreen.
#include "AppDelegate.h"
#include "IconTint.h"
#include "TestTrayHost.h"

#include "AgentPaths.h"
#include "NotificationCenter.h"
#include "RuntimeStatus.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace {

QImage trayImage(const AppDelegate &delegate)
{
    return delegate.statusItem()->icon().pixmap(QSize(32, 32)).toImage();
}

// Top-level windows a person could see as windows (not menus or tooltips).
int visibleWindowCount()
{
    int count = 0;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->windowType() == Qt::Window)
            ++count;
    return count;
}

// Launched on a desktop whose tray host is up: the item is in the tray once
// the host has answered.
bool launchedInTray(AppDelegate &delegate)
{
    delegate.applicationDidFinishLaunching();
    return QTest::qWaitFor([&delegate] { return delegate.statusItem() != nullptr; }, 10000);
}

std::unique_ptr<QWidget> makeMainWindow(const QString &title = QStringLiteral("ZQB Agent"))
{
    auto window = std::make_unique<QWidget>();
    window->setWindowTitle(title);
    window->resize(300, 200);
    return window;
}

} // namespace

class AppDelegateTest : public QObject
{
    Q_OBJECT

    TestTrayHost m_tray;

private slots:
    void initTestCase() { QVERIFY(m_tray.start()); }

    void cleanup()
    {
        // Windows of one test never leak into the next one's search.
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog ||
                widget->windowType() == Qt::Tool)
                widget->hide();
    }

    void menuHasFourEntriesInOrder()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QVERIFY(delegate.statusItem());
        QCOMPARE(delegate.statusItem()->contextMenu(), delegate.statusMenu());
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("ZQB Agent"));

        const QList<QAction *> actions = delegate.statusMenu()->actions();
        QCOMPARE(actions.size(), 4);
        QCOMPARE(actions[0]->text(), QStringLiteral("Open ZQB Agent"));
        QVERIFY(actions[0]->shortcut().isEmpty());
        QCOMPARE(actions[1]->text(), QStringLiteral("Check Connection"));
        QVERIFY(actions[1]->shortcut().isEmpty());
        QVERIFY(actions[2]->isSeparator());
        QCOMPARE(actions[3]->text(), QStringLiteral("Quit ZQB Agent"));
        QCOMPARE(actions[3]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
        for (QAction *action : actions)
            QVERIFY(action->isEnabled() && action->isVisible());
    }

    void quitEntryQuits()
    {
        AppDelegate delegate;
        int quits = 0;
        delegate.setTerminate([&quits] { ++quits; });
        QVERIFY(launchedInTray(delegate));
        delegate.statusMenu()->actions()[3]->trigger();
        QCOMPARE(quits, 1);
    }

    void quitEndsTheEventLoop()
    {
        // The default quit really ends a running event loop.
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QTimer::singleShot(0, &delegate, &AppDelegate::quit);
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(42); });
        QCOMPARE(QApplication::exec(), 0);
    }

    void untintedUntilTheFirstBroadcast()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QCOMPARE(delegate.look(), AppDelegate::Look::Untinted);
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("grey"));
    }

    void looksFollowTheState_data()
    {
        QTest::addColumn<QVariantMap>("userInfo");
        QTest::addColumn<AppDelegate::Look>("look");
        QTest::addColumn<QString>("tint");
        const auto green = AppDelegate::Look::Green;
        const auto orange = AppDelegate::Look::Orange;
        QTest::newRow("connected")
            << QVariantMap{{"state", QStringLiteral("connected")}} << green << "green";
        QTest::newRow("Connected")
            << QVariantMap{{"state", QStringLiteral("Connected")}} << orange << "orange";
        QTest::newRow("trailing blank")
            << QVariantMap{{"state", QStringLiteral("connected ")}} << orange << "orange";
        QTest::newRow("number") << QVariantMap{{"state", 1}} << orange << "orange";
        QTest::newRow("bytes") << QVariantMap{{"state", QByteArray("connected")}} << orange
                               << "orange";
        QTest::newRow("no user info") << QVariantMap{} << orange << "orange";
        QTest::newRow("other key")
            << QVariantMap{{"State", QStringLiteral("connected")}} << orange << "orange";
        QTest::newRow("waiting") << QVariantMap{{"state", QStringLiteral("waiting-for-target")}}
                                 << orange << "orange";
    }

    void looksFollowTheState()
    {
        QFETCH(QVariantMap, userInfo);
        QFETCH(AppDelegate::Look, look);
        QFETCH(QString, tint);
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        NotificationCenter::defaultCenter().post(statusNotification(), userInfo);
        QCOMPARE(delegate.look(), look);
        QCOMPARE(tintName(trayImage(delegate)), tint);
    }

    void looksChangeBackAndForth()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QSignalSpy changes(&delegate, &AppDelegate::lookChanged);
        auto &center = NotificationCenter::defaultCenter();
        center.post(statusNotification(), {{"state", QStringLiteral("connected")}});
        center.post(statusNotification(), {{"state", QStringLiteral("backing-up")}});
        center.post(statusNotification(), {{"state", QStringLiteral("connected")}});
        QCOMPARE(changes.size(), 3);
        QCOMPARE(delegate.look(), AppDelegate::Look::Green);
    }

    void toolTipStartsAsTheAppName()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("ZQB Agent"));
        QCOMPARE(delegate.toolTip(), QStringLiteral("ZQB Agent"));
    }

    void toolTipTellsTheStateAndTheRunningBackup()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QSignalSpy changes(&delegate, &AppDelegate::toolTipChanged);
        auto &center = NotificationCenter::defaultCenter();
        auto post = [&center](const RuntimeStatus &runtime) {
            center.post(statusNotification(),
                        {{"state", runtime.state}, {"runtime", QVariant::fromValue(runtime)}});
        };

        RuntimeStatus runtime;
        runtime.state = QStringLiteral("connected");
        post(runtime);
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Connected"));

        runtime.state = QStringLiteral("backing-up");
        runtime.active = true;
        BackupProgressStatus progress;
        progress.phase = QStringLiteral("uploading");
        progress.sourceIndex = 2;
        progress.sourceCount = 3;
        progress.totalObjects = 10;
        progress.objectsUploaded = 7;
        progress.objectsReused = 1;
        runtime.backupProgress = progress;
        post(runtime);
        const QString uploading =
            QStringLiteral("Backing Up\nFolder 2/3 \u00b7 7/10 uploaded \u00b7 1 reused");
        QCOMPARE(delegate.statusItem()->toolTip(), uploading);

        // The same text again is not a change; other fields of the record do not count.
        runtime.message = QStringLiteral("Still uploading");
        post(runtime);
        post(runtime);
        QCOMPARE(changes.size(), 2);

        runtime.backupProgress->objectsUploaded = 8;
        post(runtime);
        QCOMPARE(delegate.statusItem()->toolTip(),
                 QStringLiteral("Backing Up\nFolder 2/3 \u00b7 8/10 uploaded \u00b7 1 reused"));

        runtime = RuntimeStatus{};
        runtime.state = QStringLiteral("setup-required");
        post(runtime);
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Setup Required"));
        QCOMPARE(changes.size(), 4);
        QCOMPARE(changes.last().first().toString(), QStringLiteral("Setup Required"));
    }

    void toolTipFromABareState()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        auto &center = NotificationCenter::defaultCenter();
        center.post(statusNotification(), {{"state", QStringLiteral("waiting-for-target")}});
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Waiting For Target"));
        // Nothing readable: the badge's text for a status not known yet.
        center.post(statusNotification(), {{"state", 1}});
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Checking status"));
    }

    void checkConnectionPostsAndBringsTheWindowForward()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        auto window = makeMainWindow();
        QObject observer;
        int requests = 0;
        QVariantMap received{{"marker", 1}};
        NotificationCenter::defaultCenter().observe(QStringLiteral("ZQBAgentCheckConnection"),
                                                    &observer, [&](const QVariantMap &userInfo) {
                                                        ++requests;
                                                        received = userInfo;
                                                    });

        QVERIFY(!window->isVisible());
        delegate.statusMenu()->actions()[1]->trigger();
        QCOMPARE(requests, 1);
        QVERIFY(received.isEmpty());
        QVERIFY(window->isVisible());
        QTRY_COMPARE(QApplication::activeWindow(), window.get());
    }

    void checkConnectionWithoutListenersStillOpensTheWindow()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        auto window = makeMainWindow();
        window->showMinimized();
        delegate.checkConnection();
        QVERIFY(window->isVisible());
        QVERIFY(!window->isMinimized());
    }

    void openEntryShowsTheSameWindowAfterClosing()
    {
        auto window = makeMainWindow();
        QPointer<QWidget> guard(window.get());
        window->setAttribute(Qt::WA_DeleteOnClose, true); // remembering clears this
        window->show();
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QTRY_COMPARE(delegate.mainWindow(), window.get()); // the deferred lookup ran
        QVERIFY(!window->testAttribute(Qt::WA_DeleteOnClose));

        QVERIFY(window->close());
        QCoreApplication::processEvents();
        QVERIFY(guard);
        QVERIFY(!window->isVisible());

        const int before = QApplication::topLevelWidgets().size();
        delegate.statusMenu()->actions()[0]->trigger();
        QVERIFY(window->isVisible());
        QCOMPARE(delegate.mainWindow(), window.get());
        QCOMPARE(QApplication::topLevelWidgets().size(), before);
    }

    void openWithoutWindowCreatesNone()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        const int before = QApplication::topLevelWidgets().size();
        delegate.openAgent();
        QVERIFY(!delegate.mainWindow());
        QCOMPARE(QApplication::topLevelWidgets().size(), before);
        QCOMPARE(visibleWindowCount(), 0);
    }

    void aDialogWithTheTitleIsNeverRemembered()
    {
        AppDelegate delegate;
        QDialog dialog;
        dialog.setWindowTitle(QStringLiteral("ZQB Agent"));
        dialog.show();
        QWidget tool(nullptr, Qt::Tool);
        tool.setWindowTitle(QStringLiteral("ZQB Agent"));
        tool.show();
        auto nearMiss = makeMainWindow(QStringLiteral("ZQB Agent "));
        auto lowerCase = makeMainWindow(QStringLiteral("zqb agent"));

        delegate.rememberMainWindow();
        QVERIFY(!delegate.mainWindow());
        delegate.openAgent();
        QVERIFY(!delegate.mainWindow());
        QVERIFY(!nearMiss->isVisible());

        auto window = makeMainWindow();
        delegate.openAgent();
        QCOMPARE(delegate.mainWindow(), window.get());
        QVERIFY(window->isVisible());
    }

    void forgetsADestroyedWindowAndFindsTheNextOne()
    {
        AppDelegate delegate;
        auto first = makeMainWindow();
        delegate.rememberMainWindow();
        QCOMPARE(delegate.mainWindow(), first.get());
        first.reset();
        QVERIFY(!delegate.mainWindow());
        auto second = makeMainWindow();
        delegate.openAgent();
        QCOMPARE(delegate.mainWindow(), second.get());
    }

    void reopenAnswersTrueAndShowsTheWindow()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        auto window = makeMainWindow();
        QVERIFY(delegate.applicationShouldHandleReopen(false));
        QVERIFY(window->isVisible());
        QVERIFY(delegate.applicationShouldHandleReopen(true));
        QVERIFY(window->isVisible());
        QVERIFY(!delegate.applicationShouldTerminateAfterLastWindowClosed());
    }

    // A launch's activation token is used for the one request it came with
    // and then gone from the environment, whether the window was already
    // shown or had to be shown first.
    void reopenWithATokenActivatesAndLeavesNoTokenBehind()
    {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        auto window = makeMainWindow();

        QVERIFY(delegate.applicationShouldHandleReopen(false, QStringLiteral("launch-1")));
        QVERIFY(window->isVisible());
        QTRY_VERIFY(window->isActiveWindow());
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));

        QVERIFY(delegate.applicationShouldHandleReopen(true, QStringLiteral("launch-2")));
        QVERIFY(window->isVisible());
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));

        window->close();
        QVERIFY(delegate.applicationShouldHandleReopen(false, QStringLiteral("launch-3")));
        QVERIFY(window->isVisible());
        QTRY_VERIFY(window->isActiveWindow());
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        QCOMPARE(visibleWindowCount(), 1);
    }

    void reopenWithoutAWindowStillAnswersTrue()
    {
        AppDelegate delegate;
        QVERIFY(delegate.applicationShouldHandleReopen(false));
        QCOMPARE(visibleWindowCount(), 0);
    }

    void statusChangeBeforeLaunchIsIgnored()
    {
        AppDelegate delegate;
        delegate.statusChanged({{"state", QStringLiteral("connected")}});
        QCOMPARE(delegate.look(), AppDelegate::Look::Untinted);
        QVERIFY(launchedInTray(delegate));
        QCOMPARE(delegate.look(), AppDelegate::Look::Untinted);
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("grey"));
    }

    // At login the app may start before the panel's tray host.
    void theItemComesWhenATrayHostAppears()
    {
        QVERIFY(m_tray.stop());
        AppDelegate delegate;
        QSignalSpy itemChanges(&delegate, &AppDelegate::statusItemChanged);
        delegate.applicationDidFinishLaunching();
        QTest::qWait(300);
        QVERIFY(!delegate.statusItem()); // no item that nobody shows

        // What is heard meanwhile is not lost.
        NotificationCenter::defaultCenter().post(
            statusNotification(), {{"state", QStringLiteral("connected")}});
        QCOMPARE(delegate.look(), AppDelegate::Look::Green);
        QVERIFY(!delegate.statusItem());
        // The menu entries still work through the window.
        auto window = makeMainWindow();
        delegate.openAgent();
        QVERIFY(window->isVisible());

        QVERIFY(m_tray.start());
        QTRY_VERIFY(delegate.statusItem());
        QCOMPARE(itemChanges.size(), 1);
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("green"));
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Connected"));
        QCOMPARE(delegate.statusMenu()->actions().size(), 4);
        QCOMPARE(delegate.statusMenu()->actions()[0]->text(), QStringLiteral("Open ZQB Agent"));
    }

    // A panel that crashes and restarts forgets the items it showed.
    void theItemComesBackWithARestartedTrayHost()
    {
        AppDelegate delegate;
        QVERIFY(launchedInTray(delegate));
        QSignalSpy itemChanges(&delegate, &AppDelegate::statusItemChanged);
        NotificationCenter::defaultCenter().post(
            statusNotification(), {{"state", QStringLiteral("backing-up")}});

        QVERIFY(m_tray.stop());
        QTRY_VERIFY(!delegate.statusItem());
        QVERIFY(!delegate.statusMenu());
        QCOMPARE(itemChanges.size(), 1);

        QVERIFY(m_tray.start());
        QTRY_VERIFY(delegate.statusItem());
        QCOMPARE(itemChanges.size(), 2);
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("orange"));
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Backing Up"));
        QCOMPARE(delegate.statusItem()->contextMenu(), delegate.statusMenu());
        QCOMPARE(delegate.statusMenu()->actions().size(), 4);
        int quits = 0;
        delegate.setTerminate([&quits] { ++quits; });
        delegate.statusMenu()->actions()[3]->trigger();
        QCOMPARE(quits, 1);
    }

    void launchingTwiceMakesOneItem()
    {
        AppDelegate delegate;
        QSignalSpy itemChanges(&delegate, &AppDelegate::statusItemChanged);
        QVERIFY(launchedInTray(delegate));
        QSystemTrayIcon *item = delegate.statusItem();
        delegate.applicationDidFinishLaunching();
        QTest::qWait(200);
        QCOMPARE(delegate.statusItem(), item);
        QCOMPARE(itemChanges.size(), 1);
    }
};

QTEST_MAIN(AppDelegateTest)
#include "tst_app_delegate.moc"
