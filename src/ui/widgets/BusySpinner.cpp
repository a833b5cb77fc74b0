#include "BusySpinner.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace {

// To assistive technology a spinner is an indeterminate progress bar that is
// busy, not an anonymous pane: "Working, progress bar, busy".
class BusySpinnerAccessible : public QAccessibleWidget
{
public:
    explicit BusySpinnerAccessible(QWidget *widget)
        : QAccessibleWidget(widget, QAccessible::ProgressBar)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.busy = true;
        return state;
    }
};

QAccessibleInterface *accessibleSpinner(const QString &className, QObject *object)
{
    if (className == QLatin1String("BusySpinner") && object && object->isWidgetType())
        return new BusySpinnerAccessible(static_cast<QWidget *>(object));
    return nullptr;
}

} // namespace

BusySpinner::BusySpinner(int diameter, QWidget *parent) : QWidget(parent), m_diameter(diameter)
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(accessibleSpinner);
        return true;
    }();
    Q_UNUSED(factoryInstalled);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(tr("In progress"));
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
    const qreal pen = qMax(2.0, m_diameter / 8.0);
    QRectF box(0, 0, m_diameter, m_diameter);
    box.moveCenter(QRectF(rect()).center());
    box.adjust(pen, pen, -pen, -pen);
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
