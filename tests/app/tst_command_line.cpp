// The app's command line: the parser itself, then the real executable run
// the way a person or the session's autostart would run it.
#include "LaunchOptions.h"
#include "SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString version = QStringLiteral("1.2.3");

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs the shipped executable; keeps this process's event loop turning so
// that it can answer the app's D-Bus calls meanwhile.
Run runApp(const QStringList &arguments, const QProcessEnvironment &env)
{
    QProcess app;
    app.setProcessEnvironment(env);
    app.start(QStringLiteral(ZQB_APP_EXECUTABLE), arguments);
    Run run;
    if (!app.waitForStarted(10000))
        return run;
    if (!QTest::qWaitFor([&app] { return app.state() == QProcess::NotRunning; }, 30000)) {
        app.kill();
        app.waitForFinished(5000);
        return run;
    }
    run.exitCode = app.exitStatus() == QProcess::NormalExit ? app.exitCode() : -1;
    run.out = QString::fromLocal8Bit(app.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(app.readAllStandardError());
    return run;
}

// No display of any kind: anything that made a GUI would fail here.
QProcessEnvironment headless()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        env.remove(QString::fromLatin1(name));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/nonexistent"));
    return env;
}

} // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void noArgumentsRunsWithTheWindow()
    {
        const LaunchOptions line = LaunchOptions::parse({QStringLiteral("zqb-agent-app")}, version);
        QCOMPARE(line.action(), LaunchOptions::Action::Run);
        QVERIFY(!line.background());
        QVERIFY(line.text().isEmpty());
    }

    void backgroundRunsWithoutTheWindow()
    {
        const LaunchOptions line = LaunchOptions::parse(
            {QStringLiteral("/usr/bin/zqb-agent-app"), QStringLiteral("--background")}, version);
        QCOMPARE(line.action(), LaunchOptions::Action::Run);
        QVERIFY(line.background());
    }

    void versionNamesTheApp()
    {
        for (const char *option : {"--version", "-v"}) {
            const LaunchOptions line = LaunchOptions::parse(
                {QStringLiteral("zqb-agent-app"), QLatin1String(option)}, version);
            QCOMPARE(line.action(), LaunchOptions::Action::PrintVersion);
            QCOMPARE(line.text(), QStringLiteral("ZQB Agent 1.2.3\n"));
            QCOMPARE(line.exitCode(), 0);
        }
    }

    void helpListsTheOptions()
    {
        const LaunchOptions line = LaunchOptions::parse(
            {QStringLiteral("/usr/bin/zqb-agent-app"), QStringLiteral("--help")}, version);
        QCOMPARE(line.action(), LaunchOptions::Action::PrintHelp);
        QCOMPARE(line.exitCode(), 0);
        const QString text = line.text();
        QVERIFY2(text.startsWith(QStringLiteral("Usage: zqb-agent-app [options]\n")),
                 qPrintable(text));
        for (const char *option : {"--help", "--version", "--background"})
            QVERIFY2(text.contains(QLatin1String(option)), qPrintable(text));
        // Qt's own options are accepted but not advertised.
        QVERIFY2(!text.contains(QStringLiteral("platform")), qPrintable(text));
    }

    void unknownOptionIsNamed()
    {
        const LaunchOptions line = LaunchOptions::parse(
            {QStringLiteral("zqb-agent-app"), QStringLiteral("--bogus")}, version);
        QCOMPARE(line.action(), LaunchOptions::Action::Fail);
        QVERIFY(line.exitCode() != 0);
        QVERIFY2(line.text().contains(QStringLiteral("Unknown option 'bogus'")),
                 qPrintable(line.text()));
        QVERIFY(line.text().contains(QStringLiteral("--help")));
    }

    void strayArgumentFails()
    {
        const LaunchOptions line = LaunchOptions::parse(
            {QStringLiteral("zqb-agent-app"), QStringLiteral("open")}, version);
        QCOMPARE(line.action(), LaunchOptions::Action::Fail);
        QVERIFY(line.text().contains(QStringLiteral("'open'")));
    }

    void qtsOwnOptionsAreLeftToQt()
    {
        const LaunchOptions line = LaunchOptions::parse(
            {QStringLiteral("zqb-agent-app"), QStringLiteral("-platform"), QStringLiteral("xcb"),
             QStringLiteral("--background"), QStringLiteral("-reverse")},
            version);
        QCOMPARE(line.action(), LaunchOptions::Action::Run);
        QVERIFY(line.background());
    }

    void versionRunsWithoutADisplay()
    {
        const Run run = runApp({QStringLiteral("--version")}, headless());
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QStringLiteral("ZQB Agent %1\n").arg(QStringLiteral(ZQB_APP_VERSION)));
        QCOMPARE(run.err, QString());
    }

    void helpRunsWithoutADisplay()
    {
        const Run run = runApp({QStringLiteral("--help")}, headless());
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(QStringLiteral("--background")), qPrintable(run.out));
        QCOMPARE(run.err, QString());
    }

    // Started where no display server runs yet (a login script, a service):
    // one clear line and status 1, not Qt's abort and a core dump.
    void withoutADisplayTheAppSaysSoAndEnds_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no platform chosen") << QString() << QStringList();
        QTest::newRow("X11 chosen") << QStringLiteral("xcb") << QStringList();
        QTest::newRow("Wayland chosen") << QStringLiteral("wayland") << QStringList();
        QTest::newRow("either") << QStringLiteral("wayland;xcb") << QStringList();
        QTest::newRow("in the background") << QString() << QStringList{"--background"};
    }

    void withoutADisplayTheAppSaysSoAndEnds()
    {
        QFETCH(QString, platform);
        QFETCH(QStringList, arguments);
        // What a session without a graphical desktop has: no display, no
        // platform or one that needs a display, a session bus.
        QProcessEnvironment env;
        const QProcessEnvironment system = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"PATH", "HOME", "LANG", "LC_ALL", "DBUS_SESSION_BUS_ADDRESS"})
            if (system.contains(QString::fromLatin1(name)))
                env.insert(QString::fromLatin1(name), system.value(QString::fromLatin1(name)));
        if (!platform.isEmpty())
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);

        QProcess app;
        app.setProcessEnvironment(env);
        app.start(QStringLiteral(ZQB_APP_EXECUTABLE), arguments);
        QVERIFY(app.waitForFinished(30000));
        QCOMPARE(app.exitStatus(), QProcess::NormalExit); // no abort, no core dump
        QCOMPARE(app.exitCode(), 1);
        QCOMPARE(app.readAllStandardOutput(), QByteArray());
        const QString err = QString::fromLocal8Bit(app.readAllStandardError());
        QCOMPARE(err.count(QLatin1Char('\n')), 1);
        QVERIFY2(err.endsWith(QLatin1Char('\n')), qPrintable(err));
        QVERIFY2(err.contains(QStringLiteral("DISPLAY")), qPrintable(err));
        QVERIFY2(err.contains(QStringLiteral("WAYLAND_DISPLAY")), qPrintable(err));
        // Nothing else was started: the single-instance name was never taken.
        QVERIFY(!QDBusConnection::sessionBus()
                     .interface()
                     ->isServiceRegistered(SingleInstance::serviceName)
                     .value());
    }

    void aPlatformWithoutADisplayStillStarts()
    {
        // Qt's offscreen platform needs no display: the check leaves it to Qt.
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        QProcess app;
        app.setProcessEnvironment(env);
        app.start(QStringLiteral(ZQB_APP_EXECUTABLE), {QStringLiteral("--background")});
        QVERIFY(app.waitForStarted(10000));
        QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
        QVERIFY(QTest::qWaitFor(
            [bus] { return bus->isServiceRegistered(SingleInstance::serviceName).value(); },
            20000));
        QCOMPARE(app.state(), QProcess::Running);
        app.terminate();
        QVERIFY(app.waitForFinished(10000));
    }

    void unknownOptionFailsOnStandardError()
    {
        const Run run = runApp({QStringLiteral("--bogus")}, headless());
        QVERIFY(run.exitCode > 0);
        QCOMPARE(run.out, QString());
        QVERIFY2(run.err.contains(QStringLiteral("bogus")), qPrintable(run.err));
    }

    void onlyAPlainSecondLaunchBringsTheRunningAppForward()
    {
        // This test plays the running app: it owns the app's name on the bus.
        SingleInstance running(QDBusConnection::sessionBus());
        QCOMPARE(running.claim(), SingleInstance::Role::Primary);
        QSignalSpy reopens(&running, &SingleInstance::reopenRequested);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));

        // --version and --help claim nothing and ask nothing.
        QCOMPARE(runApp({QStringLiteral("--version")}, env).exitCode, 0);
        QCOMPARE(runApp({QStringLiteral("--help")}, env).exitCode, 0);
        QCOMPARE(reopens.size(), 0);
        // A start at login finds the app running and leaves it alone.
        QCOMPARE(runApp({QStringLiteral("--background")}, env).exitCode, 0);
        QCOMPARE(reopens.size(), 0);
        // A person starting it again brings it forward.
        QCOMPARE(runApp({}, env).exitCode, 0);
        QCOMPARE(reopens.size(), 1);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_command_line.moc"
