#include "AgentPaths.h"
#include "AgentRunner.h"
#include "CloexecPipe.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern "C" char **environ;

namespace {

// A folder of fake engines for one test.
class Engines
{
public:
    Engines() { QVERIFY(m_dir.isValid()); }

    QString path(const QString &name) const { return m_dir.filePath(name); }

    // A bash script engine; `body` follows the interpreter line.
    QString script(const QString &name, const QByteArray &body)
    {
        return file(name, "#!/bin/bash\n" + body, 0755);
    }

    QString file(const QString &name, const QByteArray &content, mode_t mode)
    {
        const QString file = path(name);
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(file));
        out.write(content);
        out.close();
        ::chmod(QFile::encodeName(file).constData(), mode);
        return file;
    }

    // A copy of the compiled probe; it writes "args" and "env" beside itself.
    QString probe()
    {
        const QString copy = path(QStringLiteral("probe"));
        if (!QFile::exists(copy) && !QFile::copy(QStringLiteral(ZQB_PROBE_ENGINE), copy))
            qFatal("cannot copy the probe engine");
        return copy;
    }

    QList<QByteArray> recorded(const QString &name) const
    {
        QFile in(path(name));
        if (!in.open(QIODevice::ReadOnly))
            return {};
        QByteArray all = in.readAll();
        if (all.endsWith('\0'))
            all.chop(1);
        return all.isEmpty() ? QList<QByteArray>() : all.split('\0');
    }

private:
    QTemporaryDir m_dir;
};

QList<QByteArray> ourEnvironment()
{
    QList<QByteArray> all;
    for (char **entry = environ; *entry; ++entry)
        all << QByteArray(*entry);
    return all;
}

