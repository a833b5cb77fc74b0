#include "FolderWalker.h"

#include <QFile>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

qint64 modifiedNanoseconds(const struct stat &info)
{
    return qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
}

} // namespace

FolderWalker::FolderWalker(SkipPatterns patterns) : m_patterns(std::move(patterns)) {}

FolderWalker::Result FolderWalker::walk(const QString &folder) const
{
    Result result;
    QByteArray path = QFile::encodeName(folder);
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    // The chosen folder itself may be reached through a link; only links
    // inside it are never followed.
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        result.folderMissing = true;
        return result;
    }
    walkDirectory(fd, path, 0, result);
    return result;
}

void FolderWalker::walkDirectory(int directoryFd, const QByteArray &path, int depth,
                                 Result &result) const
{
    DIR *directory = ::fdopendir(directoryFd);
    if (!directory) {
        ::close(directoryFd);
        ++result.unreadable;
        return;
    }
    const QByteArray prefix = path == "/" ? path : path + '/';
    while (true) {
        errno = 0;
        const dirent *item = ::readdir(directory);
        if (!item)
            break;
        const QByteArray name(item->d_name);
        if (name == "." || name == "..")
            continue;
        if (m_patterns.matches(name)) {
            ++result.skippedByPattern;
            continue;
        }
        struct stat info
        {
        };
        if (::fstatat(directoryFd, item->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
            ++result.unreadable;
            continue;
        }
        if (S_ISLNK(info.st_mode)) {
            result.entries.append({prefix + name, 0, modifiedNanoseconds(info), true});
        } else if (S_ISREG(info.st_mode)) {
            const int fileFd =
                ::openat(directoryFd, item->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
            if (fileFd < 0) {
                ++result.unreadable;
                continue;
            }
            ::close(fileFd);
            result.entries.append(
                {prefix + name, quint64(info.st_size), modifiedNanoseconds(info), false});
        } else if (S_ISDIR(info.st_mode)) {
            if (depth + 1 >= maximumDepth) {
                ++result.unreadable;
                continue;
            }
            const int childFd = ::openat(directoryFd, item->d_name,
                                         O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (childFd < 0) {
                ++result.unreadable;
                continue;
            }
            walkDirectory(childFd, prefix + name, depth + 1, result);
        }
    }
    ::closedir(directory); // also closes directoryFd
}
