#pragma once

#include <QString>

class QWidget;

// Bringing the window forward. A desktop that guards against focus stealing
// (Wayland compositors, through xdg-activation) gives the window the focus
// only when the request carries the activation token the launcher handed to
// the program it started: in XDG_ACTIVATION_TOKEN, or, from launchers that
// speak the older startup-notification protocol (GNOME 43's among them), in
// DESKTOP_STARTUP_ID. Qt's Wayland platform reads the token from
// XDG_ACTIVATION_TOKEN when the window asks to be activated. The token is
// used once, and never left where an engine the app starts could inherit it.
namespace WindowActivation {

inline constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";
inline constexpr char startupIdVariable[] = "DESKTOP_STARTUP_ID";

// The token this process was started with (XDG_ACTIVATION_TOKEN, else
// DESKTOP_STARTUP_ID), both removed from its environment. Empty when there
// was none.
QString takeLaunchToken();

// Shows the window, raises it as far as the desktop allows and asks for the
// focus, with `token` when there is one. A window the desktop has not mapped
// yet asks once it has: a compositor activates only a window it shows.
void bringForward(QWidget *window, const QString &token);

} // namespace WindowActivation
