// The tray status item and window management, offscreen.
#include "AppDelegate.h"
#include "IconTint.h"

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

std::unique_ptr<QWidget> makeMainWindow(const QString &title = QStringLiteral("ZQB Agent"))
{
    auto window = std::make_unique<QWidget>();
    window->setWindowTitle(title);
    window->resize(300, 200);
    return window;
}

// Calls `painted` on each Paint event the widget receives.
class PaintWatch : public QObject
{
public:
    PaintWatch(QWidget &widget, std::function<void()> painted) : m_painted(std::move(painted))
    {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_painted();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_painted;
};

} // namespace

class AppDelegateTest : public QObject
{
    Q_OBJECT

private slots:
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
        delegate.statusMenu()->actions()[3]->trigger();
        QCOMPARE(quits, 1);
    }

    void quitEndsTheEventLoop()
    {
        // The default quit really ends a running event loop.
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
        QTimer::singleShot(0, &delegate, &AppDelegate::quit);
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(42); });
        QCOMPARE(QApplication::exec(), 0);
    }

    void untintedUntilTheFirstBroadcast()
    {
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
        NotificationCenter::defaultCenter().post(statusNotification(), userInfo);
        QCOMPARE(delegate.look(), look);
        QCOMPARE(tintName(trayImage(delegate)), tint);
    }

    void looksChangeBackAndForth()
    {
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("ZQB Agent"));
        QCOMPARE(delegate.toolTip(), QStringLiteral("ZQB Agent"));
    }

    void toolTipTellsTheStateAndTheRunningBackup()
    {
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
        auto window = makeMainWindow();
        window->showMinimized();
        delegate.checkConnection();
        QVERIFY(window->isVisible());
        QVERIFY(!window->isMinimized());
    }

    void openEntryShowsTheSameWindowAfterClosing()
    {
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
        auto window = makeMainWindow();
        QPointer<QWidget> guard(window.get());
        window->setAttribute(Qt::WA_DeleteOnClose, true); // remembering clears this
        window->show();
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
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
        delegate.applicationDidFinishLaunching();
        QCOMPARE(delegate.look(), AppDelegate::Look::Untinted);
    }

    void theItemJoinsTheTrayAfterTheWindowsFirstFrame()
    {
        const auto window = makeMainWindow();
        bool painted = false;
        bool paintedBeforeTheItem = false;
        PaintWatch watch(*window, [&painted] { painted = true; });
        AppDelegate delegate;
        QSignalSpy inTray(&delegate, &AppDelegate::statusItemInTray);
        connect(&delegate, &AppDelegate::statusItemInTray, this,
                [&] { paintedBeforeTheItem = painted; });
        delegate.applicationDidFinishLaunching(window.get());
        QVERIFY(!delegate.statusItem());

        // Launched: what is heard before the item exists is not lost.
        NotificationCenter::defaultCenter().post(
            statusNotification(), {{"state", QStringLiteral("connected")}});
        QCOMPARE(delegate.look(), AppDelegate::Look::Green);
        QCOMPARE(delegate.toolTip(), QStringLiteral("Connected"));
        QVERIFY(!delegate.statusItem());

        window->show();
        QTRY_COMPARE(inTray.size(), 1);
        QVERIFY2(paintedBeforeTheItem, "the window's first frame came first");
        QVERIFY(delegate.statusItem());
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("green"));
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Connected"));
        QCOMPARE(delegate.statusMenu()->actions().size(), 4);

        // Later frames change nothing; later states reach the item itself.
        window->update();
        QTest::qWait(50);
        QCOMPARE(inTray.size(), 1);
        NotificationCenter::defaultCenter().post(
            statusNotification(), {{"state", QStringLiteral("backing-up")}});
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("orange"));
    }

    void aWindowNeverDrawnStillGetsTheItemSoon()
    {
        const auto window = makeMainWindow(); // never shown
        AppDelegate delegate;
        QSignalSpy inTray(&delegate, &AppDelegate::statusItemInTray);
        QElapsedTimer clock;
        clock.start();
        delegate.applicationDidFinishLaunching(window.get());
        QTest::qWait(AppDelegate::firstFrameTimeoutMs / 4);
        QVERIFY(!delegate.statusItem());
        QTRY_COMPARE_WITH_TIMEOUT(inTray.size(), 1, 4 * AppDelegate::firstFrameTimeoutMs);
        QVERIFY(clock.elapsed() >= AppDelegate::firstFrameTimeoutMs);
        QCOMPARE(tintName(trayImage(delegate)), QStringLiteral("grey"));
        // Shown and drawn afterwards: still one item.
        window->show();
        QTest::qWait(100);
        QCOMPARE(inTray.size(), 1);
    }

    void aWindowClosedBeforeItsFirstFrameGetsTheItemAtOnce()
    {
        const auto window = makeMainWindow();
        AppDelegate delegate;
        QSignalSpy inTray(&delegate, &AppDelegate::statusItemInTray);
        delegate.applicationDidFinishLaunching(window.get());
        window->show();
        window->close(); // before any event could draw it
        QElapsedTimer clock;
        clock.start();
        QTRY_COMPARE(inTray.size(), 1);
        QVERIFY(clock.elapsed() < AppDelegate::firstFrameTimeoutMs);
    }

    void aWindowGoneBeforeItsFirstFrameStillGetsTheItem()
    {
        auto window = makeMainWindow();
        AppDelegate delegate;
        QSignalSpy inTray(&delegate, &AppDelegate::statusItemInTray);
        delegate.applicationDidFinishLaunching(window.get());
        window.reset();
        QTRY_COMPARE_WITH_TIMEOUT(inTray.size(), 1, 4 * AppDelegate::firstFrameTimeoutMs);
        QVERIFY(delegate.statusItem());
    }

    void launchingTwiceMakesOneItem()
    {
        AppDelegate delegate;
        QSignalSpy inTray(&delegate, &AppDelegate::statusItemInTray);
        delegate.applicationDidFinishLaunching();
        QSystemTrayIcon *item = delegate.statusItem();
        delegate.applicationDidFinishLaunching();
        QCOMPARE(delegate.statusItem(), item);
        QCOMPARE(inTray.size(), 1);
    }
};

QTEST_MAIN(AppDelegateTest)
#include "tst_app_delegate.moc"
