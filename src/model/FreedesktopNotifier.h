#pragma once

#include "DesktopNotifier.h"

#include <QDBusConnection>
#include <QImage>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

// Desktop notifications through the org.freedesktop.Notifications service.
// Calls are asynchronous; when the call fails (no service, an error reply)
// the fallback shows the message instead, e.g. as a tray-icon message.
class FreedesktopNotifier : public QObject, public DesktopNotifier
{
    Q_OBJECT
public:
    using Fallback = std::function<void(const QString &title, const QString &body)>;

    static inline const QString appName = QStringLiteral("ZQB Agent");
    static inline const QString iconName = QStringLiteral("zqb-agent");
    static inline const QString desktopEntry = QStringLiteral("zqb-agent");
    static inline const QString soundName = QStringLiteral("message-new-instant");
    static constexpr int bodyCharacterCap = 300;

    // On the session bus.
    explicit FreedesktopNotifier(Fallback fallback, QObject *parent = nullptr);
    FreedesktopNotifier(const QDBusConnection &bus, Fallback fallback, QObject *parent = nullptr);

    void requestAuthorization() override;
    void post(const QString &title, const QString &body) override;

    // The app's icon as a picture, sent with each notification (the
    // "image-data" hint) for desktops whose icon theme does not know the
    // icon's name: a build run from its build tree has installed none.
    // A null image sends the name alone.
    void setIconImage(const QImage &image);

private:
    void notify(const QString &title, const QString &shownBody);

    QDBusConnection m_bus;
    Fallback m_fallback;
    // Whether the server reads markup in the body; unknown until it has said.
    std::optional<bool> m_bodyMarkup;
    QImage m_iconImage; // in RGBA8888, as the hint carries it
};
