#include "BackupRun.h"

#include "AtomicFile.h"
#include "BackupLock.h"
#include "SimState.h"
#include "SimTime.h"

#include <QCryptographicHash>
#include <QLocale>

#include <algorithm>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

// Phase lengths at speed 1: a small folder takes about 15 seconds in all, so a
// demo can watch it; ZQB_SIM_SPEED divides them.
constexpr double preflightSeconds = 1.0;
constexpr double scanningSeconds = 3.0;
constexpr double chunkingSeconds = 3.0;
constexpr double uploadingSeconds = 4.0;
constexpr double receiptsSeconds = 1.5;
constexpr double committingSeconds = 1.0;
constexpr double verifyingSeconds = 1.5;
// However fast, every phase lasts a few milliseconds so it can be observed.
constexpr auto shortestPhase = std::chrono::milliseconds(8);
constexpr auto progressInterval = std::chrono::milliseconds(200);
constexpr qsizetype listedProblemsLimit = 3;

void closeReady(int &fd)
{
    if (fd >= 0) {
        ::close(fd);
        fd = -1;
    }
}

QString sizeText(quint64 bytes)
{
    return QLocale::c().formattedDataSize(qint64(std::min<quint64>(bytes, quint64(INT64_MAX))), 1,
                                          QLocale::DataSizeSIFormat);
}

QString plural(quint64 count, const char *singular, const char *pluralForm)
{
    return QStringLiteral("%1 %2").arg(count).arg(
        QLatin1String(count == 1 ? singular : pluralForm));
}

} // namespace

BackupRun::BackupRun(SimState &state, double speed) : m_state(state), m_speed(speed) {}

QString BackupRun::refusal(const AgentRecord &agent, const AgentSettings &settings,
                           const TransferPolicy &policy)
{
    if (!agent.enrolled)
        return QStringLiteral(
            "This computer is not enrolled with a backup target. Enroll it first.");
    if (settings.sources.isEmpty())
        return QStringLiteral(
            "No folders are configured. Choose and save at least one folder first.");
    if (!agent.online)
        return QStringLiteral(
            "The authorized target is not reachable. Try again when it is back online.");
    if (policy.paused)
        return QStringLiteral(
            "Network transfers are paused. Resume transfers, then back up again.");
    if (policy.currentNetworkMetered && !policy.allowMeteredNetwork)
        return QStringLiteral(
            "The current network is metered and backups over metered networks are not allowed.");
    return {};
}

bool BackupRun::isDue(const AgentSettings &settings, const AgentRecord &agent, const QDateTime &now)
{
    if (!settings.enabled || settings.sources.isEmpty())
        return false;
    if (!agent.lastBackupAttemptAt)
        return true;
    const QDateTime last = SimTime::parse(*agent.lastBackupAttemptAt);
    if (!last.isValid())
        return true;
    const qint64 interval = std::max<qint64>(settings.intervalMinutes, 1);
    return last.secsTo(now) >= std::min<qint64>(interval, INT64_MAX / 60) * 60;
}

