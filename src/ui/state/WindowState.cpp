#include "WindowState.h"

#include "AgentModel.h"
#include "PlatformText.h"
#include "ShownText.h"
#include "TextRules.h"
#include "VersionStatus.h"

#include <QCoreApplication>

WindowInputs windowInputs(const AgentModel &model, const QString &appVersion)
{
    WindowInputs inputs;
    // Engine texts are cut for showing here, once, before any rule reads them.
    if (model.status())
        inputs.status = ShownText::bounded(*model.status());
    inputs.invitation = model.invitation();
    inputs.sources = model.sources();
    inputs.intervalMinutes = model.intervalMinutes();
    inputs.scheduleEnabled = model.scheduleEnabled();
    inputs.exclusionText = model.exclusionText();
    inputs.transfersPaused = model.transfersPaused();
    inputs.bandwidthLimitKibPerSecond = model.bandwidthLimitKibPerSecond();
    inputs.currentNetworkMetered = model.currentNetworkMetered();
    inputs.allowMeteredNetwork = model.allowMeteredNetwork();
    inputs.busy = model.busy();
    if (model.notice())
        inputs.notice = ShownText::bounded(*model.notice());
    if (model.error())
        inputs.error = ShownText::bounded(*model.error(), ShownText::errorCap);
    inputs.appVersion = appVersion;
    return inputs;
}

namespace {

HeaderState headerState(const WindowInputs &in)
{
    const std::optional<AgentUIStatus> &status = in.status;
    HeaderState h;
    h.subtitle = localMachineTranslation(
        "WindowState", QStringLiteral("Simple, encrypted protection for this Mac"));
    QString running = status ? status->agentVersion : in.appVersion;
    if (!status && running.isEmpty())
        running = QCoreApplication::translate("WindowState", "Unknown");
    h.versionLine = leftToRightIsolated(QStringLiteral("ZQB Agent ") + running);
    h.capsule = {versionStatusLabel(status), versionStatusColor(status),
                 versionStatusSymbol(status)};
    return h;
}

ConnectBoxState connectBoxState(const WindowInputs &in)
{
    ConnectBoxState c;
    c.visible = in.status && !in.status->runtime.enrolled;
    c.title = localMachineTranslation("WindowState", QStringLiteral("Connect this Mac"));
    c.text = QCoreApplication::translate("WindowState",
                                         "On the target Mac, choose Settings → Remote backup "
                                         "target → Enroll an agent. Paste its one-time "
                                         "invitation here.");
    c.enrollLabel = localMachineTranslation("WindowState", QStringLiteral("Enroll this Mac"));
    // Counted as typed, without trimming; the model trims before sending.
    c.enrollEnabled =
        !in.busy && TextRules::graphemeCount(in.invitation) >= minimumInvitationLength;
    return c;
}

ScheduleState scheduleState(const WindowInputs &in)
{
    ScheduleState s;
    s.enabled = in.scheduleEnabled;
    s.intervalMinutes = in.intervalMinutes;
    s.saveEnabled = !in.busy;
    s.backUpNowEnabled =
        !in.busy && in.status && in.status->runtime.enrolled && !in.sources.isEmpty();
    s.busy = in.busy;
    return s;
}

NetworkState networkState(const WindowInputs &in)
{
    NetworkState n;
    n.paused = in.transfersPaused;
    n.bandwidthLimitKibPerSecond = in.bandwidthLimitKibPerSecond;
    n.currentNetworkMetered = in.currentNetworkMetered;
    n.allowMeteredNetwork = in.allowMeteredNetwork;
    n.allowMeteredEnabled = in.currentNetworkMetered;
    return n;
}

} // namespace

WindowState windowState(const WindowInputs &in)
{
    WindowState w;
    w.header = headerState(in);
    w.badge =
        badgeState(in.status ? std::optional<RuntimeStatus>(in.status->runtime) : std::nullopt);
    w.errorCard = in.error;
    w.noticeCard = in.notice;
    w.connect = connectBoxState(in);
    w.restoring.visible = !in.status;
    w.restoring.text = localMachineTranslation(
        "WindowState", QStringLiteral("Reading this Mac's existing ZQB enrollment\u2026"));
    w.folders = {in.sources, in.sources.isEmpty(), platformOffersFullDiskAccess()};
    w.schedule = scheduleState(in);
    w.skipPatterns.text = in.exclusionText;
    w.network = networkState(in);
    w.connection = connectionState(in.status, in.busy);
    return w;
}
