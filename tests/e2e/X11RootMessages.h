#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

struct xcb_connection_t;

// What programs send to the X server's root window, as a window manager and a
// launcher see it: startup-notification messages and activation requests.
class X11RootMessages
{
public:
    struct ActivationRequest
    {
        uint32_t window = 0;
        uint32_t source = 0;
        uint32_t time = 0;
    };

    explicit X11RootMessages(const QString &display);
    ~X11RootMessages();
    X11RootMessages(const X11RootMessages &) = delete;
    X11RootMessages &operator=(const X11RootMessages &) = delete;

    bool isConnected() const { return m_connection != nullptr; }
    // Reads what has arrived so far.
    void read();
    // Whole startup-notification messages ("remove: ID=...").
    QStringList startupMessages() const { return m_startupMessages; }
    QList<ActivationRequest> activationRequests() const { return m_activations; }

    // Acts as an XEmbed system tray from now on: owns the tray selection of
    // screen 0 and announces it, as a panel does; then hears the icons that
    // ask to be docked. False when the selection could not be taken.
    bool becomeXEmbedTray();
    // The icon windows that asked this tray to dock them.
    QList<uint32_t> dockRequests() const { return m_dockRequests; }

private:
    uint32_t atom(const char *name) const;

    xcb_connection_t *m_connection = nullptr;
    uint32_t m_begin = 0;
    uint32_t m_more = 0;
    uint32_t m_activeWindow = 0;
    uint32_t m_trayWindow = 0;
    uint32_t m_trayOpcode = 0;
    QList<uint32_t> m_dockRequests;
    QByteArray m_partial;
    QStringList m_startupMessages;
    QList<ActivationRequest> m_activations;
};
