#include "SimCommands.h"

#include "AgentDocuments.h"
#include "BackgroundBackup.h"
#include "BackupLock.h"
#include "BackupRun.h"
#include "CommandLine.h"
#include "InjectedFault.h"
#include "Invitation.h"
#include "SimState.h"
#include "SimTime.h"
#include "StatusReport.h"
#include "Versions.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr qsizetype documentLimit = 1024 * 1024;
// A thousand folders of long paths fit with room to spare, and the status
// document that carries them stays within what the app reads.
constexpr qsizetype settingsSizeLimit = 900'000;
constexpr qsizetype policySizeLimit = 1000;
constexpr qsizetype rememberedInvitations = 32;

enum Exit { Done = 0, Refused = 1, Usage = 2 };

void printLine(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

int say(const QString &text)
{
    printLine(stdout, text);
    return Done;
}

int refuse(const QString &text)
{
    printLine(stderr, text);
    return Refused;
}

int usageError(const QString &problem)
{
    printLine(stderr, problem);
    std::fputs(CommandLine::usage().toUtf8().constData(), stderr);
    return Usage;
}

// Reads standard input up to `limit` bytes; `tooLarge` is set when there is more.
QByteArray readStandardInput(qsizetype limit, bool *tooLarge)
{
    QByteArray data;
    // Reserved up front so a secret is never left behind in a buffer that
    // growth has released.
    data.reserve(std::min<qsizetype>(limit, 64 * 1024));
    *tooLarge = false;
    char buffer[4096];
    while (true) {
        const ssize_t got = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        if (data.size() + got > limit) {
            *tooLarge = true;
            break;
        }
        data.append(buffer, got);
    }
    std::fill(std::begin(buffer), std::end(buffer), '\0');
    return data;
}

struct Context
{
    const SimCommands::Environment &environment;
    const CommandLine &line;
    SimState &state;

    bool backupRunning() const { return BackupLock::isHeldElsewhere(state.backupLockPath()); }

    // The schedule's part: start a due backup in the background.
    bool startScheduledBackupIfDue() const
    {
        const AgentRecord agent = state.agent();
        const AgentSettings settings = state.settings();
        const TransferPolicy policy = state.transferPolicy();
        if (!BackupRun::refusal(agent, settings, policy).isEmpty() ||
            !BackupRun::isDue(settings, agent, SimTime::now()) || backupRunning())
            return false;
        return BackgroundBackup::start(environment.program, state.directory());
    }

    void touchContact() const
    {
        const QString now = SimTime::nowText();
        state.updateAgent([&](AgentRecord &record) { record.lastContactAt = now; });
    }
};

int uiStatus(const Context &context)
{
    context.startScheduledBackupIfDue();
    const AgentUIStatus status = StatusReport::build(context.state, context.backupRunning());
    return say(QString::fromUtf8(StatusReport::render(status)));
}

int checkService(const Context &context)
{
    if (!context.state.agent().online)
        return refuse(QStringLiteral(
            "The ZQB service is not reachable. Check the network connection, then try again."));
    context.touchContact();
    return say(QStringLiteral("The ZQB service is reachable."));
}

int runOnce(const Context &context)
{
    const AgentRecord agent = context.state.agent();
    if (!agent.enrolled)
        return refuse(
            QStringLiteral("This computer is not enrolled with a backup target. Enroll it first."));
    if (!agent.online)
        return refuse(QStringLiteral(
            "The authorized target is not reachable. Backups wait until it is back online."));
    context.touchContact();
    if (context.startScheduledBackupIfDue())
        return say(
            QStringLiteral("Connected to the authorized target. A scheduled backup has started."));
    return say(QStringLiteral("Connected to the authorized target."));
}

int enroll(const Context &context)
{
    bool tooLarge = false;
    QByteArray input = readStandardInput(Invitation::maximumLength + 64, &tooLarge);
    const Invitation::Verdict verdict =
        tooLarge ? Invitation::Verdict{false,
                                       QStringLiteral("it is longer than any invitation."),
                                       {},
                                       {}}
                 : Invitation::verify(input);
    Invitation::wipe(input);
    if (!verdict.valid)
        return refuse(QStringLiteral("The invitation is not valid: ") + verdict.problem);

    const AgentRecord agent = context.state.agent();
    if (!agent.online)
        return refuse(QStringLiteral("The ZQB service is not reachable, so the invitation cannot "
                                     "be redeemed. Try again later."));
    const QString digest = QString::fromLatin1(verdict.digest);
    if (agent.usedInvitations.contains(digest))
        return refuse(QStringLiteral("The invitation is not valid: it has already been used. Ask "
                                     "the target Mac for a new one."));

    const QString now = SimTime::nowText();
    QString problem;
    const bool saved = context.state.updateAgent(
        [&](AgentRecord &record) {
            record.enrolled = true;
            record.targetName = verdict.target.name;
            record.targetDeviceId = verdict.target.deviceId;
            record.lastContactAt = now;
            record.lastError.reset();
            record.usedInvitations.append(digest);
            while (record.usedInvitations.size() > rememberedInvitations)
                record.usedInvitations.removeFirst();
        },
        &problem);
    if (!saved)
        return refuse(QStringLiteral("The enrollment could not be stored: ") + problem);
    return say(QStringLiteral("Enrolled with %1, the authorized target.").arg(verdict.target.name));
}

QString settingsProblem(const AgentSettings &settings)
{
    if (settings.intervalMinutes < 1 || settings.intervalMinutes > 525600)
        return QStringLiteral("intervalMinutes must be between 1 and 525600.");
    for (const QString &source : settings.sources) {
        if (!source.startsWith(QLatin1Char('/')) || source.contains(QChar(0)) ||
            source.size() > 1024)
            return QStringLiteral(
                "every folder must be an absolute path of at most 1024 characters.");
    }
    for (const QString &pattern : settings.exclusions) {
        if (pattern.isEmpty() || pattern.size() > 255 || pattern.contains(QChar(0)))
            return QStringLiteral("every skip pattern must be a name of 1 to 255 characters.");
        if (pattern.contains(QLatin1Char('/')))
            return QStringLiteral("skip patterns match names, so they cannot contain \"/\".");
    }
    if (AgentDocuments::encode(settings).size() > settingsSizeLimit)
        return QStringLiteral("the folders and skip patterns take more than %1 bytes in all; use "
                              "fewer or shorter ones.")
            .arg(settingsSizeLimit);
    return {};
}

int configure(const Context &context)
{
    bool tooLarge = false;
    const QByteArray input = readStandardInput(documentLimit, &tooLarge);
    if (tooLarge)
        return refuse(QStringLiteral(
            "The folder settings are not valid: the document is larger than 1 MiB."));
    const auto settings = AgentDocuments::decodeSettings(input);
    if (!settings)
        return refuse(QStringLiteral(
            "The folder settings are not valid: the document does not have the fields "
            "schema, enabled, intervalMinutes, sources and exclusions with their types."));
    const QString problem = settingsProblem(*settings);
    if (!problem.isEmpty())
        return refuse(QStringLiteral("The folder settings are not valid: ") + problem);
    QString failure;
    if (!context.state.saveSettings(*settings, &failure))
        return refuse(QStringLiteral("The folder settings could not be stored: ") + failure);
    return say(QStringLiteral("Saved %1 and %2.")
                   .arg(settings->sources.size() == 1
                            ? QStringLiteral("1 folder")
                            : QStringLiteral("%1 folders").arg(settings->sources.size()),
                        settings->exclusions.size() == 1
                            ? QStringLiteral("1 skip pattern")
                            : QStringLiteral("%1 skip patterns").arg(settings->exclusions.size())));
}

QString policyProblem(const TransferPolicy &policy)
{
    if (policy.bandwidthLimitKibPerSecond < 0)
        return QStringLiteral("bandwidthLimitKibPerSecond cannot be negative.");
    if (policy.retryAttempts < 0 || policy.retryAttempts > 100)
        return QStringLiteral("retryAttempts must be between 0 and 100.");
    if (policy.preferredTargetDeviceId && policy.preferredTargetDeviceId->size() > 128)
        return QStringLiteral("preferredTargetDeviceId is longer than 128 characters.");
    if (AgentDocuments::encode(policy).size() > policySizeLimit)
        return QStringLiteral("the document is larger than %1 bytes.").arg(policySizeLimit);
    return {};
}

int configureTransfer(const Context &context)
{
    bool tooLarge = false;
    const QByteArray input = readStandardInput(documentLimit, &tooLarge);
    if (tooLarge)
        return refuse(
            QStringLiteral("The transfer policy is not valid: the document is larger than 1 MiB."));
    auto policy = AgentDocuments::decodeTransferPolicy(input);
    if (!policy)
        return refuse(QStringLiteral(
            "The transfer policy is not valid: the document does not have the fields "
            "schema, paused, bandwidthLimitKibPerSecond, currentNetworkMetered, "
            "allowMeteredNetwork and retryAttempts with their types."));
    const QString problem = policyProblem(*policy);
    if (!problem.isEmpty())
        return refuse(QStringLiteral("The transfer policy is not valid: ") + problem);
    // A policy without a preferred target keeps the one already chosen.
    if (!policy->preferredTargetDeviceId)
        policy->preferredTargetDeviceId = context.state.transferPolicy().preferredTargetDeviceId;
    QString failure;
    if (!context.state.saveTransferPolicy(*policy, &failure))
        return refuse(QStringLiteral("The transfer policy could not be stored: ") + failure);
    return say(policy->paused
                   ? QStringLiteral("Saved the network transfer policy. Transfers are paused.")
                   : QStringLiteral("Saved the network transfer policy."));
}

int backupAll(const Context &context)
{
    int readyFd = -1;
    if (context.line.has(QStringLiteral("--ready-fd"))) {
        bool ok = false;
        readyFd = context.line.values.value(QStringLiteral("--ready-fd")).toInt(&ok);
        if (!ok || readyFd < 3)
            return usageError(QStringLiteral("--ready-fd needs a descriptor number of 3 or more."));
    }
    BackupRun run(context.state, SimCommands::speedFactor(context.environment.speed));
    const BackupRun::Outcome outcome =
        run.run(context.line.has(QStringLiteral("--background")), readyFd);
    if (!outcome.output.isEmpty())
        printLine(stdout, outcome.output);
    if (!outcome.error.isEmpty())
        printLine(stderr, outcome.error);
    return outcome.exitCode;
}

int autonomousUpdate(const Context &context)
{
    const AgentRecord agent = context.state.agent();
    if (!agent.online)
        return refuse(
            QStringLiteral("The ZQB service is not reachable, so no update can be verified."));
    if (!Versions::isValid(agent.latestAgentVersion) ||
        Versions::compare(agent.agentVersion, agent.latestAgentVersion) >= 0)
        return refuse(
            QStringLiteral("No verified ZQB Agent update is available. %1 is the latest version.")
                .arg(agent.agentVersion));
    if (context.backupRunning())
        return refuse(
            QStringLiteral("A backup is running. Install the update when it has finished."));
    const QString version = agent.latestAgentVersion;
    QString problem;
    if (!context.state.updateAgent([&](AgentRecord &record) { record.agentVersion = version; },
                                   &problem))
        return refuse(QStringLiteral("The update could not be installed: ") + problem);
    return say(QStringLiteral("Installed the verified ZQB Agent update %1.").arg(version));
}

int makeInvitation(const Context &context)
{
    const QString target = context.line.has(QStringLiteral("--target"))
                               ? context.line.values.value(QStringLiteral("--target"))
                               : QStringLiteral("Backup Mac");
    if (target.trimmed().isEmpty() || target.size() > 64)
        return usageError(QStringLiteral("--target needs a name of 1 to 64 characters."));
    QByteArray invitation = Invitation::make(target.trimmed());
    invitation.append('\n');
    std::fwrite(invitation.constData(), 1, size_t(invitation.size()), stdout);
    std::fflush(stdout);
    Invitation::wipe(invitation);
    return Done;
}

int setCondition(const Context &context)
{
    const QString condition = context.line.operands.value(0);
    if (condition != QLatin1String("online") && condition != QLatin1String("offline"))
        return usageError(QStringLiteral("set-condition takes online or offline."));
    const bool online = condition == QLatin1String("online");
    QString problem;
    if (!context.state.updateAgent([&](AgentRecord &record) { record.online = online; }, &problem))
        return refuse(problem);
    return say(
        online ? QStringLiteral("The ZQB service and the authorized target are reachable now.")
               : QStringLiteral("The ZQB service and the authorized target are unreachable now."));
}

int advertiseUpdate(const Context &context)
{
    const QString version = context.line.operands.value(0);
    if (!Versions::isValid(version))
        return usageError(QStringLiteral("advertise-update needs a version such as 2.4.1."));
    QString installed;
    QString problem;
    if (!context.state.updateAgent(
            [&](AgentRecord &record) {
                record.latestAgentVersion = version;
                installed = record.agentVersion;
            },
            &problem))
        return refuse(problem);
    if (Versions::compare(installed, version) < 0)
        return say(QStringLiteral("The ZQB service advertises version %1 now.").arg(version));
    return say(
        QStringLiteral(
            "The ZQB service advertises version %1 now; it is not newer than the installed %2.")
            .arg(version, installed));
}

int setCompatibility(const Context &context)
{
    static const QRegularExpression word(QStringLiteral("\\A[a-z0-9][a-z0-9-]{0,31}\\z"));
    const QString compatibility = context.line.operands.value(0);
    if (!word.match(compatibility).hasMatch())
        return usageError(
            QStringLiteral("set-compatibility needs a lower-case word such as legacy-v1."));
    QString problem;
    if (!context.state.updateAgent(
            [&](AgentRecord &record) { record.compatibility = compatibility; }, &problem))
        return refuse(problem);
    return say(
        QStringLiteral("The ZQB service reports compatibility \"%1\" now.").arg(compatibility));
}

// The commands the app issues; only their runs can be spoilt.
const QStringList appCommands = {QStringLiteral("ui-status"),  QStringLiteral("check-service"),
                                 QStringLiteral("run-once"),   QStringLiteral("enroll"),
                                 QStringLiteral("configure"),  QStringLiteral("configure-transfer"),
                                 QStringLiteral("backup-all"), QStringLiteral("autonomous-update")};

int injectFault(const Context &context)
{
    const std::optional<InjectedFault::Kind> kind =
        InjectedFault::kindNamed(context.line.operands.value(0));
    if (!kind)
        return usageError(QStringLiteral("inject-fault takes hang, crash or garbage."));
    const QString command =
        context.line.values.value(QStringLiteral("--on"), QStringLiteral("ui-status"));
    if (!appCommands.contains(command))
        return usageError(QStringLiteral("--on needs a command the app issues."));
    bool ok = true;
    const int times = context.line.has(QStringLiteral("--times"))
                          ? context.line.values.value(QStringLiteral("--times")).toInt(&ok)
                          : 1;
    if (!ok || times < 1 || times > 1000)
        return usageError(QStringLiteral("--times needs a number from 1 to 1000."));
    QString problem;
    if (!InjectedFault::add(context.state.directory(), command, *kind, times, &problem))
        return refuse(problem);
    const QString what = *kind == InjectedFault::Kind::Garbage ? QStringLiteral("print garbage")
                                                               : context.line.operands.value(0);
    return say(QStringLiteral("The next %1 run(s) of %2 will %3.").arg(times).arg(command, what));
}

} // namespace

