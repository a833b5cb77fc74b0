#pragma once

#include "ZQBAgentApplication.h"

#include <functional>

// The whole life of the app's process: one instance per session, the status
// item and the window, then the event loop until "Quit ZQB Agent". Returns the
// process's exit status.
int runAgentApp(int &argc, char **argv, ZQBAgentApplication::Options options,
                std::function<void(ZQBAgentApplication &)> afterLaunch = {});
