#include "WheelSafeComboBox.h"

#include <QWheelEvent>

WheelSafeComboBox::WheelSafeComboBox(QWidget *parent) : QComboBox(parent)
{
    // Not Qt::WheelFocus: the wheel must not give it the focus either.
    setFocusPolicy(Qt::StrongFocus);
}

void WheelSafeComboBox::wheelEvent(QWheelEvent *event)
{
    if (!hasFocus()) {
        event->ignore(); // the parent scroll area takes it
        return;
    }
    QComboBox::wheelEvent(event);
}
