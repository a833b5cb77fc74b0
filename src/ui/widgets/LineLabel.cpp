#include "LineLabel.h"

#include "PlainText.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolTip>

LineLabel::LineLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

int LineLabel::lineHeight() const
{
    // Measured the way QLabel measures one line, so it sits exactly where a
    // plain label would; the sample text keeps it independent of the text.
    const QMargins m = contentsMargins();
    const int line = fontMetrics()
                         .boundingRect(QRect(0, 0, 2000, 2000), Qt::AlignLeft, QStringLiteral("Xg"))
                         .height();
    return line + 2 * margin() + m.top() + m.bottom();
}

// Both hints leave room for a few words whatever the text, so the column's
// minimum width and the wrapping of its other lines do not depend on it.
QSize LineLabel::sizeHint() const
{
    return minimumSizeHint();
}

QSize LineLabel::minimumSizeHint() const
{
    return QSize(fontMetrics().averageCharWidth() * 24, lineHeight());
}

QString LineLabel::shownText() const
{
    const int available = qMax(0, contentsRect().width() - 2 * margin());
    return fontMetrics().elidedText(text(), Qt::ElideRight, available);
}

void LineLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect area = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    const int flags = int(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, area, flags, palette(), isEnabled(), shownText(),
                          foregroundRole());
}

bool LineLabel::event(QEvent *event)
{
    // Only a shortened text needs a tooltip, and only while it is shortened.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        auto *help = static_cast<QHelpEvent *>(event);
        if (shownText() != text())
            QToolTip::showText(help->globalPos(), PlainText::toolTip(text()), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QLabel::event(event);
}
