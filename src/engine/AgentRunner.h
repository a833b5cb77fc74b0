#pragma once

#include "CommandResult.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>

// Runs one engine command to completion. Blocking: call it from a worker
// thread, never from the user-interface thread. Stateless and safe to use from
// many threads at once.
class AgentRunner
{
public:
    // The engine at the path fixed when the app was built.
    AgentRunner();
    // An engine elsewhere; used by tests and benchmarks with fake engines.
    explicit AgentRunner(QString enginePath);

    static QString defaultEnginePath();

    // Held while this process's environment is copied for an engine. Code that
    // changes the environment while engines may be starting holds it too, so
    // an engine never sees a half-made change or one meant to be short-lived.
    static std::mutex &environmentLock();

    QString enginePath() const { return m_enginePath; }

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

    // Caps in user-perceived characters, applied before trimming.
    static constexpr int outputCharacterCap = 8192;
    static constexpr int errorCharacterCap = 2048;
    // Bytes kept of each stream while the engine runs; the rest is discarded.
    static constexpr qsizetype streamByteCap = 1024 * 1024;

private:
    QString m_enginePath;
};
