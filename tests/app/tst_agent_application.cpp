// The application object, its one window and its one model, offscreen, with a
// scripted engine.
#include "AppDelegate.h"
#include "FakeEngine.h"
#include "IconTint.h"
#include "TestTrayHost.h"
#include "MainWindow.h"
#include "ZQBAgentApplication.h"

#include "AgentModel.h"
#include "AgentView.h"
#include "FolderChooser.h"
#include "PeriodicRefresh.h"
#include "Symbols.h"

#include <QAction>
#include <QApplication>
#include <QChildEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QWindow>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

QByteArray statusDocument(const QByteArray &state, bool enrolled)
{
    return R"({"schema":"zqb.agent-ui-status.v1","agentVersion":"1.4.0",)"
           R"("settings":{"schema":"zqb.agent-settings.v1","enabled":false,"intervalMinutes":240,)"
           R"("sources":[],"exclusions":[]},)"
           R"("transferPolicy":{"schema":"zqb.agent-transfer-policy.v1","paused":false,)"
           R"("bandwidthLimitKibPerSecond":0,"currentNetworkMetered":false,)"
           R"("allowMeteredNetwork":false,"retryAttempts":3},)"
           R"("runtime":{"state":")" +
           state + R"(","message":"Ready.","enrolled":)" + (enrolled ? "true" : "false") +
           R"(,"repositoryReady":true,"serviceReachable":true,"authorizedTargets":1,)"
           R"("agentUpdateAvailable":false,"compatibility":"compatible","active":false}})";
}

class NoFolders : public FolderChooser
{
public:
    std::optional<QStringList> chooseFolders() override { return std::nullopt; }
};

// Windows a person would see as application windows.
QList<QWidget *> visibleWindows()
{
    QList<QWidget *> windows;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->windowType() == Qt::Window)
            windows << widget;
    return windows;
}

// Asks `question` the moment the first widget becomes a child of `window`
// (the view: the window has no other child widget). It is asked from the
// child's constructor, before the view is built.
class ChildWatch : public QObject
{
public:
    ChildWatch(QWidget &window, std::function<bool()> question) : m_question(std::move(question))
    {
        window.installEventFilter(this);
    }

    bool seen = false;
    bool answer = false;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded && !seen &&
            static_cast<QChildEvent *>(event)->child()->isWidgetType()) {
            seen = true;
            answer = m_question();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<bool()> m_question;
};

} // namespace

class AgentApplicationTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<FakeEngine> m_engine;
    std::unique_ptr<ZQBAgentApplication> m_app;
    TestTrayHost m_tray;

    ZQBAgentApplication &makeApp()
    {
        ZQBAgentApplication::Options options{AgentRunner(m_engine->path()),
                                             [] { return std::make_unique<NoFolders>(); }};
        m_app = std::make_unique<ZQBAgentApplication>(std::move(options));
        m_app->appDelegate().setTerminate([] {});
        return *m_app;
    }

