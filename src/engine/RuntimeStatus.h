#pragma once

#include "BackupProgressStatus.h"

#include <QMetaType>
#include <QString>

#include <optional>

// The engine's current condition.
struct RuntimeStatus
{
    QString state;
    QString message;
    bool enrolled = false;
    bool repositoryReady = false;
    bool serviceReachable = false;
    qint64 authorizedTargets = 0;
    std::optional<QString> serviceVersion;
    std::optional<QString> latestAgentVersion;
    bool agentUpdateAvailable = false;
    QString compatibility;
    bool active = false;
    std::optional<BackupProgressStatus> backupProgress;
    std::optional<QString> lastContactAt;
    std::optional<QString> lastBackupAttemptAt;
    std::optional<QString> lastBackupAt;
    std::optional<bool> recoveryReady;
    std::optional<QString> lastError;

    friend bool operator==(const RuntimeStatus &, const RuntimeStatus &) = default;
};

// Travels in the status broadcast's user info.
Q_DECLARE_METATYPE(RuntimeStatus)
