// A tray for the end-to-end tests: a StatusNotifierWatcher and one host on the
// session bus, so an app's tray icon registers its item over D-Bus exactly as
// it does on a desktop with a tray. The tests read the registered items from
// the watcher and talk to each item directly.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>

#include <cstdio>
#include <unistd.h>

class StatusNotifierWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit StatusNotifierWatcher(const QDBusConnection &bus)
        : m_watcher(QString(), bus, QDBusServiceWatcher::WatchForUnregistration)
    {
        connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this,
                &StatusNotifierWatcher::forget);
    }

    QStringList registeredItems() const { return m_items; }
    bool isHostRegistered() const { return m_hostRegistered; }
    int protocolVersion() const { return 0; }

    void hostArrived()
    {
        m_hostRegistered = true;
        emit StatusNotifierHostRegistered();
    }

public slots:
    void RegisterStatusNotifierItem(const QString &serviceOrPath, const QDBusMessage &message)
    {
        // Items name either their own bus name or, for some toolkits, an
        // object path on the caller's connection.
        QString service = serviceOrPath;
        QString path = QStringLiteral("/StatusNotifierItem");
        if (serviceOrPath.startsWith(QLatin1Char('/'))) {
            service = message.service();
            path = serviceOrPath;
        }
        const QString item = service + path;
        if (m_items.contains(item))
            return;
        m_items << item;
        m_watcher.addWatchedService(service);
        std::printf("registered %s\n", qPrintable(item));
        std::fflush(stdout);
        emit StatusNotifierItemRegistered(item);
    }

    void RegisterStatusNotifierHost(const QString &service)
    {
        Q_UNUSED(service);
        hostArrived();
    }

signals:
    void StatusNotifierItemRegistered(const QString &item);
    void StatusNotifierItemUnregistered(const QString &item);
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    void forget(const QString &service)
    {
        for (qsizetype i = m_items.size() - 1; i >= 0; --i) {
            if (m_items[i].startsWith(service + QLatin1Char('/'))) {
                const QString item = m_items.takeAt(i);
                emit StatusNotifierItemUnregistered(item);
            }
        }
        m_watcher.removeWatchedService(service);
    }

    QDBusServiceWatcher m_watcher;
    QStringList m_items;
    bool m_hostRegistered = false;
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        std::fprintf(stderr, "no session bus\n");
        return 2;
    }
    StatusNotifierWatcher watcher(bus);
    if (!bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                QDBusConnection::ExportAllProperties)) {
        std::fprintf(stderr, "cannot export the watcher\n");
        return 2;
    }
    // The host first, so the watcher reports a host from the moment it can be found.
    watcher.hostArrived();
    const QString host = QStringLiteral("org.kde.StatusNotifierHost-%1").arg(getpid());
    if (!bus.registerService(host) ||
        !bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"))) {
        std::fprintf(stderr, "cannot own the watcher's names\n");
        return 2;
    }
    std::printf("ready\n");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

#include "SniHost.moc"
