#pragma once

#include <QTimer>
#include <QWidget>

// A small indeterminate spinner. It animates only while visible.
class BusySpinner : public QWidget
{
    Q_OBJECT
public:
    explicit BusySpinner(int diameter = 16, QWidget *parent = nullptr);

    bool isAnimating() const { return m_timer.isActive(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QTimer m_timer;
    int m_angle = 0;
};