BackupRun::Outcome BackupRun::run(bool background, int readyFd)
{
    BackupLock lock(m_state.backupLockPath());
    if (background ? !lock.tryLock() : !lock.lock()) {
        closeReady(readyFd);
        if (background)
            return {};
        return {
            1,
            {},
            QStringLiteral("The backup could not start: the state directory cannot be locked.")};
    }

    const AgentSettings settings = m_state.settings();
    const TransferPolicy policy = m_state.transferPolicy();
    const AgentRecord agent = m_state.agent();
    const QString refused = refusal(agent, settings, policy);
    if (background && (!refused.isEmpty() || !isDue(settings, agent, SimTime::now()))) {
        closeReady(readyFd);
        return {};
    }
    if (!refused.isEmpty()) {
        closeReady(readyFd);
        return {1, {}, refused};
    }

    m_started = Clock::now();
    AtomicFile::removeStaleTemporaries(m_state.directory());
    const QString startedAt = SimTime::nowText();
    m_state.updateAgent([&](AgentRecord &record) { record.lastBackupAttemptAt = startedAt; });
    m_progress = {};
    m_progress.sourceCount = settings.sources.size();
    m_progress.sourceIndex = 1;
    enterPhase("preflight");
    closeReady(readyFd);

    // Preflight: find what there is to back up, for real.
    const FolderWalker walker{SkipPatterns(settings.exclusions)};
    QList<Item> items;
    QStringList missingFolders;
    quint64 unreadable = 0;
    for (qsizetype i = 0; i < settings.sources.size(); ++i) {
        const FolderWalker::Result found = walker.walk(settings.sources.at(i));
        if (found.folderMissing)
            missingFolders.append(settings.sources.at(i));
        unreadable += found.unreadable;
        for (const FolderWalker::Entry &entry : found.entries) {
            const quint64 objects =
                entry.link ? 1 : std::max<quint64>(1, (entry.size + objectSize - 1) / objectSize);
            items.append({entry, i + 1, objects});
        }
    }
    pace(preflightSeconds, items.size(), [&](qsizetype i) {
        m_progress.sourceIndex = items.at(i).sourceIndex;
        ++m_progress.filesScanned;
    });
    for (const Item &item : std::as_const(items)) {
        m_progress.totalBytes += item.entry.size;
        m_progress.totalObjects += item.objects;
    }
    m_progress.totalFiles = quint64(items.size());

    const auto interrupted = [&]() -> std::optional<Outcome> {
        const QString problem = interruption();
        if (problem.isEmpty())
            return std::nullopt;
        return fail(problem);
    };

    if (auto stop = interrupted())
        return *stop;
    m_progress.filesScanned = 0;
    m_progress.sourceIndex = 1;
    enterPhase("scanning");
    pace(scanningSeconds, items.size(), [&](qsizetype i) {
        m_progress.sourceIndex = items.at(i).sourceIndex;
        ++m_progress.filesScanned;
        m_progress.bytesScanned += items.at(i).entry.size;
    });

    if (auto stop = interrupted())
        return *stop;
    m_progress.bytesScanned = 0; // counts the bytes cut into objects in this pass
    m_progress.sourceIndex = 1;
    enterPhase("chunking");
    pace(chunkingSeconds, items.size(), [&](qsizetype i) {
        m_progress.sourceIndex = items.at(i).sourceIndex;
        m_progress.objectsPrepared += items.at(i).objects;
        m_progress.bytesScanned += items.at(i).entry.size;
    });

    if (auto stop = interrupted())
        return *stop;
    const QSet<quint64> known = previousObjects();
    QSet<quint64> stored;
    m_progress.sourceIndex = 1;
    enterPhase("uploading");
    pace(uploadingSeconds, items.size(), [&](qsizetype i) {
        const Item &item = items.at(i);
        m_progress.sourceIndex = item.sourceIndex;
        for (quint64 position = 0; position < item.objects; ++position) {
            const quint64 key = objectKey(item.entry, position);
            if (known.contains(key) || stored.contains(key)) {
                ++m_progress.objectsReused;
            } else {
                ++m_progress.objectsUploaded;
                m_progress.bytesUploaded += std::min(
                    objectSize, item.entry.size - std::min(item.entry.size, position * objectSize));
            }
            stored.insert(key);
        }
    });

    for (const char *phase : {"waiting-for-receipts", "committing", "verifying"}) {
        if (auto stop = interrupted())
            return *stop;
        m_progress.sourceIndex = m_progress.sourceCount;
        enterPhase(phase);
        if (qstrcmp(phase, "committing") == 0 && !writeObjectIndex(stored))
            return fail(QStringLiteral(
                "The recovery point could not be committed: the state directory is not writable."));
        const double seconds = qstrcmp(phase, "waiting-for-receipts") == 0 ? receiptsSeconds
                               : qstrcmp(phase, "committing") == 0         ? committingSeconds
                                                                           : verifyingSeconds;
        pace(seconds, 0, [](qsizetype) {});
    }

    // Completed: the progress record stays so the last duration can be shown.
    QStringList problems;
    if (!missingFolders.isEmpty()) {
        QStringList listed = missingFolders.mid(0, listedProblemsLimit);
        if (missingFolders.size() > listedProblemsLimit)
            listed.append(QStringLiteral("…"));
        problems.append(QStringLiteral("%1 could not be read: %2.")
                            .arg(missingFolders.size() == 1
                                     ? QStringLiteral("A folder")
                                     : QStringLiteral("%1 folders").arg(missingFolders.size()),
                                 listed.join(QStringLiteral(", "))));
    }
    if (unreadable > 0)
        problems.append(QStringLiteral("%1 could not be read and %2 skipped.")
                            .arg(plural(unreadable, "item", "items"),
                                 QLatin1String(unreadable == 1 ? "was" : "were")));
    const bool recoveryReady = !items.isEmpty();
    const QString finishedAt = SimTime::nowText();
    m_progress.phase = QStringLiteral("completed");
    writeProgress();
    m_state.updateAgent([&](AgentRecord &record) {
        record.lastBackupAt = finishedAt;
        record.recoveryReady = recoveryReady;
        record.lastContactAt = finishedAt;
        if (problems.isEmpty())
            record.lastError.reset();
        else
            record.lastError = problems.join(QLatin1Char(' '));
    });

    Outcome outcome;
    const QString folders = plural(quint64(settings.sources.size()), "folder", "folders");
    if (recoveryReady) {
        outcome.output = QStringLiteral("Backed up %1 (%2) from %3: %4 uploaded, %5 reused. The "
                                        "recovery point is verified.")
                             .arg(plural(m_progress.totalFiles, "file", "files"),
                                  sizeText(m_progress.totalBytes), folders,
                                  plural(m_progress.objectsUploaded, "object", "objects"))
                             .arg(m_progress.objectsReused);
    } else {
        outcome.output = QStringLiteral("Backed up 0 files from %1: no files were present after "
                                        "exclusions, so the backup is empty.")
                             .arg(folders);
    }
    return outcome;
}

