#include "ColorRole.h"

bool isDarkPalette(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF() < 0.5;
}

QColor colorForRole(ColorRole role, const QPalette &palette)
{
    const bool dark = isDarkPalette(palette);
    switch (role) {
    case ColorRole::Green:
        return dark ? QColor(0x5c, 0xd1, 0x7c) : QColor(0x1e, 0x8a, 0x3c);
    case ColorRole::Blue:
        return dark ? QColor(0x6a, 0xaf, 0xff) : QColor(0x1a, 0x6f, 0xd8);
    case ColorRole::Orange:
        return dark ? QColor(0xff, 0xb0, 0x4a) : QColor(0xbf, 0x62, 0x00);
    case ColorRole::Red:
        return dark ? QColor(0xff, 0x6e, 0x66) : QColor(0xcc, 0x2b, 0x22);
    case ColorRole::Secondary: {
        // Halfway-ish between text and background keeps contrast on both.
        const QColor text = palette.color(QPalette::WindowText);
        const QColor window = palette.color(QPalette::Window);
        const qreal t = 0.38;
        return QColor::fromRgbF(text.redF() + (window.redF() - text.redF()) * t,
                                text.greenF() + (window.greenF() - text.greenF()) * t,
                                text.blueF() + (window.blueF() - text.blueF()) * t);
    }
    }
    return palette.color(QPalette::WindowText);
}

QColor withOpacity(QColor color, qreal opacity)
{
    color.setAlphaF(float(opacity));
    return color;
}
