#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class QLabel;

// "Restoring connection": a spinner and a line while the first status
// document is read.
class RestoringBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit RestoringBox(QWidget *parent = nullptr);

    const RestoringBoxState &state() const { return m_state; }
    void setState(const RestoringBoxState &state);

protected:
    void changeEvent(QEvent *event) override;

private:
    RestoringBoxState m_state;
    QLabel *m_text;
};
