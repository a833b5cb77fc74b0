#pragma once

#include <QString>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;

// Bringing a control to the model's value without telling anyone: rendering
// never feeds back into the model, so a render that sets a control blocks its
// signals. A control that already shows the value is left alone, so nothing
// repaints and an edit keeps its cursor and selection.
namespace ControlSync {

void text(QLabel *label, const QString &text);
void enabled(QWidget *widget, bool enabled);
void checked(QCheckBox *box, bool checked);
void index(QComboBox *combo, int index);
void text(QLineEdit *edit, const QString &text);

} // namespace ControlSync
