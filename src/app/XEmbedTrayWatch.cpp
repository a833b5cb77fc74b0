#include "XEmbedTrayWatch.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

namespace {

xcb_atom_t atom(xcb_connection_t *c, const QByteArray &name)
{
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, uint16_t(name.size()), name.constData()), nullptr);
    const xcb_atom_t result = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return result;
}

// Adds to what this client hears from a window, keeping what Qt asked for.
void listen(xcb_connection_t *c, xcb_window_t window, uint32_t mask)
{
    xcb_get_window_attributes_reply_t *attributes =
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr);
    if (!attributes)
        return;
    const uint32_t events = attributes->your_event_mask | mask;
    std::free(attributes);
    xcb_change_window_attributes(c, window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

std::unique_ptr<XEmbedTrayWatch> XEmbedTrayWatch::forThisDisplay()
{
    auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11 || !x11->connection())
        return nullptr;
    std::unique_ptr<XEmbedTrayWatch> watch(new XEmbedTrayWatch);
    xcb_connection_t *c = x11->connection();
    watch->m_connection = c;
    watch->m_root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    // Screen 0's tray: the app's windows live on the default screen.
    watch->m_selection = atom(c, QByteArrayLiteral("_NET_SYSTEM_TRAY_S0"));
    watch->m_manager = atom(c, QByteArrayLiteral("MANAGER"));
    // A new tray announces itself to the root window's structure listeners.
    listen(c, watch->m_root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    QCoreApplication::instance()->installNativeEventFilter(watch.get());
    watch->findOwner();
    return watch;
}

XEmbedTrayWatch::~XEmbedTrayWatch()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

void XEmbedTrayWatch::findOwner()
{
    auto *c = static_cast<xcb_connection_t *>(m_connection);
    xcb_get_selection_owner_reply_t *reply =
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, m_selection), nullptr);
    const quint32 owner = reply ? reply->owner : 0;
    std::free(reply);
    if (owner == m_owner)
        return;
    m_owner = owner;
    // The tray's window is destroyed when the tray ends.
    if (owner)
        listen(c, owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    xcb_flush(c);
    emit presenceChanged();
}

bool XEmbedTrayWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    const uint8_t type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto *client = static_cast<xcb_client_message_event_t *>(message);
        if (client->type == m_manager && client->data.data32[1] == m_selection)
            findOwner();
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto *destroyed = static_cast<xcb_destroy_notify_event_t *>(message);
        if (m_owner && destroyed->window == m_owner)
            findOwner();
    }
    return false; // Qt's own tray code hears the same events
}
