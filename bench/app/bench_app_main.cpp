// The app exactly as shipped, plus a probe that measures it from inside when
// ZQB_BENCH_OUT is set (see BenchProbe.h). Used only by measure.sh.
//
// ZQB_BENCH_EXPERIMENT=fixed-progress-lines tries a proposed change without
// touching the app's sources: the badge's three progress lines become single
// lines of fixed size, so their new texts on each refresh no longer ask the
// whole scrolling column to lay itself out again.
#include "AgentModel.h"
#include "AppMain.h"
#include "BenchProbe.h"
#include "MainWindow.h"

#include <QCoreApplication>
#include <QLabel>
#include <QWidget>

namespace {

void markApplicationMade()
{
    BenchProbe::mark("qapp");
}

void fixProgressLines(QWidget &window)
{
    for (const char *name : {"badgePhase", "badgeLastProgress", "badgeElapsed"}) {
        auto *label = window.findChild<QLabel *>(QLatin1String(name));
        if (!label)
            continue;
        label->setWordWrap(false);
        label->setFixedSize(560, label->fontMetrics().height());
    }
}

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
                           if (qEnvironmentVariable("ZQB_BENCH_EXPERIMENT") ==
                               QLatin1String("fixed-progress-lines"))
                               fixProgressLines(agent.mainWindow());
                           AgentModel &model = agent.model();
                           auto *probe = new BenchProbe([&model] { model.refresh(false, false); },
                                                        &model, SIGNAL(statusChanged()));
                           probe->setParent(&model);
                       });
}
