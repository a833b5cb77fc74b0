#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <memory>

class XEmbedTrayWatch;

// Tells when a tray that shows status items is there: a StatusNotifierItem
// host behind the `org.kde.StatusNotifierWatcher` name on the session bus,
// or, under X11 where no such host shows up, an XEmbed system tray. Trays
// come and go during a session: a panel starts after the app at login,
// crashes and restarts, an extension is switched off and on.
//
// Qt's own tray icon looks for a StatusNotifierItem host once per process,
// when the first QSystemTrayIcon is made, and keeps that answer: an item made
// before the host is there never reaches it, and one made for an XEmbed tray
// stays an XEmbed icon. So the app makes its item only once this watch
// reports a tray, and anew each time a tray comes back; an XEmbed tray is
// used only when no StatusNotifierItem host has come within a moment of it
// (panels that offer both register both together).
class TrayHostWatch : public QObject
{
    Q_OBJECT
public:
    static inline const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
    static inline const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

    // Starts watching; the first answer comes once the event loop runs.
    explicit TrayHostWatch(QDBusConnection bus, QObject *parent = nullptr);
    ~TrayHostWatch() override;

    static constexpr int xembedGraceMs = 2000;

    bool hasTray() const { return m_statusNotifierHost || m_xembedInUse; }

signals:
    // A tray host has come (also again, after a restart): an item made now
    // reaches it.
    void trayAppeared();
    // No tray host is left.
    void trayGone();

private slots:
    void watcherOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);
    void hostRegistered();
    void hostUnregistered();
    void xembedTrayChanged();
    void fallBackToXEmbed();

private:
    void askWhetherAHostIsRegistered();
    void setStatusNotifierHost(bool present);

    QDBusConnection m_bus;
    bool m_statusNotifierHost = false;
    bool m_statusNotifierHostSeen = false;
    std::unique_ptr<XEmbedTrayWatch> m_xembedTray; // X11 only
    bool m_xembedInUse = false;
    QTimer m_xembedGrace;
    // Answers to earlier questions that a newer one has replaced are ignored.
    quint64 m_question = 0;
};
