#include "DotWidget.h"

#include <QPainter>

DotWidget::DotWidget(int diameter, QWidget *parent) : QWidget(parent)
{
    setFixedSize(diameter, diameter);
}

void DotWidget::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void DotWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}
