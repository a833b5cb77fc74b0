#pragma once

#include <QString>

#include <optional>

// Network transfer policy, as the engine stores it.
struct TransferPolicy
{
    static inline const QString currentSchema = QStringLiteral("zqb.agent-transfer-policy.v1");

    QString schema = currentSchema;
    bool paused = false;
    qint64 bandwidthLimitKibPerSecond = 0;
    bool currentNetworkMetered = false;
    bool allowMeteredNetwork = false;
    std::optional<QString> preferredTargetDeviceId;
    qint64 retryAttempts = 3;

    friend bool operator==(const TransferPolicy &, const TransferPolicy &) = default;
};
