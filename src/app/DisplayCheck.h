#pragma once

#include <QProcessEnvironment>
#include <QString>

// Whether the app has a display to show its window on. Qt's X11 and Wayland
// platforms abort the process (with a core dump) when they find no display
// server; the app says what is missing and ends instead.
namespace DisplayCheck {

// Empty when the platform Qt will use can reach a display: DISPLAY for X11,
// WAYLAND_DISPLAY for Wayland, or a platform chosen with QT_QPA_PLATFORM that
// needs neither (offscreen, vnc, ...). Otherwise one line, ending in a
// newline, that names DISPLAY and WAYLAND_DISPLAY.
QString missingDisplayMessage(
    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

} // namespace DisplayCheck
