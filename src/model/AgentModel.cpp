#include "AgentModel.h"

#include "DesktopNotifier.h"
#include "NotificationCenter.h"
#include "SecretWipe.h"

#include <QTimer>

// The model's fields and its start. The operations live beside this file,
// grouped by what they do: AgentModelDispatch.cpp (running one engine
// command), AgentModelRefresh.cpp (reading the status document and announcing
// completed backups), AgentModelConnection.cpp (connection check, enrollment,
// update) and AgentModelSettings.cpp (folders and the save chains).

AgentModel::AgentModel(Services services, QObject *parent)
    : QObject(parent), m_services(std::move(services))
{
}

AgentModel::~AgentModel()
{
    SecretWipe::wipe(m_invitation);
}

// Every assignment announces itself, also of an equal value.

template <typename T>
void AgentModel::assign(T &field, const T &value, void (AgentModel::*fieldChanged)())
{
    field = value;
    emit(this->*fieldChanged)();
    emit changed();
}

void AgentModel::assignStatus(const AgentUIStatus &value)
{
    assign(m_status, std::optional<AgentUIStatus>(value), &AgentModel::statusChanged);
}

void AgentModel::setInvitation(const QString &value)
{
    const QString next = value; // `value` may be our own field
    SecretWipe::wipe(m_invitation);
    assign(m_invitation, next, &AgentModel::invitationChanged);
}

void AgentModel::setSources(const QStringList &value)
{
    assign(m_sources, value, &AgentModel::sourcesChanged);
}

void AgentModel::setIntervalMinutes(qint64 value)
{
    assign(m_intervalMinutes, value, &AgentModel::intervalMinutesChanged);
}

void AgentModel::setScheduleEnabled(bool value)
{
    assign(m_scheduleEnabled, value, &AgentModel::scheduleEnabledChanged);
}

void AgentModel::setExclusionText(const QString &value)
{
    assign(m_exclusionText, value, &AgentModel::exclusionTextChanged);
}

void AgentModel::setTransfersPaused(bool value)
{
    assign(m_transfersPaused, value, &AgentModel::transfersPausedChanged);
}

void AgentModel::setBandwidthLimitKibPerSecond(qint64 value)
{
    assign(m_bandwidthLimitKibPerSecond, value, &AgentModel::bandwidthLimitKibPerSecondChanged);
}

void AgentModel::setCurrentNetworkMetered(bool value)
{
    assign(m_currentNetworkMetered, value, &AgentModel::currentNetworkMeteredChanged);
}

void AgentModel::setAllowMeteredNetwork(bool value)
{
    assign(m_allowMeteredNetwork, value, &AgentModel::allowMeteredNetworkChanged);
}

void AgentModel::assignBusy(bool value)
{
    assign(m_busy, value, &AgentModel::busyChanged);
}

void AgentModel::setNotice(const std::optional<QString> &value)
{
    assign(m_notice, value, &AgentModel::noticeChanged);
}

void AgentModel::setError(const std::optional<QString> &value)
{
    assign(m_error, value, &AgentModel::errorChanged);
}

void AgentModel::start()
{
    if (m_started)
        return;
    m_started = true;
    if (m_services.notifier)
        m_services.notifier->requestAuthorization();
    NotificationCenter::defaultCenter().observe(
        checkConnectionNotification, this, [this](const QVariantMap &) {
            // Runs later on the main thread, and not at all once we are gone.
            QTimer::singleShot(0, this, [this] { checkConnection(); });
        });
    refresh(false, false);
}
