#pragma once

// Runs the built stand-in engine the way the app does: command words, then
// "--state" and a directory; optional standard input; waits for the exit.

#include "AgentDocuments.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <optional>

struct SimResult
{
    int exitCode = -1;
    QByteArray output;
    QByteArray error;
    bool finished = false;

    bool succeeded() const { return finished && exitCode == 0; }
    QString errorText() const { return QString::fromUtf8(error).trimmed(); }
    QString outputText() const { return QString::fromUtf8(output).trimmed(); }
};

class SimProcess
{
public:
    SimProcess()
    {
        m_environment.remove(QStringLiteral("ZQB_SIM_STATE"));
        m_environment.insert(QStringLiteral("ZQB_SIM_SPEED"), QStringLiteral("1000"));
    }

    QString stateDirectory() const { return m_state.filePath(QStringLiteral("state")); }
    QString statePath(const QString &file) const
    {
        return stateDirectory() + QLatin1Char('/') + file;
    }
    void setSpeed(const QString &speed)
    {
        m_environment.insert(QStringLiteral("ZQB_SIM_SPEED"), speed);
    }
    QProcessEnvironment &environment() { return m_environment; }

    static QString program() { return QStringLiteral(ZQB_SIM_EXECUTABLE); }

    // Starts without waiting; the caller owns the process.
    QProcess *start(const QStringList &arguments, QObject *parent)
    {
        auto *process = new QProcess(parent);
        process->setProcessEnvironment(m_environment);
        process->setStandardInputFile(QProcess::nullDevice());
        process->start(program(),
                       arguments + QStringList{QStringLiteral("--state"), stateDirectory()});
        return process;
    }

    SimResult run(const QStringList &arguments,
                  const std::optional<QByteArray> &input = std::nullopt, int timeoutMs = 30000)
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        if (!input)
            process.setStandardInputFile(QProcess::nullDevice());
        process.start(program(),
                      arguments + QStringList{QStringLiteral("--state"), stateDirectory()});
        SimResult result;
        if (!process.waitForStarted(5000))
            return result;
        if (input) {
            process.write(*input);
            process.closeWriteChannel();
        }
        result.finished =
            process.waitForFinished(timeoutMs) && process.exitStatus() == QProcess::NormalExit;
        result.exitCode = process.exitCode();
        result.output = process.readAllStandardOutput();
        result.error = process.readAllStandardError();
        return result;
    }

    // ui-status, decoded as the app decodes it.
    std::optional<AgentUIStatus> status()
    {
        const SimResult result = run({QStringLiteral("ui-status")});
        if (!result.succeeded())
            return std::nullopt;
        return AgentDocuments::decodeStatus(result.output.trimmed());
    }

    // Polls ui-status until `condition` holds, for at most `timeoutMs` of real
    // time; the status that satisfied it, or nothing.
    std::optional<AgentUIStatus>
    statusWhen(const std::function<bool(const AgentUIStatus &)> &condition, int timeoutMs = 60000)
    {
        QElapsedTimer timer;
        timer.start();
        do {
            if (auto current = status(); current && condition(*current))
                return current;
            QTest::qWait(10);
        } while (timer.elapsed() < timeoutMs);
        return std::nullopt;
    }

    // Waits, reading the progress file directly (much cheaper than a status
    // run), until a backup is under way: a phase other than completed or failed.
    bool waitForRunningBackup(int timeoutMs = 60000)
    {
        QElapsedTimer timer;
        timer.start();
        do {
            QFile file(statePath(QStringLiteral("progress.json")));
            if (file.open(QIODevice::ReadOnly)) {
                const QString phase = QJsonDocument::fromJson(file.readAll())
                                          .object()
                                          .value(QLatin1String("phase"))
                                          .toString();
                if (!phase.isEmpty() && phase != QLatin1String("completed") &&
                    phase != QLatin1String("failed"))
                    return true;
            }
            QTest::qWait(5);
        } while (timer.elapsed() < timeoutMs);
        return false;
    }

    // How long one ui-status run takes here (sanitizer builds and busy
    // machines are much slower), measured once.
    double pollSeconds()
    {
        if (m_pollSeconds <= 0) {
            for (int i = 0; i < 2; ++i) {
                QElapsedTimer timer;
                timer.start();
                run({QStringLiteral("ui-status")});
                m_pollSeconds =
                    std::max(m_pollSeconds, std::max<qint64>(timer.elapsed(), 10) / 1000.0);
            }
        }
        return m_pollSeconds;
    }

    // Sets a speed at which a whole backup (15 s at speed 1) outlasts about
    // `polls` runs of the stand-in, with a margin.
    void paceForPolls(int polls)
    {
        const double speed = std::clamp(15.0 / (2.0 * polls * pollSeconds()), 0.5, 50.0);
        setSpeed(QString::number(speed));
    }

    QByteArray invitation(const QString &target = QStringLiteral("Studio Mac"))
    {
        return run({QStringLiteral("make-invitation"), QStringLiteral("--target"), target})
            .output.trimmed();
    }

    bool enroll()
    {
        return run({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")},
                   invitation() + '\n')
            .succeeded();
    }

    bool configure(const AgentSettings &settings)
    {
        return run({QStringLiteral("configure"), QStringLiteral("--json-stdin")},
                   AgentDocuments::encode(settings))
            .succeeded();
    }

    bool configureTransfer(const TransferPolicy &policy)
    {
        return run({QStringLiteral("configure-transfer"), QStringLiteral("--json-stdin")},
                   AgentDocuments::encode(policy))
            .succeeded();
    }

    // Every state file's bytes, by name, to show that a refusal changed nothing.
    QMap<QString, QByteArray> snapshot() const
    {
        QMap<QString, QByteArray> files;
        const QDir dir(stateDirectory());
        for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden)) {
            QFile file(dir.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                files.insert(name, file.readAll());
        }
        return files;
    }

private:
    QTemporaryDir m_state;
    double m_pollSeconds = 0;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

inline AgentSettings settingsFor(const QStringList &sources, const QStringList &exclusions = {})
{
    AgentSettings settings;
    settings.enabled = false;
    settings.intervalMinutes = 60;
    settings.sources = sources;
    settings.exclusions = exclusions;
    return settings;
}
