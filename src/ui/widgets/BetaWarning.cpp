#include "BetaWarning.h"

#include "Symbols.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

BetaWarning::BetaWarning(QWidget *parent)
    : QWidget(parent), m_icon(new QLabel), m_text(new WrappedLabel)
{
    setObjectName(QStringLiteral("betaWarning"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    m_icon->setObjectName(QStringLiteral("betaWarningIcon"));
    m_icon->setFixedSize(16, 16);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    m_text->setObjectName(QStringLiteral("betaWarningText"));
    m_text->setText(tr("Beta: keep an independent verified backup. Test restoring "
                       "before relying on ZQB for important data."));
    m_text->setFont(WidgetStyle::captionFont(font()));
    row->addWidget(m_text, 1);
    applyColors();
}

QString BetaWarning::text() const
{
    return m_text->text();
}

void BetaWarning::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void BetaWarning::applyColors()
{
    m_icon->setPixmap(Symbols::pixmap(Symbol::WarningTriangle,
                                      colorForRole(ColorRole::Orange, palette()), QSize(16, 16),
                                      devicePixelRatioF()));
}
