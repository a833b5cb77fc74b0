#pragma once

#include <QColor>
#include <QPalette>

// Colours carry meaning: green for connected, latest and success; blue for
// setup, backing up and updates; orange for waiting, paused and warnings; red
// for errors and unknown states; secondary for subdued text.
enum class ColorRole { Green, Blue, Orange, Red, Secondary };

// True when the palette's window background is dark.
bool isDarkPalette(const QPalette &palette);

// The one place where roles become colours, tuned to read on the palette's
// window background (light or dark).
QColor colorForRole(ColorRole role, const QPalette &palette);

// `color` with its alpha set to `opacity` (0..1), for tinted backgrounds.
QColor withOpacity(QColor color, qreal opacity);
