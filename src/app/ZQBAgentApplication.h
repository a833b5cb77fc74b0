#pragma once

#include "AgentRunner.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class AgentModel;
class AppDelegate;
class FolderChooser;
class FreedesktopNotifier;
class MainWindow;
class PeriodicRefresh;

// The application: owns the one AgentModel (made on first use, never twice)
// and the AppDelegate, and makes the one window titled "ZQB Agent".
class ZQBAgentApplication : public QObject
{
    Q_OBJECT
public:
    struct Options
    {
        AgentRunner runner; // the engine fixed at build time, unless told otherwise
        // Makes the folder chooser; empty means the app's own folder dialog.
        std::function<std::unique_ptr<FolderChooser>()> makeFolderChooser;
    };

    explicit ZQBAgentApplication(Options options, QObject *parent = nullptr);
    ~ZQBAgentApplication() override;

    AppDelegate &appDelegate() { return *m_appDelegate; }
    // The one model; the first call creates it.
    AgentModel &model();
    // How many models this application has made (0 before first use, then 1).
    int modelsCreated() const { return m_modelsCreated; }

    // The window scene: the one main window, made on first call.
    MainWindow &mainWindow();

    // The model's 15-second refresh; made with the model.
    PeriodicRefresh &periodicRefresh();

    enum class Start {
        Window,     // show the window
        Background, // leave the window hidden (at login)
    };

    // Start-up, in this order: the model and its refresh, the app's icon, the
    // window (shown and brought forward with the launch's activation token,
    // unless the start is in the background), then the delegate with its
    // status item, in the tray whenever a tray host is there.
    void launch(Start start = Start::Window, const QString &activationToken = {});

private:
    Options m_options;
    // Destroyed in reverse: the window before the model, the model before the
    // services it points at.
    std::unique_ptr<AppDelegate> m_appDelegate;
    std::unique_ptr<FreedesktopNotifier> m_notifier;
    std::unique_ptr<FolderChooser> m_folderChooser;
    std::unique_ptr<AgentModel> m_model;
    std::unique_ptr<PeriodicRefresh> m_periodicRefresh;
    std::unique_ptr<MainWindow> m_mainWindow;
    int m_modelsCreated = 0;
};
