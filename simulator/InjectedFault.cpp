#include "InjectedFault.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

namespace InjectedFault {

namespace {

const char *nameOf(Kind kind)
{
    switch (kind) {
    case Kind::Hang:
        return "hang";
    case Kind::Crash:
        return "crash";
    case Kind::Garbage:
        return "garbage";
    }
    return "";
}

// Holds an exclusive lock on the state directory's fault list while alive.
class ListLock
{
public:
    explicit ListLock(const QString &directory)
        : m_fd(::open(QFile::encodeName(QDir(directory).filePath(QStringLiteral("faults.lock")))
                          .constData(),
                      O_RDWR | O_CREAT | O_CLOEXEC, 0600))
    {
        if (m_fd >= 0)
            ::flock(m_fd, LOCK_EX);
    }
    ~ListLock()
    {
        if (m_fd >= 0)
            ::close(m_fd); // releases the lock
    }
    ListLock(const ListLock &) = delete;
    ListLock &operator=(const ListLock &) = delete;
    bool held() const { return m_fd >= 0; }

private:
    int m_fd;
};

QString listPath(const QString &directory)
{
    return QDir(directory).filePath(QStringLiteral("faults"));
}

} // namespace

std::optional<Kind> kindNamed(const QString &name)
{
    for (Kind kind : {Kind::Hang, Kind::Crash, Kind::Garbage})
        if (name == QLatin1String(nameOf(kind)))
            return kind;
    return std::nullopt;
}

bool add(const QString &stateDirectory, const QString &command, Kind kind, int times,
         QString *problem)
{
    const ListLock lock(stateDirectory);
    QFile list(listPath(stateDirectory));
    if (!lock.held() || !list.open(QIODevice::Append)) {
        *problem = QStringLiteral("The fault list cannot be written.");
        return false;
    }
    for (int i = 0; i < times; ++i)
        list.write(command.toUtf8() + ' ' + nameOf(kind) + '\n');
    return true;
}

std::optional<Kind> take(const QString &stateDirectory, const QString &command)
{
    if (!QFile::exists(listPath(stateDirectory)))
        return std::nullopt; // the usual case: no lock taken
    const ListLock lock(stateDirectory);
    QFile list(listPath(stateDirectory));
    if (!lock.held() || !list.open(QIODevice::ReadWrite))
        return std::nullopt;
    QStringList lines = QString::fromUtf8(list.readAll()).split('\n', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringList words = lines.at(i).split(QLatin1Char(' '));
        if (words.value(0) != command)
            continue;
        const std::optional<Kind> kind = kindNamed(words.value(1));
        lines.removeAt(i);
        list.resize(0);
        list.seek(0);
        for (const QString &line : lines)
            list.write(line.toUtf8() + '\n');
        return kind;
    }
    return std::nullopt;
}

int act(Kind kind)
{
    switch (kind) {
    case Kind::Hang:
        for (;;)
            ::pause();
    case Kind::Crash: {
        const rlimit noCore{0, 0}; // a crash on purpose leaves no core file behind
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGSEGV, SIG_DFL);
        std::raise(SIGSEGV);
        ::_exit(139); // not reached
    }
    case Kind::Garbage: {
        static const char garbage[] =
            "\x89PNG\r\n\x1a\n{\"schema\": \xff\xfe not a document <html>";
        std::fwrite(garbage, 1, sizeof garbage - 1, stdout);
        std::fflush(stdout);
        return 0;
    }
    }
    return 1;
}

} // namespace InjectedFault
