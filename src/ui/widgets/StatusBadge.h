#pragma once

#include "BadgeState.h"

#include <QWidget>

class BusySpinner;
class DotWidget;
class QLabel;
class QProgressBar;

// The status header: a coloured dot, the state title, the engine's message,
// its last error, and while a backup runs the progress block.
class StatusBadge : public QWidget
{
    Q_OBJECT
public:
    explicit StatusBadge(QWidget *parent = nullptr);

    const BadgeState &state() const { return m_state; }
    void setState(const BadgeState &state);

    DotWidget *dot() const { return m_dot; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColors();

    BadgeState m_state;
    bool m_initialized = false;
    DotWidget *m_dot;
    QLabel *m_title;
    QLabel *m_message;
    QLabel *m_error;
    QWidget *m_progress;
    QProgressBar *m_bar;
    BusySpinner *m_spinner;
    QLabel *m_phase;
    QLabel *m_lastProgress;
    QLabel *m_elapsed;
};
