#pragma once

#include "Symbol.h"

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

// The bundled symbols, tinted at render time, and the full-colour app icon.
// Nothing depends on the desktop's icon theme.
namespace Symbols {

QString resourcePath(Symbol symbol);
// The symbol filled with `color`, `size` in device-independent pixels.
QPixmap pixmap(Symbol symbol, const QColor &color, const QSize &size, qreal devicePixelRatio = 1.0);
// An icon with crisp pixmaps at 1x and 2x of `size`.
QIcon icon(Symbol symbol, const QColor &color, const QSize &size = QSize(16, 16));

QString appIconPath();
QPixmap appPixmap(const QSize &size, qreal devicePixelRatio = 1.0);
// The app icon at the usual desktop sizes from 16 to 256 pixels.
QIcon appIcon();

} // namespace Symbols
