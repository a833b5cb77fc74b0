// The app as the end-to-end tests run it: the same shell, with the engine
// path fixed at build time to the test wrapper around the stand-in engine,
// folders chosen from a file, and the test probe on the session bus.
#include "AppMain.h"
#include "PeriodicRefresh.h"
#include "ScriptedFolderChooser.h"
#include "TestProbe.h"

#include <QCoreApplication>

namespace {

// The fault tests move the engine away and back, so each gets its own copy
// (ZQB_E2E_ENGINE), and wait for a hung status read to be ended in seconds,
// not a minute (ZQB_E2E_STATUS_READ_LIMIT_MS).
AgentRunner testRunner()
{
    QString engine = qEnvironmentVariable("ZQB_E2E_ENGINE");
    if (engine.isEmpty())
        engine = QStringLiteral(ZQB_E2E_ENGINE_PATH);
    AgentRunner::StatusReadLimit limit;
    if (const int ms = qEnvironmentVariableIntValue("ZQB_E2E_STATUS_READ_LIMIT_MS"); ms > 0)
        limit = {std::chrono::milliseconds(ms), std::chrono::milliseconds(1000)};
    return AgentRunner(engine, limit);
}

} // namespace

int main(int argc, char **argv)
{
    ZQBAgentApplication::Options options{testRunner(), [] {
                                             return std::make_unique<ScriptedFolderChooser>(
                                                 qEnvironmentVariable("ZQB_E2E_FOLDERS"));
                                         }};
    return runAgentApp(argc, argv, std::move(options), [](ZQBAgentApplication &agent) {
        auto *probe = new TestProbe(qApp);
        if (!probe->registerOnSessionBus())
            qWarning("test probe: cannot register on the session bus");
        // A shorter period lets a test watch a whole backup through the tray.
        if (const int ms = qEnvironmentVariableIntValue("ZQB_E2E_REFRESH_MS"); ms > 0)
            agent.periodicRefresh().setInterval(ms);
    });
}
