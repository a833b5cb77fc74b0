#include "AgentPaths.h"

#include <QFile>
#include <QtTest>

#include <pwd.h>
#include <thread>
#include <unistd.h>
#include <vector>

class TestEnginePaths : public QObject
{
    Q_OBJECT

private slots:
    void homeComesFromTheUserDatabaseNotTheEnvironment();
    void stateDirectoryIsUnderTheHome();
    void statusNotificationName();
    void valuesAreComputedOnceForAllThreads();
};

void TestEnginePaths::homeComesFromTheUserDatabaseNotTheEnvironment()
{
    // Set before first use: the value must still come from the user database.
    qputenv("HOME", "/not/the/real/home");
    const passwd *entry = getpwuid(getuid());
    QVERIFY(entry && entry->pw_dir);
    QCOMPARE(agentUserHome(), QDir::cleanPath(QFile::decodeName(entry->pw_dir)));
    QVERIFY(agentUserHome() != QStringLiteral("/not/the/real/home"));
    qputenv("HOME", "/changed/later");
    QCOMPARE(agentUserHome(), QDir::cleanPath(QFile::decodeName(entry->pw_dir)));
}

void TestEnginePaths::stateDirectoryIsUnderTheHome()
{
    const QString expected =
        agentUserHome() == QStringLiteral("/")
            ? QStringLiteral("/Library/Application Support/local.zqb.agent")
            : agentUserHome() + QStringLiteral("/Library/Application Support/local.zqb.agent");
    QCOMPARE(agentStateDirectory(), expected);
    QVERIFY(!agentStateDirectory().endsWith(QLatin1Char('/')));
    QVERIFY(!agentStateDirectory().contains(QStringLiteral("//")));
}

void TestEnginePaths::statusNotificationName()
{
    QCOMPARE(statusNotification(), QStringLiteral("ZQBAgentStatusDidChange"));
}

void TestEnginePaths::valuesAreComputedOnceForAllThreads()
{
    std::vector<const QString *> seen(16);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < seen.size(); ++i)
        threads.emplace_back([&seen, i] { seen[i] = &agentStateDirectory(); });
    for (std::thread &thread : threads)
        thread.join();
    for (const QString *value : seen)
        QCOMPARE(value, &agentStateDirectory());
    QCOMPARE(&agentUserHome(), &agentUserHome());
}

QTEST_GUILESS_MAIN(TestEnginePaths)
#include "tst_engine_paths.moc"
