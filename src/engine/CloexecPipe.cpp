#include "CloexecPipe.h"

#include <QtGlobal>

#include <fcntl.h>
#include <mutex>
#include <unistd.h>

namespace CloexecPipe {
namespace {

// A reader-writer lock rather than a plain mutex: concurrent starts must not
// wait for each other, only for the short window in which a fresh pipe's
// ends are still inheritable. Taking it shared costs one atomic operation,
// nothing next to starting a process, so every start takes it on every
// platform and the portable path can be exercised anywhere.
std::shared_mutex &spawnLock()
{
    static std::shared_mutex lock;
    return lock;
}

bool setCloseOnExec(int fd)
{
    const int flags = fcntl(fd, F_GETFD);
    return flags >= 0 && fcntl(fd, F_SETFD, flags | FD_CLOEXEC) == 0;
}

} // namespace

bool createPortable(int fds[2])
{
    const std::unique_lock lock(spawnLock());
    if (::pipe(fds) != 0)
        return false;
    if (setCloseOnExec(fds[0]) && setCloseOnExec(fds[1]))
        return true;
    ::close(fds[0]);
    ::close(fds[1]);
    return false;
}

bool create(int fds[2])
{
    // ZQB_PORTABLE_PIPES forces the portable path (a test build uses it to
    // run the runner's tests through it on Linux too).
#if defined(Q_OS_LINUX) && !defined(ZQB_PORTABLE_PIPES)
    return ::pipe2(fds, O_CLOEXEC) == 0;
#else
    return createPortable(fds);
#endif
}

SpawnGuard::SpawnGuard() : m_lock(spawnLock()) {}

} // namespace CloexecPipe
