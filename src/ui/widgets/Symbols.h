#pragma once

#include "Symbol.h"

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <optional>

// The bundled symbols, tinted at render time, and the full-colour app icon.
// Nothing depends on the desktop's icon theme.
namespace Symbols {

QString resourcePath(Symbol symbol);
// The SVG at `path` drawn at `pixels`, filled with `tint` when given; kept in
// the pixmap cache. Each file is parsed once (GUI thread only).
QPixmap svgPixmap(const QString &path, std::optional<QColor> tint, const QSize &pixels);
// The symbol filled with `color`, `size` in device-independent pixels.
QPixmap pixmap(Symbol symbol, const QColor &color, const QSize &size, qreal devicePixelRatio = 1.0);
// An icon with crisp pixmaps at 1x and 2x of `size`.
QIcon icon(Symbol symbol, const QColor &color, const QSize &size = QSize(16, 16));
// The symbol filled with `color`, drawn lazily at any size; `advertised` are
// the sizes it reports as available.
QIcon scalableIcon(Symbol symbol, const QColor &color, const QList<QSize> &advertised);

QString appIconPath();
QPixmap appPixmap(const QSize &size, qreal devicePixelRatio = 1.0);
// The sizes a window icon is sent to the window system in: small ones only.
const QList<QSize> &windowIconSizes();
// The app icon, drawn lazily at whatever size is asked for; it advertises
// windowIconSizes().
QIcon appIcon();

} // namespace Symbols
