#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <memory>

// The X11 system tray of the XEmbed protocol: a panel that owns the selection
// `_NET_SYSTEM_TRAY_S<screen>` docks icons; it announces itself with a
// MANAGER message on the root window and leaves when its window is destroyed.
// Watched on Qt's own connection to the X server.
class XEmbedTrayWatch : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    // Null unless the app shows its windows through X11.
    static std::unique_ptr<XEmbedTrayWatch> forThisDisplay();
    ~XEmbedTrayWatch() override;

    bool isPresent() const { return m_owner != 0; }

signals:
    void presenceChanged();

protected:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *) override;

private:
    XEmbedTrayWatch() = default;
    void findOwner();

    void *m_connection = nullptr; // xcb_connection_t, kept out of this header
    quint32 m_root = 0;
    quint32 m_selection = 0;
    quint32 m_manager = 0;
    quint32 m_owner = 0;
};
