#include "AgentRunner.h"

#include "AgentPaths.h"
#include "CloexecPipe.h"
#include "EngineConfig.h"
#include "EngineOutput.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

extern "C" char **environ;

namespace {

// Owns one file descriptor.
class Fd
{
public:
    Fd() = default;
    Fd(const Fd &) = delete;
    Fd &operator=(const Fd &) = delete;
    ~Fd() { reset(); }

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }
    void reset(int fd = -1)
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = fd;
    }

private:
    int m_fd = -1;
};

// Writing to an engine that has already gone must give EPIPE, not end the app.
void ignoreBrokenPipeOnce()
{
    static const bool done = [] {
        struct sigaction action = {};
        action.sa_handler = SIG_IGN;
        sigemptyset(&action.sa_mask);
        sigaction(SIGPIPE, &action, nullptr);
        return true;
    }();
    (void)done;
}

// Keeps pipe ends away from 0..2, so that wiring the child's standard streams
// can never overwrite another pipe end that happens to sit there.
int aboveStandardStreams(int fd)
{
    if (fd > STDERR_FILENO)
        return fd;
    const int moved = fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(fd);
    return moved;
}

// Close-on-exec before any child can start: concurrent runs on other threads never inherit
// this run's pipe ends (a stray write end would keep us from seeing EOF).
bool makePipe(Fd &readEnd, Fd &writeEnd)
{
    int fds[2];
    if (!CloexecPipe::create(fds))
        return false;
    readEnd.reset(aboveStandardStreams(fds[0]));
    writeEnd.reset(aboveStandardStreams(fds[1]));
    return readEnd.valid() && writeEnd.valid();
}

bool setNonBlocking(int fd)
{
    const int flags = fcntl(fd, F_GETFL);
    return flags >= 0 && fcntl(fd, F_SETFL, flags | O_NONBLOCK) == 0;
}

// NUL-terminated strings in one block, with the pointer array exec wants.
class StringBlock
{
public:
    void add(const char *text, size_t length)
    {
        m_offsets.push_back(m_block.size());
        m_block.append(text, length);
        m_block.push_back('\0');
    }
    void add(const QByteArray &text) { add(text.constData(), size_t(text.size())); }

    char *const *pointers()
    {
        m_pointers.clear();
        m_pointers.reserve(m_offsets.size() + 1);
        for (size_t offset : m_offsets)
            m_pointers.push_back(m_block.data() + offset);
        m_pointers.push_back(nullptr);
        return m_pointers.data();
    }

private:
    std::string m_block;
    std::vector<size_t> m_offsets;
    std::vector<char *> m_pointers;
};

// This process's environment as it is now, with HOME set to the user's home.
void buildEnvironment(StringBlock &environment)
{
    const QByteArray home = "HOME=" + QFile::encodeName(agentUserHome());
    bool homePlaced = false;
    for (char **entry = environ; entry && *entry; ++entry) {
        if (std::strncmp(*entry, "HOME=", 5) == 0) {
            if (!homePlaced)
                environment.add(home);
            homePlaced = true;
            continue;
        }
        environment.add(*entry, std::strlen(*entry));
    }
    if (!homePlaced)
        environment.add(home);
}

