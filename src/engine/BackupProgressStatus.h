#pragma once

#include <QString>

#include <optional>

// Progress of the running backup.
struct BackupProgressStatus
{
    QString phase;
    qint64 sourceIndex = 0;
    qint64 sourceCount = 0;
    quint64 filesScanned = 0;
    quint64 totalFiles = 0;
    quint64 bytesScanned = 0;
    quint64 totalBytes = 0;
    quint64 objectsPrepared = 0;
    quint64 totalObjects = 0;
    quint64 objectsUploaded = 0;
    quint64 objectsReused = 0;
    quint64 bytesUploaded = 0;
    bool resumedPreparation = false;
    std::optional<QString> lastProgressAt;
    std::optional<quint64> elapsedSeconds;

    friend bool operator==(const BackupProgressStatus &, const BackupProgressStatus &) = default;
};
