#include "RestoringBox.h"

#include "BusySpinner.h"
#include "ControlSync.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>

RestoringBox::RestoringBox(QWidget *parent)
    : QGroupBox(tr("Restoring connection"), parent), m_text(new WrappedLabel)
{
    setObjectName(QStringLiteral("restoringBox"));
    auto *row = new QHBoxLayout(this);
    row->setSpacing(10);
    auto *spinner = new BusySpinner(16);
    spinner->setObjectName(QStringLiteral("restoringSpinner"));
    row->addWidget(spinner);
    m_text->setObjectName(QStringLiteral("restoringText"));
    row->addWidget(m_text, 1);
    WidgetStyle::setTextColor(m_text, colorForRole(ColorRole::Secondary, palette()));
}

void RestoringBox::setState(const RestoringBoxState &state)
{
    m_state = state;
    setVisible(state.visible);
    ControlSync::text(m_text, state.text);
}

void RestoringBox::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        WidgetStyle::setTextColor(m_text, colorForRole(ColorRole::Secondary, palette()));
}
