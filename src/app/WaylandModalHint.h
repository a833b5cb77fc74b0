#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

class QWidget;

// A window-modal dialog, as GNOME Shell needs to be told about it under
// Wayland. There the compositor places a new window itself; GNOME Shell
// centres a child window over its parent only when the window says it is a
// modal dialog, and a window says so only through GNOME's own gtk_shell1
// protocol (gtk_surface1.set_modal), which GTK speaks and Qt's Wayland
// platform does not. Without it the folder panel opens wherever a new window
// would, away from the window it belongs to.
//
// The hint marks the dialog's surface modal before each first frame, so the
// shell knows it as a modal dialog when it places it. It does nothing under
// X11 (the window manager reads the dialog's transient parent), on
// compositors without gtk_shell1 (which place child windows by their parent
// link alone) and on Qt's offscreen and minimal platforms.
class WaylandModalHint : public QObject
{
    Q_OBJECT

public:
    // Has `dialog` (a window-modal dialog with its transient parent set)
    // marked modal for the compositor whenever it is shown, where the
    // compositor speaks gtk_shell1. The hint lives as long as the dialog.
    static void attach(QWidget *dialog);

    // Whether the app's display speaks gtk_shell1: true on GNOME Shell under
    // Wayland, false under X11, on other compositors and on the offscreen
    // and minimal platforms.
    static bool isAvailable();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit WaylandModalHint(QWidget *dialog);

    QWidget *m_dialog;
    QPointer<QWindow> m_watchedWindow;
    bool m_marked = false;
};
