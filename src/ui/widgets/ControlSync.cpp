#include "ControlSync.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace ControlSync {

void text(QLabel *label, const QString &text)
{
    if (label->text() != text)
        label->setText(text);
}

void enabled(QWidget *widget, bool enabled)
{
    if (widget->isEnabled() != enabled)
        widget->setEnabled(enabled);
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
