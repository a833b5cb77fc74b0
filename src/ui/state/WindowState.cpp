#include "WindowState.h"

#include "AgentModel.h"
#include "PlatformText.h"
#include "TextRules.h"
#include "VersionStatus.h"

WindowInputs windowInputs(const AgentModel &model, const QString &appVersion)
{
    WindowInputs inputs;
    inputs.status = model.status();
    inputs.invitation = model.invitation();
    inputs.sources = model.sources();
    inputs.currentNetworkMetered = model.currentNetworkMetered();
    inputs.busy = model.busy();
    inputs.notice = model.notice();
    inputs.error = model.error();
    inputs.appVersion = appVersion;
    return inputs;
}

WindowState windowState(const WindowInputs &in)
{
    const std::optional<AgentUIStatus> &status = in.status;
    WindowState w;
    w.subtitle = localMachineText(QStringLiteral("Simple, encrypted protection for this Mac"));

    QString running = status ? status->agentVersion : in.appVersion;
    if (!status && running.isEmpty())
        running = QStringLiteral("Unknown");
    w.versionLine = QStringLiteral("ZQB Agent ") + running;
    w.capsule = {versionStatusLabel(status), versionStatusColor(status),
                 versionStatusSymbol(status)};

    w.badge = badgeState(status ? std::optional<RuntimeStatus>(status->runtime) : std::nullopt);
    w.errorCard = in.error;
    w.noticeCard = in.notice;

    if (!status)
        w.connectionBox = ConnectionBox::Restoring;
    else if (!status->runtime.enrolled)
        w.connectionBox = ConnectionBox::Connect;
    else
        w.connectionBox = ConnectionBox::None;
    w.connectTitle = localMachineText(QStringLiteral("Connect this Mac"));
    w.connectText = QStringLiteral("On the target Mac, choose Settings \u2192 Remote backup target "
                                   "\u2192 Enroll an agent. Paste its one-time invitation here.");
    w.enrollLabel = localMachineText(QStringLiteral("Enroll this Mac"));
    // Counted as typed, without trimming; the model trims before sending.
    w.enrollEnabled =
        !in.busy && TextRules::graphemeCount(in.invitation) >= minimumInvitationLength;
    w.restoringText =
        localMachineText(QStringLiteral("Reading this Mac's existing ZQB enrollment\u2026"));

    w.folders = in.sources;
    w.showNoFolders = in.sources.isEmpty();
    w.fullDiskAccessVisible = platformOffersFullDiskAccess();

    w.saveEnabled = !in.busy;
    w.backUpNowEnabled = !in.busy && status && status->runtime.enrolled && !in.sources.isEmpty();
    w.allowMeteredEnabled = in.currentNetworkMetered;

    w.connection = connectionState(status, in.busy);
    return w;
}
