#pragma once

#include <QComboBox>

// A choice list that changes only when the person means it: the mouse wheel
// turns it only once it has the focus (a click or Tab gives it). Unfocused,
// the wheel goes on to the scrolling window around it, so scrolling the long
// window past "Run every" or "Bandwidth limit" never changes an unsaved
// choice that the next save would send.
class WheelSafeComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit WheelSafeComboBox(QWidget *parent = nullptr);

protected:
    void wheelEvent(QWheelEvent *event) override;
};
