#pragma once

#include <QDBusConnection>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// One private desktop for an end-to-end test: a session bus of its own, a
// display server (an X server on a free display, or a headless Wayland
// compositor), a notification server that records what it shows, a tray
// (StatusNotifierItem host) and the app itself with the stand-in engine.
// Everything started here is ended by the destructor, also when the test
// fails halfway; processes orphaned on the way (engines the app started) are
// found and ended too.
class E2eSession
{
public:
    enum class Platform { X11, Wayland };
    struct MenuEntry
    {
        int id = 0;
        QString label;
        bool separator = false;
        bool enabled = true;
        bool visible = true;
        QStringList shortcut; // e.g. {"Control", "q"}
    };

    explicit E2eSession(Platform platform = platformUnderTest());
    ~E2eSession();
    E2eSession(const E2eSession &) = delete;
    E2eSession &operator=(const E2eSession &) = delete;

    // Must be called once per test process, before the first session.
    static void becomeSubreaper();
    // ZQB_E2E_PLATFORM: "wayland", or X11 when unset or "x11".
    static Platform platformUnderTest();
    Platform platform() const { return m_platform; }

    // Starts everything but the app. False (with the reason) when any part fails.
    bool startDesktop(QString *why);
    // Leaves the tray host out of the next startDesktop(): a desktop with no tray.
    void setWithTray(bool withTray) { m_withTray = withTray; }
    // The tray host alone: started (again) later, or ended, as a panel that
    // starts after the app or crashes would.
    bool startTray(QString *why);
    void stopTray();
    // A session in `language` ("de", "pt_BR"), as LANG and LANGUAGE set it,
    // for every program started from then on; call after startDesktop().
    void setLanguage(const QString &language)
    {
        m_env.remove(QStringLiteral("LC_ALL"));
        m_env.insert(QStringLiteral("LANG"), language + QStringLiteral(".UTF-8"));
        m_env.insert(QStringLiteral("LANGUAGE"), language);
    }
    // Starts the app; waits until its window is shown and its probe answers.
    // A launcher's activation token, when given, is in its environment (in
    // DESKTOP_STARTUP_ID under X11, as X11 launchers hand it on).
    bool startApp(QString *why, const QString &hangCommand = {},
                  const QString &activationToken = {});
    // Starts the app with --background, as the session's autostart does; waits
    // until its probe answers. `refreshMs` shortens its periodic refresh.
    bool startAppInBackground(QString *why, int refreshMs = 0);
    // Runs the app's executable again, as a second launch would; with the
    // activation token a launcher would hand it, when given, in `variable`
    // (DESKTOP_STARTUP_ID for an X11 launcher's startup id).
    QProcess *launchAgain(const QString &activationToken = {},
                          const QString &variable = QStringLiteral("XDG_ACTIVATION_TOKEN"));

    // Sets a variable in the environment of the app started next.
    void setAppEnvironment(const QString &name, const QString &value) { m_env.insert(name, value); }
    // Ends the notification server and starts a new one, as when the desktop's
    // notification daemon crashes and is started again.
    bool restartNotificationServer(QString *why);

    QProcess &app() { return *m_app; }
    QString stateDirectory() const;
    QString path(const QString &name) const { return m_dir.filePath(name); }
    // A folder of five small files, made the one the scripted folder panel
    // chooses. Returns its path, or an empty string when it cannot be made.
    QString prepareFolderToProtect();
    QProcessEnvironment environment() const { return m_env; }
    QDBusConnection bus() const;

    // The app's window, through its test probe.
    QJsonArray widgets(QString *why = nullptr) const;
    bool showsText(const QString &text) const;
    // One line per visible widget, for failure messages.
    QString describeWidgets() const;
    // The text shown on the same row as `label`, to its right.
    QString valueBeside(const QString &label) const;
    // A visible, enabled button of that accessible name or text is there.
    bool canClick(const QString &name) const;
    bool click(const QString &name) const;
    bool type(const QString &field, const QString &text) const;
    QJsonObject window() const;
    int paints() const;
    bool closeWindow() const;
    // Milliseconds the app took to answer a probe call; -1 when it did not.
    qint64 probeRoundTrip() const;

    // The tray, as a tray host sees it.
    QString trayItem() const; // "service/path" of the one registered item
    QVariantMap trayProperties() const;
    QImage trayIcon() const;
    // The item's ToolTip property: its title, and its text on a second line if any.
    QString trayToolTip() const;
    QList<MenuEntry> trayMenu(QString *why = nullptr) const;
    bool triggerTrayEntry(const QString &label) const;

    // "appname\tsummary\tbody" per notification the server has shown.
    QStringList notifications() const;
    // The arguments of each engine run so far, oldest first.
    QStringList engineRuns() const;
    // A picture of the whole screen, as a PNG.
    bool screenshot(const QString &file) const;

    // The desktop's own view of its windows. Wayland only: the compositor's
    // tree node of the mapped window titled `title` (empty when there is
    // none), the title of the window with the keyboard focus, a fresh
    // activation token as a launcher would get one, and another program's
    // window, which takes the focus when it appears.
    QJsonObject compositorWindow(const QString &title) const;
    QString focusedWindowTitle() const;
    QString newActivationToken() const;
    bool showOtherWindow(const QString &title, QString *why);
    // Runs the stand-in engine helper with the app's engine state.
    QByteArray runEngine(const QStringList &arguments, const QByteArray &input = {},
                         int *exitCode = nullptr) const;

    QString display() const { return m_display; }

private:
    bool startXServer(QString *why);
    bool startCompositor(QString *why);
    QJsonArray compositorTree() const;
    std::unique_ptr<QProcess> startProcess(const QString &program, const QStringList &arguments,
                                           const QString &logName);
    bool waitForBusName(const QString &name, int timeoutMs) const;
    QVariant probeCall(const QString &method, const QVariantList &arguments = {},
                       int timeoutMs = 10000) const;
    void stop(std::unique_ptr<QProcess> &process);
    void endOrphans();

    Platform m_platform;
    QTemporaryDir m_dir;
    QProcessEnvironment m_env;
    QString m_busAddress;
    QString m_connectionName;
    QString m_display;
    bool m_withTray = true;
    int m_trayStarts = 0;
    std::unique_ptr<QProcess> m_busDaemon;
    std::unique_ptr<QProcess> m_xServer;
    std::unique_ptr<QProcess> m_compositor;
    std::unique_ptr<QProcess> m_otherWindow;
    std::unique_ptr<QProcess> m_notifications;
    std::unique_ptr<QProcess> m_tray;
    std::unique_ptr<QProcess> m_app;
    std::unique_ptr<QProcess> m_secondLaunch;
};
