#pragma once

#include "AgentRunner.h"
#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "CommandResult.h"
#include "TransferPolicy.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class DesktopNotifier;
class FolderChooser;
class QThreadPool;

// The one observable object of the app: every value shown or edited, and
// every operation that talks to the engine. Lives on the main thread.
//
// Every assignment to an observable field, also of an equal value, emits that
// field's own signal and then changed(); views coalesce those into one render.
class AgentModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(std::optional<AgentUIStatus> status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString invitation READ invitation WRITE setInvitation NOTIFY invitationChanged)
    Q_PROPERTY(QStringList sources READ sources WRITE setSources NOTIFY sourcesChanged)
    Q_PROPERTY(qint64 intervalMinutes READ intervalMinutes WRITE setIntervalMinutes NOTIFY
                   intervalMinutesChanged)
    Q_PROPERTY(bool scheduleEnabled READ scheduleEnabled WRITE setScheduleEnabled NOTIFY
                   scheduleEnabledChanged)
    Q_PROPERTY(
        QString exclusionText READ exclusionText WRITE setExclusionText NOTIFY exclusionTextChanged)
    Q_PROPERTY(bool transfersPaused READ transfersPaused WRITE setTransfersPaused NOTIFY
                   transfersPausedChanged)
    Q_PROPERTY(qint64 bandwidthLimitKibPerSecond READ bandwidthLimitKibPerSecond WRITE
                   setBandwidthLimitKibPerSecond NOTIFY bandwidthLimitKibPerSecondChanged)
    Q_PROPERTY(bool currentNetworkMetered READ currentNetworkMetered WRITE setCurrentNetworkMetered
                   NOTIFY currentNetworkMeteredChanged)
    Q_PROPERTY(bool allowMeteredNetwork READ allowMeteredNetwork WRITE setAllowMeteredNetwork NOTIFY
                   allowMeteredNetworkChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(std::optional<QString> notice READ notice WRITE setNotice NOTIFY noticeChanged)
    Q_PROPERTY(std::optional<QString> error READ error WRITE setError NOTIFY errorChanged)

public:
    static inline const QString defaultExclusionText =
        QStringLiteral(".DS_Store, .Spotlight-V100, .Trashes, .fseventsd");
    static inline const QString checkConnectionNotification =
        QStringLiteral("ZQBAgentCheckConnection");

    struct Services
    {
        AgentRunner runner;                     // the engine to run
        DesktopNotifier *notifier = nullptr;    // not owned; may be null (nothing shown)
        FolderChooser *folderChooser = nullptr; // not owned; may be null (addFolders does nothing)
    };

    explicit AgentModel(Services services, QObject *parent = nullptr);
    ~AgentModel() override;

    // Observable fields.
    const std::optional<AgentUIStatus> &status() const { return m_status; }
    QString invitation() const { return m_invitation; }
    QStringList sources() const { return m_sources; }
    qint64 intervalMinutes() const { return m_intervalMinutes; }
    bool scheduleEnabled() const { return m_scheduleEnabled; }
    QString exclusionText() const { return m_exclusionText; }
    bool transfersPaused() const { return m_transfersPaused; }
    qint64 bandwidthLimitKibPerSecond() const { return m_bandwidthLimitKibPerSecond; }
    bool currentNetworkMetered() const { return m_currentNetworkMetered; }
    bool allowMeteredNetwork() const { return m_allowMeteredNetwork; }
    bool busy() const { return m_busy; }
    const std::optional<QString> &notice() const { return m_notice; }
    const std::optional<QString> &error() const { return m_error; }

    // Bookkeeping, not observed.
    const std::optional<QString> &observedBackup() const { return m_observedBackup; }
    bool started() const { return m_started; }
    // A "ui-status" run of this model has not delivered yet. There is never
    // more than one: a refresh asked for meanwhile follows it (see refresh()),
    // so an engine that hangs holds one status read at most.
    bool statusReadRunning() const { return m_statusReadRunning; }

    // Writers used by the window's controls.
    void setInvitation(const QString &value); // wipes the previous text in place
    void setSources(const QStringList &value);
    void setIntervalMinutes(qint64 value);
    void setScheduleEnabled(bool value);
    void setExclusionText(const QString &value);
    void setTransfersPaused(bool value);
    void setBandwidthLimitKibPerSecond(qint64 value);
    void setCurrentNetworkMetered(bool value);
    void setAllowMeteredNetwork(bool value);
    void setNotice(const std::optional<QString> &value);
    void setError(const std::optional<QString> &value);

    // Operations; all on the main thread, each returns at once.
    void start();
    void refresh(bool showErrors, bool announceCompletion);
    void checkConnection();
    void enroll();
    void installUpdate();
    void addFolders();
    void removeFolder(const QString &path);
    QStringList parsedExclusions() const;
    void save();
    void saveThenBackup();
    void backUpNow(); // the "Back up now" guard in front of saveThenBackup()
    void openFullDiskAccess();
    void saveTransferPolicy(std::function<void()> completion);

    // The one rule that turns a failed result into text.
    static QString presentableError(const CommandResult &result);

signals:
    void changed(); // after any observable assignment
    // After one engine command's result has been applied in full (a chain
    // emits it once per step): its assignments are all made, so a view can
    // show them at once instead of on its next turn.
    void settled();
    void statusChanged();
    void invitationChanged();
    void sourcesChanged();
    void intervalMinutesChanged();
    void scheduleEnabledChanged();
    void exclusionTextChanged();
    void transfersPausedChanged();
    void bandwidthLimitKibPerSecondChanged();
    void currentNetworkMeteredChanged();
    void allowMeteredNetworkChanged();
    void busyChanged();
    void noticeChanged();
    void errorChanged();

protected:
    // The dispatch step: runs one engine command on a worker thread and calls
    // `completion` on the main thread. `input` may be null (no standard input).
    void run(const QStringList &arguments, std::shared_ptr<QByteArray> input, bool showBusy,
             std::function<void(const CommandResult &)> completion);
    void notify(const QString &title, const QString &body);

    // Test hooks. Dispatched commands whose main-thread step has not run yet,
    // process-wide (also those of models already destroyed).
    static int commandsInFlight();
    // The standard-input buffer of the latest enrollment while anyone holds it.
    std::weak_ptr<QByteArray> lastEnrollmentInput() const { return m_enrollmentInput; }
    // The JSON documents sent by the saves; absent when a record cannot be written.
    virtual std::optional<QByteArray> encodeSettingsDocument(const AgentSettings &settings) const;
    virtual std::optional<QByteArray>
    encodeTransferPolicyDocument(const TransferPolicy &policy) const;

private:
    // Stores the value, then tells the field's observers and the whole-object ones.
    template <typename T> void assign(T &field, const T &value, void (AgentModel::*fieldChanged)());
    void assignStatus(const AgentUIStatus &value);
    void assignBusy(bool value);
    void startStatusRead(bool showErrors, bool announceCompletion);
    void applyStatus(const CommandResult &result, bool showErrors, bool announceCompletion);
    void announce(const RuntimeStatus &runtime);
    void saveSettings(std::function<void()> afterPolicySaved);

    Services m_services;
    std::optional<AgentUIStatus> m_status;
    QString m_invitation;
    QStringList m_sources;
    qint64 m_intervalMinutes = 240;
    bool m_scheduleEnabled = false;
    QString m_exclusionText = defaultExclusionText;
    bool m_transfersPaused = false;
    qint64 m_bandwidthLimitKibPerSecond = 0;
    bool m_currentNetworkMetered = false;
    bool m_allowMeteredNetwork = false;
    bool m_busy = false;
    std::optional<QString> m_notice;
    std::optional<QString> m_error;
    std::optional<QString> m_observedBackup;
    bool m_started = false;
    bool m_statusReadRunning = false;
    struct FollowingRead
    {
        bool showErrors = false;
        bool announceCompletion = false;
    };
    std::optional<FollowingRead> m_followingRead; // asked for while a read ran
    std::weak_ptr<QByteArray> m_enrollmentInput;
};
