#include "ControlSync.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVariant>
#include <QWidget>

namespace ControlSync {

void text(QLabel *label, const QString &text)
{
    if (label->text() != text)
        label->setText(text);
}

namespace {
// Set on a control that held the keyboard focus when it was disabled.
constexpr char focusParkedProperty[] = "zqbFocusParked";
} // namespace

void enabled(QWidget *widget, bool enabled)
{
    if (widget->isEnabled() == enabled)
        return;
    QWidget *window = widget->window();
    if (!enabled && widget->hasFocus()) {
        // Disabling the focused control makes Qt hand the focus to the next
        // one in the Tab chain, as if Tab had been pressed: often a text
        // field, which then selects all its text, so the next keystroke
        // would replace it. The focus waits on the window instead, where
        // keys do nothing, and goes back to the control when it is enabled.
        window->setFocus(Qt::OtherFocusReason);
        widget->setProperty(focusParkedProperty, true);
    }
    widget->setEnabled(enabled);
    if (enabled && widget->property(focusParkedProperty).toBool()) {
        widget->setProperty(focusParkedProperty, QVariant());
        // Only if the person has not put the focus elsewhere meanwhile.
        if (window->focusWidget() == window || !window->focusWidget())
            widget->setFocus(Qt::OtherFocusReason);
    }
}

void checked(QCheckBox *box, bool checked)
{
    if (box->isChecked() == checked)
        return;
    const QSignalBlocker blocker(box);
    box->setChecked(checked);
}

void index(QComboBox *combo, int index)
{
    if (combo->currentIndex() == index)
        return;
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(index);
}

void text(QLineEdit *edit, const QString &text)
{
    if (edit->text() == text)
        return;
    const QSignalBlocker blocker(edit);
    edit->setText(text);
}

} // namespace ControlSync
