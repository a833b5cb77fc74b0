#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

#include <functional>

// In-process broadcasts by name, delivered synchronously on the posting
// (main) thread. An observer lives as long as its context object.
class NotificationCenter : public QObject
{
    Q_OBJECT
public:
    static NotificationCenter &defaultCenter();

    using Handler = std::function<void(const QVariantMap &userInfo)>;
    void observe(const QString &name, QObject *context, Handler handler);
    void post(const QString &name, const QVariantMap &userInfo = {});

private:
    struct Observer
    {
        QString name;
        const QObject *context = nullptr; // identity only; never dereferenced
        QPointer<QObject> guard;          // null once the context is gone
        Handler handler;
    };
    QList<Observer> m_observers;
};