class SpawnSetup
{
public:
    SpawnSetup()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        // The child starts with nothing blocked and a default SIGPIPE, whatever
        // this thread blocks and whatever the app ignores.
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes, &none);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &defaults);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSetup(const SpawnSetup &) = delete;
    SpawnSetup &operator=(const SpawnSetup &) = delete;
    ~SpawnSetup()
    {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

// One output stream of the engine: the first streamByteCap bytes are kept.
struct OutputStream
{
    Fd fd;
    QByteArray kept;
    bool cut = false;

    // Reads what is available now; closes the stream at end of file.
    void drain(char *scratch, size_t scratchSize)
    {
        for (;;) {
            const ssize_t n = ::read(fd.get(), scratch, scratchSize);
            if (n > 0) {
                const qsizetype room = AgentRunner::streamByteCap - kept.size();
                const qsizetype take = qMin(qsizetype(n), room);
                if (take > 0)
                    kept.append(scratch, take);
                if (take < n)
                    cut = true;
                continue;
            }
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
                return;
            fd.reset(); // end of file, or an error that ends the stream
            return;
        }
    }
};

using Clock = std::chrono::steady_clock;

enum class Reaped {
    Exited,  // `status` holds how it ended
    Gone,    // not our child any more (reaped elsewhere): how it ended is unknown
    Running, // still running at the deadline
};

// Waits for the engine to end, until `deadline` when there is one.
Reaped reap(pid_t pid, int &status, std::optional<Clock::time_point> deadline)
{
    if (!deadline) {
        pid_t waited = -1;
        do {
            waited = ::waitpid(pid, &status, 0);
        } while (waited < 0 && errno == EINTR);
        return waited == pid ? Reaped::Exited : Reaped::Gone;
    }
    // Looks often at first: an engine that has just closed its pipes is
    // usually a moment away from exiting, and a refresh should not wait for a
    // long sleep. An engine that closed them and went on running is looked at
    // every 20 ms until the deadline.
    auto pause = std::chrono::microseconds(50);
    for (;;) {
        const pid_t waited = ::waitpid(pid, &status, WNOHANG);
        if (waited == pid)
            return Reaped::Exited;
        if (waited < 0 && errno != EINTR)
            return Reaped::Gone;
        const Clock::time_point now = Clock::now();
        if (now >= *deadline)
            return Reaped::Running;
        std::this_thread::sleep_for(std::min<Clock::duration>(pause, *deadline - now));
        pause = std::min(pause * 2, std::chrono::microseconds(20000));
    }
}

// Milliseconds poll() may wait before `deadline` (rounded up, so the wait
// never ends just short of it); -1 without one.
int pollTimeout(std::optional<Clock::time_point> deadline)
{
    if (!deadline)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now());
    return int(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, 60 * 60 * 1000));
}

// A status read past its time: asks the engine to end, then makes it.
void endHungEngine(pid_t pid, std::chrono::milliseconds endWithin)
{
    int status = 0;
    ::kill(pid, SIGTERM);
    if (reap(pid, status, Clock::now() + endWithin) != Reaped::Running)
        return;
    ::kill(pid, SIGKILL);
    reap(pid, status, std::nullopt);
}

CommandResult failure(const QString &message)
{
    CommandResult result;
    result.error = message;
    return result;
}

} // namespace

AgentRunner::AgentRunner() : m_enginePath(defaultEnginePath()) {}

AgentRunner::AgentRunner(QString enginePath) : AgentRunner(std::move(enginePath), StatusReadLimit{})
{
}

AgentRunner::AgentRunner(QString enginePath, StatusReadLimit statusReadLimit)
    : m_enginePath(std::move(enginePath)), m_statusReadLimit(statusReadLimit)
{
}

std::mutex &AgentRunner::environmentLock()
{
    static std::mutex lock;
    return lock;
}

QString AgentRunner::defaultEnginePath()
{
    return QFile::decodeName(ZQB_ENGINE_PATH);
}

