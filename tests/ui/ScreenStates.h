#pragma once

// Status documents for the window's typical states, shared by the widget
// tests and the screenshot tool.

#include "AgentDocuments.h"
#include "AgentUIStatus.h"

namespace ScreenStates {

inline AgentUIStatus base()
{
    AgentUIStatus s;
    s.schema = QStringLiteral("zqb.agent-ui-status.v1");
    s.agentVersion = QStringLiteral("2.3.0");
    s.settings.enabled = true;
    s.settings.intervalMinutes = 240;
    s.settings.exclusions = {QStringLiteral(".DS_Store"), QStringLiteral("node_modules"),
                             QStringLiteral("*.tmp")};
    s.transferPolicy.bandwidthLimitKibPerSecond = 1280;
    s.runtime.state = QStringLiteral("connected");
    s.runtime.message = QStringLiteral("Protected and connected to the authorized target.");
    s.runtime.enrolled = true;
    s.runtime.repositoryReady = true;
    s.runtime.serviceReachable = true;
    s.runtime.authorizedTargets = 2;
    s.runtime.serviceVersion = QStringLiteral("5.2.0");
    s.runtime.latestAgentVersion = QStringLiteral("2.3.0");
    s.runtime.compatibility = QStringLiteral("compatible");
    s.runtime.lastContactAt = QStringLiteral("2025-03-01T14:05:09Z");
    s.runtime.lastBackupAttemptAt = QStringLiteral("2025-03-01T13:00:00Z");
    s.runtime.lastBackupAt = QStringLiteral("2025-03-01T13:02:41Z");
    s.runtime.recoveryReady = true;
    BackupProgressStatus done;
    done.phase = QStringLiteral("completed");
    done.sourceIndex = 3;
    done.sourceCount = 3;
    done.elapsedSeconds = 161;
    s.runtime.backupProgress = done;
    return s;
}

inline AgentUIStatus setupRequired()
{
    AgentUIStatus s = base();
    s.settings.sources.clear();
    s.runtime.state = QStringLiteral("setup-required");
    s.runtime.message = QStringLiteral("Paste a one-time invitation from the target to begin.");
    s.runtime.enrolled = false;
    s.runtime.repositoryReady = false;
    s.runtime.authorizedTargets = 0;
    s.runtime.lastContactAt.reset();
    s.runtime.lastBackupAttemptAt.reset();
    s.runtime.lastBackupAt.reset();
    s.runtime.recoveryReady.reset();
    s.runtime.backupProgress.reset();
    return s;
}

inline AgentUIStatus connectedIdle()
{
    AgentUIStatus s = base();
    s.settings.sources = {
        QStringLiteral("/home/ann/Documents"),
        QStringLiteral("/home/ann/Pictures/Family archive/2009-2024 scanned negatives and "
                       "slides from the attic boxes"),
        QStringLiteral("/srv/projects"),
    };
    return s;
}

inline AgentUIStatus uploading()
{
    AgentUIStatus s = connectedIdle();
    s.runtime.state = QStringLiteral("backing-up");
    s.runtime.message = QStringLiteral("Backing up 3 folders to the authorized target.");
    s.runtime.active = true;
    BackupProgressStatus p;
    p.phase = QStringLiteral("uploading");
    p.sourceIndex = 2;
    p.sourceCount = 3;
    p.filesScanned = 18234;
    p.totalFiles = 18234;
    p.bytesScanned = 52'000'000'000;
    p.totalBytes = 52'000'000'000;
    p.objectsPrepared = 4120;
    p.totalObjects = 4120;
    p.objectsUploaded = 1873;
    p.objectsReused = 912;
    p.bytesUploaded = 7'400'000'000;
    p.lastProgressAt = QStringLiteral("2025-03-01T14:05:09Z");
    p.elapsedSeconds = 1394;
    s.runtime.backupProgress = p;
    return s;
}

inline AgentUIStatus updateAvailable()
{
    AgentUIStatus s = connectedIdle();
    s.runtime.agentUpdateAvailable = true;
    s.runtime.latestAgentVersion = QStringLiteral("2.4.1");
    s.runtime.lastError = QStringLiteral("The last scheduled run could not reach the target.");
    return s;
}

} // namespace ScreenStates
