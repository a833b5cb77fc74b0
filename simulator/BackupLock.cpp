#include "BackupLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace {

int openLockFile(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
}

int flockRetryingOnSignal(int fd, int operation)
{
    int result;
    do {
        result = ::flock(fd, operation);
    } while (result != 0 && errno == EINTR);
    return result;
}

} // namespace

BackupLock::BackupLock(QString path) : m_path(std::move(path)) {}

BackupLock::~BackupLock()
{
    unlock();
}

bool BackupLock::open()
{
    if (m_fd >= 0)
        return true;
    m_fd = openLockFile(m_path);
    return m_fd >= 0;
}

bool BackupLock::lock()
{
    if (!open())
        return false;
    if (flockRetryingOnSignal(m_fd, LOCK_EX) == 0)
        return true;
    unlock();
    return false;
}

bool BackupLock::tryLock(int patienceMs)
{
    if (!open())
        return false;
    for (int waited = 0;; waited += 2) {
        if (flockRetryingOnSignal(m_fd, LOCK_EX | LOCK_NB) == 0)
            return true;
        if (errno != EWOULDBLOCK || waited >= patienceMs)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    unlock();
    return false;
}

void BackupLock::unlock()
{
    if (m_fd < 0)
        return;
    ::close(m_fd); // closing the only descriptor releases the lock
    m_fd = -1;
}

bool BackupLock::isHeldElsewhere(const QString &path)
{
    const int fd = openLockFile(path);
    if (fd < 0)
        return false;
    const bool held = flockRetryingOnSignal(fd, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(fd);
    return held;
}
