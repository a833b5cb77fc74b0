#include "AppMain.h"

#include "AppDelegate.h"
#include "MainWindow.h"
#include "SingleInstance.h"
#include "Symbols.h"

#include <QApplication>
#include <QDBusConnection>

int runAgentApp(int &argc, char **argv, ZQBAgentApplication::Options options,
                std::function<void(ZQBAgentApplication &)> afterLaunch)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zqb-agent"));
    QApplication::setApplicationDisplayName(QStringLiteral("ZQB Agent"));
    QApplication::setApplicationVersion(QStringLiteral(ZQB_APP_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("zqb-agent"));
    QApplication::setWindowIcon(Symbols::appIcon());

    SingleInstance instance(QDBusConnection::sessionBus());
    if (instance.claim() == SingleInstance::Role::Secondary)
        return 0; // the running app has brought its window forward

    ZQBAgentApplication agent(std::move(options));
    AppDelegate &delegate = agent.appDelegate();
    QObject::connect(&instance, &SingleInstance::reopenRequested, &delegate, [&agent, &delegate] {
        delegate.applicationShouldHandleReopen(agent.mainWindow().isVisible());
    });

    agent.launch();
    if (afterLaunch)
        afterLaunch(agent);
    return QApplication::exec();
}
