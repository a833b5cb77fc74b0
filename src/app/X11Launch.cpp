#include "X11Launch.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QWidget>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

namespace {

xcb_connection_t *connection()
{
    auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t *c, const char *name)
{
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name);
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(c, cookie, nullptr);
    const xcb_atom_t result = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return result;
}

xcb_window_t rootWindow(xcb_connection_t *c)
{
    return xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
}

} // namespace

bool X11Launch::isActive()
{
    return connection() != nullptr;
}

quint32 X11Launch::launchTime(const QString &startupId)
{
    static const QRegularExpression time(QStringLiteral("_TIME(\\d+)$"));
    const QRegularExpressionMatch match = time.match(startupId);
    if (!match.hasMatch())
        return 0;
    bool ok = false;
    const qulonglong value = match.captured(1).toULongLong(&ok);
    return ok && value <= 0xffffffffULL ? quint32(value) : 0;
}

QByteArray X11Launch::removeMessage(const QString &startupId)
{
    QByteArray id = startupId.toUtf8();
    if (id.contains(' ') || id.contains('"') || id.contains('\\')) {
        id.replace('\\', "\\\\").replace('"', "\\\"");
        id = '"' + id + '"';
    }
    return "remove: ID=" + id;
}

void X11Launch::endStartupNotification(const QString &startupId)
{
    xcb_connection_t *c = connection();
    if (!c || startupId.isEmpty())
        return;
    // Sent to the root window in pieces of 20 bytes, the first of one type and
    // the rest of another; the text ends with its NUL byte.
    const QByteArray message = removeMessage(startupId);
    const xcb_window_t root = rootWindow(c);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = root;
    event.type = atom(c, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t following = atom(c, "_NET_STARTUP_INFO");
    const qsizetype length = message.size() + 1;
    for (qsizetype sent = 0; sent < length; sent += 20) {
        if (sent > 0)
            event.type = following;
        std::memset(event.data.data8, 0, sizeof event.data.data8);
        std::memcpy(event.data.data8, message.constData() + sent,
                    size_t(qMin<qsizetype>(20, length - sent)));
        xcb_send_event(c, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&event));
    }
    xcb_flush(c);
}

void X11Launch::requestActivation(QWidget *window, quint32 time)
{
    xcb_connection_t *c = connection();
    if (!c || !window)
        return;
    const xcb_window_t root = rootWindow(c);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = xcb_window_t(window->winId());
    event.type = atom(c, "_NET_ACTIVE_WINDOW");
    event.data.data32[0] = 1; // the request comes from an application
    event.data.data32[1] = time;
    event.data.data32[2] = XCB_NONE;
    xcb_send_event(c, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(c);
}
