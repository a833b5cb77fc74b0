#include "Symbols.h"

#include "SvgIconEngine.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <memory>

namespace {

QImage renderSvg(const QString &path, const QSize &pixels, std::optional<QColor> tint)
{
    // Parsing is a good part of drawing a small icon, and the same few files
    // are drawn at many sizes and colours.
    static QHash<QString, std::shared_ptr<QSvgRenderer>> renderers;
    std::shared_ptr<QSvgRenderer> &renderer = renderers[path];
    if (!renderer)
        renderer = std::make_shared<QSvgRenderer>(path);

    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer->render(&painter);
    if (tint) {
        // The SVG gives the shape; its pixels are then filled with the tint.
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), *tint);
    }
    return image;
}

QSize devicePixels(const QSize &size, qreal ratio)
{
    return QSize(qMax(1, qRound(size.width() * ratio)), qMax(1, qRound(size.height() * ratio)));
}

} // namespace

namespace Symbols {

QPixmap svgPixmap(const QString &path, std::optional<QColor> tint, const QSize &pixels)
{
    const QString colour = tint ? QStringLiteral("%1").arg(tint->rgba(), 8, 16, QLatin1Char('0'))
                                : QStringLiteral("own");
    const QString key = QStringLiteral("zqb-svg-%1-%2-%3x%4")
                            .arg(path, colour)
                            .arg(pixels.width())
                            .arg(pixels.height());
    QPixmap cached;
    if (!QPixmapCache::find(key, &cached)) {
        cached = QPixmap::fromImage(renderSvg(path, pixels, tint));
        QPixmapCache::insert(key, cached);
    }
    return cached;
}

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
    QPixmap result = svgPixmap(resourcePath(symbol), color, devicePixels(size, devicePixelRatio));
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QIcon icon(Symbol symbol, const QColor &color, const QSize &size)
{
    QIcon result;
    result.addPixmap(pixmap(symbol, color, size, 1.0));
    result.addPixmap(pixmap(symbol, color, size, 2.0));
    return result;
}

QIcon scalableIcon(Symbol symbol, const QColor &color, const QList<QSize> &advertised)
{
    return QIcon(new SvgIconEngine(resourcePath(symbol), color, advertised));
}

QString appIconPath()
{
    return QStringLiteral(":/zqb/icons/zqb-agent.svg");
}

QPixmap appPixmap(const QSize &size, qreal devicePixelRatio)
{
    QPixmap result = svgPixmap(appIconPath(), std::nullopt, devicePixels(size, devicePixelRatio));
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

const QList<QSize> &windowIconSizes()
{
    static const QList<QSize> sizes{QSize(16, 16), QSize(24, 24), QSize(32, 32), QSize(48, 48),
                                    QSize(64, 64)};
    return sizes;
}

QIcon appIcon()
{
    return QIcon(new SvgIconEngine(appIconPath(), std::nullopt, windowIconSizes()));
}

} // namespace Symbols
