#include "AppMain.h"

#include "AppDelegate.h"
#include "AppTranslations.h"
#include "LaunchOptions.h"
#include "MainWindow.h"
#include "SingleInstance.h"
#include "WindowActivation.h"

#include <QApplication>
#include <QDBusConnection>

#include <cstdio>

int runAgentApp(int &argc, char **argv, ZQBAgentApplication::Options options,
                std::function<void(ZQBAgentApplication &)> afterLaunch)
{
    // Read before any GUI exists: --help, --version and mistakes need no
    // display, claim no single instance and start nothing.
    // A plain start (from the menu) has nothing to read and skips the parser,
    // whose first use costs about half a millisecond of start-up.
    LaunchOptions launchOptions;
    if (argc > 1) {
        QStringList arguments;
        for (int i = 0; i < argc; ++i)
            arguments << QString::fromLocal8Bit(argv[i]);
        launchOptions = LaunchOptions::parse(arguments, QStringLiteral(ZQB_APP_VERSION));
    }
    if (launchOptions.action() != LaunchOptions::Action::Run) {
        std::FILE *stream = launchOptions.action() == LaunchOptions::Action::Fail ? stderr : stdout;
        std::fputs(launchOptions.text().toLocal8Bit().constData(), stream);
        return launchOptions.exitCode();
    }
    const bool background = launchOptions.background();
    // Taken before anything else can read it: the token is this launch's to
    // use once, and no engine the app starts may inherit it.
    const QString activationToken = WindowActivation::takeLaunchToken();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zqb-agent"));
    QApplication::setApplicationDisplayName(QStringLiteral("ZQB Agent"));
    QApplication::setApplicationVersion(QStringLiteral(ZQB_APP_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("zqb-agent"));
    AppTranslations translations;
    translations.install(application);

    // A start in the background (at login) finds the app already running and
    // leaves it as it is; any other start brings its window forward.
    SingleInstance instance(QDBusConnection::sessionBus());
    const auto reopen =
        background ? SingleInstance::ReopenRequest::Skip : SingleInstance::ReopenRequest::Send;
    if (instance.claim(reopen, activationToken) == SingleInstance::Role::Secondary)
        return 0;

    ZQBAgentApplication agent(std::move(options));
    AppDelegate &delegate = agent.appDelegate();
    QObject::connect(&instance, &SingleInstance::reopenRequested, &delegate,
                     [&agent, &delegate](const QString &token) {
                         delegate.applicationShouldHandleReopen(agent.mainWindow().isVisible(),
                                                                token);
                     });

    agent.launch(background ? ZQBAgentApplication::Start::Background
                            : ZQBAgentApplication::Start::Window);
    if (!background && !activationToken.isEmpty())
        WindowActivation::bringForward(&agent.mainWindow(), activationToken);
    if (afterLaunch)
        afterLaunch(agent);
    return QApplication::exec();
}
