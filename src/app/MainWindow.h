#pragma once

#include <QList>
#include <QMainWindow>

class AgentModel;
class PeriodicRefresh;

// The app's one window, titled "ZQB Agent", hosting the main view. Closing it
// only hides it; the app keeps running in the tray. It has no menu bar and so
// no command that would open a second window.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    static inline const QList<qint64> scheduleIntervals = {15, 60, 240, 720, 1440};

    MainWindow(AgentModel &model, PeriodicRefresh &refresh, QWidget *parent = nullptr);

    // The first show starts the model and its periodic refresh (unless a
    // background start already has), then builds the view: the engine's
    // first status is on its way while the view is built and laid out, and
    // is usually in the first frame. After a background start the view is
    // built from the model's current state, with no refresh of its own.
    void setVisible(bool visible) override;

signals:
    // The standard quit shortcut was pressed on the window.
    void quitRequested();

private:
    AgentModel &m_model;
    PeriodicRefresh &m_refresh;
};
