#include "AgentModel.h"

#include "AgentDocuments.h"
#include "AgentPaths.h"
#include "DesktopNotifier.h"
#include "FolderChooser.h"
#include "FolderList.h"
#include "NotificationCenter.h"
#include "SecretWipe.h"
#include "TextRules.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

#ifdef Q_OS_MACOS
#include <QDesktopServices>
#endif

#include <atomic>
#include <cstring>

namespace {

const QString couldNotCompleteMessage =
    QStringLiteral("ZQB Agent could not complete that operation.");
const QString unreadableStatusMessage =
    QStringLiteral("ZQB Agent returned an unreadable local status.");
const QString invitationTooShortMessage =
    QStringLiteral("Paste the complete one-time invitation from the target Mac.");
const QString enrollmentFailedPrefix = QStringLiteral("Enrollment failed. ");
const QString enrollmentCompletedMessage =
    QStringLiteral("Enrollment completed. ZQB is contacting the authorized target.");
const QString updateInstalledMessage =
    QStringLiteral("The verified ZQB Agent update was installed.");
const QString folderSettingsMessage =
    QStringLiteral("ZQB Agent could not prepare the folder settings.");
const QString networkPolicyMessage =
    QStringLiteral("ZQB Agent could not prepare the network policy.");
const QString settingsSavedMessage = QStringLiteral("Folders, schedule, and network policy saved.");
const QString noFoldersMessage = QStringLiteral("Choose and save at least one folder first.");
const QString fullDiskAccessLink =
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles");

constexpr qsizetype presentableErrorCap = 500;
constexpr qsizetype minimumInvitationLength = 40;
constexpr qsizetype notificationBodyCap = 300;

std::atomic<int> inFlight{0};

// Engine commands get their own pool: the global one is as small as the
// number of cores, so a few hanging engines could starve every other command.
// Never destroyed, so a hanging engine cannot hold up quitting either.
QThreadPool &commandPool()
{
    static QThreadPool *pool = [] {
        auto *p = new QThreadPool;
        p->setMaxThreadCount(64);
        return p;
    }();
    return *pool;
}

// The trimmed invitation kept for restoring the field after a failed
// enrollment; wiped when the last holder lets go, whatever happened.
struct WipedText
{
    QString text;
    ~WipedText() { SecretWipe::wipe(text); }
};

} // namespace

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

// Dispatch

int AgentModel::commandsInFlight()
{
    return inFlight.load();
}

void AgentModel::run(const QStringList &arguments, std::shared_ptr<QByteArray> input, bool showBusy,
                     std::function<void(const CommandResult &)> completion)
{
    if (showBusy)
        assignBusy(true);
    setError(std::nullopt);

    ++inFlight;
    QPointer<AgentModel> self(this);
    const AgentRunner runner = m_services.runner;
    commandPool().start([runner, arguments, input = std::move(input), showBusy,
                         self = std::move(self), completion = std::move(completion)]() mutable {
        std::optional<QByteArrayView> view;
        if (input)
            view = QByteArrayView(*input);
        CommandResult result = runner.run(arguments, view);

        QCoreApplication *app = QCoreApplication::instance();
        if (!app) { // shutting down: nobody is left to tell
            if (input)
                SecretWipe::wipe(*input);
            --inFlight;
            return;
        }
        // Everything moves over to the main thread, so the last reference to
        // the input and the completion's captures is released there.
        auto deliver = [input = std::move(input), showBusy, self = std::move(self),
                        completion = std::move(completion), result = std::move(result)] {
            // Standard input may hold a secret: wipe the very buffer the
            // engine was given, also when the model is gone.
            if (input)
                SecretWipe::wipe(*input);
            if (self) {
                if (showBusy)
                    self->assignBusy(false);
                completion(result);
            }
            --inFlight;
            if (self)
                emit self->settled();
        };
        QMetaObject::invokeMethod(app, std::move(deliver), Qt::QueuedConnection);
    });
}

