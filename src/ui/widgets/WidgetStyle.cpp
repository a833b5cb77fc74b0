#include "WidgetStyle.h"

#include <QPalette>
#include <QPushButton>
#include <QWidget>

namespace WidgetStyle {

namespace {
QFont scaled(const QFont &base, qreal factor, QFont::Weight weight)
{
    QFont font = base;
    if (base.pointSizeF() > 0)
        font.setPointSizeF(base.pointSizeF() * factor);
    else
        font.setPixelSize(qMax(8, qRound(base.pixelSize() * factor)));
    font.setWeight(weight);
    return font;
}
} // namespace

QFont titleFont(const QFont &base)
{
    return scaled(base, 1.75, QFont::Bold);
}

QFont headlineFont(const QFont &base)
{
    return scaled(base, 1.08, QFont::DemiBold);
}

QFont captionFont(const QFont &base)
{
    return scaled(base, 0.9, QFont::Normal);
}

QFont caption2Font(const QFont &base)
{
    return scaled(base, 0.82, QFont::Normal);
}

void setTextColor(QWidget *widget, const QColor &color)
{
    QPalette palette = widget->palette();
    if (palette.color(QPalette::WindowText) == color && palette.color(QPalette::Text) == color)
        return;
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Text, color);
    widget->setPalette(palette);
}

QColor roleColor(const QWidget *widget, ColorRole role)
{
    const QWidget *source = widget->parentWidget() ? widget->parentWidget() : widget;
    return colorForRole(role, source->palette());
}

void makeProminent(QPushButton *button)
{
    const QPalette inherited =
        button->parentWidget() ? button->parentWidget()->palette() : button->palette();
    QPalette palette = button->palette();
    // Disabled keeps the ordinary look, so a greyed-out button reads as such.
    // On light backgrounds the accent is deepened so white text stays legible.
    const bool dark = isDarkPalette(inherited);
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor accent = inherited.color(group, QPalette::Highlight);
        palette.setColor(group, QPalette::Button, accent.darker(dark ? 125 : 135));
        palette.setColor(group, QPalette::ButtonText,
                         inherited.color(group, QPalette::HighlightedText));
    }
    if (palette != button->palette())
        button->setPalette(palette);
}

} // namespace WidgetStyle
