// The stand-in engine: what the demo and the end-to-end tests run in place of
// the real engine. See README.md beside this file.
#include "SimCommands.h"

#include <QCoreApplication>

#include <csignal>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    SimCommands::Environment environment;
    environment.program = QCoreApplication::applicationFilePath();
    environment.stateOverride = qEnvironmentVariable("ZQB_SIM_STATE");
    environment.speed = qEnvironmentVariable("ZQB_SIM_SPEED");
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    return SimCommands::run(arguments, environment);
}
