#include "AppDelegate.h"

#include "AgentModel.h"
#include "AgentPaths.h"
#include "NotificationCenter.h"
#include "StatusIcon.h"
#include "StatusItemToolTip.h"
#include "TrayHostWatch.h"
#include "WindowActivation.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

AppDelegate::AppDelegate(QObject *parent)
    : QObject(parent), m_terminate([] { QCoreApplication::quit(); })
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching(const QDBusConnection &bus)
{
    if (m_launched)
        return;
    m_launched = true;

    // Never removed: the delegate lives as long as the process.
    NotificationCenter::defaultCenter().observe(
        statusNotification(), this,
        [this](const QVariantMap &userInfo) { statusChanged(userInfo); });

    // The window is made after launch; look for it once the event loop turns.
    QTimer::singleShot(0, this, &AppDelegate::rememberMainWindow);

    // The status item lives while a tray host does: made when one appears
    // (at start, minutes later at login, again after it restarted), dropped
    // when the last one goes. Without a host the app runs as without a tray.
    m_trayHosts = std::make_unique<TrayHostWatch>(bus);
    connect(m_trayHosts.get(), &TrayHostWatch::trayAppeared, this, &AppDelegate::placeStatusItem);
    connect(m_trayHosts.get(), &TrayHostWatch::trayGone, this, &AppDelegate::removeStatusItem);
}

void AppDelegate::placeStatusItem()
{
    // A host that came back has forgotten the item it knew: a new item
    // registers with it afresh.
    removeStatusItem();

    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(openTitle, this, &AppDelegate::openAgent);
    m_menu->addAction(checkConnectionTitle, this, &AppDelegate::checkConnection);
    m_menu->addSeparator();
    QAction *quitAction = m_menu->addAction(quitTitle, this, &AppDelegate::quit);
    quitAction->setShortcut(quitShortcut());
    quitAction->setMenuRole(QAction::QuitRole);

    // In the look and with the tooltip of the last state heard, if any.
    m_statusItem = std::make_unique<QSystemTrayIcon>();
    m_statusItem->setIcon(statusItemIcon(m_look));
    m_statusItem->setToolTip(m_toolTip);
    m_statusItem->setContextMenu(m_menu.get());
    connect(m_statusItem.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    applicationShouldHandleReopen(m_mainWindow && m_mainWindow->isVisible());
            });
    m_statusItem->show();
    emit statusItemChanged();
}

void AppDelegate::removeStatusItem()
{
    if (!m_statusItem)
        return;
    // The item first: it refers to the menu.
    m_statusItem.reset();
    m_menu.reset();
    emit statusItemChanged();
}

void AppDelegate::rememberMainWindow()
{
    if (m_mainWindow) {
        m_mainWindow->setAttribute(Qt::WA_DeleteOnClose, false);
        return;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        // Dialogs, tool windows, popups and sheets never become the main window.
        if (window->windowType() != Qt::Window)
            continue;
        if (window->windowTitle() != mainWindowTitle)
            continue;
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        m_mainWindow = window;
        return;
    }
}

void AppDelegate::openAgent()
{
    bringMainWindowForward({});
}

void AppDelegate::bringMainWindowForward(const QString &activationToken)
{
    rememberMainWindow();
    if (!m_mainWindow)
        return; // never creates a window
    WindowActivation::bringForward(m_mainWindow, activationToken);
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows,
                                                const QString &activationToken)
{
    Q_UNUSED(hasVisibleWindows);
    bringMainWindowForward(activationToken);
    return true;
}

void AppDelegate::checkConnection()
{
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    openAgent();
}

void AppDelegate::statusChanged(const QVariantMap &userInfo)
{
    const QVariant state = userInfo.value(QStringLiteral("state"));
    const bool connected = state.metaType() == QMetaType::fromType<QString>() &&
                           state.toString() == QStringLiteral("connected");
    if (!m_launched)
        return;
    applyLook(connected ? Look::Green : Look::Orange);

    // The model sends its whole runtime record along; a bare state text (or
    // nothing readable) still gives the badge's title for it.
    std::optional<RuntimeStatus> runtime;
    const QVariant record = userInfo.value(QStringLiteral("runtime"));
    if (record.metaType() == QMetaType::fromType<RuntimeStatus>()) {
        runtime = record.value<RuntimeStatus>();
    } else if (state.metaType() == QMetaType::fromType<QString>()) {
        runtime = RuntimeStatus{};
        runtime->state = state.toString();
    }
    applyToolTip(statusItemToolTip(runtime));
}

void AppDelegate::quit()
{
    m_terminate();
}

void AppDelegate::showStatusMessage(const QString &title, const QString &body)
{
    if (m_statusItem)
        m_statusItem->showMessage(title, body, QSystemTrayIcon::Information);
}

void AppDelegate::setTerminate(std::function<void()> terminate)
{
    m_terminate = std::move(terminate);
}

void AppDelegate::applyLook(Look look)
{
    const bool changed = look != m_look;
    m_look = look;
    if (!changed)
        return;
    if (m_statusItem)
        m_statusItem->setIcon(statusItemIcon(look));
    emit lookChanged(look);
}

void AppDelegate::applyToolTip(const QString &toolTip)
{
    // Each change is a D-Bus signal to the tray host: only real changes go out.
    if (toolTip == m_toolTip)
        return;
    m_toolTip = toolTip;
    if (m_statusItem)
        m_statusItem->setToolTip(toolTip);
    emit toolTipChanged(toolTip);
}
