#pragma once

// A scripted stand-in for the engine, made in a temporary folder. Each run
// records its arguments, HOME and standard input, then answers with the
// output, error text, exit status and delay set for its first argument (or
// the default answer). Header-only so every test suite can use it.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

class FakeEngine
{
public:
    struct Invocation
    {
        QStringList arguments; // without the program name
        QString home;
        QByteArray standardInput;
        bool hadInput = false;      // false when standard input was inherited
        QByteArrayList environment; // "NAME=value" entries, as the engine saw them
    };

    FakeEngine()
    {
        // Runs without input inherit the test's own standard input; make that
        // the null device so a recorded run never waits on a terminal or pipe.
        static const bool detached = std::freopen("/dev/null", "r", stdin) != nullptr;
        Q_UNUSED(detached);
        QDir root(m_dir.path());
        root.mkpath(QStringLiteral("answers"));
        root.mkpath(QStringLiteral("calls"));
        root.mkpath(QStringLiteral("queued"));
        root.mkpath(QStringLiteral("claimed"));
        QFile script(path());
        script.open(QIODevice::WriteOnly);
        // Standard input counts as "given" when it is a pipe; an inherited
        // terminal or null device is recorded as absent and never read.
        script.write(R"SH(#!/bin/bash
dir="$(dirname "$0")"
id="$(date +%s%N)-$$"
call="$dir/calls/$id"
mkdir -p "$call"
printf '%s\0' "$@" > "$call/args"
printf '%s' "$HOME" > "$call/home"
env -0 > "$call/env"
if [ -p /dev/stdin ]; then cat > "$call/stdin"; fi
cmd="${1:-default}"
ans="$dir/answers/$cmd"
[ -d "$ans" ] || ans="$dir/answers/default"
for one in "$dir/queued/$cmd"/*; do
  [ -d "$one" ] || continue
  if mv "$one" "$dir/claimed/$id" 2>/dev/null; then ans="$dir/claimed/$id"; break; fi
done
touch "$call/done"
if [ -f "$ans/delay" ]; then sleep "$(cat "$ans/delay")"; fi
[ -f "$ans/out" ] && cat "$ans/out"
[ -f "$ans/err" ] && cat "$ans/err" >&2
if [ -f "$ans/code" ]; then exit "$(cat "$ans/code")"; fi
exit 0
)SH");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString path() const { return m_dir.filePath(QStringLiteral("engine")); }

    // Sets the answer to runs whose first argument is `command`; "default"
    // answers every command without an answer of its own.
    void answer(const QString &command, const QByteArray &out, const QByteArray &err = {},
                int exitCode = 0, double delaySeconds = 0)
    {
        QDir answers(m_dir.filePath(QStringLiteral("answers")));
        answers.mkpath(command);
        const QString base = answers.filePath(command) + QLatin1Char('/');
        write(base + QStringLiteral("out"), out);
        write(base + QStringLiteral("err"), err);
        write(base + QStringLiteral("code"), QByteArray::number(exitCode));
        if (delaySeconds > 0)
            write(base + QStringLiteral("delay"), QByteArray::number(delaySeconds));
        else
            QFile::remove(base + QStringLiteral("delay"));
    }

    // Queues an answer for one later run of `command`: each run takes the
    // oldest queued answer (claimed before the run counts as started), and
    // falls back to answer() once the queue is empty.
    void answerOnce(const QString &command, const QByteArray &out, const QByteArray &err = {},
                    int exitCode = 0, double delaySeconds = 0)
    {
        QDir queue(m_dir.filePath(QStringLiteral("queued/") + command));
        queue.mkpath(QStringLiteral("."));
        const QString name = QStringLiteral("%1").arg(m_queued++, 6, 10, QLatin1Char('0'));
        // Filled in a side folder and moved in whole, so a run never sees half an answer.
        const QString staging = m_dir.filePath(QStringLiteral("claimed/staging-") + name);
        QDir().mkpath(staging);
        write(staging + QStringLiteral("/out"), out);
        write(staging + QStringLiteral("/err"), err);
        write(staging + QStringLiteral("/code"), QByteArray::number(exitCode));
        if (delaySeconds > 0)
            write(staging + QStringLiteral("/delay"), QByteArray::number(delaySeconds));
        QDir().rename(staging, queue.filePath(name));
    }

    // Every run so far, oldest first.
    QList<Invocation> invocations() const
    {
        QDir calls(m_dir.filePath(QStringLiteral("calls")));
        QStringList names = calls.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        QList<Invocation> result;
        for (const QString &name : names) {
            const QString base = calls.filePath(name) + QLatin1Char('/');
            Invocation call;
            QByteArray args = read(base + QStringLiteral("args"));
            if (args.endsWith('\0'))
                args.chop(1);
            for (const QByteArray &arg : args.split('\0'))
                call.arguments << QString::fromUtf8(arg);
            call.home = QString::fromUtf8(read(base + QStringLiteral("home")));
            call.hadInput = QFile::exists(base + QStringLiteral("stdin"));
            call.standardInput = read(base + QStringLiteral("stdin"));
            QByteArray env = read(base + QStringLiteral("env"));
            if (env.endsWith('\0'))
                env.chop(1);
            if (!env.isEmpty())
                call.environment = env.split('\0');
            result << call;
        }
        return result;
    }

    // The first arguments (command words) of every run so far, oldest first.
    QStringList commands() const
    {
        QStringList words;
        for (const Invocation &call : invocations())
            words << call.arguments.value(0);
        return words;
    }

    // Runs that have finished recording their input (safe to inspect).
    int startedCount() const
    {
        QDir calls(m_dir.filePath(QStringLiteral("calls")));
        const QStringList names = calls.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return int(std::count_if(names.begin(), names.end(), [&](const QString &n) {
            return QFile::exists(calls.filePath(n) + QStringLiteral("/done"));
        }));
    }

    void forgetInvocations()
    {
        QDir calls(m_dir.filePath(QStringLiteral("calls")));
        calls.removeRecursively();
        QDir(m_dir.path()).mkpath(QStringLiteral("calls"));
    }

private:
    static void write(const QString &file, const QByteArray &bytes)
    {
        QFile f(file);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bytes);
    }
    static QByteArray read(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    QTemporaryDir m_dir;
    int m_queued = 0;
};
