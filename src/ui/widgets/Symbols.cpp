#include "Symbols.h"

#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

QImage renderSvg(const QString &path, const QSize &pixels)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(path);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    return image;
}

QSize devicePixels(const QSize &size, qreal ratio)
{
    return QSize(qMax(1, qRound(size.width() * ratio)), qMax(1, qRound(size.height() * ratio)));
}

} // namespace

namespace Symbols {

QString resourcePath(Symbol symbol)
{
    switch (symbol) {
    case Symbol::DriveCheck:
        return QStringLiteral(":/zqb/icons/drive-check.svg");
    case Symbol::Folder:
        return QStringLiteral(":/zqb/icons/folder.svg");
    case Symbol::MinusCircle:
        return QStringLiteral(":/zqb/icons/minus-circle.svg");
    case Symbol::XMark:
        return QStringLiteral(":/zqb/icons/xmark.svg");
    case Symbol::ArrowDownCircle:
        return QStringLiteral(":/zqb/icons/arrow-down-circle.svg");
    case Symbol::CheckCircle:
        return QStringLiteral(":/zqb/icons/check-circle.svg");
    case Symbol::WarningTriangle:
        return QStringLiteral(":/zqb/icons/warning-triangle.svg");
    case Symbol::Clock:
        return QStringLiteral(":/zqb/icons/clock.svg");
    }
    return {};
}

QPixmap pixmap(Symbol symbol, const QColor &color, const QSize &size, qreal devicePixelRatio)
{
    const QSize pixels = devicePixels(size, devicePixelRatio);
    const QString key = QStringLiteral("zqb-symbol-%1-%2-%3x%4")
                            .arg(int(symbol))
                            .arg(color.rgba(), 8, 16, QLatin1Char('0'))
                            .arg(pixels.width())
                            .arg(pixels.height());
    QPixmap cached;
    if (!QPixmapCache::find(key, &cached)) {
        // The SVG gives the shape; its pixels are then filled with the tint.
        QImage image = renderSvg(resourcePath(symbol), pixels);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        painter.end();
        cached = QPixmap::fromImage(image);
        QPixmapCache::insert(key, cached);
    }
    cached.setDevicePixelRatio(devicePixelRatio);
    return cached;
}

QIcon icon(Symbol symbol, const QColor &color, const QSize &size)
{
    QIcon result;
    result.addPixmap(pixmap(symbol, color, size, 1.0));
    result.addPixmap(pixmap(symbol, color, size, 2.0));
    return result;
}

QString appIconPath()
{
    return QStringLiteral(":/zqb/icons/zqb-agent.svg");
}

QPixmap appPixmap(const QSize &size, qreal devicePixelRatio)
{
    QPixmap result =
        QPixmap::fromImage(renderSvg(appIconPath(), devicePixels(size, devicePixelRatio)));
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QIcon appIcon()
{
    QIcon result;
    for (int side : {16, 22, 24, 32, 48, 64, 128, 256})
        result.addPixmap(appPixmap(QSize(side, side)));
    return result;
}

} // namespace Symbols
