#pragma once

#include <QColor>
#include <QWidget>

// A filled circle of a fixed diameter.
class DotWidget : public QWidget
{
    Q_OBJECT
public:
    explicit DotWidget(int diameter, QWidget *parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};
