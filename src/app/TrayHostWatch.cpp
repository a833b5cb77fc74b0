#include "TrayHostWatch.h"

#include "XEmbedTrayWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace {
const QString watcherInterface = QStringLiteral("org.kde.StatusNotifierWatcher");
} // namespace

TrayHostWatch::TrayHostWatch(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
    auto *nameWatch = new QDBusServiceWatcher(watcherService, m_bus,
                                              QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(nameWatch, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &TrayHostWatch::watcherOwnerChanged);
    // A watcher may own its name before any host has registered with it
    // (a panel's watcher that starts ahead of the panel's tray).
    m_bus.connect(watcherService, watcherPath, watcherInterface,
                  QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(hostRegistered()));
    m_bus.connect(watcherService, watcherPath, watcherInterface,
                  QStringLiteral("StatusNotifierHostUnregistered"), this,
                  SLOT(hostUnregistered()));
    askWhetherAHostIsRegistered();

    m_xembedGrace.setSingleShot(true);
    m_xembedGrace.setInterval(xembedGraceMs);
    connect(&m_xembedGrace, &QTimer::timeout, this, &TrayHostWatch::fallBackToXEmbed);
    m_xembedTray = XEmbedTrayWatch::forThisDisplay();
    if (m_xembedTray) {
        connect(m_xembedTray.get(), &XEmbedTrayWatch::presenceChanged, this,
                &TrayHostWatch::xembedTrayChanged);
        xembedTrayChanged();
    }
}

TrayHostWatch::~TrayHostWatch() = default;

void TrayHostWatch::xembedTrayChanged()
{
    // Once Qt has made a StatusNotifierItem, it makes no XEmbed icon.
    if (m_xembedTray->isPresent() && !m_statusNotifierHostSeen) {
        m_xembedGrace.start();
        return;
    }
    m_xembedGrace.stop();
    if (m_xembedInUse && !m_xembedTray->isPresent()) {
        m_xembedInUse = false;
        if (!hasTray())
            emit trayGone();
    }
}

void TrayHostWatch::fallBackToXEmbed()
{
    if (m_statusNotifierHostSeen || !m_xembedTray->isPresent())
        return;
    m_xembedInUse = true;
    emit trayAppeared();
}

void TrayHostWatch::watcherOwnerChanged(const QString &, const QString &oldOwner,
                                        const QString &newOwner)
{
    if (!oldOwner.isEmpty())
        setStatusNotifierHost(false);
    if (!newOwner.isEmpty())
        askWhetherAHostIsRegistered();
}

void TrayHostWatch::hostRegistered()
{
    setStatusNotifierHost(true);
}

void TrayHostWatch::hostUnregistered()
{
    askWhetherAHostIsRegistered();
}

void TrayHostWatch::askWhetherAHostIsRegistered()
{
    QDBusMessage get = QDBusMessage::createMethodCall(
        watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    get << watcherInterface << QStringLiteral("IsStatusNotifierHostRegistered");
    const quint64 question = ++m_question;
    auto *pending = new QDBusPendingCallWatcher(m_bus.asyncCall(get), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this, question](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (question != m_question)
                    return;
                const QDBusMessage reply = finished->reply();
                // No watcher on the bus (an error) means no host.
                const bool registered = reply.type() == QDBusMessage::ReplyMessage &&
                                        !reply.arguments().isEmpty() &&
                                        reply.arguments().constFirst()
                                            .value<QDBusVariant>()
                                            .variant()
                                            .toBool();
                setStatusNotifierHost(registered);
            });
}

void TrayHostWatch::setStatusNotifierHost(bool present)
{
    // A registration signal makes any question still on its way stale.
    ++m_question;
    const bool hadHost = m_statusNotifierHost;
    const bool hadTray = hasTray();
    m_statusNotifierHost = present;
    if (present) {
        m_statusNotifierHostSeen = true;
        m_xembedGrace.stop();
    }
    if (present && !hadHost)
        emit trayAppeared();
    else if (hadTray && !hasTray())
        emit trayGone();
}
