#pragma once

// A tray host for the app's tests: the end-to-end tests' StatusNotifierWatcher
// with a host, run as its own process on the test's private session bus, so
// the app sees a tray appear, go and come back as on a desktop.
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

#include <memory>

class TestTrayHost
{
public:
    ~TestTrayHost() { stop(); }

    // True once the host owns the watcher's name.
    bool start()
    {
        stop();
        m_process = std::make_unique<QProcess>();
        m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process->start(QStringLiteral(ZQB_SNI_HOST), QStringList());
        if (!m_process->waitForStarted(10000))
            return false;
        while (!m_process->canReadLine())
            if (!m_process->waitForReadyRead(10000))
                return false;
        return m_process->readLine().trimmed() == "ready";
    }

    // Ends the host as a crash would; true once its name is gone from the bus.
    bool stop()
    {
        if (!m_process)
            return true;
        m_process->kill();
        m_process->waitForFinished(10000);
        m_process.reset();
        QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
        return QTest::qWaitFor([bus] {
            return !bus->isServiceRegistered(QStringLiteral("org.kde.StatusNotifierWatcher"))
                        .value();
        });
    }

private:
    std::unique_ptr<QProcess> m_process;
};
