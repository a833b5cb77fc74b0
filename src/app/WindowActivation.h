#pragma once

#include <QString>

class QWidget;

// Bringing the window forward. A desktop that guards against focus stealing
// (Wayland compositors, through xdg-activation) gives the window the focus
// only when the request carries the activation token the launcher handed to
// the program it started, in XDG_ACTIVATION_TOKEN. Qt's Wayland platform
// reads the token from that variable when the window asks to be activated;
// other platforms ignore it. The token is used once, and never left where an
// engine the app starts could inherit it.
namespace WindowActivation {

inline constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

// The token this process was started with, removed from its environment.
// Empty when there was none.
QString takeLaunchToken();

// Shows the window, raises it as far as the desktop allows and asks for the
// focus, with `token` when there is one. A window the desktop has not mapped
// yet asks once it has: a compositor activates only a window it shows.
void bringForward(QWidget *window, const QString &token);

} // namespace WindowActivation