qint64 statusField(const char *name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(qsizetype(strlen(name))).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// Descriptors of this process that a child legitimately inherits.
QString inheritableDescriptors()
{
    QString list;
    QDir fds(QStringLiteral("/proc/self/fd"));
    QList<int> numbers;
    for (const QString &name :
         fds.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
        numbers << name.toInt();
    std::sort(numbers.begin(), numbers.end());
    for (int fd : numbers) {
        const int flags = fcntl(fd, F_GETFD);
        if (fd > 2 && flags >= 0 && !(flags & FD_CLOEXEC))
            list += QString::number(fd) + QLatin1Char(' ');
    }
    return QStringLiteral("fds:") + list;
}

} // namespace

class TestEngineRunner : public QObject
{
    Q_OBJECT

private slots:
    void defaultEnginePathIsTheFixedOne();

    void missingEngineIsNotInstalled();
    void nonExecutableFileIsNotInstalledAndNothingStarts();
    void directoryIsNotInstalled();
    void unstartableEngineCouldNotStart();
    void missingInterpreterCouldNotStart();

    void stateOptionIsAppendedLast();
    void argumentsArriveUnchanged();
    void homeIsReplacedAndEverythingElseUnchanged();
    void homeIsPresentWhenTheAppHasNone();
    void childGetsDefaultSignalsAndNoBlockedOnes();

    void absentInputInheritsOurStandardInput();
    void emptyInputGivesImmediateEndOfFile();
    void inputArrivesByteExact();
    void inputIsWrittenWhileOutputIsRead();
    void engineThatExitsWithoutReadingInput_data();
    void engineThatExitsWithoutReadingInput();

    void outputIsCutToCharactersThenTrimmed();
    void errorIsCutToCharactersThenTrimmed();
    void crLfCountsAsOneCharacter();
    void combiningMarksCountWithTheirBase();
    void surroundingWhitespaceIsTrimmed();
    void invalidUtf8GivesEmptyText();
    void byteOrderMarkIsKept();
    void streamCutInsideACharacterStillDecodes();
    void wholeOutputIsTrimmedButNotCapped();

    void nonZeroExitFails_data();
    void nonZeroExitFails();
    void successMayCarryErrorText();
    void killedBySignalFails();
    void hugeOutputReturnsWithBoundedMemory();

    void statusReadLimitIsAMinuteThenFiveSeconds();
    void hungStatusReadIsTerminatedAndFails();
    void statusReadIgnoringTerminationIsKilled();
    void statusReadThatClosesItsStreamsButRunsOnIsEnded();
    void statusReadThatNeverStopsWritingIsEnded();
    void statusReadAnsweringInTimeIsKept();
    void otherCommandsAreNeverEnded();

    void pipeEndsAreCloseOnExec();
    void concurrentRunsStayApart();
};

void TestEngineRunner::defaultEnginePathIsTheFixedOne()
{
    QCOMPARE(AgentRunner::defaultEnginePath(),
             QStringLiteral("/Library/Application Support/ZQB Agent/zqb-agent"));
    QCOMPARE(AgentRunner().enginePath(), AgentRunner::defaultEnginePath());
}

void TestEngineRunner::missingEngineIsNotInstalled()
{
    Engines engines;
    const CommandResult result = AgentRunner(engines.path("absent")).run({"ui-status"});
    QCOMPARE(result.output, QString());
    QCOMPARE(result.error, QStringLiteral("The ZQB Agent background engine is not installed."));
    QVERIFY(!result.succeeded);
}

void TestEngineRunner::nonExecutableFileIsNotInstalledAndNothingStarts()
{
    Engines engines;
    const QString marker = engines.path("started");
    const QString engine =
        engines.file("engine", "#!/bin/bash\ntouch '" + marker.toUtf8() + "'\necho ran\n", 0644);
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QCOMPARE(result.output, QString());
    QCOMPARE(result.error, AgentRunner::notInstalledMessage);
    QVERIFY(!result.succeeded);
    QVERIFY(!QFile::exists(marker));
}

void TestEngineRunner::directoryIsNotInstalled()
{
    Engines engines;
    QVERIFY(QDir(engines.path(".")).mkpath("engine"));
    ::chmod(QFile::encodeName(engines.path("engine")).constData(), 0755);
    const CommandResult result = AgentRunner(engines.path("engine")).run({"ui-status"});
    QCOMPARE(result, (CommandResult{QString(), AgentRunner::notInstalledMessage, false}));
}

void TestEngineRunner::unstartableEngineCouldNotStart()
{
    Engines engines;
    // Executable, but neither a program nor a script the system can run.
    const QString engine = engines.file("engine", QByteArray("\x01\x02garbage\n"), 0755);
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QCOMPARE(result.output, QString());
    QCOMPARE(result.error, QStringLiteral("ZQB Agent could not start."));
    QVERIFY(!result.succeeded);
}

void TestEngineRunner::missingInterpreterCouldNotStart()
{
    Engines engines;
    const QString engine =
        engines.file("engine", "#!" + engines.path("no-such-shell").toUtf8() + "\n", 0755);
    const CommandResult result = AgentRunner(engine).run({"ui-status"}, QByteArrayView("doc"));
    QCOMPARE(result, (CommandResult{QString(), AgentRunner::couldNotStartMessage, false}));
}

void TestEngineRunner::stateOptionIsAppendedLast()
{
    Engines engines;
    const CommandResult result = AgentRunner(engines.probe()).run({"ui-status"});
    QVERIFY(result.succeeded);
    const QList<QByteArray> args = engines.recorded("args");
    QCOMPARE(args,
             (QList<QByteArray>{"ui-status", "--state", QFile::encodeName(agentStateDirectory())}));

    AgentRunner(engines.probe()).run({"configure", "--json-stdin"}, QByteArrayView("{}"));
    QCOMPARE(engines.recorded("args"),
             (QList<QByteArray>{"configure", "--json-stdin", "--state",
                                QFile::encodeName(agentStateDirectory())}));
}

void TestEngineRunner::argumentsArriveUnchanged()
{
    Engines engines;
    const QStringList arguments = {
        QStringLiteral("two words"),
        QStringLiteral("\"double\" 'single'"),
        QStringLiteral("$HOME $(id)"),
        QStringLiteral("*"),
        QStringLiteral("line\nbreak"),
        QStringLiteral("back\\slash;|&<>"),
        QString(),
        QStringLiteral("  padded  "),
        QStringLiteral("--state"),
        QStringLiteral("Grüße ✓ \U0001F600"),
        QStringLiteral("`backtick`"),
        QStringLiteral("tab\there\r\n"),
    };
    const CommandResult result = AgentRunner(engines.probe()).run(arguments);
    QVERIFY(result.succeeded);
    QList<QByteArray> expected;
    for (const QString &argument : arguments)
        expected << argument.toUtf8();
    expected << "--state" << QFile::encodeName(agentStateDirectory());
    QCOMPARE(engines.recorded("args"), expected);
}

void TestEngineRunner::homeIsReplacedAndEverythingElseUnchanged()
{
    Engines engines;
    const QByteArray savedHome = qgetenv("HOME");
    qputenv("HOME", "/somewhere/else");
    qputenv("ZQB_TEST_VARIABLE", "spaces and = signs\nand a line break");
    QList<QByteArray> expected;
    for (const QByteArray &entry : ourEnvironment()) {
        if (!entry.startsWith("HOME="))
            expected << entry;
    }
    const CommandResult result = AgentRunner(engines.probe()).run({"ui-status"});
    qputenv("HOME", savedHome);
    qunsetenv("ZQB_TEST_VARIABLE");
    QVERIFY(result.succeeded);

    QList<QByteArray> seen = engines.recorded("env");
    QCOMPARE(seen.count("HOME=" + QFile::encodeName(agentUserHome())), 1);
    QVERIFY(!seen.contains("HOME=/somewhere/else"));
    seen.removeAll("HOME=" + QFile::encodeName(agentUserHome()));
    QCOMPARE(seen, expected);
    QVERIFY(seen.contains("ZQB_TEST_VARIABLE=spaces and = signs\nand a line break"));
}

void TestEngineRunner::homeIsPresentWhenTheAppHasNone()
{
    Engines engines;
    const QByteArray savedHome = qgetenv("HOME");
    ::unsetenv("HOME");
    QVERIFY(!std::getenv("HOME"));
    const CommandResult result = AgentRunner(engines.probe()).run({"ui-status"});
    qputenv("HOME", savedHome);
    QVERIFY(result.succeeded);
    const QList<QByteArray> seen = engines.recorded("env");
    QCOMPARE(seen.count("HOME=" + QFile::encodeName(agentUserHome())), 1);
    QCOMPARE(seen.size(), ourEnvironment().size()); // HOME was added, nothing else
}

void TestEngineRunner::childGetsDefaultSignalsAndNoBlockedOnes()
{
    Engines engines;
    // With a broken pipe left ignored, `yes` would complain on standard error
    // instead of ending quietly.
    const QString engine = engines.script(
        "engine",
        "yes | head -c 4 | tr -d '\\n'\necho\nexec grep -E '^Sig(Blk|Ign):' /proc/self/status\n");
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigset_t previous;
    pthread_sigmask(SIG_BLOCK, &blocked, &previous);
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);

    QVERIFY(result.succeeded);
    QCOMPARE(result.error, QString());
    const QStringList lines = result.output.split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), QStringLiteral("yy"));
    const QString blockedLine = lines.filter(QStringLiteral("SigBlk:")).value(0);
    const QString ignoredLine = lines.filter(QStringLiteral("SigIgn:")).value(0);
    QCOMPARE(blockedLine.section(QLatin1Char('\t'), 1).toULongLong(nullptr, 16), 0ull);
    const quint64 ignored = ignoredLine.section(QLatin1Char('\t'), 1).toULongLong(nullptr, 16);
    QCOMPARE(ignored & (1ull << (SIGPIPE - 1)), 0ull);

    // ...while the app itself ignores the broken-pipe signal from now on.
    struct sigaction current = {};
    sigaction(SIGPIPE, nullptr, &current);
    QVERIFY(current.sa_handler == SIG_IGN);
}

