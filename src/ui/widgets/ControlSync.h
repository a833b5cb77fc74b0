#pragma once

#include <QString>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;

// Bringing a control to the model's value without telling anyone: the
// sections bind their controls to change signals (toggled, textChanged,
// currentIndexChanged), which fire whatever made the change (mouse,
// keyboard, an accessibility action or a program), so a render that sets a
// control must block them, or it would write the value straight back. A
// control that already shows the value is left alone, so nothing repaints and
// an edit keeps its cursor and selection.
namespace ControlSync {

void text(QLabel *label, const QString &text);
// A control disabled while it has the keyboard focus keeps the focus on its
// window (never on the next control) and gets it back when enabled again.
void enabled(QWidget *widget, bool enabled);
void checked(QCheckBox *box, bool checked);
void index(QComboBox *combo, int index);
void text(QLineEdit *edit, const QString &text);

} // namespace ControlSync
