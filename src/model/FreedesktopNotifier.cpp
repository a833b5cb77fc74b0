#include "FreedesktopNotifier.h"

#include "TextRules.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

namespace {
const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");
const QString interfaceName = QStringLiteral("org.freedesktop.Notifications");
} // namespace

FreedesktopNotifier::FreedesktopNotifier(Fallback fallback, QObject *parent)
    : FreedesktopNotifier(QDBusConnection::sessionBus(), std::move(fallback), parent)
{
}

FreedesktopNotifier::FreedesktopNotifier(const QDBusConnection &bus, Fallback fallback,
                                         QObject *parent)
    : QObject(parent), m_bus(bus), m_fallback(std::move(fallback))
{
}

void FreedesktopNotifier::setIconImage(const QImage &image)
{
    m_iconImage = image.isNull() ? QImage() : image.convertToFormat(QImage::Format_RGBA8888);
}

void FreedesktopNotifier::requestAuthorization()
{
    // The desktop grants notifications without asking; nothing to request.
}

void FreedesktopNotifier::post(const QString &title, const QString &body)
{
    const QString shownBody = TextRules::leftGraphemes(body, bodyCharacterCap);
    if (m_bodyMarkup) {
        notify(title, shownBody);
        return;
    }
    // Servers that read markup in the body would interpret the engine's text:
    // ask once what this one does before the first notification.
    const QDBusPendingCall pending = m_bus.asyncCall(QDBusMessage::createMethodCall(
        service, objectPath, interfaceName, QStringLiteral("GetCapabilities")));
    if (pending.isFinished()) {
        // No bus to ask: the notification falls back the same way.
        notify(title, shownBody);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, title, shownBody](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusMessage reply = finished->reply();
                if (!m_bodyMarkup && reply.type() == QDBusMessage::ReplyMessage &&
                    !reply.arguments().isEmpty())
                    m_bodyMarkup = reply.arguments().constFirst().toStringList().contains(
                        QStringLiteral("body-markup"));
                notify(title, shownBody);
            });
}

void FreedesktopNotifier::notify(const QString &title, const QString &shownBody)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, objectPath, interfaceName,
                                                       QStringLiteral("Notify"));
    QVariantMap hints{
        {QStringLiteral("sound-name"), soundName},
        {QStringLiteral("desktop-entry"), desktopEntry},
    };
    if (!m_iconImage.isNull()) {
        // (iiibiiay): width, height, bytes per row, alpha, bits per sample,
        // samples per pixel, then the pixels row by row.
        QDBusArgument image;
        image.beginStructure();
        image << m_iconImage.width() << m_iconImage.height() << int(m_iconImage.bytesPerLine())
              << true << 8 << 4
              << QByteArray(reinterpret_cast<const char *>(m_iconImage.constBits()),
                            m_iconImage.sizeInBytes());
        image.endStructure();
        hints.insert(QStringLiteral("image-data"), QVariant::fromValue(image));
    }
    // The body is the engine's text: shown as written, never as markup.
    const QString sentBody = m_bodyMarkup.value_or(false) ? shownBody.toHtmlEscaped() : shownBody;
    call << appName       // app_name
         << uint(0)       // replaces_id: every notification is a new one
         << iconName      // app_icon
         << title         // summary
         << sentBody      // body
         << QStringList() // actions
         << hints         // hints
         << int(-1);      // expire_timeout: the server's default

    const QDBusPendingCall pending = m_bus.asyncCall(call);
    if (pending.isFinished()) {
        // Failed without reaching a bus (none connected): fall back, but
        // never from inside the caller's own step.
        if (pending.isError())
            QTimer::singleShot(0, this, [this, title, shownBody] {
                if (m_fallback)
                    m_fallback(title, shownBody);
            });
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, title, shownBody](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (finished->isError() && m_fallback)
                    m_fallback(title, shownBody);
            });
}
