#pragma once

#include <QString>

class QWidget;

// A launch under X11, where launchers speak the startup-notification
// protocol: the launcher hands the program a startup id in DESKTOP_STARTUP_ID
// (with the time of the click that launched it, "..._TIME<n>"), shows a busy
// cursor or a "starting" entry until the program says it is up, and the
// window manager lets a window take the focus only for a user action newer
// than the focused window's last one. A second launch ends in the running
// app, which finishes the launcher's notification itself and asks for the
// focus with the launch's time.
namespace X11Launch {

// True when the app shows its windows through X11.
bool isActive();

// The X server time of the launch in a startup id ("..._TIME<n>"); 0 when
// the id carries none.
quint32 launchTime(const QString &startupId);

// The message that ends a startup notification: "remove: ID=<id>", the id
// quoted when it holds blanks, quotes or backslashes.
QByteArray removeMessage(const QString &startupId);

// Tells the launcher that the launch with this id is complete.
void endStartupNotification(const QString &startupId);

// Asks the window manager to activate `window` on behalf of the user action
// at `time` (0: no time known, the window manager decides).
void requestActivation(QWidget *window, quint32 time);

} // namespace X11Launch
