#include "VersionStatus.h"

#include "Formatting.h"
#include "PlatformText.h"

#include <QCoreApplication>

namespace {
QString latestVersionLabel()
{
    return QCoreApplication::translate("VersionStatus", "Latest version");
}
QString couldNotVerifyLabel()
{
    return QCoreApplication::translate("VersionStatus", "Could not verify latest");
}
} // namespace

DurationDetail backupDurationDetail(const std::optional<AgentUIStatus> &status)
{
    if (!status || !status->runtime.backupProgress)
        return {QCoreApplication::translate("VersionStatus", "Last backup duration"),
                backupDurationLabel(std::nullopt)};
    const BackupProgressStatus &progress = *status->runtime.backupProgress;
    const QString value = backupDurationLabel(progress.elapsedSeconds);
    if (progress.phase == QLatin1String("completed"))
        return {QCoreApplication::translate("VersionStatus", "Last backup duration"), value};
    if (progress.phase == QLatin1String("failed"))
        return {QCoreApplication::translate("VersionStatus", "Last attempt duration"), value};
    if (progress.phase == QLatin1String("cancelled"))
        return {QCoreApplication::translate("VersionStatus", "Cancelled attempt duration"), value};
    if (status->runtime.active)
        return {QCoreApplication::translate("VersionStatus", "Current backup elapsed"), value};
    return {QCoreApplication::translate("VersionStatus", "Last backup duration"), value};
}

bool updateIsActuallyAvailable(const std::optional<AgentUIStatus> &status)
{
    if (!status || !status->runtime.agentUpdateAvailable)
        return false;
    const std::optional<QString> &latest = status->runtime.latestAgentVersion;
    return !latest || *latest != status->agentVersion;
}

QString versionStatusLabel(const std::optional<AgentUIStatus> &status)
{
    if (!status)
        return QCoreApplication::translate("VersionStatus", "Checking latest…");
    const std::optional<QString> &latest = status->runtime.latestAgentVersion;
    if (updateIsActuallyAvailable(status))
        return latest
                   ? QCoreApplication::translate("VersionStatus", "Update available: %1")
                         .arg(leftToRightIsolated(*latest))
                   : QCoreApplication::translate("VersionStatus", "Update available: new release");
    if (!status->runtime.serviceReachable)
        return couldNotVerifyLabel();
    if (latest && *latest == status->agentVersion)
        return latestVersionLabel();
    return QCoreApplication::translate("VersionStatus", "Checking latest…");
}

ColorRole versionStatusColor(const std::optional<AgentUIStatus> &status)
{
    if (updateIsActuallyAvailable(status))
        return ColorRole::Blue;
    const QString label = versionStatusLabel(status);
    if (label == latestVersionLabel())
        return ColorRole::Green;
    if (label == couldNotVerifyLabel())
        return ColorRole::Orange;
    return ColorRole::Secondary;
}

Symbol versionStatusSymbol(const std::optional<AgentUIStatus> &status)
{
    if (updateIsActuallyAvailable(status))
        return Symbol::ArrowDownCircle;
    const QString label = versionStatusLabel(status);
    if (label == latestVersionLabel())
        return Symbol::CheckCircle;
    if (label == couldNotVerifyLabel())
        return Symbol::WarningTriangle;
    return Symbol::Clock;
}