void TestEngineRunner::absentInputInheritsOurStandardInput()
{
    Engines engines;
    const QString known = engines.file("known-input", "what the app has on standard input\n", 0644);
    const int saved = dup(STDIN_FILENO);
    const int fd = ::open(QFile::encodeName(known).constData(), O_RDONLY);
    QVERIFY(saved >= 0 && fd >= 0);
    dup2(fd, STDIN_FILENO);
    ::close(fd);
    const QString engine = engines.script("engine", "cat\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    dup2(saved, STDIN_FILENO);
    ::close(saved);
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QStringLiteral("what the app has on standard input"));
}

void TestEngineRunner::emptyInputGivesImmediateEndOfFile()
{
    Engines engines;
    const QString engine =
        engines.script("engine", "if read -r -t 5 line; then echo \"line $line\"; else echo "
                                 "\"end $?\"; fi\n");
    QElapsedTimer timer;
    timer.start();
    const CommandResult result = AgentRunner(engine).run({"ui-status"}, QByteArrayView(""));
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QStringLiteral("end 1")); // a timeout would give a status above 128
    QVERIFY2(timer.elapsed() < 4000, "the engine waited for input");
}

void TestEngineRunner::inputArrivesByteExact()
{
    Engines engines;
    QByteArray input;
    for (int i = 0; i < 3 * 1024 * 1024; ++i)
        input.append(char(i * 7 + (i >> 11)));
    const QString engine = engines.script("engine", "sha256sum | cut -d' ' -f1\n");
    const CommandResult result = AgentRunner(engine).run({"configure", "--json-stdin"}, input);
    QVERIFY(result.succeeded);
    QCOMPARE(
        result.output,
        QString::fromLatin1(QCryptographicHash::hash(input, QCryptographicHash::Sha256).toHex()));
}

