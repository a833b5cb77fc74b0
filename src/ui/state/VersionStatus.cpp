#include "VersionStatus.h"

#include "Formatting.h"

namespace {
const QString latestVersionLabel = QStringLiteral("Latest version");
const QString couldNotVerifyLabel = QStringLiteral("Could not verify latest");
} // namespace

DurationDetail backupDurationDetail(const std::optional<AgentUIStatus> &status)
{
    if (!status || !status->runtime.backupProgress)
        return {QStringLiteral("Last backup duration"), QStringLiteral("Duration not available")};
    const BackupProgressStatus &progress = *status->runtime.backupProgress;
    const QString value = backupDurationLabel(progress.elapsedSeconds);
    if (progress.phase == QLatin1String("completed"))
        return {QStringLiteral("Last backup duration"), value};
    if (progress.phase == QLatin1String("failed"))
        return {QStringLiteral("Last attempt duration"), value};
    if (progress.phase == QLatin1String("cancelled"))
        return {QStringLiteral("Cancelled attempt duration"), value};
    if (status->runtime.active)
        return {QStringLiteral("Current backup elapsed"), value};
    return {QStringLiteral("Last backup duration"), value};
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
        return QStringLiteral("Checking latest\u2026");
    const std::optional<QString> &latest = status->runtime.latestAgentVersion;
    if (updateIsActuallyAvailable(status))
        return QStringLiteral("Update available: ") +
               latest.value_or(QStringLiteral("new release"));
    if (!status->runtime.serviceReachable)
        return couldNotVerifyLabel;
    if (latest && *latest == status->agentVersion)
        return latestVersionLabel;
    return QStringLiteral("Checking latest\u2026");
}

ColorRole versionStatusColor(const std::optional<AgentUIStatus> &status)
{
    if (updateIsActuallyAvailable(status))
        return ColorRole::Blue;
    const QString label = versionStatusLabel(status);
    if (label == latestVersionLabel)
        return ColorRole::Green;
    if (label == couldNotVerifyLabel)
        return ColorRole::Orange;
    return ColorRole::Secondary;
}

Symbol versionStatusSymbol(const std::optional<AgentUIStatus> &status)
{
    if (updateIsActuallyAvailable(status))
        return Symbol::ArrowDownCircle;
    const QString label = versionStatusLabel(status);
    if (label == latestVersionLabel)
        return Symbol::CheckCircle;
    if (label == couldNotVerifyLabel)
        return Symbol::WarningTriangle;
    return Symbol::Clock;
}
