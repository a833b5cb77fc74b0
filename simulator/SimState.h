#pragma once

#include "AgentRecord.h"
#include "AgentSettings.h"
#include "BackupProgressStatus.h"
#include "TransferPolicy.h"

#include <QString>

#include <functional>
#include <optional>

// The stand-in's state directory: one JSON file per record, each replaced
// atomically. Readers never lock; writers of agent.json take a short lock so
// two processes updating different fields do not lose each other's change.
class SimState
{
public:
    explicit SimState(QString directory);

    // Creates the directory (owner-only) when missing.
    bool prepare(QString *problem);
    const QString &directory() const { return m_directory; }
    QString path(const char *fileName) const;

    // Stored records, or the defaults of a fresh installation when the file is
    // missing. `readable` is set false when a file exists but cannot be read.
    AgentSettings settings(bool *readable = nullptr) const;
    TransferPolicy transferPolicy(bool *readable = nullptr) const;
    AgentRecord agent(bool *readable = nullptr) const;
    std::optional<BackupProgressStatus> progress() const;

    bool saveSettings(const AgentSettings &settings, QString *problem);
    bool saveTransferPolicy(const TransferPolicy &policy, QString *problem);
    bool saveProgress(const BackupProgressStatus &progress, QString *problem = nullptr);
    // Reads, changes and writes agent.json under the state lock.
    bool updateAgent(const std::function<void(AgentRecord &)> &change, QString *problem = nullptr);

    QString backupLockPath() const { return path("backup.lock"); }
    QString objectIndexPath() const { return path("objects.idx"); }

    static AgentSettings defaultSettings();

private:
    QString m_directory;
};
