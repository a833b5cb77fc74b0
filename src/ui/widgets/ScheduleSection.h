#pragma once

#include "SectionStates.h"

#include <QGroupBox>
#include <QList>

class BusySpinner;
class QCheckBox;
class QComboBox;
class QPushButton;

// "Automatic protection": the schedule switch and interval, "Save settings",
// "Back up now", and beside them an activity indicator while an operation
// runs.
class ScheduleSection : public QGroupBox
{
    Q_OBJECT
public:
    // `intervals`: the choices offered, in minutes.
    explicit ScheduleSection(QList<qint64> intervals, QWidget *parent = nullptr);

    const ScheduleState &state() const { return m_state; }
    void setState(const ScheduleState &state);

    QList<QWidget *> focusChain() const;

signals:
    // Every change of a control, whatever made it: mouse, keyboard or an
    // accessibility action. None while the section shows a new state.
    void enabledChanged(bool enabled);
    void intervalChanged(qint64 minutes);
    void saveRequested();
    void backUpNowRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    QList<qint64> m_intervals;
    ScheduleState m_state;
    QCheckBox *m_enabled;
    QComboBox *m_interval;
    QPushButton *m_save;
    QPushButton *m_backUpNow;
    BusySpinner *m_busy;
};
