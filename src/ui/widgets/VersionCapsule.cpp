#include "VersionCapsule.h"

#include "PlainText.h"
#include "Symbols.h"
#include "WidgetStyle.h"

#include <QFontMetrics>
#include <QPainter>

namespace {
constexpr int padding = 9;
constexpr int radius = 10;
constexpr int gap = 5;
} // namespace

VersionCapsule::VersionCapsule(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("versionCapsule"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void VersionCapsule::setState(const VersionCapsuleState &state)
{
    if (state == m_state)
        return;
    m_state = state;
    setAccessibleName(state.label);
    setToolTip(PlainText::toolTip(state.label));
    updateGeometry();
    update();
}

QFont VersionCapsule::labelFont() const
{
    QFont font = WidgetStyle::captionFont(this->font());
    font.setWeight(QFont::DemiBold);
    return font;
}

int VersionCapsule::iconSide() const
{
    return QFontMetrics(labelFont()).height() - 2;
}

QSize VersionCapsule::sizeHint() const
{
    const QFontMetrics metrics(labelFont());
    const int width =
        padding + iconSide() + gap + metrics.horizontalAdvance(m_state.label) + padding;
    const int height = qMax(metrics.height(), iconSide()) + 2 * padding;
    return QSize(width, height);
}

void VersionCapsule::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = colorForRole(m_state.color, palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(color, 0.10));
    painter.drawRoundedRect(QRectF(rect()), radius, radius);

    const int side = iconSide();
    const QRect iconRect(padding, (height() - side) / 2, side, side);
    painter.drawPixmap(
        iconRect, Symbols::pixmap(m_state.symbol, color, QSize(side, side), devicePixelRatioF()));
    painter.setFont(labelFont());
    painter.setPen(color);
    const QRect textRect(iconRect.right() + 1 + gap, 0, width() - iconRect.right() - gap - padding,
                         height());
    painter.drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft, m_state.label);
}
