#include "WrappedLabel.h"

#include <QEvent>

WrappedLabel::WrappedLabel(QWidget *parent) : WrappedLabel(QString(), parent) {}

WrappedLabel::WrappedLabel(const QString &text, QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setText(text);
}

int WrappedLabel::heightForWidth(int width) const
{
    // QLabel::setText is not virtual, so the text is part of the key rather
    // than a trigger; comparing it is far cheaper than wrapping it.
    if (text() != m_cachedText || font() != m_cachedFont || margin() != m_cachedMargin ||
        indent() != m_cachedIndent || wordWrap() != m_cachedWrap) {
        dropCache();
        m_cachedText = text();
        m_cachedFont = font();
        m_cachedMargin = margin();
        m_cachedIndent = indent();
        m_cachedWrap = wordWrap();
    }
    for (const Entry &entry : m_entries)
        if (entry.width == width)
            return entry.height;
    const int height = QLabel::heightForWidth(width);
    m_entries[m_next] = {width, height};
    m_next = (m_next + 1) % m_entries.size();
    return height;
}

QSize WrappedLabel::sizeHint() const
{
    if (!wordWrap() || text().isEmpty())
        return QLabel::sizeHint();
    const int width = fontMetrics().averageCharWidth() * preferredColumns + frameExtent();
    return QSize(width, heightForWidth(width));
}

QSize WrappedLabel::minimumSizeHint() const
{
    if (!wordWrap() || text().isEmpty())
        return QLabel::minimumSizeHint();
    // One line tall, as QLabel has it; narrow, since the column sets the width.
    const int width = fontMetrics().averageCharWidth() * minimumColumns + frameExtent();
    return QSize(width, heightForWidth(QWIDGETSIZE_MAX));
}

int WrappedLabel::frameExtent() const
{
    const QMargins margins = contentsMargins();
    int extent = margins.left() + margins.right() + 2 * margin();
    if (indent() > 0)
        extent += indent();
    return extent;
}

bool WrappedLabel::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ContentsRectChange:
    case QEvent::LayoutDirectionChange:
        dropCache();
        break;
    default:
        break;
    }
    return QLabel::event(event);
}

void WrappedLabel::dropCache() const
{
    m_entries.fill(Entry{});
    m_next = 0;
}
