#pragma once

#include <QLabel>

// A one-line label that shortens its text in the middle to fit, keeping both
// ends of a path readable. The whole text stays in its tooltip and accessible name.
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QString fullText() const { return m_fullText; }
    void setFullText(const QString &text);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void updateElision();

    QString m_fullText;
};
