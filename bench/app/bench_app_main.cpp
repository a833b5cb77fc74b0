// The app exactly as shipped, plus a probe that measures it from inside when
// ZQB_BENCH_OUT is set (see BenchProbe.h). Used only by measure.sh.
#include "AgentModel.h"
#include "AppMain.h"
#include "BenchProbe.h"

#include <QCoreApplication>

namespace {
void markApplicationMade() { BenchProbe::mark("qapp"); }
} // namespace
Q_COREAPP_STARTUP_FUNCTION(markApplicationMade)

int main(int argc, char **argv)
{
    BenchProbe::mark("main");
    return runAgentApp(argc, argv, ZQBAgentApplication::Options{AgentRunner(), {}},
                       [](ZQBAgentApplication &agent) {
                           BenchProbe::mark("launched");
                           if (!BenchProbe::enabled())
                               return;
                           AgentModel &model = agent.model();
                           auto *probe = new BenchProbe(
                               [&model] { model.refresh(false, false); }, &model,
                               SIGNAL(statusChanged()));
                           probe->setParent(&model);
                       });
}
