#pragma once

#include "TranslatedText.h"

#include <QDBusConnection>
#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <QWidget>

#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;
class TrayHostWatch;

// The app's presence in the tray, whenever the desktop has one: a status item
// whose colour follows the engine's state and whose menu opens the window,
// asks for a connection check, or quits. It finds the main window by its title and keeps it alive, so
// the same window comes back after the user has closed it.
//
// It never holds the model: it hears the engine's state through the
// "ZQBAgentStatusDidChange" broadcast and asks for a check with
// "ZQBAgentCheckConnection", both on NotificationCenter::defaultCenter().
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    // Untinted until the first status broadcast; then green for exactly
    // "connected" and orange for anything else.
    enum class Look { Untinted, Green, Orange };
    Q_ENUM(Look)

    static inline const QString mainWindowTitle = QStringLiteral("ZQB Agent");
    static inline const TranslatedText openTitle = {
        "AppDelegate", QT_TRANSLATE_NOOP("AppDelegate", "Open ZQB Agent")};
    static inline const TranslatedText checkConnectionTitle = {
        "AppDelegate", QT_TRANSLATE_NOOP("AppDelegate", "Check Connection")};
    static inline const TranslatedText quitTitle = {
        "AppDelegate", QT_TRANSLATE_NOOP("AppDelegate", "Quit ZQB Agent")};

    // Ctrl+Q (Command-Q on macOS), also where the platform theme names no quit key.
    static QKeySequence quitShortcut() { return QKeySequence(Qt::CTRL | Qt::Key_Q); }

    explicit AppDelegate(QObject *parent = nullptr);
    ~AppDelegate() override;

    // Starts following the engine's state, looks for the main window once
    // the event loop has had one turn, and from then on keeps the status item
    // in the tray whenever the desktop on `bus` has a tray host.
    void applicationDidFinishLaunching(const QDBusConnection &bus = QDBusConnection::sessionBus());
    // The user launched the running app again (or clicked its tray icon). A
    // launch passes on the activation token it was started with, if any.
    bool applicationShouldHandleReopen(bool hasVisibleWindows, const QString &activationToken = {});
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }

    // The item and its menu while a tray host shows them; null otherwise.
    QSystemTrayIcon *statusItem() const { return m_statusItem.get(); }
    QMenu *statusMenu() const { return m_menu.get(); }
    QWidget *mainWindow() const { return m_mainWindow; }
    Look look() const { return m_look; }
    // "ZQB Agent" until the first status broadcast; then the state's title as
    // the window's badge shows it, with a running backup's progress line.
    QString toolTip() const { return m_toolTip; }

    // A message shown by the status item; used when the desktop offers no
    // notification service.
    void showStatusMessage(const QString &title, const QString &body);

    // What quit() finally does; ends the event loop unless replaced.
    void setTerminate(std::function<void()> terminate);

public slots:
    void rememberMainWindow();
    void openAgent();
    void checkConnection();
    void statusChanged(const QVariantMap &userInfo);
    void quit();

signals:
    // The item was made anew for a tray host that appeared, or dropped.
    void statusItemChanged();
    void lookChanged(AppDelegate::Look look);
    // Only when the text changes.
    void toolTipChanged(const QString &toolTip);

private:
    void placeStatusItem();
    void removeStatusItem();
    void applyLook(Look look);
    void applyToolTip(const QString &toolTip);
    QString shownToolTip() const; // m_toolTip as the tray must receive it
    void bringMainWindowForward(const QString &activationToken);

    // Declared before the tray icon, so the icon goes first on destruction.
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
    QPointer<QWidget> m_mainWindow;
    std::unique_ptr<TrayHostWatch> m_trayHosts;
    bool m_launched = false;
    Look m_look = Look::Untinted;
    QString m_toolTip = mainWindowTitle;
    bool m_statusNotifierTray = false; // the item is shown by a StatusNotifierItem host
    bool m_trayKindKnown = false;
    std::function<void()> m_terminate;
};
