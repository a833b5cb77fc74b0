#include "NotificationCenter.h"

#include <QThread>

NotificationCenter &NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::observe(const QString &name, QObject *context, Handler handler)
{
    if (!context || !handler)
        return;
    m_observers.append(Observer{name, context, QPointer<QObject>(context), std::move(handler)});
    // Drop the observer with its context so nothing accumulates.
    connect(context, &QObject::destroyed, this, [this, context] {
        m_observers.removeIf([context](const Observer &o) { return o.context == context; });
    });
}

void NotificationCenter::post(const QString &name, const QVariantMap &userInfo)
{
    // Observers live on the main thread; a post from elsewhere is handed over.
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this, name, userInfo] { post(name, userInfo); }, Qt::QueuedConnection);
        return;
    }
    // A handler may add observers or destroy contexts: deliver to a snapshot
    // and check each context again just before its turn.
    QList<Observer> matching;
    for (const Observer &o : std::as_const(m_observers)) {
        if (o.name == name && o.guard)
            matching.append(o);
    }
    for (const Observer &o : std::as_const(matching)) {
        if (o.guard)
            o.handler(userInfo);
    }
}
