#pragma once

#include <QList>
#include <QMainWindow>

class AgentModel;

// The app's one window, titled "ZQB Agent", hosting the main view. Closing it
// only hides it; the app keeps running in the tray. It has no menu bar and so
// no command that would open a second window.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    static inline const QList<qint64> scheduleIntervals = {15, 60, 240, 720, 1440};

    explicit MainWindow(AgentModel &model, QWidget *parent = nullptr);

    // The first show builds the view from the model's current state; a
    // window never shown (a start in the background) has none.
    void setVisible(bool visible) override;

signals:
    // The standard quit shortcut was pressed on the window.
    void quitRequested();

private:
    AgentModel &m_model;
};