void BackupRun::enterPhase(const char *phase)
{
    m_progress.phase = QString::fromLatin1(phase);
    writeProgress();
}

void BackupRun::writeProgress()
{
    m_progress.lastProgressAt = SimTime::nowText();
    m_progress.elapsedSeconds =
        quint64(std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - m_started).count());
    m_state.saveProgress(m_progress); // a lost progress write only delays what observers see
    m_lastWrite = Clock::now();
}

template <typename Step> void BackupRun::pace(double baseSeconds, qsizetype count, Step step)
{
    const auto begin = Clock::now();
    const auto duration =
        std::max<Clock::duration>(std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(baseSeconds / m_speed)),
                                  shortestPhase);
    for (qsizetype i = 0; i < count; ++i) {
        step(i);
        const auto due = begin + duration * (i + 1) / count;
        const auto now = Clock::now();
        if (due - now > std::chrono::milliseconds(1))
            std::this_thread::sleep_for(std::min<Clock::duration>(due - now, progressInterval));
        if (Clock::now() - m_lastWrite >= progressInterval)
            writeProgress();
    }
    while (Clock::now() < begin + duration) {
        std::this_thread::sleep_for(
            std::min<Clock::duration>(begin + duration - Clock::now(), progressInterval));
        if (Clock::now() - m_lastWrite >= progressInterval)
            writeProgress();
    }
}

QString BackupRun::interruption() const
{
    const AgentRecord agent = m_state.agent();
    if (!agent.online)
        return QStringLiteral("The authorized target went offline during the backup.");
    if (m_state.transferPolicy().paused)
        return QStringLiteral("Network transfers were paused during the backup.");
    return {};
}

BackupRun::Outcome BackupRun::fail(const QString &message)
{
    m_progress.phase = QStringLiteral("failed");
    writeProgress();
    m_state.updateAgent([&](AgentRecord &record) { record.lastError = message; });
    return {1, {}, message};
}

QSet<quint64> BackupRun::previousObjects() const
{
    QSet<quint64> objects;
    const auto index = AtomicFile::read(m_state.objectIndexPath(), 256 * 1024 * 1024);
    if (!index)
        return objects;
    for (const QByteArray &line : index->split('\n')) {
        bool ok = false;
        const quint64 key = line.trimmed().toULongLong(&ok, 16);
        if (ok)
            objects.insert(key);
    }
    return objects;
}

bool BackupRun::writeObjectIndex(const QSet<quint64> &objects) const
{
    QByteArray index;
    index.reserve(objects.size() * 17);
    for (quint64 key : objects)
        index += QByteArray::number(key, 16).rightJustified(16, '0') + '\n';
    return AtomicFile::write(m_state.objectIndexPath(), index);
}

quint64 BackupRun::objectKey(const FolderWalker::Entry &entry, quint64 position)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(entry.path);
    hash.addData(QByteArrayView("\0", 1));
    hash.addData(QByteArray::number(entry.size) + ':' + QByteArray::number(entry.modifiedNs) + ':' +
                 QByteArray::number(position) + (entry.link ? ":link" : ":file"));
    const QByteArray digest = hash.result();
    quint64 key = 0;
    for (int i = 0; i < 8; ++i)
        key = (key << 8) | quint8(digest.at(i));
    return key;
}