QString AgentModel::presentableError(const CommandResult &result)
{
    const QString &taken = result.error.isEmpty() ? result.output : result.error;
    if (taken.isEmpty())
        return couldNotCompleteMessage;
    return TextRules::leftGraphemes(taken, presentableErrorCap);
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

// Status refresh

void AgentModel::refresh(bool showErrors, bool announceCompletion)
{
    run({QStringLiteral("ui-status")}, nullptr, false,
        [this, showErrors, announceCompletion](const CommandResult &result) {
            applyStatus(result, showErrors, announceCompletion);
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

    NotificationCenter::defaultCenter().post(
        statusNotification(), QVariantMap{{QStringLiteral("state"), document.runtime.state}});

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
        title = QStringLiteral("ZQB backup completed");
        body = runtime.message;
    } else if (*runtime.recoveryReady) {
        title = QStringLiteral("ZQB backup Recovery Ready");
        body = QStringLiteral(
            "The authorized target returned signed zero-error verification for non-empty data.");
    } else {
        title = QStringLiteral("ZQB empty backup completed");
        body = QStringLiteral("The target verified this run with zero errors, but no files were "
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

// Connection, enrollment and update

void AgentModel::checkConnection()
{
    const bool enrolled = m_status && m_status->runtime.enrolled;
    const QString command = enrolled ? QStringLiteral("run-once") : QStringLiteral("check-service");
    run({command}, nullptr, true, [this](const CommandResult &result) {
        if (result.succeeded)
            setNotice(result.output);
        else
            setError(presentableError(result));
        refresh(false, false);
    });
}

void AgentModel::enroll()
{
    auto trimmed = std::make_shared<WipedText>();
    trimmed->text = TextRules::trimmed(m_invitation);
    if (TextRules::graphemeCount(trimmed->text) < minimumInvitationLength) {
        setError(invitationTooShortMessage);
        return;
    }

    // One unshared buffer holds the engine's input, so the wipe after the
    // command reaches the only copy there is.
    QByteArray encoded = trimmed->text.toUtf8();
    // Its deleter wipes too, for the case that the wrapper never runs (the
    // application quits while the engine still reads).
    std::shared_ptr<QByteArray> input(new QByteArray(encoded.size() + 1, Qt::Uninitialized),
                                      [](QByteArray *bytes) {
                                          SecretWipe::wipe(*bytes);
                                          delete bytes;
                                      });
    std::memcpy(input->data(), encoded.constData(), size_t(encoded.size()));
    (*input)[encoded.size()] = '\n';
    SecretWipe::wipe(encoded);
    m_enrollmentInput = input;

    setInvitation(QString());
    run({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")}, std::move(input), true,
        [this, trimmed](const CommandResult &result) {
            if (result.succeeded) {
                setNotice(enrollmentCompletedMessage);
                checkConnection();
                return;
            }
            setInvitation(trimmed->text);
            setError(enrollmentFailedPrefix + presentableError(result));
            refresh(false, false);
        });
}

void AgentModel::installUpdate()
{
    run({QStringLiteral("autonomous-update")}, nullptr, true, [this](const CommandResult &result) {
        if (result.succeeded)
            setNotice(result.output.isEmpty() ? updateInstalledMessage : result.output);
        else
            setError(presentableError(result));
    });
}

// Folders, schedule and saving

void AgentModel::addFolders()
{
    if (!m_services.folderChooser)
        return;
    const std::optional<QStringList> chosen = m_services.folderChooser->chooseFolders();
    if (!chosen)
        return;
    QStringList merged = m_sources;
    for (const QString &path : *chosen) {
        const QString normalized = FolderList::normalizedPath(path);
        if (!normalized.isEmpty())
            merged << normalized;
    }
    setSources(FolderList::sortedUnique(std::move(merged)));
}

void AgentModel::removeFolder(const QString &path)
{
    QStringList remaining = m_sources;
    remaining.removeAll(path);
    setSources(remaining);
}

QStringList AgentModel::parsedExclusions() const
{
    QStringList patterns;
    const QStringList pieces = m_exclusionText.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        QString pattern = TextRules::trimmed(piece);
        if (!pattern.isEmpty())
            patterns << pattern;
    }
    return FolderList::sortedUnique(std::move(patterns));
}

std::optional<QByteArray> AgentModel::encodeSettingsDocument(const AgentSettings &settings) const
{
    QByteArray document = AgentDocuments::encode(settings);
    if (document.isEmpty())
        return std::nullopt;
    return document;
}

std::optional<QByteArray>
AgentModel::encodeTransferPolicyDocument(const TransferPolicy &policy) const
{
    QByteArray document = AgentDocuments::encode(policy);
    if (document.isEmpty())
        return std::nullopt;
    return document;
}

void AgentModel::saveSettings(std::function<void()> afterPolicySaved)
{
    AgentSettings settings;
    settings.enabled = m_scheduleEnabled;
    settings.intervalMinutes = m_intervalMinutes;
    settings.sources = m_sources;
    settings.exclusions = parsedExclusions();
    std::optional<QByteArray> document = encodeSettingsDocument(settings);
    if (!document) {
        setError(folderSettingsMessage);
        return;
    }
    run({QStringLiteral("configure"), QStringLiteral("--json-stdin")},
        std::make_shared<QByteArray>(std::move(*document)), true,
        [this, afterPolicySaved = std::move(afterPolicySaved)](const CommandResult &result) {
            if (!result.succeeded) {
                setError(presentableError(result));
                return;
            }
            saveTransferPolicy(afterPolicySaved);
        });
}

void AgentModel::save()
{
    saveSettings([this] {
        setNotice(settingsSavedMessage);
        refresh(false, false);
    });
}

void AgentModel::saveThenBackup()
{
    saveSettings([this] {
        run({QStringLiteral("backup-all")}, nullptr, true, [this](const CommandResult &result) {
            if (result.succeeded) {
                refresh(true, true);
                return;
            }
            setError(presentableError(result));
            refresh(false, false);
        });
    });
}

void AgentModel::backUpNow()
{
    if (m_sources.isEmpty()) {
        setError(noFoldersMessage);
        return;
    }
    saveThenBackup();
}

void AgentModel::openFullDiskAccess()
{
#ifdef Q_OS_MACOS
    const QUrl link(fullDiskAccessLink);
    if (link.isValid())
        QDesktopServices::openUrl(link);
#endif
}

// Network transfer policy

void AgentModel::saveTransferPolicy(std::function<void()> completion)
{
    TransferPolicy policy;
    policy.paused = m_transfersPaused;
    policy.bandwidthLimitKibPerSecond = m_bandwidthLimitKibPerSecond;
    policy.currentNetworkMetered = m_currentNetworkMetered;
    policy.allowMeteredNetwork = m_allowMeteredNetwork;
    policy.preferredTargetDeviceId = std::nullopt; // never offered; the key is left out
    policy.retryAttempts = 3;
    std::optional<QByteArray> document = encodeTransferPolicyDocument(policy);
    if (!document) {
        setError(networkPolicyMessage);
        return;
    }
    run({QStringLiteral("configure-transfer"), QStringLiteral("--json-stdin")},
        std::make_shared<QByteArray>(std::move(*document)), true,
        [this, completion = std::move(completion)](const CommandResult &result) {
            if (!result.succeeded) {
                setError(presentableError(result));
                return;
            }
            if (completion)
                completion();
        });
}
