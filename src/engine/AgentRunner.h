#pragma once

#include "CommandResult.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <chrono>
#include <mutex>
#include <optional>

// Runs one engine command to completion. Blocking: call it from a worker
// thread, never from the user-interface thread. Stateless and safe to use from
// many threads at once.
class AgentRunner
{
public:
    // How long a status read may run. A status read is the only command the
    // app ever ends: an engine that hangs on it would otherwise keep a worker
    // and a process for good, and the next refresh could never learn anything.
    // A backup or an update may legitimately run for hours and is never ended.
    struct StatusReadLimit
    {
        std::chrono::milliseconds answerWithin{60000}; // then SIGTERM
        std::chrono::milliseconds endWithin{5000};     // after SIGTERM, then SIGKILL
    };

    // The engine at the path fixed when the app was built.
    AgentRunner();
    // An engine elsewhere; used by tests and benchmarks with fake engines,
    // which also shorten the status read's limit.
    explicit AgentRunner(QString enginePath);
    AgentRunner(QString enginePath, StatusReadLimit statusReadLimit);

    static QString defaultEnginePath();

    // Held while this process's environment is copied for an engine. Code that
    // changes the environment while engines may be starting holds it too, so
    // an engine never sees a half-made change or one meant to be short-lived.
    static std::mutex &environmentLock();

    QString enginePath() const { return m_enginePath; }
    StatusReadLimit statusReadLimit() const { return m_statusReadLimit; }

    // The engine receives `arguments`, then "--state" and agentStateDirectory().
    // With `input` present, its bytes are the engine's standard input (an
    // empty view gives immediate end of file); absent, the engine inherits
    // this process's standard input. The view is only read, never copied into
    // another long-lived buffer, so a caller can wipe a secret afterwards.
    CommandResult run(const QStringList &arguments,
                      std::optional<QByteArrayView> input = std::nullopt) const;

    static inline const QString notInstalledMessage =
        QStringLiteral("The ZQB Agent background engine is not installed.");
    static inline const QString couldNotStartMessage = QStringLiteral("ZQB Agent could not start.");
    // The error of a status read that the runner had to end.
    static inline const QString didNotAnswerMessage =
        QStringLiteral("The ZQB Agent background engine did not answer.");
    // The command whose run is limited by StatusReadLimit.
    static inline const QString statusCommand = QStringLiteral("ui-status");

    // Caps in user-perceived characters, applied before trimming.
    static constexpr int outputCharacterCap = 8192;
    static constexpr int errorCharacterCap = 2048;
    // Bytes kept of each stream while the engine runs; the rest is discarded.
    static constexpr qsizetype streamByteCap = 1024 * 1024;

private:
    QString m_enginePath;
    StatusReadLimit m_statusReadLimit;
};
