#pragma once

#include <QObject>
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
};
