#include "BusySpinner.h"

#include <QPainter>

BusySpinner::BusySpinner(int diameter, QWidget *parent) : QWidget(parent)
{
    setFixedSize(diameter, diameter);
    setAccessibleName(QStringLiteral("In progress"));
    m_timer.setInterval(60);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_angle = (m_angle + 30) % 360;
        update();
    });
}

void BusySpinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal pen = qMax(2.0, width() / 8.0);
    const QRectF box = QRectF(rect()).adjusted(pen, pen, -pen, -pen);
    QColor track = palette().color(QPalette::WindowText);
    track.setAlphaF(0.18f);
    painter.setPen(QPen(track, pen));
    painter.drawEllipse(box);
    painter.setPen(QPen(palette().color(QPalette::Highlight), pen, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(box, -m_angle * 16, 100 * 16);
}

void BusySpinner::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_timer.start();
}

void BusySpinner::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}