void TestEngineRunner::inputIsWrittenWhileOutputIsRead()
{
    // `cat` writes back while it reads: with the input written first and the
    // output read only afterwards, both sides would wait on a full pipe.
    Engines engines;
    const QByteArray input = QByteArray(4 * 1024 * 1024, 'k');
    const QString engine = engines.script("engine", "cat\necho done >&2\n");
    const CommandResult result = AgentRunner(engine).run({"configure", "--json-stdin"}, input);
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QString(AgentRunner::outputCharacterCap, QLatin1Char('k')));
    QCOMPARE(result.error, QStringLiteral("done"));
}

void TestEngineRunner::engineThatExitsWithoutReadingInput_data()
{
    QTest::addColumn<int>("exitCode");
    QTest::newRow("status 0") << 0;
    QTest::newRow("status 3") << 3;
}

void TestEngineRunner::engineThatExitsWithoutReadingInput()
{
    QFETCH(int, exitCode);
    Engines engines;
    const QString engine =
        engines.script("engine", "echo bye\nexit " + QByteArray::number(exitCode) + "\n");
    const QByteArray input(1024 * 1024, 'x');
    const CommandResult result = AgentRunner(engine).run({"configure", "--json-stdin"}, input);
    // Reaching this line at all means the broken pipe did not end the app.
    QCOMPARE(result.output, QStringLiteral("bye"));
    QCOMPARE(result.error, QString());
    QCOMPARE(result.succeeded, exitCode == 0);
}

void TestEngineRunner::outputIsCutToCharactersThenTrimmed()
{
    Engines engines;
    // Leading blanks count towards the cap: trimming comes after cutting.
    const QString leading =
        engines.script("lead", "printf '  '\nhead -c 9998 /dev/zero | tr '\\0' x\n");
    CommandResult result = AgentRunner(leading).run({"ui-status"});
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QString(8190, QLatin1Char('x')));

    // Blanks at the cut are trimmed even though more text followed them.
    const QString trailing =
        engines.script("trail", "head -c 8190 /dev/zero | tr '\\0' x\nprintf '  '\n"
                                "head -c 1808 /dev/zero | tr '\\0' z\n");
    result = AgentRunner(trailing).run({"ui-status"});
    QCOMPARE(result.output, QString(8190, QLatin1Char('x')));

    const QString plain = engines.script("plain", "head -c 10000 /dev/zero | tr '\\0' p\n");
    result = AgentRunner(plain).run({"ui-status"});
    QCOMPARE(result.output, QString(8192, QLatin1Char('p')));
}

