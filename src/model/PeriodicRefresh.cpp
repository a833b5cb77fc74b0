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
    if (m_model.busy())
        return;
    m_model.refresh(false, false);
}
