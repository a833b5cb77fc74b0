#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

// Keeps the app to one process per session. The first process owns a name on
// the session bus and answers Activate() and Reopen(); a later launch finds the
// name taken, asks the running process to bring its window forward, handing
// on the activation token it was started with, and ends.
class SingleInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "local.zqb.agent.Application")
public:
    static inline const QString serviceName = QStringLiteral("local.zqb.agent");
    static inline const QString objectPath = QStringLiteral("/local/zqb/agent");
    static inline const QString interfaceName = QStringLiteral("local.zqb.agent.Application");

    enum class Role {
        Primary,    // this process owns the name and serves Activate() and Reopen()
        Secondary,  // another process runs; it was asked to reopen its window
        Standalone, // no session bus: run without the single-instance guard
    };

    // Whether a later launch asks the running process to bring its window forward.
    enum class ReopenRequest { Send, Skip };

    explicit SingleInstance(QDBusConnection bus, QObject *parent = nullptr);
    ~SingleInstance() override;

    // `activationToken`: what a later launch passes on to the running process
    // (see WindowActivation), empty when it was started without one.
    Role claim(ReopenRequest reopen = ReopenRequest::Send, const QString &activationToken = {});
    Role role() const { return m_role; }

public slots:
    // Brings the window forward, with the launch's activation token if any.
    Q_SCRIPTABLE void Activate(const QString &activationToken);
    // The same without a token, for callers that have none.
    Q_SCRIPTABLE void Reopen();

signals:
    void reopenRequested(const QString &activationToken);

private:
    bool askRunningInstanceToReopen(const QString &activationToken);
    Role secondary();
    void releaseObject();

    QDBusConnection m_bus;
    Role m_role = Role::Standalone;
    bool m_objectRegistered = false;
};
