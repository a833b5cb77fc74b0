#pragma once

#include <QString>

// Starts "backup-all --background" as a process of its own: in a new session,
// with standard input, output and error on the null device and no other
// descriptor of ours, so the run that started it (and whoever reads that
// run's output) is not kept waiting. Returns once the background run holds the
// backup lock or has decided not to run, or after `patienceMs`.
namespace BackgroundBackup {

bool start(const QString &program, const QString &stateDirectory, int patienceMs = 3000);

} // namespace BackgroundBackup
