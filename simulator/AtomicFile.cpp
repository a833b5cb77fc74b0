#include "AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

const char temporaryMarker[] = ".tmp-";

bool writeAll(int fd, const char *data, qsizetype size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, static_cast<size_t>(size));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        size -= written;
    }
    return true;
}

void syncDirectory(const QString &directory)
{
    const int fd =
        ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd); // best effort: makes the rename itself durable
    ::close(fd);
}

} // namespace

namespace AtomicFile {

bool write(const QString &path, QByteArrayView data, QString *problem)
{
    static std::atomic<int> counter{0};
    const QFileInfo target(path);
    const QString temporary = target.absolutePath() + QLatin1Char('/') + target.fileName() +
                              QLatin1String(temporaryMarker) + QString::number(::getpid()) +
                              QLatin1Char('-') + QString::number(counter++);
    const QByteArray temporaryName = QFile::encodeName(temporary);
    const auto fail = [&](const char *step) {
        if (problem)
            *problem =
                QStringLiteral("could not %1 %2: %3")
                    .arg(QLatin1String(step), path, QString::fromLocal8Bit(std::strerror(errno)));
        ::unlink(temporaryName.constData());
        return false;
    };

    const int fd = ::open(temporaryName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0)
        return fail("create a temporary file for");
    const bool complete = writeAll(fd, data.data(), data.size()) && ::fsync(fd) == 0;
    if (::close(fd) != 0 || !complete)
        return fail("write");
    if (::rename(temporaryName.constData(), QFile::encodeName(path).constData()) != 0)
        return fail("replace");
    syncDirectory(target.absolutePath());
    return true;
}

std::optional<QByteArray> read(const QString &path, qint64 limit)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.read(limit + 1);
    if (content.size() > limit || file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

void removeStaleTemporaries(const QString &directory)
{
    // Only old leftovers: a temporary file of a live writer is renamed within
    // milliseconds, so one older than a minute belongs to a killed process.
    const QDateTime cutoff = QDateTime::currentDateTimeUtc().addSecs(-60);
    const QDir dir(directory);
    const QFileInfoList entries = dir.entryInfoList(
        {QStringLiteral("*") + QLatin1String(temporaryMarker) + QStringLiteral("*")},
        QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &entry : entries) {
        if (entry.lastModified().toUTC() < cutoff)
            QFile::remove(entry.absoluteFilePath());
    }
}

} // namespace AtomicFile
