#include "SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

SingleInstance::SingleInstance(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
}

SingleInstance::~SingleInstance()
{
    if (m_role == Role::Primary)
        m_bus.unregisterService(serviceName);
    releaseObject();
}

SingleInstance::Role SingleInstance::claim(ReopenRequest reopen, const QString &activationToken)
{
    if (!m_bus.isConnected())
        return m_role = Role::Standalone;

    // The object is in place before the name is owned, so an Activate() that
    // arrives the moment we own the name is answered.
    if (!m_objectRegistered)
        m_objectRegistered =
            m_bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);

    // The owner may end between our attempt and our call; try once more then.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (m_bus.registerService(serviceName))
            return m_role = Role::Primary;
        if (!m_bus.interface()->isServiceRegistered(serviceName).value())
            continue;
        if (reopen == ReopenRequest::Skip || askRunningInstanceToReopen(activationToken))
            return secondary();
    }
    // A running owner that does not answer still means: never a second window.
    // A name we may not own at all leaves us without the guard.
    if (m_bus.interface()->isServiceRegistered(serviceName).value())
        return secondary();
    releaseObject();
    return m_role = Role::Standalone;
}

SingleInstance::Role SingleInstance::secondary()
{
    releaseObject();
    return m_role = Role::Secondary;
}

void SingleInstance::releaseObject()
{
    if (m_objectRegistered)
        m_bus.unregisterObject(objectPath);
    m_objectRegistered = false;
}

void SingleInstance::Activate(const QString &activationToken)
{
    emit reopenRequested(activationToken);
}

void SingleInstance::Reopen()
{
    emit reopenRequested({});
}

bool SingleInstance::askRunningInstanceToReopen(const QString &activationToken)
{
    QDBusMessage call = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName,
                                                       QStringLiteral("Activate"));
    call << activationToken;
    // Events keep flowing while we wait, so an owner in this same process can answer.
    const QDBusMessage reply = m_bus.call(call, QDBus::BlockWithGui, 5000);
    return reply.type() == QDBusMessage::ReplyMessage;
}
