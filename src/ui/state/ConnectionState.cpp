#include "ConnectionState.h"

#include "Formatting.h"
#include "PlatformText.h"
#include "VersionStatus.h"

#include <QCoreApplication>

namespace {

QString compatibilityText(const std::optional<AgentUIStatus> &status)
{
    if (status) {
        if (status->runtime.compatibility == QLatin1String("compatible"))
            return QCoreApplication::translate("ConnectionState",
                                               "Compatible with signed service policy");
        if (status->runtime.compatibility == QLatin1String("legacy-v1"))
            return QCoreApplication::translate("ConnectionState", "Compatible legacy v1 protocol");
    }
    return QCoreApplication::translate("ConnectionState", "Not checked yet");
}

QString latestBackupResult(const std::optional<AgentUIStatus> &status)
{
    // The time stamp decides first: no last backup means nothing to qualify.
    if (!status || !status->runtime.lastBackupAt)
        return QCoreApplication::translate("ConnectionState", "Not yet");
    const std::optional<bool> &ready = status->runtime.recoveryReady;
    if (!ready)
        return QCoreApplication::translate("ConnectionState",
                                           "Completed; verification type unavailable");
    return *ready ? QCoreApplication::translate("ConnectionState", "Recovery Ready")
                  : QCoreApplication::translate("ConnectionState", "Successful empty backup");
}

} // namespace

ConnectionState connectionState(const std::optional<AgentUIStatus> &status, bool busy)
{
    const RuntimeStatus *runtime = status ? &status->runtime : nullptr;
    ConnectionState state;
    const DurationDetail duration = backupDurationDetail(status);
    state.rows = {
        {QCoreApplication::translate("ConnectionState", "Agent version"),
         status ? leftToRightIsolated(status->agentVersion)
                : QCoreApplication::translate("ConnectionState", "Checking…")},
        {QCoreApplication::translate("ConnectionState", "Service version"),
         runtime && runtime->serviceVersion
             ? leftToRightIsolated(*runtime->serviceVersion)
             : QCoreApplication::translate("ConnectionState", "Legacy v1 service")},
        {QCoreApplication::translate("ConnectionState", "Compatibility"),
         compatibilityText(status)},
        {QCoreApplication::translate("ConnectionState", "Latest compatible agent"),
         runtime && runtime->latestAgentVersion
             ? leftToRightIsolated(*runtime->latestAgentVersion)
             : QCoreApplication::translate("ConnectionState", "Not advertised by legacy service")},
        {QCoreApplication::translate("ConnectionState", "Online compatible targets"),
         firstStrongIsolated(QString::number(runtime ? runtime->authorizedTargets : 0))},
        {QCoreApplication::translate("ConnectionState", "Last contact"),
         firstStrongIsolated(dateLabel(runtime ? runtime->lastContactAt : std::nullopt))},
        {QCoreApplication::translate("ConnectionState", "Last successful backup"),
         firstStrongIsolated(dateLabel(runtime ? runtime->lastBackupAt : std::nullopt))},
        {duration.label, duration.value},
        {QCoreApplication::translate("ConnectionState", "Latest backup result"),
         latestBackupResult(status)},
    };
    state.showUpdateCard = updateIsActuallyAvailable(status);
    state.installEnabled = !busy;
    state.checkLabel = runtime && runtime->enrolled
                           ? QCoreApplication::translate("ConnectionState", "Check connection")
                           : QCoreApplication::translate("ConnectionState", "Check service");
    state.checkEnabled = !busy;
    return state;
}
