#include "AppDelegate.h"

#include "AgentModel.h"
#include "AgentPaths.h"
#include "NotificationCenter.h"
#include "StatusIcon.h"
#include "StatusItemToolTip.h"
#include "TrayText.h"
#include "WindowActivation.h"

#include <QAction>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEvent>
#include <QKeySequence>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

namespace {

// Qt shows the item through a StatusNotifierItem host when one is registered
// on the session bus as the item is made, else in the XEmbed tray; which of
// the two it is decides how the engine's texts are read there.
bool statusNotifierHostRegistered()
{
    QDBusMessage get = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << QStringLiteral("org.kde.StatusNotifierWatcher")
        << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusMessage reply = QDBusConnection::sessionBus().call(get, QDBus::Block, 1000);
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty() &&
           reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

} // namespace

AppDelegate::AppDelegate(QObject *parent)
    : QObject(parent), m_terminate([] { QCoreApplication::quit(); })
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching(QWidget *firstFrameOf)
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

    if (!firstFrameOf) {
        putStatusItemInTray();
        return;
    }
    // Registering with the tray host takes a few milliseconds: they come after
    // the window's first frame rather than before it. A window that is never
    // drawn (started minimised, or a compositor holding frames back) does not
    // keep the tray empty for long.
    m_firstFrameOf = firstFrameOf;
    firstFrameOf->installEventFilter(this);
    QTimer::singleShot(firstFrameTimeoutMs, this, &AppDelegate::putStatusItemInTray);
}

bool AppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    // A window closed before its first frame has nothing left to wait for.
    if (watched == m_firstFrameOf &&
        (event->type() == QEvent::Paint || event->type() == QEvent::Hide)) {
        watched->removeEventFilter(this);
        m_firstFrameOf = nullptr;
        // Queued: runs once the frame under way has been drawn and flushed.
        QMetaObject::invokeMethod(this, &AppDelegate::putStatusItemInTray, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void AppDelegate::putStatusItemInTray()
{
    if (m_statusItem)
        return;
    if (m_firstFrameOf) {
        m_firstFrameOf->removeEventFilter(this);
        m_firstFrameOf = nullptr;
    }

    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(openTitle, this, &AppDelegate::openAgent);
    m_menu->addAction(checkConnectionTitle, this, &AppDelegate::checkConnection);
    m_menu->addSeparator();
    QAction *quitAction = m_menu->addAction(quitTitle, this, &AppDelegate::quit);
    quitAction->setShortcut(quitShortcut());
    quitAction->setMenuRole(QAction::QuitRole);

    // In the look and with the tooltip of the last state heard, if any.
    m_statusItem = std::make_unique<QSystemTrayIcon>();
    m_statusNotifierTray = statusNotifierHostRegistered();
    m_statusItem->setIcon(statusItemIcon(m_look));
    m_statusItem->setToolTip(shownToolTip());
    m_statusItem->setContextMenu(m_menu.get());
    connect(m_statusItem.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    applicationShouldHandleReopen(m_mainWindow && m_mainWindow->isVisible());
            });
    m_statusItem->show();
    emit statusItemInTray();
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
        m_statusItem->showMessage(title,
                                  TrayText::literal(body, m_statusNotifierTray
                                                              ? TrayText::Reader::MarkupBody
                                                              : TrayText::Reader::QtRichLabel),
                                  QSystemTrayIcon::Information);
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

QString AppDelegate::shownToolTip() const
{
    // The engine's state, shown as written: the StatusNotifierItem tooltip
    // carries it as its plain title, the XEmbed tray as a Qt tooltip.
    return TrayText::literal(m_toolTip, m_statusNotifierTray ? TrayText::Reader::PlainTitle
                                                             : TrayText::Reader::QtRichLabel);
}

void AppDelegate::applyToolTip(const QString &toolTip)
{
    // Each change is a D-Bus signal to the tray host: only real changes go out.
    if (toolTip == m_toolTip)
        return;
    m_toolTip = toolTip;
    if (m_statusItem)
        m_statusItem->setToolTip(shownToolTip());
    emit toolTipChanged(toolTip);
}