void TestEngineRunner::errorIsCutToCharactersThenTrimmed()
{
    Engines engines;
    const QString engine =
        engines.script("engine", "head -c 3000 /dev/zero | tr '\\0' e >&2\necho fine\n");
    CommandResult result = AgentRunner(engine).run({"ui-status"});
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QStringLiteral("fine"));
    QCOMPARE(result.error, QString(2048, QLatin1Char('e')));

    const QString padded =
        engines.script("padded", "{ printf '\\n\\t'; head -c 2998 /dev/zero | tr '\\0' e; } >&2\n");
    result = AgentRunner(padded).run({"ui-status"});
    QCOMPARE(result.error, QString(2046, QLatin1Char('e')));

    const QString longer = engines.script("longer", "head -c 10000 /dev/zero | tr '\\0' e >&2\n");
    result = AgentRunner(longer).run({"ui-status"});
    QCOMPARE(result.error, QString(2048, QLatin1Char('e')));
}

void TestEngineRunner::crLfCountsAsOneCharacter()
{
    Engines engines;
    // 4,096 times "x CR LF" is exactly 8,192 characters but 12,288 code units.
    const QString engine =
        engines.script("engine", "for i in $(seq 4096); do printf 'x\\r\\n'; done\nprintf TAIL\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QString expected;
    for (int i = 0; i < 4096; ++i)
        expected += QStringLiteral("x\r\n");
    expected.chop(2); // the last CR LF is trimmed
    QCOMPARE(result.output.size(), expected.size());
    QCOMPARE(result.output, expected);
}

void TestEngineRunner::combiningMarksCountWithTheirBase()
{
    Engines engines;
    // "e" + COMBINING ACUTE ACCENT, 9,000 times: one character each.
    const QString engine =
        engines.script("engine", "for i in $(seq 9000); do printf 'e\\xcc\\x81'; done\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QString expected;
    for (int i = 0; i < 8192; ++i)
        expected += QStringLiteral("e\u0301");
    QCOMPARE(result.output, expected);
}

void TestEngineRunner::surroundingWhitespaceIsTrimmed()
{
    Engines engines;
    const QString engine = engines.script("engine", "printf '  {\"a\": 1}\\n'\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QCOMPARE(result.output, QStringLiteral("{\"a\": 1}"));
    QCOMPARE(result.wholeOutput(), QByteArrayView("{\"a\": 1}"));

    // Unicode separators and NEL are trimmed too; inner ones stay.
    const QString wide = engines.script(
        "wide",
        "printf '\\xe3\\x80\\x80\\xc2\\x85\\xe2\\x80\\xa8a \\xc2\\xa0b\\xe2\\x80\\xa9\\v\\f\\r'\n");
    const CommandResult wideResult = AgentRunner(wide).run({"ui-status"});
    QCOMPARE(wideResult.output, QStringLiteral("a \u00a0b"));
    QCOMPARE(wideResult.wholeOutput(), QByteArrayView("a \xc2\xa0"
                                                      "b"));
}

void TestEngineRunner::invalidUtf8GivesEmptyText()
{
    Engines engines;
    const QString engine = engines.script(
        "engine", "printf 'valid text \\xff more valid text'\nprintf 'error text' >&2\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QString());
    QVERIFY(result.wholeOutput().isEmpty());
    QCOMPARE(result.error, QStringLiteral("error text"));

    const QString surrogate = engines.script("surrogate", "printf '\\xed\\xa0\\x80' >&2\n");
    QCOMPARE(AgentRunner(surrogate).run({"ui-status"}).error, QString());
    const QString truncated = engines.script("truncated", "printf 'ends inside \\xe2\\x82'\n");
    QCOMPARE(AgentRunner(truncated).run({"ui-status"}).output, QString());
}

void TestEngineRunner::byteOrderMarkIsKept()
{
    Engines engines;
    const QString engine = engines.script("engine", "printf '\\xef\\xbb\\xbf{}'\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QCOMPARE(result.output, QStringLiteral("\ufeff{}"));
    QCOMPARE(result.wholeOutput(), QByteArrayView("\xef\xbb\xbf{}"));
}

void TestEngineRunner::streamCutInsideACharacterStillDecodes()
{
    // 1 MiB is not a multiple of three: the kept bytes end inside a euro sign.
    Engines engines;
    const QString engine =
        engines.script("engine", "chunk=$(printf '\\xe2\\x82\\xac%.0s' $(seq 1000))\n"
                                 "for i in $(seq 400); do printf '%s' \"$chunk\"; done\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QString(8192, QChar(0x20AC)));
    // The whole text is every complete euro sign that was kept.
    QCOMPARE(result.wholeOutput().size(), AgentRunner::streamByteCap / 3 * 3);
    QCOMPARE(QString::fromUtf8(result.wholeOutput()),
             QString(AgentRunner::streamByteCap / 3, QChar(0x20AC)));
}

void TestEngineRunner::wholeOutputIsTrimmedButNotCapped()
{
    Engines engines;
    const QString engine = engines.script(
        "engine", "printf '\\n  '\nhead -c 10000 /dev/zero | tr '\\0' w\nprintf ' \\r\\n'\n");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    QVERIFY(result.succeeded);
    // The three leading blanks count towards the cap of the shown text.
    QCOMPARE(result.output, QString(8189, QLatin1Char('w')));
    QCOMPARE(result.wholeOutput(), QByteArrayView(QByteArray(10000, 'w')));
    QCOMPARE(result.outputBytes, "\n  " + QByteArray(10000, 'w') + " \r\n");
}

void TestEngineRunner::nonZeroExitFails_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QByteArray>("outputBytes");
    QTest::newRow("message on standard output")
        << QByteArray("echo 'No folders chosen.'\nexit 1\n") << "No folders chosen."
        << "" << QByteArray("No folders chosen.\n");
    QTest::newRow("message on standard error")
        << QByteArray("echo 'Target refused the invitation.' >&2\nexit 1\n") << ""
        << "Target refused the invitation." << QByteArray();
    QTest::newRow("status 255") << QByteArray("exit 255\n") << ""
                                << "" << QByteArray();
}

void TestEngineRunner::nonZeroExitFails()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, output);
    QFETCH(QString, error);
    QFETCH(QByteArray, outputBytes);
    Engines engines;
    const CommandResult result = AgentRunner(engines.script("engine", body)).run({"run-once"});
    QCOMPARE(result, (CommandResult{output, error, false, outputBytes}));
}

void TestEngineRunner::successMayCarryErrorText()
{
    Engines engines;
    const QString engine = engines.script("engine", "echo ok\necho 'a warning' >&2\n");
    QCOMPARE(AgentRunner(engine).run({"backup-all"}),
             (CommandResult{QStringLiteral("ok"), QStringLiteral("a warning"), true, "ok\n"}));
}

void TestEngineRunner::killedBySignalFails()
{
    Engines engines;
    const QString engine = engines.script("engine", "echo partial\necho gone >&2\nkill -KILL $$\n");
    const CommandResult result = AgentRunner(engine).run({"backup-all"});
    QCOMPARE(result, (CommandResult{QStringLiteral("partial"), QStringLiteral("gone"), false,
                                    "partial\n"}));
    const QString terminated = engines.script("terminated", "kill -TERM $$\n");
    QVERIFY(!AgentRunner(terminated).run({"backup-all"}).succeeded);
}

namespace {

// Short limits, so a hung status read is ended within a test's patience.
constexpr AgentRunner::StatusReadLimit shortLimit{std::chrono::milliseconds(400),
                                                  std::chrono::milliseconds(300)};

// Whether the process `pid` (our former child, reaped) no longer exists.
bool processIsGone(const QByteArray &pidText)
{
    const pid_t pid = pid_t(pidText.trimmed().toInt());
    return pid > 0 && ::kill(pid, 0) != 0 && errno == ESRCH;
}

QByteArray readAll(const QString &file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

} // namespace

void TestEngineRunner::statusReadLimitIsAMinuteThenFiveSeconds()
{
    QCOMPARE(AgentRunner().statusReadLimit().answerWithin, std::chrono::milliseconds(60000));
    QCOMPARE(AgentRunner().statusReadLimit().endWithin, std::chrono::milliseconds(5000));
    QCOMPARE(AgentRunner(QStringLiteral("/bin/true")).statusReadLimit().answerWithin,
             std::chrono::milliseconds(60000));
}

void TestEngineRunner::hungStatusReadIsTerminatedAndFails()
{
    Engines engines;
    const QString dir = engines.path(QString());
    // Writes a little, then hangs; notes the SIGTERM it gets and leaves on it.
    const QString engine = engines.script("engine", "echo $$ > '" + dir.toUtf8() +
                                                        "/pid'\necho '{\"partial\":'\n"
                                                        "trap 'echo term > \"" +
                                                        dir.toUtf8() +
                                                        "/signal\"; exit 143' TERM\n"
                                                        "while :; do sleep 0.02; done\n");
    QElapsedTimer clock;
    clock.start();
    const CommandResult result = AgentRunner(engine, shortLimit).run({"ui-status"});
    const qint64 elapsed = clock.elapsed();
    QCOMPARE(result, (CommandResult{QString(),
                                    QStringLiteral("The ZQB Agent background engine did "
                                                   "not answer."),
                                    false,
                                    {}}));
    QVERIFY2(elapsed >= 400, qPrintable(QString::number(elapsed)));
    QVERIFY2(elapsed < 400 + 300, qPrintable(QString::number(elapsed))); // no SIGKILL needed
    QCOMPARE(readAll(dir + "/signal"), QByteArray("term\n"));
    QVERIFY(processIsGone(readAll(dir + "/pid")));
}

void TestEngineRunner::statusReadIgnoringTerminationIsKilled()
{
    Engines engines;
    const QString dir = engines.path(QString());
    // The ignored SIGTERM is inherited across exec: only SIGKILL ends it.
    const QString engine = engines.script("engine", "echo $$ > '" + dir.toUtf8() +
                                                        "/pid'\ntrap '' TERM\nexec sleep 30\n");
    QElapsedTimer clock;
    clock.start();
    const CommandResult result = AgentRunner(engine, shortLimit).run({"ui-status"});
    const qint64 elapsed = clock.elapsed();
    QVERIFY(!result.succeeded);
    QCOMPARE(result.error, QStringLiteral("The ZQB Agent background engine did not answer."));
    QVERIFY2(elapsed >= 400 + 300, qPrintable(QString::number(elapsed)));
    QVERIFY2(elapsed < 10000, qPrintable(QString::number(elapsed)));
    QVERIFY(processIsGone(readAll(dir + "/pid")));
}

void TestEngineRunner::statusReadThatClosesItsStreamsButRunsOnIsEnded()
{
    Engines engines;
    const QString dir = engines.path(QString());
    const QString engine = engines.script("engine", "echo $$ > '" + dir.toUtf8() +
                                                        "/pid'\nexec >&- 2>&-\nexec sleep 30\n");
    const CommandResult result = AgentRunner(engine, shortLimit).run({"ui-status"});
    QVERIFY(!result.succeeded);
    QCOMPARE(result.error, QStringLiteral("The ZQB Agent background engine did not answer."));
    QVERIFY(processIsGone(readAll(dir + "/pid")));
}

void TestEngineRunner::statusReadThatNeverStopsWritingIsEnded()
{
    Engines engines;
    const QString dir = engines.path(QString());
    const QString engine = engines.script(
        "engine", "echo $$ > '" + dir.toUtf8() + "/pid'\nexec yes 'a status line'\n");
    const CommandResult result = AgentRunner(engine, shortLimit).run({"ui-status"});
    QVERIFY(!result.succeeded);
    QCOMPARE(result.error, QStringLiteral("The ZQB Agent background engine did not answer."));
    QVERIFY(processIsGone(readAll(dir + "/pid")));
}

void TestEngineRunner::statusReadAnsweringInTimeIsKept()
{
    Engines engines;
    const QString engine = engines.script("engine", "sleep 0.1\necho '{}'\necho note >&2\n");
    const CommandResult result = AgentRunner(engine, shortLimit).run({"ui-status"});
    QCOMPARE(result, (CommandResult{QStringLiteral("{}"), QStringLiteral("note"), true, "{}\n"}));
}

void TestEngineRunner::otherCommandsAreNeverEnded()
{
    Engines engines;
    // Silent for longer than a status read may take, then done: a long backup.
    const QString engine = engines.script("engine", "sleep 1.2\necho done\n");
    for (const char *command : {"backup-all", "autonomous-update", "run-once", "configure"}) {
        const CommandResult result = AgentRunner(engine, shortLimit).run({command});
        QVERIFY2(result.succeeded, command);
        QCOMPARE(result.output, QStringLiteral("done"));
    }
}

void TestEngineRunner::hugeOutputReturnsWithBoundedMemory()
{
    Engines engines;
    // 10 MiB on each stream, both at once: far more than a pipe holds.
    const QString engine =
        engines.script("engine", "head -c 10485760 /dev/zero | tr '\\0' a &\n"
                                 "head -c 10485760 /dev/zero | tr '\\0' b >&2 &\nwait\n");
    // Forget earlier peaks so the high-water mark shows this run alone.
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    const bool peakReset = clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
    clear.close();
    const qint64 before = peakReset ? statusField("VmRSS:") : statusField("VmHWM:");
    const CommandResult result = AgentRunner(engine).run({"ui-status"});
    const qint64 peak = statusField("VmHWM:");
    QVERIFY(result.succeeded);
    QCOMPARE(result.output, QString(8192, QLatin1Char('a')));
    QCOMPARE(result.error, QString(2048, QLatin1Char('b')));
    QCOMPARE(result.wholeOutput().size(), AgentRunner::streamByteCap);
    QVERIFY(before > 0 && peak > 0);
    const qint64 growthKib = peak - before;
    qInfo("peak memory growth during the run: %lld KiB", growthKib);
    QVERIFY2(growthKib < 20 * 1024, "the runner held far more than it keeps");
}

namespace {

bool closeOnExec(int fd)
{
    const int flags = fcntl(fd, F_GETFD);
    return flags >= 0 && (flags & FD_CLOEXEC);
}

} // namespace

void TestEngineRunner::pipeEndsAreCloseOnExec()
{
    for (bool portable : {false, true}) {
        int fds[2] = {-1, -1};
        QVERIFY(portable ? CloexecPipe::createPortable(fds) : CloexecPipe::create(fds));
        QVERIFY(closeOnExec(fds[0]));
        QVERIFY(closeOnExec(fds[1]));
        QCOMPARE(write(fds[1], "x", 1), ssize_t(1));
        char c = 0;
        QCOMPARE(read(fds[0], &c, 1), ssize_t(1));
        QCOMPARE(c, 'x');
        ::close(fds[0]);
        ::close(fds[1]);
    }
}

void TestEngineRunner::concurrentRunsStayApart()
{
    Engines engines;
    const QString echo = engines.script(
        "engine", "printf 'out-%s' \"$1\"\nprintf 'err-%s' \"$1\" >&2\nread -r line\n"
                  "printf -- '-%s' \"$line\"\nexit $(( $1 % 3 ))\n");
    const QString probe = engines.probe();
    const QString inherited = inheritableDescriptors();
    constexpr int runs = 50;
    std::vector<CommandResult> results(runs);
    std::vector<CommandResult> descriptorResults(runs);
    std::vector<std::thread> threads;
    std::atomic<int> ready{0};
    // Meanwhile another thread keeps making pipes the portable way (pipe,
    // then close-on-exec): no engine may ever see one of their ends.
    std::atomic<bool> runsDone{false};
    std::thread pipeMaker([&] {
        while (!runsDone.load()) {
            int fds[2];
            if (CloexecPipe::createPortable(fds)) {
                ::close(fds[0]);
                ::close(fds[1]);
            }
        }
    });
    for (int i = 0; i < runs; ++i) {
        threads.emplace_back([&, i] {
            ++ready;
            while (ready.load() < runs)
                std::this_thread::yield();
            const QByteArray input = "in" + QByteArray::number(i) + "\n";
            results[size_t(i)] = AgentRunner(echo).run({QString::number(i)}, input);
            descriptorResults[size_t(i)] = AgentRunner(probe).run({QStringLiteral("fds")});
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    runsDone = true;
    pipeMaker.join();
    for (int i = 0; i < runs; ++i) {
        const QString n = QString::number(i);
        const CommandResult &result = results[size_t(i)];
        QCOMPARE(result.output, QStringLiteral("out-%1-in%1").arg(n));
        QCOMPARE(result.error, QStringLiteral("err-%1").arg(n));
        QCOMPARE(result.succeeded, i % 3 == 0);
        // No run's pipe ends leak into an engine started at the same moment.
        QCOMPARE(descriptorResults[size_t(i)].output, inherited.trimmed());
    }
}

QTEST_GUILESS_MAIN(TestEngineRunner)
#include "tst_engine_runner.moc"
