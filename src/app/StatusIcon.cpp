#include "StatusIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

// An external drive seen from the front, with a check badge at its top right;
// drawn rather than loaded so every tray size stays crisp.
QPixmap drawMark(int size, const QColor &color)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;

    QPainterPath drive;
    drive.addRoundedRect(QRectF(0.06 * s, 0.42 * s, 0.80 * s, 0.44 * s), 0.10 * s, 0.10 * s);
    QPainterPath slot;
    slot.addRoundedRect(QRectF(0.16 * s, 0.68 * s, 0.34 * s, 0.07 * s), 0.03 * s, 0.03 * s);
    QPainterPath light;
    light.addEllipse(QPointF(0.70 * s, 0.715 * s), 0.055 * s, 0.055 * s);
    painter.fillPath(drive.subtracted(slot).subtracted(light), color);

    // The badge, with a ring of clear space around it and the check cut out.
    const QPointF centre(0.74 * s, 0.27 * s);
    const qreal radius = 0.22 * s;
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(centre, radius + 0.06 * s, radius + 0.06 * s);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setBrush(color);
    painter.drawEllipse(centre, radius, radius);

    QPainterPath check;
    check.moveTo(centre + QPointF(-0.11 * s, 0.0));
    check.lineTo(centre + QPointF(-0.03 * s, 0.08 * s));
    check.lineTo(centre + QPointF(0.11 * s, -0.08 * s));
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, qMax(1.0, 0.06 * s), Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.drawPath(check);
    return pixmap;
}

} // namespace

QColor statusItemColor(AppDelegate::Look look)
{
    switch (look) {
    case AppDelegate::Look::Green:
        return QColor(0x34, 0xc7, 0x59);
    case AppDelegate::Look::Orange:
        return QColor(0xff, 0x95, 0x00);
    case AppDelegate::Look::Untinted:
        break;
    }
    return QColor(0x9a, 0x9a, 0x9e);
}

QIcon statusItemIcon(AppDelegate::Look look)
{
    const QColor color = statusItemColor(look);
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(drawMark(size, color));
    return icon;
}
