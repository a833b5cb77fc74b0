#include "AgentModel.h"

#include "AgentDocuments.h"
#include "AgentPaths.h"
#include "DesktopNotifier.h"
#include "NotificationCenter.h"
#include "ShownText.h"
#include "TextRules.h"
#include "TranslatedText.h"

// Reading the status document into the model, and announcing a backup that
// has completed.

namespace {

const TranslatedText unreadableStatusMessage = {
    "AgentModel",
    QT_TRANSLATE_NOOP("AgentModel", "ZQB Agent returned an unreadable local status.")};

constexpr qsizetype notificationBodyCap = 300;

} // namespace

void AgentModel::refresh(bool showErrors, bool announceCompletion)
{
    if (m_statusReadRunning) {
        // One status read at a time. The read in flight may have started
        // before what the caller has just changed, so another follows it,
        // with the flags of every refresh asked for meanwhile. The error is
        // cleared now, as a dispatch would.
        setError(std::nullopt);
        const FollowingRead earlier = m_followingRead.value_or(FollowingRead{});
        m_followingRead = FollowingRead{earlier.showErrors || showErrors,
                                        earlier.announceCompletion || announceCompletion};
        return;
    }
    startStatusRead(showErrors, announceCompletion);
}

void AgentModel::startStatusRead(bool showErrors, bool announceCompletion)
{
    m_statusReadRunning = true;
    run({AgentRunner::statusCommand}, nullptr, false,
        [this, showErrors, announceCompletion](const CommandResult &result) {
            m_statusReadRunning = false;
            applyStatus(result, showErrors, announceCompletion);
            // The observers of applyStatus may have started the next read already.
            if (m_followingRead && !m_statusReadRunning) {
                const FollowingRead next = *m_followingRead;
                m_followingRead.reset();
                startStatusRead(next.showErrors, next.announceCompletion);
            }
        });
}

void AgentModel::applyStatus(const CommandResult &result, bool showErrors, bool announceCompletion)
{
    if (!result.succeeded) {
        if (showErrors)
            setError(presentableError(result));
        return;
    }
    // Read from all the engine printed, not from the capped `output`: the
    // document grows with every folder and must always read.
    const std::optional<AgentUIStatus> decoded = AgentDocuments::decodeStatus(result.wholeOutput());
    if (!decoded) {
        if (showErrors)
            setError(unreadableStatusMessage);
        return;
    }
    // Keep our own copy: the assignments below emit signals whose handlers
    // may start new work.
    const AgentUIStatus document = *decoded;

    assignStatus(document);
    setSources(document.settings.sources);
    setIntervalMinutes(document.settings.intervalMinutes);
    setScheduleEnabled(document.settings.enabled);
    setExclusionText(document.settings.exclusions.join(QStringLiteral(", ")));
    setTransfersPaused(document.transferPolicy.paused);
    setBandwidthLimitKibPerSecond(document.transferPolicy.bandwidthLimitKibPerSecond);
    setCurrentNetworkMetered(document.transferPolicy.currentNetworkMetered);
    setAllowMeteredNetwork(document.transferPolicy.allowMeteredNetwork);

    const std::optional<QString> previous = m_observedBackup;
    const std::optional<QString> &latest = document.runtime.lastBackupAt;
    m_observedBackup = latest;

    // "state" is what the tray tints by; "runtime" lets it tell the state and a
    // running backup's progress in its tooltip without holding the model.
    NotificationCenter::defaultCenter().post(
        statusNotification(),
        QVariantMap{{QStringLiteral("state"), document.runtime.state},
                    {QStringLiteral("runtime"), QVariant::fromValue(document.runtime)}});

    // Edge-triggered on a new last backup, or forced after a user-started one;
    // the first status seen never announces on its own.
    if (!latest)
        return;
    if (announceCompletion || (previous && *previous != *latest))
        announce(document.runtime);
}

void AgentModel::announce(const RuntimeStatus &runtime)
{
    QString title;
    QString body;
    if (!runtime.recoveryReady) {
        title = tr("ZQB backup completed");
        body = ShownText::bounded(runtime.message);
    } else if (*runtime.recoveryReady) {
        title = tr("ZQB backup Recovery Ready");
        body =
            tr("The authorized target returned signed zero-error verification for non-empty data.");
    } else {
        title = tr("ZQB empty backup completed");
        body = tr("The target verified this run with zero errors, but no files were "
                  "present after exclusions.");
    }
    setNotice(body);
    notify(title, body);
}

void AgentModel::notify(const QString &title, const QString &body)
{
    if (m_services.notifier)
        m_services.notifier->post(title, TextRules::leftGraphemes(body, notificationBodyCap));
}
