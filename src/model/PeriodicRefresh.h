#pragma once

#include <QObject>
#include <QTimer>

class AgentModel;

// The model's heartbeat: starts the model once and then refreshes it every
// 15 seconds for the life of the app, whether or not the window has ever been
// shown, so the tray and the completion announcements follow the engine from
// the start. A tick while an operation is busy, or while a status read is
// still running, is skipped, not deferred.
class PeriodicRefresh : public QObject
{
    Q_OBJECT
public:
    static constexpr int defaultIntervalMs = 15000;

    explicit PeriodicRefresh(AgentModel &model, QObject *parent = nullptr);

    // Starts the model (only its first call acts) and then the timer. Later
    // calls do nothing: there is one start and one timer per app.
    void start();
    bool isActive() const { return m_timer.isActive(); }

    // The period; tests shorten it.
    void setInterval(int milliseconds);
    int interval() const { return m_timer.interval(); }

public slots:
    // One tick: refreshes unless an operation is busy or a status read is
    // still running.
    void tick();

private:
    AgentModel &m_model;
    QTimer m_timer;
};
