#include "BackgroundBackup.h"

#include <QByteArray>
#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int readyDescriptor = 3;

void closeDescriptorsFrom(int first)
{
    // close_range is not everywhere; the fallback is async-signal-safe too.
    const long limit = ::sysconf(_SC_OPEN_MAX);
    for (int fd = first; fd < (limit > 0 && limit < 65536 ? limit : 65536); ++fd)
        ::close(fd);
}

} // namespace

namespace BackgroundBackup {

bool start(const QString &program, const QString &stateDirectory, int patienceMs)
{
    // Everything the child needs is prepared before fork: after it, only
    // async-signal-safe calls.
    const QByteArray programName = QFile::encodeName(program);
    const QByteArray state = QFile::encodeName(stateDirectory);
    const QByteArray readyText = QByteArray::number(readyDescriptor);
    std::array<char *, 9> argv = {const_cast<char *>(programName.constData()),
                                  const_cast<char *>("backup-all"),
                                  const_cast<char *>("--background"),
                                  const_cast<char *>("--ready-fd"),
                                  const_cast<char *>(readyText.constData()),
                                  const_cast<char *>("--state"),
                                  const_cast<char *>(state.constData()),
                                  nullptr,
                                  nullptr};

    int ready[2];
    if (::pipe2(ready, O_CLOEXEC) != 0)
        return false;

    const pid_t intermediate = ::fork();
    if (intermediate < 0) {
        ::close(ready[0]);
        ::close(ready[1]);
        return false;
    }
    if (intermediate == 0) {
        ::setsid();
        const pid_t runner = ::fork();
        if (runner != 0)
            ::_exit(runner < 0 ? 1 : 0); // the runner is adopted by init
        const int keep = ::fcntl(ready[1], F_DUPFD, 10);
        const int null = ::open("/dev/null", O_RDWR);
        if (keep < 0 || null < 0)
            ::_exit(1);
        ::dup2(null, STDIN_FILENO);
        ::dup2(null, STDOUT_FILENO);
        ::dup2(null, STDERR_FILENO);
        ::dup2(keep, readyDescriptor); // dup2 leaves the copy open across exec
        closeDescriptorsFrom(readyDescriptor + 1);
        ::execv(programName.constData(), argv.data());
        ::_exit(127);
    }

    ::close(ready[1]);
    int status = 0;
    while (::waitpid(intermediate, &status, 0) < 0 && errno == EINTR) {
    }
    // The background run closes its end once it holds the lock (or gives up):
    // end of file here means it is under way.
    pollfd watch{ready[0], POLLIN, 0};
    char ignored;
    while (::poll(&watch, 1, patienceMs) > 0) {
        const ssize_t got = ::read(ready[0], &ignored, 1);
        if (got == 0 || (got < 0 && errno != EINTR))
            break;
    }
    ::close(ready[0]);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace BackgroundBackup
