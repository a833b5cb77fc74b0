#include "AppMain.h"

#include "AppDelegate.h"
#include "AppTranslations.h"
#include "DisplayCheck.h"
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
    // 1. The command line, read before any GUI exists: --help, --version and
    // mistakes need no display, claim no single instance and start nothing.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const LaunchOptions launchOptions =
        LaunchOptions::parse(arguments, QStringLiteral(ZQB_APP_VERSION));
    if (launchOptions.action() != LaunchOptions::Action::Run) {
        std::FILE *stream = launchOptions.action() == LaunchOptions::Action::Fail ? stderr : stdout;
        std::fputs(launchOptions.text().toLocal8Bit().constData(), stream);
        return launchOptions.exitCode();
    }
    const bool background = launchOptions.background();

    // 2. The launcher's activation token, taken before anything else can read
    // it: it is this launch's to use once, and no engine may inherit it.
    const QString activationToken = WindowActivation::takeLaunchToken();

    // 3. A display to show the window on; without one Qt would abort.
    if (const QString missing = DisplayCheck::missingDisplayMessage(); !missing.isEmpty()) {
        std::fputs(missing.toLocal8Bit().constData(), stderr);
        return 1;
    }

    QApplication application(argc, argv);
    // The name is what the tray and the desktop show for the app (the tray
    // item's title and id come from it); the desktop file name ties windows
    // and notifications to zqb-agent.desktop.
    QApplication::setApplicationName(QStringLiteral("ZQB Agent"));
    QApplication::setApplicationDisplayName(QStringLiteral("ZQB Agent"));
    QApplication::setApplicationVersion(QStringLiteral(ZQB_APP_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("zqb-agent"));
    AppTranslations translations;
    translations.install(application);

    // 4. One process per session. A start in the background (at login) finds
    // the app already running and leaves it as it is; any other start brings
    // its window forward, handing on this launch's token.
    SingleInstance instance(QDBusConnection::sessionBus());
    const auto reopen =
        background ? SingleInstance::ReopenRequest::Skip : SingleInstance::ReopenRequest::Send;
    if (instance.claim(reopen, activationToken) == SingleInstance::Role::Secondary)
        return 0;

    // 5. The app itself: model, window (shown unless in the background), status item.
    ZQBAgentApplication agent(std::move(options));
    agent.launch(background ? ZQBAgentApplication::Start::Background
                            : ZQBAgentApplication::Start::Window,
                 activationToken);

    // 6. Later launches bring the window forward.
    AppDelegate &delegate = agent.appDelegate();
    QObject::connect(&instance, &SingleInstance::reopenRequested, &delegate,
                     [&agent, &delegate](const QString &token) {
                         delegate.applicationShouldHandleReopen(agent.mainWindow().isVisible(),
                                                                token);
                     });
    if (afterLaunch)
        afterLaunch(agent);
    return QApplication::exec();
}
