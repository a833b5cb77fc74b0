#pragma once

#include "ColorRole.h"

#include <QColor>
#include <QFont>

class QWidget;
class QPushButton;

// Small helpers shared by the widgets: type styles and text colours.
namespace WidgetStyle {

QFont titleFont(const QFont &base);    // large bold title
QFont headlineFont(const QFont &base); // bold, slightly larger
QFont captionFont(const QFont &base);  // smaller secondary text
QFont caption2Font(const QFont &base); // smallest text

// Sets the text colour of a label-like widget, leaving other roles inherited.
void setTextColor(QWidget *widget, const QColor &color);
// The colour of `role` on the palette `widget` inherits (its parent's).
QColor roleColor(const QWidget *widget, ColorRole role);
// Filled accent look for the one main action of a group.
void makeProminent(QPushButton *button);

} // namespace WidgetStyle