namespace SimCommands {

double speedFactor(const QString &text)
{
    bool ok = false;
    const double factor = text.toDouble(&ok);
    if (!ok || !std::isfinite(factor) || factor <= 0)
        return 1.0;
    return std::min(factor, 1e6);
}

int run(const QStringList &arguments, const Environment &environment)
{
    const CommandLine line = CommandLine::parse(arguments);
    if (!line.problem.isEmpty())
        return usageError(line.problem);
    if (line.command == QLatin1String("help")) {
        std::fputs(CommandLine::usage().toUtf8().constData(), stdout);
        return Done;
    }

    const QString directory =
        !environment.stateOverride.isEmpty() ? environment.stateOverride : line.stateDirectory;
    SimState state(directory);
    const Context context{environment, line, state};
    if (line.command == QLatin1String("make-invitation"))
        return makeInvitation(context);
    if (directory.isEmpty())
        return usageError(QStringLiteral("%1 needs --state DIR.").arg(line.command));
    QString problem;
    if (!state.prepare(&problem))
        return refuse(problem);

    if (appCommands.contains(line.command)) {
        if (const auto fault = InjectedFault::take(state.directory(), line.command))
            return InjectedFault::act(*fault);
    }

    using Handler = int (*)(const Context &);
    static const QList<QPair<QString, Handler>> handlers = {
        {QStringLiteral("ui-status"), uiStatus},
        {QStringLiteral("check-service"), checkService},
        {QStringLiteral("run-once"), runOnce},
        {QStringLiteral("enroll"), enroll},
        {QStringLiteral("configure"), configure},
        {QStringLiteral("configure-transfer"), configureTransfer},
        {QStringLiteral("backup-all"), backupAll},
        {QStringLiteral("autonomous-update"), autonomousUpdate},
        {QStringLiteral("set-condition"), setCondition},
        {QStringLiteral("advertise-update"), advertiseUpdate},
        {QStringLiteral("set-compatibility"), setCompatibility},
        {QStringLiteral("inject-fault"), injectFault},
    };
    for (const auto &[name, handler] : handlers) {
        if (name == line.command)
            return handler(context);
    }
    return usageError(QStringLiteral("Unknown command \"%1\".").arg(line.command));
}

} // namespace SimCommands
