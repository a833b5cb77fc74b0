#include "PeriodicRefresh.h"

#include "AgentModel.h"

PeriodicRefresh::PeriodicRefresh(AgentModel &model, QObject *parent)
    : QObject(parent), m_model(model)
{
    m_timer.setInterval(defaultIntervalMs);
    // Coarse: a few milliseconds of slack let the system batch our wakeups.
    m_timer.setTimerType(Qt::CoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &PeriodicRefresh::tick);
}

void PeriodicRefresh::start()
{
    if (m_timer.isActive())
        return;
    m_model.start();
    m_timer.start();
}

void PeriodicRefresh::setInterval(int milliseconds)
{
    m_timer.setInterval(milliseconds);
}

void PeriodicRefresh::tick()
{
    // One status read at a time: against an engine that hangs, every tick
    // would otherwise add a process and a worker until none were left for
    // the person's own commands. The runner ends a hung read after a minute,
    // so the next tick after that reads again.
    if (m_model.busy() || m_model.statusReadRunning())
        return;
    m_model.refresh(false, false);
}
