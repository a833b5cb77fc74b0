#include "AgentModel.h"

#include "AgentDocuments.h"
#include "FolderChooser.h"
#include "FolderList.h"
#include "TranslatedText.h"

#include <QUrl>

#ifdef Q_OS_MACOS
#include <QDesktopServices>
#endif

// The folders, and the save chains: "configure" with the settings document,
// then "configure-transfer" with the network policy, then what follows
// ("Save settings" refreshes, "Back up now" runs "backup-all").

namespace {

const TranslatedText folderSettingsMessage = {
    "AgentModel",
    QT_TRANSLATE_NOOP("AgentModel", "ZQB Agent could not prepare the folder settings.")};
const TranslatedText networkPolicyMessage = {
    "AgentModel",
    QT_TRANSLATE_NOOP("AgentModel", "ZQB Agent could not prepare the network policy.")};
const TranslatedText settingsSavedMessage = {
    "AgentModel", QT_TRANSLATE_NOOP("AgentModel", "Folders, schedule, and network policy saved.")};
const TranslatedText noFoldersMessage = {
    "AgentModel", QT_TRANSLATE_NOOP("AgentModel", "Choose and save at least one folder first.")};
const QString fullDiskAccessLink =
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles");

} // namespace

void AgentModel::addFolders()
{
    if (!m_services.folderChooser)
        return;
    const std::optional<QStringList> chosen = m_services.folderChooser->chooseFolders();
    if (!chosen)
        return;
    QStringList merged = m_sources;
    for (const QString &path : *chosen) {
        const QString normalized = FolderList::normalizedPath(path);
        if (!normalized.isEmpty())
            merged << normalized;
    }
    setSources(FolderList::sortedUnique(std::move(merged)));
}

void AgentModel::removeFolder(const QString &path)
{
    QStringList remaining = m_sources;
    remaining.removeAll(path);
    setSources(remaining);
}

QStringList AgentModel::parsedExclusions() const
{
    QStringList patterns;
    const QStringList pieces = m_exclusionText.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        QString pattern = piece.trimmed();
        if (!pattern.isEmpty())
            patterns << pattern;
    }
    return FolderList::sortedUnique(std::move(patterns));
}

std::optional<QByteArray> AgentModel::encodeSettingsDocument(const AgentSettings &settings) const
{
    QByteArray document = AgentDocuments::encode(settings);
    if (document.isEmpty())
        return std::nullopt;
    return document;
}

std::optional<QByteArray>
AgentModel::encodeTransferPolicyDocument(const TransferPolicy &policy) const
{
    QByteArray document = AgentDocuments::encode(policy);
    if (document.isEmpty())
        return std::nullopt;
    return document;
}

void AgentModel::saveSettings(std::function<void()> afterPolicySaved)
{
    AgentSettings settings;
    settings.enabled = m_scheduleEnabled;
    settings.intervalMinutes = m_intervalMinutes;
    settings.sources = m_sources;
    settings.exclusions = parsedExclusions();
    std::optional<QByteArray> document = encodeSettingsDocument(settings);
    if (!document) {
        setError(folderSettingsMessage);
        return;
    }
    run({QStringLiteral("configure"), QStringLiteral("--json-stdin")},
        std::make_shared<QByteArray>(std::move(*document)), true,
        [this, afterPolicySaved = std::move(afterPolicySaved)](const CommandResult &result) {
            if (!result.succeeded) {
                setError(presentableError(result));
                return;
            }
            saveTransferPolicy(afterPolicySaved);
        });
}

void AgentModel::save()
{
    saveSettings([this] {
        setNotice(settingsSavedMessage);
        refresh(false, false);
    });
}

void AgentModel::saveThenBackup()
{
    saveSettings([this] {
        run({QStringLiteral("backup-all")}, nullptr, true, [this](const CommandResult &result) {
            if (result.succeeded) {
                refresh(true, true);
                return;
            }
            setError(presentableError(result));
            refresh(false, false);
        });
    });
}

void AgentModel::backUpNow()
{
    if (m_sources.isEmpty()) {
        setError(noFoldersMessage);
        return;
    }
    saveThenBackup();
}

void AgentModel::openFullDiskAccess()
{
#ifdef Q_OS_MACOS
    const QUrl link(fullDiskAccessLink);
    if (link.isValid())
        QDesktopServices::openUrl(link);
#endif
}

// Network transfer policy

void AgentModel::saveTransferPolicy(std::function<void()> completion)
{
    TransferPolicy policy;
    policy.paused = m_transfersPaused;
    policy.bandwidthLimitKibPerSecond = m_bandwidthLimitKibPerSecond;
    policy.currentNetworkMetered = m_currentNetworkMetered;
    policy.allowMeteredNetwork = m_allowMeteredNetwork;
    policy.preferredTargetDeviceId = std::nullopt; // never offered; the key is left out
    policy.retryAttempts = 3;
    std::optional<QByteArray> document = encodeTransferPolicyDocument(policy);
    if (!document) {
        setError(networkPolicyMessage);
        return;
    }
    run({QStringLiteral("configure-transfer"), QStringLiteral("--json-stdin")},
        std::make_shared<QByteArray>(std::move(*document)), true,
        [this, completion = std::move(completion)](const CommandResult &result) {
            if (!result.succeeded) {
                setError(presentableError(result));
                return;
            }
            if (completion)
                completion();
        });
}
