#include "X11RootMessages.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

X11RootMessages::X11RootMessages(const QString &display)
{
    xcb_connection_t *c = xcb_connect(display.toLocal8Bit().constData(), nullptr);
    if (xcb_connection_has_error(c)) {
        xcb_disconnect(c);
        return;
    }
    m_connection = c;
    m_begin = atom("_NET_STARTUP_INFO_BEGIN");
    m_more = atom("_NET_STARTUP_INFO");
    m_activeWindow = atom("_NET_ACTIVE_WINDOW");
    // Launchers listen for property changes on the root window, window
    // managers for its children's structure (no window manager runs here).
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(c, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(c);
}

X11RootMessages::~X11RootMessages()
{
    if (m_connection)
        xcb_disconnect(m_connection);
}

uint32_t X11RootMessages::atom(const char *name) const
{
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, uint16_t(std::strlen(name)), name),
        nullptr);
    const uint32_t result = reply ? reply->atom : 0;
    std::free(reply);
    return result;
}

void X11RootMessages::read()
{
    if (!m_connection)
        return;
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
        if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
            const auto *message = reinterpret_cast<xcb_client_message_event_t *>(event);
            if (message->type == m_begin || message->type == m_more) {
                if (message->type == m_begin)
                    m_partial.clear();
                const char *bytes = reinterpret_cast<const char *>(message->data.data8);
                const qsizetype length = qsizetype(strnlen(bytes, 20));
                m_partial.append(bytes, length);
                if (length < 20) { // the NUL byte ends the message
                    m_startupMessages << QString::fromUtf8(m_partial);
                    m_partial.clear();
                }
            } else if (m_trayWindow && message->window == m_trayWindow &&
                       message->type == m_trayOpcode && message->data.data32[1] == 0) {
                m_dockRequests << message->data.data32[2]; // SYSTEM_TRAY_REQUEST_DOCK
            } else if (message->type == m_activeWindow) {
                m_activations << ActivationRequest{message->window, message->data.data32[0],
                                                   message->data.data32[1]};
            }
        }
        std::free(event);
    }
}

bool X11RootMessages::becomeXEmbedTray()
{
    if (!m_connection)
        return false;
    xcb_connection_t *c = m_connection;
    xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    m_trayWindow = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, m_trayWindow, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    m_trayOpcode = atom("_NET_SYSTEM_TRAY_OPCODE");
    const uint32_t selection = atom("_NET_SYSTEM_TRAY_S0");
    const uint32_t time = XCB_CURRENT_TIME;
    xcb_set_selection_owner(c, m_trayWindow, selection, time);
    xcb_get_selection_owner_reply_t *owner =
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr);
    const bool owned = owner && owner->owner == m_trayWindow;
    std::free(owner);
    if (!owned)
        return false;
    // The announcement every tray client listens for.
    xcb_client_message_event_t announce{};
    announce.response_type = XCB_CLIENT_MESSAGE;
    announce.format = 32;
    announce.window = screen->root;
    announce.type = atom("MANAGER");
    announce.data.data32[0] = time;
    announce.data.data32[1] = selection;
    announce.data.data32[2] = m_trayWindow;
    xcb_send_event(c, 0, screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&announce));
    xcb_flush(c);
    return true;
}
