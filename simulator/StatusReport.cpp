#include "StatusReport.h"

#include "AgentDocuments.h"
#include "SimState.h"
#include "TextRules.h"
#include "Versions.h"

namespace {

constexpr qsizetype shortTextLimit = 64;
constexpr qsizetype messageLimit = 300;

QString capped(const QString &text, qsizetype limit)
{
    return TextRules::leftGraphemes(text, limit);
}

std::optional<QString> capped(const std::optional<QString> &text, qsizetype limit)
{
    if (!text)
        return std::nullopt;
    return capped(*text, limit);
}

QString phaseWords(const QString &phase)
{
    QString words = phase;
    words.replace(QLatin1Char('-'), QLatin1Char(' '));
    return words;
}

QString backingUpMessage(const QString &target, const std::optional<BackupProgressStatus> &progress)
{
    if (!progress || progress->phase == QLatin1String("completed"))
        return QStringLiteral("Backing up to %1.").arg(target);
    if (progress->sourceCount > 1)
        return QStringLiteral("Backing up to %1: %2, folder %3 of %4.")
            .arg(target, phaseWords(progress->phase))
            .arg(progress->sourceIndex)
            .arg(progress->sourceCount);
    return QStringLiteral("Backing up to %1: %2.").arg(target, phaseWords(progress->phase));
}

bool finished(const BackupProgressStatus &progress)
{
    return progress.phase == QLatin1String("completed") ||
           progress.phase == QLatin1String("failed");
}

} // namespace

namespace StatusReport {

AgentUIStatus build(const SimState &state, bool backupRunning)
{
    bool settingsReadable = true;
    bool policyReadable = true;
    bool agentReadable = true;
    AgentUIStatus status;
    status.schema = schema;
    status.settings = state.settings(&settingsReadable);
    status.transferPolicy = state.transferPolicy(&policyReadable);
    const AgentRecord agent = state.agent(&agentReadable);
    const std::optional<BackupProgressStatus> progress = state.progress();
    const QString target = capped(agent.targetName, shortTextLimit);

    status.agentVersion = capped(agent.agentVersion, shortTextLimit);
    RuntimeStatus &runtime = status.runtime;
    runtime.enrolled = agent.enrolled;
    runtime.repositoryReady = agent.enrolled;
    runtime.serviceReachable = agent.online;
    runtime.authorizedTargets = agent.enrolled && agent.online ? 1 : 0;
    runtime.serviceVersion = capped(agent.serviceVersion, shortTextLimit);
    runtime.latestAgentVersion = capped(agent.latestAgentVersion, shortTextLimit);
    runtime.agentUpdateAvailable =
        Versions::isValid(agent.latestAgentVersion) &&
        Versions::compare(agent.agentVersion, agent.latestAgentVersion) < 0;
    runtime.compatibility = capped(agent.compatibility, shortTextLimit);
    runtime.active = backupRunning;
    runtime.backupProgress = progress;
    runtime.lastContactAt = capped(agent.lastContactAt, shortTextLimit);
    runtime.lastBackupAttemptAt = capped(agent.lastBackupAttemptAt, shortTextLimit);
    runtime.lastBackupAt = capped(agent.lastBackupAt, shortTextLimit);
    runtime.recoveryReady = agent.recoveryReady;
    runtime.lastError = agent.lastError;

    const TransferPolicy &policy = status.transferPolicy;
    if (backupRunning) {
        runtime.state = QStringLiteral("backing-up");
        runtime.message = backingUpMessage(target, progress);
    } else if (!agent.enrolled) {
        runtime.state = QStringLiteral("setup-required");
        runtime.message =
            agent.online
                ? QStringLiteral(
                      "Paste a one-time invitation from the target Mac to connect this computer.")
                : QStringLiteral("The ZQB service is not reachable. Check the network connection.");
    } else if (!agent.online) {
        runtime.state = QStringLiteral("waiting-for-target");
        runtime.message =
            QStringLiteral("Waiting for %1, the authorized target, to come back online.")
                .arg(target);
    } else if (policy.paused) {
        runtime.state = QStringLiteral("paused");
        runtime.message = QStringLiteral(
            "Network transfers are paused. Backups wait until transfers are resumed.");
    } else {
        runtime.state = QStringLiteral("connected");
        runtime.message =
            policy.currentNetworkMetered && !policy.allowMeteredNetwork
                ? QStringLiteral("Connected to %1. Backups wait for a network that is not metered.")
                      .arg(target)
                : QStringLiteral("Connected to %1, the authorized target.").arg(target);
    }

    if (!backupRunning && progress && !finished(*progress))
        runtime.lastError = QStringLiteral("The last backup was interrupted before it finished.");
    else if (!settingsReadable)
        runtime.lastError =
            QStringLiteral("The stored folder settings could not be read; defaults are shown.");
    else if (!policyReadable)
        runtime.lastError =
            QStringLiteral("The stored transfer policy could not be read; defaults are shown.");
    else if (!agentReadable)
        runtime.lastError =
            QStringLiteral("The stored agent state could not be read; it starts afresh.");
    runtime.message = capped(runtime.message, messageLimit);
    runtime.lastError = capped(runtime.lastError, messageLimit);
    return status;
}

QByteArray render(AgentUIStatus status)
{
    QByteArray document = AgentDocuments::encode(status);
    if (document.size() <= sizeLimit)
        return document;

    // Shorten step by step; each step keeps the document valid.
    TransferPolicy &policy = status.transferPolicy;
    if (policy.preferredTargetDeviceId)
        policy.preferredTargetDeviceId = capped(*policy.preferredTargetDeviceId, shortTextLimit);
    policy.schema = capped(policy.schema, shortTextLimit);
    status.settings.schema = capped(status.settings.schema, shortTextLimit);
    qsizetype leftOutFolders = 0;
    qsizetype leftOutPatterns = 0;
    const auto note = [&] {
        status.runtime.lastError =
            QStringLiteral(
                "The status report leaves out %1 folders and %2 skip patterns to stay short.")
                .arg(leftOutFolders)
                .arg(leftOutPatterns);
    };
    note();
    document = AgentDocuments::encode(status);
    while (document.size() > sizeLimit &&
           (!status.settings.sources.isEmpty() || !status.settings.exclusions.isEmpty())) {
        // Leave out at least as many bytes as the document is over, then
        // measure again; escaping only makes each entry longer than counted.
        qsizetype excess = document.size() - sizeLimit;
        while (excess > 0 &&
               (!status.settings.sources.isEmpty() || !status.settings.exclusions.isEmpty())) {
            QStringList &list = status.settings.sources.isEmpty() ? status.settings.exclusions
                                                                  : status.settings.sources;
            excess -= list.takeLast().toUtf8().size() + 3;
            ++(&list == &status.settings.sources ? leftOutFolders : leftOutPatterns);
        }
        note();
        document = AgentDocuments::encode(status);
    }
    return document;
}

} // namespace StatusReport
