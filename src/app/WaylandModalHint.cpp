#include "WaylandModalHint.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <wayland-client.h>

#include "gtk-shell-modal-client-protocol.h"

#include <cstring>

namespace {

// GNOME's shell object, bound once for the whole process on an event queue
// of the app's own, so that Qt's queue and its listeners never see it.
// It stays bound to the end of the process: the display it belongs to is
// Qt's and is torn down with the application.
struct GtkShell
{
    wl_display *display = nullptr;
    wl_event_queue *queue = nullptr;
    gtk_shell1 *shell = nullptr;
};

void onGlobal(void *data, wl_registry *registry, uint32_t name, const char *interface,
              uint32_t /*version*/)
{
    auto *found = static_cast<GtkShell *>(data);
    // Version 1 has all the app asks for (set_modal).
    if (!found->shell && std::strcmp(interface, gtk_shell1_interface.name) == 0)
        found->shell =
            static_cast<gtk_shell1 *>(wl_registry_bind(registry, name, &gtk_shell1_interface, 1));
}

void onGlobalRemove(void *, wl_registry *, uint32_t) {}

constexpr wl_registry_listener registryListener{onGlobal, onGlobalRemove};

wl_display *qtDisplay()
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return nullptr;
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    return native ? static_cast<wl_display *>(
                        native->nativeResourceForIntegration(QByteArrayLiteral("wl_display")))
                  : nullptr;
}

GtkShell bindGtkShell()
{
    GtkShell found;
    found.display = qtDisplay();
    if (!found.display)
        return {};
    found.queue = wl_display_create_queue(found.display);
    // The registry is made through a wrapper of the display set to the
    // app's queue, so that not even its first events reach Qt's queue.
    auto *wrapper = static_cast<wl_display *>(wl_proxy_create_wrapper(found.display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(wrapper), found.queue);
    wl_registry *registry = wl_display_get_registry(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    wl_registry_add_listener(registry, &registryListener, &found);
    const bool answered = wl_display_roundtrip_queue(found.display, found.queue) >= 0;
    wl_registry_destroy(registry);
    if (!answered || !found.shell) {
        if (found.shell)
            gtk_shell1_destroy(found.shell);
        wl_event_queue_destroy(found.queue);
        return {};
    }
    return found;
}

const GtkShell &gtkShell()
{
    static const GtkShell bound = bindGtkShell();
    return bound;
}

// Tells the compositor that `window`'s surface is a modal dialog. The
// surface must have its window role already (the compositor ignores the
// request for a surface that is no window yet) and no frame yet (the
// compositor places a window when its first frame arrives).
void markModal(QWindow *window)
{
    const GtkShell &bound = gtkShell();
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    auto *surface = native ? static_cast<wl_surface *>(native->nativeResourceForWindow(
                                 QByteArrayLiteral("surface"), window))
                           : nullptr;
    if (!bound.shell || !surface)
        return;
    gtk_surface1 *gtkSurface = gtk_shell1_get_gtk_surface(bound.shell, surface);
    gtk_surface1_set_modal(gtkSurface);
    // Version 1 has no request to release the object: the compositor keeps
    // it with the surface. The app needs nothing more from it, so it drops
    // its side now, and with it any event the compositor sends it later.
    gtk_surface1_destroy(gtkSurface);
    // The shell object's own events (nothing the app reads) are let go too.
    wl_display_dispatch_queue_pending(bound.display, bound.queue);
    wl_display_flush(bound.display);
}

} // namespace

void WaylandModalHint::attach(QWidget *dialog)
{
    if (dialog && isAvailable())
        new WaylandModalHint(dialog);
}

bool WaylandModalHint::isAvailable()
{
    return gtkShell().shell != nullptr;
}

WaylandModalHint::WaylandModalHint(QWidget *dialog) : QObject(dialog), m_dialog(dialog)
{
    dialog->installEventFilter(this);
}

bool WaylandModalHint::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_dialog) {
        // Qt's Wayland platform gives the window a new surface each time it
        // is shown; each is marked before its first frame.
        if (event->type() == QEvent::Show) {
            QWindow *window = m_dialog->windowHandle();
            if (window && window != m_watchedWindow) {
                window->installEventFilter(this);
                m_watchedWindow = window;
            }
            m_marked = false;
        }
    } else if (watched == m_watchedWindow && event->type() == QEvent::Expose && !m_marked &&
               m_dialog->isVisible()) {
        // The first exposure comes once the compositor has configured the
        // new window and before Qt draws its first frame.
        m_marked = true;
        markModal(static_cast<QWindow *>(watched));
    }
    return QObject::eventFilter(watched, event);
}
