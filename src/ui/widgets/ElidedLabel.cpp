#include "ElidedLabel.h"

#include "PlainText.h"

#include <QEvent>
#include <QFontMetrics>
#include <QResizeEvent>

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::setFullText(const QString &text)
{
    if (text == m_fullText && !QLabel::text().isEmpty())
        return;
    m_fullText = text;
    setToolTip(PlainText::toolTip(text));
    setAccessibleName(text);
    updateElision();
    updateGeometry();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(QStringLiteral("/…/")),
                 QLabel::minimumSizeHint().height());
}

QSize ElidedLabel::sizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(m_fullText) + 2, QLabel::sizeHint().height());
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    // Only the width decides the shortening; a layout that moves rows or
    // changes their height (a long list settling) costs no text shaping.
    if (event->size().width() != event->oldSize().width())
        updateElision();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateElision();
}

void ElidedLabel::updateElision()
{
    const QString shown = fontMetrics().elidedText(m_fullText, Qt::ElideMiddle, qMax(0, width()));
    if (shown != QLabel::text())
        setText(shown);
}
