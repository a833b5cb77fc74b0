#pragma once

// Whether each text of a window has the room it needs: wrapped labels are tall
// enough for their text at their width, single-line labels, buttons, choices
// and headings are wide enough, and nothing reaches past the scrolled
// column's right edge.

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QStringList>
#include <QWidget>

// Whether `w`'s text has the room it needs: wrapped labels are tall enough
// for their text at their width, single-line texts are wide enough, and the
// widget lies inside the scrolled column's width.
inline QString clipping(const QWidget *w, const QWidget &column)
{
    const QRect inColumn(w->mapTo(&column, QPoint(0, 0)), w->size());
    if (inColumn.right() > column.width() - 1)
        return QStringLiteral("reaches past the column's right edge (%1 > %2)")
            .arg(inColumn.right())
            .arg(column.width() - 1);
    if (const auto *label = qobject_cast<const QLabel *>(w)) {
        if (label->text().isEmpty() || label->inherits("ElidedLabel"))
            return {};
        if (label->wordWrap()) {
            const int needed = label->heightForWidth(label->width());
            if (needed > label->height())
                return QStringLiteral("needs %1 px height, has %2")
                    .arg(needed)
                    .arg(label->height());
            return {};
        }
        const int needed = label->fontMetrics().horizontalAdvance(label->text()) +
                           2 * label->margin() + label->contentsMargins().left() +
                           label->contentsMargins().right();
        if (needed > label->width())
            return QStringLiteral("needs %1 px width, has %2").arg(needed).arg(label->width());
        return {};
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(w)) {
        if (button->text().isEmpty())
            return {};
        const int needed = button->sizeHint().width();
        if (needed > button->width())
            return QStringLiteral("needs %1 px width, has %2").arg(needed).arg(button->width());
        return {};
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(w)) {
        const int needed = combo->sizeHint().width();
        if (needed > combo->width())
            return QStringLiteral("needs %1 px width, has %2").arg(needed).arg(combo->width());
        return {};
    }
    if (const auto *box = qobject_cast<const QGroupBox *>(w)) {
        const int needed = box->fontMetrics().horizontalAdvance(box->title());
        if (needed > box->width())
            return QStringLiteral("title needs %1 px width, has %2").arg(needed).arg(box->width());
    }
    return {};
}

// Every visible widget of `view`'s scrolled column whose text is cut off,
// with what it needs and what it has.
inline QStringList cutOffTexts(const QWidget &view)
{
    const auto *scroll = view.findChild<QScrollArea *>(QStringLiteral("agentScroll"));
    const QWidget *column = scroll ? scroll->widget() : nullptr;
    if (!column)
        return {QStringLiteral("no scrolled column")};
    QStringList cut;
    for (const QWidget *widget : view.findChildren<QWidget *>()) {
        if (!widget->isVisibleTo(&view) || !column->isAncestorOf(widget))
            continue;
        const QString problem = clipping(widget, *column);
        if (!problem.isEmpty())
            cut << QStringLiteral("%1 (%2): %3")
                       .arg(widget->objectName(),
                            QString::fromLatin1(widget->metaObject()->className()), problem);
    }
    return cut;
}