CommandResult AgentRunner::run(const QStringList &arguments,
                               std::optional<QByteArrayView> input) const
{
    const QByteArray program = QFile::encodeName(m_enginePath);
    struct stat info = {};
    if (program.isEmpty() || ::stat(program.constData(), &info) != 0 || !S_ISREG(info.st_mode) ||
        ::access(program.constData(), X_OK) != 0)
        return failure(notInstalledMessage);

    ignoreBrokenPipeOnce();

    StringBlock argv;
    argv.add(program);
    for (const QString &argument : arguments)
        argv.add(argument.toUtf8());
    argv.add(QByteArrayLiteral("--state"));
    argv.add(QFile::encodeName(agentStateDirectory()));

    StringBlock envp;
    {
        const std::lock_guard locked(environmentLock());
        buildEnvironment(envp);
    }

    OutputStream out;
    OutputStream err;
    Fd outChildEnd;
    Fd errChildEnd;
    Fd inChildEnd;
    Fd inWrite;
    if (!makePipe(out.fd, outChildEnd) || !makePipe(err.fd, errChildEnd) ||
        (input && !makePipe(inChildEnd, inWrite)))
        return failure(couldNotStartMessage);

    pid_t pid = -1;
    {
        SpawnSetup setup;
        if (input)
            posix_spawn_file_actions_adddup2(&setup.actions, inChildEnd.get(), STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&setup.actions, outChildEnd.get(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&setup.actions, errChildEnd.get(), STDERR_FILENO);
        const CloexecPipe::SpawnGuard guard;
        if (posix_spawn(&pid, program.constData(), &setup.actions, &setup.attributes,
                        argv.pointers(), envp.pointers()) != 0)
            return failure(couldNotStartMessage);
    }
    outChildEnd.reset();
    errChildEnd.reset();
    inChildEnd.reset();

    // Only a status read has a deadline; every other command runs as long as
    // the engine needs.
    std::optional<Clock::time_point> deadline;
    if (!arguments.isEmpty() && arguments.first() == statusCommand)
        deadline = Clock::now() + m_statusReadLimit.answerWithin;
    bool timedOut = false;

    const char *inputData = input ? input->data() : nullptr;
    const qsizetype inputSize = input ? input->size() : 0;
    qsizetype written = 0;
    if (inWrite.valid() && inputSize == 0)
        inWrite.reset();
    if ((inWrite.valid() && !setNonBlocking(inWrite.get())) || !setNonBlocking(out.fd.get()) ||
        !setNonBlocking(err.fd.get())) {
        // Without non-blocking ends the loop below could stall; give the engine
        // end of file on every pipe instead and just wait for it.
        inWrite.reset();
        out.fd.reset();
        err.fd.reset();
    }

    // Both streams are read while the engine runs and the input is written at
    // the same time, so no pipe can fill up and block either side.
    char scratch[64 * 1024];
    while (out.fd.valid() || err.fd.valid() || inWrite.valid()) {
        pollfd fds[3];
        nfds_t count = 0;
        int outIndex = -1;
        int errIndex = -1;
        int inIndex = -1;
        if (out.fd.valid()) {
            outIndex = int(count);
            fds[count++] = {out.fd.get(), POLLIN, 0};
        }
        if (err.fd.valid()) {
            errIndex = int(count);
            fds[count++] = {err.fd.get(), POLLIN, 0};
        }
        if (inWrite.valid()) {
            inIndex = int(count);
            fds[count++] = {inWrite.get(), POLLOUT, 0};
        }
        const int ready = ::poll(fds, count, pollTimeout(deadline));
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            break;
        }
        // Also while output keeps coming: an engine that prints forever hangs too.
        if (deadline && Clock::now() >= *deadline) {
            timedOut = true;
            break;
        }
        if (outIndex >= 0 && fds[outIndex].revents)
            out.drain(scratch, sizeof scratch);
        if (errIndex >= 0 && fds[errIndex].revents)
            err.drain(scratch, sizeof scratch);
        if (inIndex >= 0 && fds[inIndex].revents) {
            const size_t chunk = size_t(qMin<qsizetype>(inputSize - written, 64 * 1024));
            const ssize_t n = ::write(inWrite.get(), inputData + written, chunk);
            if (n > 0)
                written += n;
            else if (n < 0 && errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK)
                inWrite.reset(); // EPIPE: the engine stopped reading; carry on
            if (written >= inputSize)
                inWrite.reset(); // the engine sees end of file
        }
    }
    inWrite.reset();
    out.fd.reset();
    err.fd.reset();

    int status = 0;
    // Our ends are closed first, so an engine stuck writing gets EPIPE too.
    const Reaped reaped = timedOut ? Reaped::Running : reap(pid, status, deadline);
    if (reaped == Reaped::Running) {
        endHungEngine(pid, m_statusReadLimit.endWithin);
        return failure(didNotAnswerMessage);
    }

    // A cut can fall inside a character: drop its first bytes in place, so
    // that the kept output is whole characters and can be handed on as it is.
    if (out.cut)
        out.kept.truncate(EngineOutput::lengthWithoutIncompleteTail(out.kept));

    CommandResult result;
    result.output = EngineOutput::decode(out.kept, false, outputCharacterCap);
    result.error = EngineOutput::decode(err.kept, err.cut, errorCharacterCap);
    result.outputBytes = std::move(out.kept); // moved, not copied
    result.succeeded = reaped == Reaped::Exited && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result;
}
