#pragma once

#include <QLabel>

// A one-line plain-text label whose size never depends on its text: it takes
// the width its layout gives it and shortens the text at the right to fit,
// so a new text only repaints it and never changes the column's geometry.
// text() stays the whole text, and a tooltip shows it when it is shortened.
class LineLabel : public QLabel
{
    // No Q_OBJECT: it adds no signals or properties, and to tools that list
    // widgets by class (accessibility, the end-to-end probe) it is a QLabel.
public:
    explicit LineLabel(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // The text as drawn at the current width.
    QString shownText() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    int lineHeight() const;
};
