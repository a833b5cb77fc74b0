#pragma once

#include "SectionStates.h"

#include <QWidget>

// The version status beside the version line: symbol and label in the status
// colour on a rounded rectangle of the same colour at low opacity.
class VersionCapsule : public QWidget
{
    Q_OBJECT
public:
    explicit VersionCapsule(QWidget *parent = nullptr);

    const VersionCapsuleState &state() const { return m_state; }
    void setState(const VersionCapsuleState &state);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont labelFont() const;
    int iconSide() const;

    VersionCapsuleState m_state;
};
