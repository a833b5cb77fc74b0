// The app exactly as shipped, plus a probe that measures it from inside when
// ZQB_BENCH_OUT is set (see BenchProbe.h). Used only by measure.sh.
#include "AgentModel.h"
#include "AppMain.h"
#include "BenchProbe.h"

int main(int argc, char **argv)
{
    return runAgentApp(argc, argv, ZQBAgentApplication::Options{AgentRunner(), {}},
                       [](ZQBAgentApplication &agent) {
                           if (!BenchProbe::enabled())
                               return;
                           AgentModel &model = agent.model();
                           auto *probe = new BenchProbe(
                               [&model] { model.refresh(false, false); }, &model,
                               SIGNAL(statusChanged()));
                           probe->setParent(&model);
                       });
}
