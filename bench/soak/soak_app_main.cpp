// The app as shipped, for the soak bench (bench/soak/soak.sh): the same start,
// window, tray and model, with only what the unit tests shorten shortened --
// the refresh period (PeriodicRefresh::setInterval) and the status read's
// limit (AgentRunner::StatusReadLimit) -- and a main-thread stall meter.
//
//   ZQB_SOAK_ENGINE       the engine to run (the bench's stand-in wrapper)
//   ZQB_SOAK_REFRESH_MS   refresh period (default the app's 15 s)
//   ZQB_SOAK_READ_LIMIT_MS  status read limit (default the app's 60 s)
//   ZQB_SOAK_OUT          file that gets "max_stall_us N" once a second: the
//                         longest gap between two ticks of a 10 ms timer on
//                         the main thread, less the 10 ms itself
#include "AppMain.h"
#include "PeriodicRefresh.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <chrono>

namespace {

AgentRunner soakRunner()
{
    AgentRunner::StatusReadLimit limit;
    if (const int ms = qEnvironmentVariableIntValue("ZQB_SOAK_READ_LIMIT_MS"); ms > 0)
        limit = {std::chrono::milliseconds(ms), std::chrono::milliseconds(1000)};
    return AgentRunner(qEnvironmentVariable("ZQB_SOAK_ENGINE"), limit);
}

// Notes the longest time the event loop did not turn.
void meterStalls(QObject *parent, const QString &file)
{
    auto *timer = new QTimer(parent);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(10);
    auto *clock = new QElapsedTimer;
    clock->start();
    auto last = std::make_shared<qint64>(0);
    auto worst = std::make_shared<qint64>(0);
    auto written = std::make_shared<qint64>(0);
    QObject::connect(timer, &QTimer::timeout, parent, [=] {
        const qint64 now = clock->nsecsElapsed();
        if (*last > 0)
            *worst = std::max(*worst, now - *last - 10'000'000);
        *last = now;
        if (now - *written >= 1'000'000'000) {
            *written = now;
            QFile out(file);
            if (out.open(QIODevice::WriteOnly | QIODevice::Truncate))
                out.write("max_stall_us " + QByteArray::number(*worst / 1000) + '\n');
        }
    });
    timer->start();
}

} // namespace

int main(int argc, char **argv)
{
    return runAgentApp(argc, argv, ZQBAgentApplication::Options{soakRunner(), {}},
                       [](ZQBAgentApplication &agent) {
                           if (const int ms = qEnvironmentVariableIntValue("ZQB_SOAK_REFRESH_MS");
                               ms > 0)
                               agent.periodicRefresh().setInterval(ms);
                           if (const QString out = qEnvironmentVariable("ZQB_SOAK_OUT");
                               !out.isEmpty())
                               meterStalls(qApp, out);
                       });
}
