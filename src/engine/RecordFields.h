#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "BackupProgressStatus.h"
#include "RuntimeStatus.h"
#include "TransferPolicy.h"

#include <type_traits>

// The one list of each record's JSON keys, in declared order, shared by the
// writer and the reader so the two can never disagree. `visit(key, field)` is
// called once per field; works on const and mutable records alike.
namespace RecordFields {

template <class R, class T>
concept RecordOf = std::is_same_v<std::remove_const_t<R>, T>;

template <RecordOf<AgentSettings> R, class V> void forEach(R &r, V &&visit)
{
    visit("schema", r.schema);
    visit("enabled", r.enabled);
    visit("intervalMinutes", r.intervalMinutes);
    visit("sources", r.sources);
    visit("exclusions", r.exclusions);
}

template <RecordOf<TransferPolicy> R, class V> void forEach(R &r, V &&visit)
{
    visit("schema", r.schema);
    visit("paused", r.paused);
    visit("bandwidthLimitKibPerSecond", r.bandwidthLimitKibPerSecond);
    visit("currentNetworkMetered", r.currentNetworkMetered);
    visit("allowMeteredNetwork", r.allowMeteredNetwork);
    visit("preferredTargetDeviceId", r.preferredTargetDeviceId);
    visit("retryAttempts", r.retryAttempts);
}

template <RecordOf<BackupProgressStatus> R, class V> void forEach(R &r, V &&visit)
{
    visit("phase", r.phase);
    visit("sourceIndex", r.sourceIndex);
    visit("sourceCount", r.sourceCount);
    visit("filesScanned", r.filesScanned);
    visit("totalFiles", r.totalFiles);
    visit("bytesScanned", r.bytesScanned);
    visit("totalBytes", r.totalBytes);
    visit("objectsPrepared", r.objectsPrepared);
    visit("totalObjects", r.totalObjects);
    visit("objectsUploaded", r.objectsUploaded);
    visit("objectsReused", r.objectsReused);
    visit("bytesUploaded", r.bytesUploaded);
    visit("resumedPreparation", r.resumedPreparation);
    visit("lastProgressAt", r.lastProgressAt);
    visit("elapsedSeconds", r.elapsedSeconds);
}

template <RecordOf<RuntimeStatus> R, class V> void forEach(R &r, V &&visit)
{
    visit("state", r.state);
    visit("message", r.message);
    visit("enrolled", r.enrolled);
    visit("repositoryReady", r.repositoryReady);
    visit("serviceReachable", r.serviceReachable);
    visit("authorizedTargets", r.authorizedTargets);
    visit("serviceVersion", r.serviceVersion);
    visit("latestAgentVersion", r.latestAgentVersion);
    visit("agentUpdateAvailable", r.agentUpdateAvailable);
    visit("compatibility", r.compatibility);
    visit("active", r.active);
    visit("backupProgress", r.backupProgress);
    visit("lastContactAt", r.lastContactAt);
    visit("lastBackupAttemptAt", r.lastBackupAttemptAt);
    visit("lastBackupAt", r.lastBackupAt);
    visit("recoveryReady", r.recoveryReady);
    visit("lastError", r.lastError);
}

template <RecordOf<AgentUIStatus> R, class V> void forEach(R &r, V &&visit)
{
    visit("schema", r.schema);
    visit("agentVersion", r.agentVersion);
    visit("settings", r.settings);
    visit("transferPolicy", r.transferPolicy);
    visit("runtime", r.runtime);
}

} // namespace RecordFields
