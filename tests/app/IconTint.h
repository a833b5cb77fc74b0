#pragma once

#include <QColor>
#include <QImage>
#include <QString>

// What colour a person sees in an icon: the average of its clearly visible
// pixels, named by hue. Shared by the offscreen tests and the end-to-end tests
// (which read the icon from the tray over D-Bus).
inline QColor averageVisibleColor(const QImage &source)
{
    const QImage image = source.convertToFormat(QImage::Format_ARGB32);
    qint64 red = 0, green = 0, blue = 0, count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) < 128)
                continue;
            red += qRed(pixel);
            green += qGreen(pixel);
            blue += qBlue(pixel);
            ++count;
        }
    }
    if (count == 0)
        return {};
    return QColor(int(red / count), int(green / count), int(blue / count));
}

// "green", "orange", "grey" (no clear hue), or "none" (nothing visible).
inline QString tintName(const QImage &image)
{
    const QColor color = averageVisibleColor(image);
    if (!color.isValid())
        return QStringLiteral("none");
    if (color.hsvSaturation() < 60)
        return QStringLiteral("grey");
    const int hue = color.hsvHue();
    if (hue >= 15 && hue <= 50)
        return QStringLiteral("orange");
    if (hue >= 80 && hue <= 160)
        return QStringLiteral("green");
    return QStringLiteral("other hue %1").arg(hue);
}
