#pragma once

#include <QWidget>

class QLabel;

// The closing reminder that the product is a beta.
class BetaWarning : public QWidget
{
    Q_OBJECT
public:
    explicit BetaWarning(QWidget *parent = nullptr);

    QString text() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColors();

    QLabel *m_icon;
    QLabel *m_text;
};
