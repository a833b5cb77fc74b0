#pragma once

#include <QGroupBox>

class QStyleOptionGroupBox;

// A titled section of the window: a group box that, under the default style
// (Fusion), draws its own frame. That style draws the frame from a PNG image,
// and the first image an app decodes makes Qt load every image-format plugin
// it has: some 4 ms before the window's first frame. The section builds the
// same image from a few lines and draws it the same way, so its pixels are
// the style's own; the title is still the style's. Under any other style the
// section is a plain group box.
class SectionBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit SectionBox(QWidget *parent = nullptr);
    explicit SectionBox(const QString &title, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect frameRect(const QStyleOptionGroupBox &option) const;
};
