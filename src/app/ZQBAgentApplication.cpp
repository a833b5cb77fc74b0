#include "ZQBAgentApplication.h"

#include "AgentModel.h"
#include "AppDelegate.h"
#include "DialogFolderChooser.h"
#include "FreedesktopNotifier.h"
#include "MainWindow.h"
#include "PeriodicRefresh.h"
#include "Symbols.h"

#include <QApplication>

ZQBAgentApplication::ZQBAgentApplication(Options options, QObject *parent)
    : QObject(parent), m_options(std::move(options)), m_appDelegate(std::make_unique<AppDelegate>())
{
    // Closing the window hides it; only "Quit ZQB Agent" ends the app.
    QApplication::setQuitOnLastWindowClosed(
        m_appDelegate->applicationShouldTerminateAfterLastWindowClosed());
}

ZQBAgentApplication::~ZQBAgentApplication() = default;

AgentModel &ZQBAgentApplication::model()
{
    if (m_model)
        return *m_model;

    AppDelegate *delegate = m_appDelegate.get();
    m_notifier = std::make_unique<FreedesktopNotifier>(
        [delegate](const QString &title, const QString &body) {
            delegate->showStatusMessage(title, body);
        });
    m_folderChooser = m_options.makeFolderChooser ? m_options.makeFolderChooser()
                                                  : std::make_unique<DialogFolderChooser>();

    AgentModel::Services services{m_options.runner, m_notifier.get(), m_folderChooser.get()};
    m_model = std::make_unique<AgentModel>(std::move(services));
    m_periodicRefresh = std::make_unique<PeriodicRefresh>(*m_model);
    ++m_modelsCreated;
    return *m_model;
}

PeriodicRefresh &ZQBAgentApplication::periodicRefresh()
{
    model();
    return *m_periodicRefresh;
}

MainWindow &ZQBAgentApplication::mainWindow()
{
    if (!m_mainWindow) {
        m_mainWindow = std::make_unique<MainWindow>(model(), periodicRefresh());
        connect(m_mainWindow.get(), &MainWindow::quitRequested, m_appDelegate.get(),
                &AppDelegate::quit);
    }
    return *m_mainWindow;
}

void ZQBAgentApplication::launch(Start start)
{
    // Made but not shown in the background: an unshown window has no native
    // window and no view yet, and the delegate can still find it by its title.
    MainWindow &window = mainWindow();
    // Drawing the window icon at its five sizes and sending them to the window
    // system takes a millisecond or more: the icon comes with the tray item,
    // after the window's first frame.
    connect(
        m_appDelegate.get(), &AppDelegate::statusItemInTray, this,
        [] { QApplication::setWindowIcon(Symbols::appIcon()); }, Qt::SingleShotConnection);
    if (start == Start::Background) {
        m_appDelegate->applicationDidFinishLaunching();
        periodicRefresh().start();
    } else {
        // The window's first frame first; the tray item follows it.
        m_appDelegate->applicationDidFinishLaunching(&window);
        window.show();
    }
}
