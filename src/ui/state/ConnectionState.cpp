#include "ConnectionState.h"

#include "Formatting.h"
#include "VersionStatus.h"

namespace {

QString compatibilityText(const std::optional<AgentUIStatus> &status)
{
    if (status) {
        if (status->runtime.compatibility == QLatin1String("compatible"))
            return QStringLiteral("Compatible with signed service policy");
        if (status->runtime.compatibility == QLatin1String("legacy-v1"))
            return QStringLiteral("Compatible legacy v1 protocol");
    }
    return QStringLiteral("Not checked yet");
}

QString latestBackupResult(const std::optional<AgentUIStatus> &status)
{
    // The time stamp decides first: no last backup means nothing to qualify.
    if (!status || !status->runtime.lastBackupAt)
        return QStringLiteral("Not yet");
    const std::optional<bool> &ready = status->runtime.recoveryReady;
    if (!ready)
        return QStringLiteral("Completed; verification type unavailable");
    return *ready ? QStringLiteral("Recovery Ready") : QStringLiteral("Successful empty backup");
}

} // namespace

ConnectionState connectionState(const std::optional<AgentUIStatus> &status, bool busy)
{
    const RuntimeStatus *runtime = status ? &status->runtime : nullptr;
    ConnectionState state;
    const DurationDetail duration = backupDurationDetail(status);
    state.rows = {
        {QStringLiteral("Agent version"),
         status ? status->agentVersion : QStringLiteral("Checking\u2026")},
        {QStringLiteral("Service version"), runtime && runtime->serviceVersion
                                                ? *runtime->serviceVersion
                                                : QStringLiteral("Legacy v1 service")},
        {QStringLiteral("Compatibility"), compatibilityText(status)},
        {QStringLiteral("Latest compatible agent"),
         runtime && runtime->latestAgentVersion
             ? *runtime->latestAgentVersion
             : QStringLiteral("Not advertised by legacy service")},
        {QStringLiteral("Online compatible targets"),
         QString::number(runtime ? runtime->authorizedTargets : 0)},
        {QStringLiteral("Last contact"),
         dateLabel(runtime ? runtime->lastContactAt : std::nullopt)},
        {QStringLiteral("Last successful backup"),
         dateLabel(runtime ? runtime->lastBackupAt : std::nullopt)},
        {duration.label, duration.value},
        {QStringLiteral("Latest backup result"), latestBackupResult(status)},
    };
    state.showUpdateCard = updateIsActuallyAvailable(status);
    state.installEnabled = !busy;
    state.checkLabel = runtime && runtime->enrolled ? QStringLiteral("Check connection")
                                                    : QStringLiteral("Check service");
    state.checkEnabled = !busy;
    return state;
}
