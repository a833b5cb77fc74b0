#pragma once

#include "AgentUIStatus.h"

#include <QByteArray>

class SimState;

// The status document of "ui-status", built from the state files.
namespace StatusReport {

// The app reads at most 1 MiB of the output; staying under this many bytes
// keeps the document whole.
inline constexpr qsizetype sizeLimit = 1'000'000;

inline const QString schema = QStringLiteral("zqb.agent-ui-status.v1");

AgentUIStatus build(const SimState &state, bool backupRunning);

// The encoded document, shortened when needed so it stays within sizeLimit:
// long texts are cut first, then folders and skip patterns are left out of the
// report (never out of the stored settings) with a note in lastError.
QByteArray render(AgentUIStatus status);

} // namespace StatusReport
