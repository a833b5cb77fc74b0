#include "SectionBox.h"

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOptionGroupBox>
#include <qdrawutil.h>

namespace {

// The default style's group-box frame: a one-pixel grey border with softened
// corners, a faint shadow line inside it and a fainter fill. The top row and
// the left column of its rectangle stay clear.
constexpr QRgb borderColor = qRgba(0x75, 0x75, 0x75, 0x32);
constexpr QRgb shadowColor = qRgba(0, 0, 0, 0x07);
constexpr QRgb fillColor = qRgba(0, 0, 0, 0x03);

// The corner pixels that differ from the lines they join, by their offset
// from the rectangle's corner (inward, mirrored for the other corners). The
// top-left and bottom-right corners share one shading, the other two another.
struct CornerPixel
{
    int dx;
    int dy;
    QRgb topLeft;
    QRgb topRight;
};
constexpr CornerPixel cornerPixels[] = {
    {1, 1, qRgba(0x27, 0x27, 0x27, 0x0d), qRgba(0x15, 0x15, 0x15, 0x0c)},
    {2, 1, qRgba(0x5d, 0x5d, 0x5d, 0x34), qRgba(0x66, 0x66, 0x66, 0x37)},
    {3, 1, qRgba(0x6c, 0x6c, 0x6c, 0x34), qRgba(0x6c, 0x6c, 0x6c, 0x34)},
    {1, 2, qRgba(0x62, 0x62, 0x62, 0x39), qRgba(0x5b, 0x5b, 0x5b, 0x35)},
    {2, 2, qRgba(0x5a, 0x5a, 0x5a, 0x1f), qRgba(0x5e, 0x5e, 0x5e, 0x1e)},
    {3, 2, qRgba(0, 0, 0, 0x0a), qRgba(0, 0, 0, 0x0a)},
    {4, 2, qRgba(0, 0, 0, 0x08), qRgba(0, 0, 0, 0x08)},
    {1, 3, qRgba(0x6c, 0x6c, 0x6c, 0x34), qRgba(0x6c, 0x6c, 0x6c, 0x34)},
    {2, 3, qRgba(0, 0, 0, 0x09), qRgba(0, 0, 0, 0x09)},
    {2, 4, qRgba(0, 0, 0, 0x08), qRgba(0, 0, 0, 0x08)},
};

// The style's frame is drawn this far below the title's line (or the top).
constexpr int gapBelowTitle = 3;
// The frame image: corners of `cornerSize` pixels around a middle pixel that
// is stretched to any size, as the style stretches its own.
constexpr int cornerSize = 6;
constexpr QSize imageSize(2 * cornerSize + 1, 2 * cornerSize + 1);
const QString frameCacheKey = QStringLiteral("zqb-section-frame");

QImage frameImage()
{
    QImage image(imageSize, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const auto line = [&image](int x0, int y0, int x1, int y1, QRgb color) {
        for (int y = y0; y <= y1; ++y)
            for (int x = x0; x <= x1; ++x)
                image.setPixel(x, y, color);
    };
    const int r = imageSize.width() - 1;
    const int b = imageSize.height() - 1;
    // The left and top lines sit one pixel in, the right and bottom ones on
    // the last column and row.
    line(3, 3, r - 2, b - 2, fillColor);
    line(2, 2, r - 1, 2, shadowColor);
    line(2, b - 1, r - 1, b - 1, shadowColor);
    line(2, 2, 2, b - 1, shadowColor);
    line(r - 1, 2, r - 1, b - 1, shadowColor);
    line(1, 1, r, 1, borderColor);
    line(1, b, r, b, borderColor);
    line(1, 1, 1, b, borderColor);
    line(r, 1, r, b, borderColor);
    for (const CornerPixel &pixel : cornerPixels) {
        const int right = r + 1 - pixel.dx;
        const int bottom = b + 1 - pixel.dy;
        image.setPixel(pixel.dx, pixel.dy, pixel.topLeft);
        image.setPixel(right, bottom, pixel.topLeft);
        image.setPixel(right, pixel.dy, pixel.topRight);
        image.setPixel(pixel.dx, bottom, pixel.topRight);
    }
    return image;
}

bool styleDrawsFrameFromImage(const QStyle *style)
{
    return style->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

} // namespace

SectionBox::SectionBox(QWidget *parent) : QGroupBox(parent) {}

SectionBox::SectionBox(const QString &title, QWidget *parent) : QGroupBox(title, parent) {}

void SectionBox::paintEvent(QPaintEvent *event)
{
    if (!styleDrawsFrameFromImage(style())) {
        QGroupBox::paintEvent(event);
        return;
    }
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    QPainter painter(this);
    // Made once and kept where Qt keeps its own style pixmaps, which it empties
    // before the application object goes.
    QPixmap frame;
    if (!QPixmapCache::find(frameCacheKey, &frame)) {
        frame = QPixmap::fromImage(frameImage());
        QPixmapCache::insert(frameCacheKey, frame);
    }
    // Stretched smoothly, as the style stretches its image: the edges then
    // blend to the same pixels.
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    qDrawBorderPixmap(&painter, frameRect(option),
                      QMargins(cornerSize, cornerSize, cornerSize, cornerSize), frame);
    painter.restore();
    // The style draws the rest: the title (and a check box, if any).
    option.subControls &= ~QStyle::SC_GroupBoxFrame;
    style()->drawComplexControl(QStyle::CC_GroupBox, &option, &painter, this);
}

QRect SectionBox::frameRect(const QStyleOptionGroupBox &option) const
{
    QRect frame =
        style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxFrame, this);
    int gap = gapBelowTitle;
    if (!title().isEmpty() || isCheckable())
        gap += qMax(style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, &option, this),
                    option.fontMetrics.height());
    frame.setTop(frame.top() + gap);
    return frame;
}
