#pragma once

#include <QString>

// Process-wide values, each computed once on first use (thread-safe).

// The home directory of the real user, from the user database (not $HOME).
const QString &agentUserHome();
// agentUserHome() + "/Library/Application Support/local.zqb.agent", no
// trailing separator. Only ever passed to the engine.
const QString &agentStateDirectory();
// Name of the in-process broadcast posted after every successful status refresh.
const QString &statusNotification();
