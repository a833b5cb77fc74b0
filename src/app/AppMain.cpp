#include "AppMain.h"

#include "AppDelegate.h"
#include "MainWindow.h"
#include "SingleInstance.h"
#include "Symbols.h"
#include "WindowActivation.h"

#include <QApplication>
#include <QDBusConnection>

int runAgentApp(int &argc, char **argv, ZQBAgentApplication::Options options,
                std::function<void(ZQBAgentApplication &)> afterLaunch)
{
    // Taken before anything else can read it: the token is this launch's to
    // use once, and no engine the app starts may inherit it.
    const QString activationToken = WindowActivation::takeLaunchToken();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zqb-agent"));
    QApplication::setApplicationDisplayName(QStringLiteral("ZQB Agent"));
    QApplication::setApplicationVersion(QStringLiteral(ZQB_APP_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("zqb-agent"));
    QApplication::setWindowIcon(Symbols::appIcon());

    SingleInstance instance(QDBusConnection::sessionBus());
    if (instance.claim(activationToken) == SingleInstance::Role::Secondary)
        return 0; // the running app has brought its window forward

    ZQBAgentApplication agent(std::move(options));
    AppDelegate &delegate = agent.appDelegate();
    QObject::connect(&instance, &SingleInstance::reopenRequested, &delegate,
                     [&agent, &delegate](const QString &token) {
                         delegate.applicationShouldHandleReopen(agent.mainWindow().isVisible(),
                                                                token);
                     });

    agent.launch();
    if (!activationToken.isEmpty())
        WindowActivation::bringForward(&agent.mainWindow(), activationToken);
    if (afterLaunch)
        afterLaunch(agent);
    return QApplication::exec();
}
