#include "SimState.h"

#include "AgentDocuments.h"
#include "AtomicFile.h"
#include "BackupLock.h"
#include "ProgressFile.h"

#include <QDir>
#include <QFile>

SimState::SimState(QString directory) : m_directory(std::move(directory)) {}

bool SimState::prepare(QString *problem)
{
    if (QDir(m_directory).exists())
        return true;
    if (QDir().mkpath(m_directory)) {
        QFile::setPermissions(m_directory, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                               QFileDevice::ExeOwner);
        return true;
    }
    if (problem)
        *problem = QStringLiteral("The state directory %1 could not be created.").arg(m_directory);
    return false;
}

QString SimState::path(const char *fileName) const
{
    return m_directory + QLatin1Char('/') + QLatin1String(fileName);
}

AgentSettings SimState::defaultSettings()
{
    AgentSettings settings;
    settings.enabled = false;
    settings.intervalMinutes = 240;
    settings.exclusions = {QStringLiteral(".DS_Store"), QStringLiteral(".Spotlight-V100"),
                           QStringLiteral(".Trashes"), QStringLiteral(".fseventsd")};
    return settings;
}

AgentSettings SimState::settings(bool *readable) const
{
    if (readable)
        *readable = true;
    const auto bytes = AtomicFile::read(path("settings.json"));
    if (!bytes)
        return defaultSettings();
    if (auto decoded = AgentDocuments::decodeSettings(*bytes))
        return *decoded;
    if (readable)
        *readable = false;
    return defaultSettings();
}

TransferPolicy SimState::transferPolicy(bool *readable) const
{
    if (readable)
        *readable = true;
    const auto bytes = AtomicFile::read(path("transfer-policy.json"));
    if (!bytes)
        return TransferPolicy{};
    if (auto decoded = AgentDocuments::decodeTransferPolicy(*bytes))
        return *decoded;
    if (readable)
        *readable = false;
    return TransferPolicy{};
}

AgentRecord SimState::agent(bool *readable) const
{
    if (readable)
        *readable = true;
    const auto bytes = AtomicFile::read(path("agent.json"));
    if (!bytes)
        return AgentRecord::fresh();
    if (auto decoded = AgentRecord::fromJson(*bytes))
        return *decoded;
    if (readable)
        *readable = false;
    return AgentRecord::fresh();
}

std::optional<BackupProgressStatus> SimState::progress() const
{
    const auto bytes = AtomicFile::read(path("progress.json"));
    if (!bytes)
        return std::nullopt;
    return ProgressFile::decode(*bytes);
}

bool SimState::saveSettings(const AgentSettings &settings, QString *problem)
{
    return AtomicFile::write(path("settings.json"), AgentDocuments::encode(settings), problem);
}

bool SimState::saveTransferPolicy(const TransferPolicy &policy, QString *problem)
{
    return AtomicFile::write(path("transfer-policy.json"), AgentDocuments::encode(policy), problem);
}

bool SimState::saveProgress(const BackupProgressStatus &progress, QString *problem)
{
    return AtomicFile::write(path("progress.json"), AgentDocuments::encode(progress), problem);
}

bool SimState::updateAgent(const std::function<void(AgentRecord &)> &change, QString *problem)
{
    BackupLock stateLock(path("state.lock"));
    if (!stateLock.lock()) {
        if (problem)
            *problem =
                QStringLiteral("The state directory %1 could not be locked.").arg(m_directory);
        return false;
    }
    AgentRecord record = agent();
    change(record);
    return AtomicFile::write(path("agent.json"), record.toJson(), problem);
}
