#pragma once

#include "AgentRecord.h"
#include "AgentSettings.h"
#include "BackupProgressStatus.h"
#include "FolderWalker.h"
#include "TransferPolicy.h"

#include <QDateTime>
#include <QSet>
#include <QString>

#include <chrono>

class SimState;

// One run of "backup-all": takes the backup lock, walks the configured folders,
// moves through the phases preflight, scanning, chunking, uploading,
// waiting-for-receipts, committing and verifying, writing its progress to the
// state as it goes, and records the result.
//
// Objects are what a real engine would upload: one per started 4 MiB of a
// file (at least one per file or link), named by path, size, modification
// time and position. Objects named in the previous backup's index are reused
// rather than uploaded.
class BackupRun
{
public:
    struct Outcome
    {
        int exitCode = 0;
        QString output; // the one-line summary for standard output
        QString error;  // the message for standard error
    };

    BackupRun(SimState &state, double speed);

    // `background`: started by ui-status or run-once; it runs only when still
    // due and nothing else is running, and reports nothing. `readyFd`, when
    // not negative, is closed as soon as the run has started or decided not to.
    Outcome run(bool background, int readyFd);

    // Empty when a backup may run now; otherwise why not, for the user.
    static QString refusal(const AgentRecord &agent, const AgentSettings &settings,
                           const TransferPolicy &policy);
    // The schedule is on and the interval has passed since the last attempt
    // (or there was none).
    static bool isDue(const AgentSettings &settings, const AgentRecord &agent,
                      const QDateTime &now);

    static constexpr quint64 objectSize = 4 * 1024 * 1024;

private:
    struct Item
    {
        FolderWalker::Entry entry;
        qint64 sourceIndex = 0; // 1-based
        quint64 objects = 0;
    };

    void enterPhase(const char *phase);
    void writeProgress();
    // Spreads `count` steps over the phase's duration, calling step(i) for each.
    template <typename Step> void pace(double baseSeconds, qsizetype count, Step step);
    QString interruption() const;
    Outcome fail(const QString &message);
    QSet<quint64> previousObjects() const;
    bool writeObjectIndex(const QSet<quint64> &objects) const;
    static quint64 objectKey(const FolderWalker::Entry &entry, quint64 position);

    SimState &m_state;
    double m_speed;
    BackupProgressStatus m_progress;
    std::chrono::steady_clock::time_point m_started;
    std::chrono::steady_clock::time_point m_lastWrite;
};
