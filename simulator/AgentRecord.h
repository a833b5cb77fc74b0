#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>

// What the stand-in remembers about itself, its service and its target
// (agent.json in the state directory). Settings, transfer policy and backup
// progress live in files of their own.
struct AgentRecord
{
    static inline const QString currentSchema = QStringLiteral("zqb.sim-agent.v1");

    QString agentVersion;
    QString latestAgentVersion; // what the service advertises
    QString serviceVersion;
    QString compatibility = QStringLiteral("compatible");
    bool online = true; // the service and the target are reachable
    bool enrolled = false;
    QString targetName;
    QString targetDeviceId;
    QStringList usedInvitations; // digests only, never the invitations themselves
    std::optional<QString> lastContactAt;
    std::optional<QString> lastBackupAttemptAt;
    std::optional<QString> lastBackupAt;
    std::optional<bool> recoveryReady;
    std::optional<QString> lastError;

    static AgentRecord fresh();

    QByteArray toJson() const;
    // Nothing when the bytes are not a record this stand-in wrote.
    static std::optional<AgentRecord> fromJson(QByteArrayView json);

    friend bool operator==(const AgentRecord &, const AgentRecord &) = default;
};