private slots:
    void initTestCase() { QVERIFY(m_tray.start()); }

    void init()
    {
        m_engine = std::make_unique<FakeEngine>();
        m_engine->answer(QStringLiteral("ui-status"), statusDocument("setup-required", false));
        QApplication::setWindowIcon(QIcon()); // what a launch sets, it sets anew
    }

    void cleanup()
    {
        m_app.reset();
        // Completions of engine runs still in flight find the model gone.
        QTest::qWait(20);
        m_engine.reset();
    }

    void modelIsCreatedOnFirstUseOnly()
    {
        ZQBAgentApplication &app = makeApp();
        QCOMPARE(app.modelsCreated(), 0);
        AgentModel &first = app.model();
        AgentModel &second = app.model();
        QCOMPARE(&first, &second);
        QCOMPARE(app.modelsCreated(), 1);
        QVERIFY(!first.started()); // nothing talks to the engine before the window shows
        QCOMPARE(first.intervalMinutes(), 240);
    }

    void launchShowsOneWindowHostingTheView()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        MainWindow &window = app.mainWindow();
        QCOMPARE(window.windowTitle(), QStringLiteral("ZQB Agent"));
        QVERIFY(window.isVisible());
        QVERIFY(window.findChild<AgentView *>());
        QCOMPARE(visibleWindows(), QList<QWidget *>{&window});
        QCOMPARE(app.modelsCreated(), 1);

        // Showing the window starts the model: its first refresh reaches the engine.
        QVERIFY(app.model().started());
        QTRY_VERIFY(m_engine->commands().contains(QStringLiteral("ui-status")));
        // The delegate's deferred search finds this window.
        QTRY_COMPARE(app.appDelegate().mainWindow(), &window);
    }

    void launchStartsTheModelThenBuildsTheView()
    {
        // The engine is asked while the view is still being built and laid
        // out, so its answer can make the first frame.
        ZQBAgentApplication &app = makeApp();
        MainWindow &window = app.mainWindow();
        QVERIFY(!window.findChild<AgentView *>());
        ChildWatch watch(window, [&app] { return app.model().started(); });
        app.launch();
        QCOMPARE(window.findChildren<AgentView *>().size(), 1);
        QVERIFY2(watch.seen && watch.answer, "the model had started when the view was made");
        QTRY_VERIFY(m_engine->commands().contains(QStringLiteral("ui-status")));

        // Hiding and showing again neither builds a second view nor restarts.
        const int refreshes = int(m_engine->commands().count(QStringLiteral("ui-status")));
        window.hide();
        window.show();
        QCOMPARE(window.findChildren<AgentView *>().size(), 1);
        QCOMPARE(app.modelsCreated(), 1);
        QTest::qWait(50);
        QCOMPARE(m_engine->commands().count(QStringLiteral("ui-status")), refreshes);
    }

    void statusRefreshTintsTheTrayIcon()
    {
        m_engine->answer(QStringLiteral("ui-status"), statusDocument("connected", true));
        ZQBAgentApplication &app = makeApp();
        AppDelegate &delegate = app.appDelegate();
        app.launch();
        QCOMPARE(delegate.look(), AppDelegate::Look::Untinted);
        QTRY_COMPARE(delegate.look(), AppDelegate::Look::Green);
        QTRY_VERIFY(delegate.statusItem()); // in the tray once its host has answered
        const QImage icon = delegate.statusItem()->icon().pixmap(QSize(32, 32)).toImage();
        QCOMPARE(tintName(icon), QStringLiteral("green"));
        QCOMPARE(delegate.statusItem()->toolTip(), QStringLiteral("Connected"));
    }

    void theWindowShowsTheAppIconFromItsFirstShow()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        MainWindow &window = app.mainWindow();
        QVERIFY(window.isVisible());
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(window.windowIcon().availableSizes(), Symbols::appIcon().availableSizes());
        QCOMPARE(window.windowIcon().pixmap(32, 32).toImage(),
                 Symbols::appIcon().pixmap(32, 32).toImage());
    }

    void aBackgroundStartHasTheWindowIconAtOnce()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch(ZQBAgentApplication::Start::Background);
        QCOMPARE(QApplication::windowIcon().availableSizes(), Symbols::appIcon().availableSizes());
        QTRY_VERIFY(app.appDelegate().statusItem()); // once the tray host has answered
    }

    void backgroundStartRefreshesWithTheWindowNeverShown()
    {
        m_engine->answer(QStringLiteral("ui-status"), statusDocument("connected", true));
        ZQBAgentApplication &app = makeApp();
        app.periodicRefresh().setInterval(250);
        app.launch(ZQBAgentApplication::Start::Background);

        // Started at launch, as the window's first show would have.
        QVERIFY(app.model().started());
        QCOMPARE(app.modelsCreated(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(app.appDelegate().look(), AppDelegate::Look::Green, 20000);
        QTRY_VERIFY(app.appDelegate().statusItem());
        QCOMPARE(app.appDelegate().statusItem()->toolTip(), QStringLiteral("Connected"));
        // The timer keeps refreshing while nothing is on screen.
        QTRY_VERIFY_WITH_TIMEOUT(m_engine->commands().count(QStringLiteral("ui-status")) >= 4,
                                 20000);
        QVERIFY(visibleWindows().isEmpty());
        MainWindow &window = app.mainWindow();
        QVERIFY(!window.isVisible());
        QVERIFY(!window.testAttribute(Qt::WA_WState_Created)); // no native window either
        QVERIFY(!window.findChild<AgentView *>());             // nor a view
        // The delegate still finds the window by its title.
        QTRY_COMPARE(app.appDelegate().mainWindow(), &window);
    }

    void backgroundStartAnswersCheckConnection()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch(ZQBAgentApplication::Start::Background);
        QTRY_VERIFY_WITH_TIMEOUT(app.model().status().has_value(), 20000);
        // Not enrolled: the connection check asks the engine to check its service.
        QTRY_VERIFY(app.appDelegate().statusMenu());
        app.appDelegate().statusMenu()->actions()[1]->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(m_engine->commands().contains(QStringLiteral("check-service")),
                                 20000);
        QVERIFY(app.mainWindow().isVisible());
    }

    void openAfterBackgroundStartShowsTheCurrentState()
    {
        m_engine->answer(QStringLiteral("ui-status"), statusDocument("connected", true));
        ZQBAgentApplication &app = makeApp();
        app.launch(ZQBAgentApplication::Start::Background);
        AgentModel *model = &app.model();
        QTRY_VERIFY_WITH_TIMEOUT(model->status().has_value(), 20000);
        QTest::qWait(50);
        QCOMPARE(m_engine->commands(), QStringList{"ui-status"});

        QTRY_VERIFY(app.appDelegate().statusMenu());
        app.appDelegate().statusMenu()->actions()[0]->trigger(); // "Open ZQB Agent"
        MainWindow &window = app.mainWindow();
        QVERIFY(window.isVisible());
        QCOMPARE(visibleWindows(), QList<QWidget *>{&window});
        auto *view = window.findChild<AgentView *>();
        QVERIFY(view);
        // The state the model already holds, in the first frame: no refresh of its own.
        QCOMPARE(view->shownState().badge.title, QStringLiteral("Connected"));
        QTest::qWait(200);
        QCOMPARE(m_engine->commands(), QStringList{"ui-status"});
        QCOMPARE(&app.model(), model);
        QCOMPARE(app.modelsCreated(), 1);
        QVERIFY(app.periodicRefresh().isActive());
        QCOMPARE(app.periodicRefresh().interval(), 15000);
    }

    void windowStartRunsTheSameTimer()
    {
        ZQBAgentApplication &app = makeApp();
        QVERIFY(!app.periodicRefresh().isActive());
        app.launch();
        QVERIFY(app.periodicRefresh().isActive());
        app.periodicRefresh().setInterval(250);
        QTRY_VERIFY_WITH_TIMEOUT(m_engine->commands().count(QStringLiteral("ui-status")) >= 3,
                                 20000);
        // Hiding the window does not stop it: the tray keeps following the engine.
        app.mainWindow().hide();
        const qsizetype before = m_engine->commands().count(QStringLiteral("ui-status"));
        QTRY_VERIFY_WITH_TIMEOUT(
            m_engine->commands().count(QStringLiteral("ui-status")) >= before + 2, 20000);
    }

    void checkConnectionEntryReachesTheEngine()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        QTRY_VERIFY(app.model().status().has_value());
        QTRY_VERIFY(app.appDelegate().statusMenu()); // in the tray once its host has answered
        app.mainWindow().hide();

        app.appDelegate().statusMenu()->actions()[1]->trigger();
        QVERIFY(app.mainWindow().isVisible());
        // Not enrolled: the connection check asks the engine to check its service.
        QTRY_VERIFY(m_engine->commands().contains(QStringLiteral("check-service")));
    }

    // The app's own folder panel, opened with "Add folders…": a child of the
    // main window, centred over it and modal to it alone.
    void theFolderPanelBelongsToTheMainWindow()
    {
        m_engine->answer(QStringLiteral("ui-status"), statusDocument("connected", true));
        ZQBAgentApplication::Options options{AgentRunner(m_engine->path()), {}};
        m_app = std::make_unique<ZQBAgentApplication>(std::move(options));
        m_app->appDelegate().setTerminate([] {});
        ZQBAgentApplication &app = *m_app;
        app.launch();
        MainWindow &window = app.mainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *add = window.findChild<QPushButton *>(QStringLiteral("addFoldersButton"));
        QVERIFY(add);
        QTRY_VERIFY(app.model().status().has_value());
        QTRY_VERIFY(add->isVisible() && add->isEnabled());

        QPointer<QFileDialog> panel;
        QWidget *parent = nullptr;
        QWindow *transientParent = nullptr;
        Qt::WindowModality modality = Qt::NonModal;
        QPoint panelCentre;
        QTimer poll;
        poll.setInterval(20);
        connect(&poll, &QTimer::timeout, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible() || !dialog->windowHandle())
                return;
            poll.stop();
            panel = dialog;
            parent = dialog->parentWidget();
            transientParent = dialog->windowHandle()->transientParent();
            modality = dialog->windowModality();
            panelCentre = dialog->frameGeometry().center();
            dialog->reject();
        });
        poll.start();
        add->click(); // returns once the panel is closed
        poll.stop();

        QVERIFY2(!panelCentre.isNull(), "the folder panel opened");
        QCOMPARE(parent, static_cast<QWidget *>(&window));
        QCOMPARE(transientParent, window.windowHandle());
        QCOMPARE(modality, Qt::WindowModal);
        const QPoint offset = panelCentre - window.frameGeometry().center();
        QVERIFY2(offset.manhattanLength() <= 4,
                 qPrintable(QStringLiteral("panel centre off by %1,%2")
                                .arg(offset.x())
                                .arg(offset.y())));
    }

    // A person presses "Back up now" or "Save settings" from the keyboard;
    // the buttons are disabled while the engine works. The keyboard focus
    // must not move on into the skip patterns (selecting them all, so the
    // next key would replace them), and comes back to the button after.
    void focusStaysWithThePressedButtonWhileBusy_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("Back up now") << QStringLiteral("backUpNowButton");
        QTest::newRow("Save settings") << QStringLiteral("saveButton");
    }

    void focusStaysWithThePressedButtonWhileBusy()
    {
        QFETCH(QString, button);
        QByteArray document = statusDocument("connected", true);
        document.replace(R"("sources":[],"exclusions":[])",
                         R"("sources":["/home/person/Pictures"],"exclusions":["*.tmp","cache/"])");
        m_engine->answer(QStringLiteral("ui-status"), document);
        // Slow enough for keys to be pressed while the buttons are disabled.
        m_engine->answer(QStringLiteral("configure"), {}, {}, 0, 1.0);
        m_engine->answer(QStringLiteral("configure-transfer"), {}, {}, 0, 0.3);
        m_engine->answer(QStringLiteral("backup-all"), {}, {}, 0, 0.3);
        ZQBAgentApplication &app = makeApp();
        app.launch();
        MainWindow &window = app.mainWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *pressed = window.findChild<QPushButton *>(button);
        auto *patterns = window.findChild<QLineEdit *>(QStringLiteral("exclusionsField"));
        QVERIFY(pressed && patterns);
        QTRY_COMPARE(patterns->text(), QStringLiteral("*.tmp, cache/")); // the engine's
        QTRY_VERIFY(pressed->isEnabled());
        const QString typedPatterns = patterns->text();

        // Tab to the button, as a keyboard user does, and press it.
        for (int i = 0; i < 60 && QApplication::focusWidget() != pressed; ++i)
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window,
                            Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), pressed);
        QTest::keyClick(pressed, Qt::Key_Space);
        QTRY_VERIFY(!pressed->isEnabled());

        // Busy: no text field has the focus or a selection; a key changes nothing.
        QWidget *focus = QApplication::focusWidget();
        QVERIFY2(!qobject_cast<QLineEdit *>(focus),
                 qPrintable(focus ? focus->objectName() : QStringLiteral("none")));
        QVERIFY(!patterns->hasFocus());
        QVERIFY(!patterns->hasSelectedText());
        QTest::keyClick(focus ? focus : &window, Qt::Key_X);
        QCOMPARE(patterns->text(), typedPatterns);

        // Done: the focus is back on the button pressed.
        QTRY_VERIFY_WITH_TIMEOUT(pressed->isEnabled(), 20000);
        QCOMPARE(QApplication::focusWidget(), pressed);
        QVERIFY(!patterns->hasSelectedText());
        QCOMPARE(patterns->text(), typedPatterns);
    }

    void closingTheWindowLeavesTheAppRunning()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        QVERIFY(!QApplication::quitOnLastWindowClosed());
        MainWindow &window = app.mainWindow();
        QTimer::singleShot(0, &window, &QWidget::close);
        // Had closing ended the app, the loop would return 0 before this timer.
        QTimer::singleShot(300, qApp, [] { QCoreApplication::exit(42); });
        QCOMPARE(QApplication::exec(), 42);
        QVERIFY(!window.isVisible());
        QTRY_VERIFY(app.appDelegate().statusItem());
        QVERIFY(app.appDelegate().statusItem()->isVisible());
    }

    void reopeningKeepsTheSameWindowAndModel()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        MainWindow *window = &app.mainWindow();
        AgentModel *model = &app.model();
        QTRY_VERIFY(app.model().status().has_value());

        for (int round = 0; round < 3; ++round) {
            QVERIFY(window->close());
            QVERIFY(!window->isVisible());
            QVERIFY(app.appDelegate().applicationShouldHandleReopen(false));
            QVERIFY(window->isVisible());
        }
        QCOMPARE(&app.mainWindow(), window);
        QCOMPARE(&app.model(), model);
        QCOMPARE(app.modelsCreated(), 1);
        QCOMPARE(visibleWindows(), QList<QWidget *>{window});
        QCOMPARE(window->findChildren<AgentView *>().size(), 1);
    }

    void quitShortcutOnTheWindowQuits()
    {
        ZQBAgentApplication &app = makeApp();
        int quits = 0;
        app.appDelegate().setTerminate([&quits] { ++quits; });
        app.launch();
        MainWindow &window = app.mainWindow();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keySequence(&window, QKeySequence(Qt::CTRL | Qt::Key_Q));
        QCOMPARE(quits, 1);
    }

    void noNewWindowCommand()
    {
        ZQBAgentApplication &app = makeApp();
        app.launch();
        MainWindow &window = app.mainWindow();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(!window.menuWidget()); // no menu bar, so no File > New Window
        QTRY_VERIFY(app.appDelegate().statusMenu()); // its menu is a top-level widget too

        const int before = QApplication::topLevelWidgets().size();
        QTest::keySequence(&window, QKeySequence::New);
        QTest::keySequence(&window, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N));
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::topLevelWidgets().size(), before);
        QCOMPARE(visibleWindows(), QList<QWidget *>{&window});
        for (QAction *action : window.findChildren<QAction *>())
            QVERIFY2(action->shortcut() != QKeySequence(QKeySequence::New),
                     qPrintable(action->text()));
    }
};

QTEST_MAIN(AgentApplicationTest)
#include "tst_agent_application.moc"
