#include "ZQBAgentApplication.h"

#include "AgentModel.h"
#include "AppDelegate.h"
#include "DialogFolderChooser.h"
#include "FreedesktopNotifier.h"
#include "MainWindow.h"
#include "PeriodicRefresh.h"
#include "Symbols.h"
#include "WaylandModalHint.h"
#include "WindowActivation.h"

#include <QApplication>
#include <QIcon>

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
    // Installed, the app's icon is in the icon theme under its name; run from
    // the build tree it is not, and notifications carry the picture itself.
    m_notifier->setIconImageSource([] {
        return QIcon::hasThemeIcon(FreedesktopNotifier::iconName)
                   ? QImage()
                   : Symbols::appPixmap(QSize(64, 64), 1.0).toImage();
    });
    // The folder panel belongs to the main window (made after the model).
    // GNOME Shell under Wayland places it over the window only once told it
    // is a modal dialog.
    m_folderChooser = m_options.makeFolderChooser
                          ? m_options.makeFolderChooser()
                          : std::make_unique<DialogFolderChooser>(
                                [this]() -> QWidget * { return m_mainWindow.get(); },
                                [](QWidget *dialog) { WaylandModalHint::attach(dialog); });

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
        m_mainWindow = std::make_unique<MainWindow>(model());
        connect(m_mainWindow.get(), &MainWindow::quitRequested, m_appDelegate.get(),
                &AppDelegate::quit);
    }
    return *m_mainWindow;
}

void ZQBAgentApplication::launch(Start start, const QString &activationToken)
{
    // The model, started first: it refreshes now and every 15 seconds
    // whether or not the window is ever shown (the tray and the completion
    // announcements follow the engine from the start), and the engine's first
    // answer is on its way while the window is built. That answer arrives
    // through the event loop, so everything below is in place to hear it.
    model();
    periodicRefresh().start();

    // The app's icon for every window it shows and for the desktop's window
    // list; set before the first window exists, so it is there when mapped.
    QApplication::setWindowIcon(Symbols::appIcon());

    // The window; its view is built on its first show (a start in the
    // background builds none).
    MainWindow &window = mainWindow();
    if (start == Start::Window)
        WindowActivation::bringForward(&window, activationToken);

    // Last, the delegate: it follows the status broadcast, finds the window
    // by its title, and puts the status item in the tray whenever a tray
    // host is there.
    m_appDelegate->applicationDidFinishLaunching();
}
