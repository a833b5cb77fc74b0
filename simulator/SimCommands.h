#pragma once

#include <QString>
#include <QStringList>

// Runs one stand-in command line and returns the exit status: 0 done, 1 refused
// or failed (with one line on standard error), 2 usage error.
namespace SimCommands {

struct Environment
{
    QString program;       // this executable, for starting background backups
    QString stateOverride; // ZQB_SIM_STATE
    QString speed;         // ZQB_SIM_SPEED
};

int run(const QStringList &arguments, const Environment &environment);

// The backup speed factor from ZQB_SIM_SPEED: a positive number, capped at
// one million; anything else means 1.
double speedFactor(const QString &text);

} // namespace SimCommands
