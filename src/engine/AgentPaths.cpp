#include "AgentPaths.h"

#include <QDir>
#include <QFile>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace {

QString homeFromUserDatabase()
{
    long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? size_t(suggested) : size_t(16384));
    passwd entry{};
    passwd *found = nullptr;
    for (;;) {
        const int rc = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
        if (rc == ERANGE && buffer.size() < (size_t(1) << 20)) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        break;
    }
    if (found && found->pw_dir && found->pw_dir[0] == '/')
        return QDir::cleanPath(QFile::decodeName(found->pw_dir));
    return QString();
}

QString computeUserHome()
{
    QString home = homeFromUserDatabase();
    // A user without a database entry (some containers) still needs a home to
    // hand to the engine; the environment is then the only source left.
    if (home.isEmpty()) {
        if (const char *env = std::getenv("HOME"); env && env[0] == '/')
            home = QDir::cleanPath(QFile::decodeName(env));
    }
    if (home.isEmpty())
        home = QStringLiteral("/");
    return home;
}

} // namespace

const QString &agentUserHome()
{
    static const QString home = computeUserHome();
    return home;
}

const QString &agentStateDirectory()
{
    static const QString directory = QDir::cleanPath(
        agentUserHome() + QStringLiteral("/Library/Application Support/local.zqb.agent"));
    return directory;
}

const QString &statusNotification()
{
    static const QString name = QStringLiteral("ZQBAgentStatusDidChange");
    return name;
}
