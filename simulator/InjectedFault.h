#pragma once

#include <QString>

#include <optional>

// Faults a test or a soak run asks the stand-in to show on later runs, as a
// misbehaving engine would: hanging, crashing by a signal, or printing
// garbage. Kept in the state directory ("faults", one "COMMAND KIND" line per
// run to spoil, oldest first), so they reach the runs the app starts.
namespace InjectedFault {

enum class Kind {
    Hang,    // never answers (until a signal ends it)
    Crash,   // ends by SIGSEGV, printing nothing
    Garbage, // prints bytes that are neither UTF-8 nor JSON, exits 0
};

std::optional<Kind> kindNamed(const QString &name);

// Queues `times` runs of `command` to show `kind`.
bool add(const QString &stateDirectory, const QString &command, Kind kind, int times,
         QString *problem);

// Takes the oldest fault queued for `command`, if any. Runs started at the
// same time never take the same one.
std::optional<Kind> take(const QString &stateDirectory, const QString &command);

// Shows the fault. Returns only for Garbage, with the exit status to use.
int act(Kind kind);

} // namespace InjectedFault
