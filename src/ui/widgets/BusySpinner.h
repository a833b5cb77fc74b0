#pragma once

#include <QTimer>
#include <QWidget>

// A small indeterminate spinner. It animates only while visible. Its circle
// has the given diameter and is drawn at the centre of whatever rectangle the
// layout gives it; by default it asks for no more than the circle.
class BusySpinner : public QWidget
{
    Q_OBJECT
public:
    explicit BusySpinner(int diameter = 16, QWidget *parent = nullptr);

    bool isAnimating() const { return m_timer.isActive(); }
    QSize sizeHint() const override { return {m_diameter, m_diameter}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int m_diameter;
    QTimer m_timer;
    int m_angle = 0;
};
