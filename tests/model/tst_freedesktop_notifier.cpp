// The desktop notifier against a stand-in notification service on a private
// session bus, and its fallback when no service answers.

#include "FreedesktopNotifier.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusArgument>
#include <QDBusContext>
#include <QImage>
#include <QDBusMessage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

struct ReceivedCall
{
    QString appName;
    uint replacesId = 0;
    QString appIcon;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int expireTimeout = 0;
};

} // namespace

// Answers Notify like a notification server: a new id for each call.
class StandInNotifications : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    QList<ReceivedCall> calls;
    bool failNext = false;
    QStringList capabilities;

public slots:
    QStringList GetCapabilities() { return capabilities; }

    uint Notify(const QString &appName, uint replacesId, const QString &appIcon,
                const QString &summary, const QString &body, const QStringList &actions,
                const QVariantMap &hints, int expireTimeout)
    {
        if (failNext) {
            failNext = false;
            sendErrorReply(QDBusError::Failed, QStringLiteral("refused"));
            return 0;
        }
        calls.append({appName, replacesId, appIcon, summary, body, actions, hints, expireTimeout});
        return uint(calls.size());
    }
};

class FreedesktopNotifierTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void postsNotifyCall();
    void cutsBodyToThreeHundredUserPerceivedCharacters();
    void everyPostIsANewNotification();
    void errorReplyUsesFallback();
    void noServiceOnTheBusUsesFallback();
    void noBusAtAllUsesFallback();
    void requestAuthorizationAsksNothing();
    void theIconPictureTravelsWithEachNotification();
    void withoutAPictureOnlyTheIconNameIsSent();
    void engineTextIsNeverMarkupOnAServerThatReadsMarkup();
    void engineTextIsSentAsItIsToAServerWithoutMarkup();

private:
    std::unique_ptr<StandInNotifications> m_service;
    QList<QPair<QString, QString>> m_fallbacks;
    std::unique_ptr<FreedesktopNotifier> makeNotifier(const QDBusConnection &bus);
};

static const QString serviceConnection = QStringLiteral("stand-in-notifications");

void FreedesktopNotifierTest::initTestCase()
{
    QVERIFY2(QDBusConnection::sessionBus().isConnected(), "needs a private session bus");
    // The service lives on its own connection so calls really cross the bus.
    QDBusConnection bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, serviceConnection);
    QVERIFY(bus.isConnected());
    m_service = std::make_unique<StandInNotifications>();
    QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), m_service.get(),
                               QDBusConnection::ExportAllSlots));
    QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
}

void FreedesktopNotifierTest::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(serviceConnection);
}

std::unique_ptr<FreedesktopNotifier>
FreedesktopNotifierTest::makeNotifier(const QDBusConnection &bus)
{
    m_fallbacks.clear();
    return std::make_unique<FreedesktopNotifier>(bus,
                                                 [this](const QString &title, const QString &body) {
                                                     m_fallbacks.append({title, body});
                                                 });
}

void FreedesktopNotifierTest::postsNotifyCall()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("ZQB backup Recovery Ready"), QStringLiteral("Verified."));
    QTRY_COMPARE(m_service->calls.size(), 1);
    const ReceivedCall &call = m_service->calls.first();
    QCOMPARE(call.appName, QStringLiteral("ZQB Agent"));
    QCOMPARE(call.replacesId, 0u);
    QCOMPARE(call.appIcon, QStringLiteral("zqb-agent"));
    QCOMPARE(call.summary, QStringLiteral("ZQB backup Recovery Ready"));
    QCOMPARE(call.body, QStringLiteral("Verified."));
    QVERIFY(call.actions.isEmpty());
    QCOMPARE(call.hints.value(QStringLiteral("sound-name")).toString(),
             QStringLiteral("message-new-instant"));
    QCOMPARE(call.hints.value(QStringLiteral("desktop-entry")).toString(),
             QStringLiteral("zqb-agent"));
    QCOMPARE(call.expireTimeout, -1);
    QTest::qWait(50);
    QVERIFY(m_fallbacks.isEmpty());
}

void FreedesktopNotifierTest::cutsBodyToThreeHundredUserPerceivedCharacters()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    const QString cluster = QStringLiteral("o\u0308"); // one character, two code points
    notifier->post(QStringLiteral("ZQB backup completed"), cluster.repeated(400));
    QTRY_COMPARE(m_service->calls.size(), 1);
    QCOMPARE(m_service->calls.first().body, cluster.repeated(300));
}

void FreedesktopNotifierTest::everyPostIsANewNotification()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("same"), QStringLiteral("same"));
    notifier->post(QStringLiteral("same"), QStringLiteral("same"));
    QTRY_COMPARE(m_service->calls.size(), 2);
    QCOMPARE(m_service->calls[0].replacesId, 0u);
    QCOMPARE(m_service->calls[1].replacesId, 0u);
}

void FreedesktopNotifierTest::errorReplyUsesFallback()
{
    m_service->calls.clear();
    m_service->failNext = true;
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("Title"), QStringLiteral("Body"));
    QTRY_COMPARE(m_fallbacks.size(), 1);
    QCOMPARE(m_fallbacks.first().first, QStringLiteral("Title"));
    QCOMPARE(m_fallbacks.first().second, QStringLiteral("Body"));
}

void FreedesktopNotifierTest::noServiceOnTheBusUsesFallback()
{
    // A bus of our own with no service at all, and nothing it could start.
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile config(dir.filePath(QStringLiteral("bus.conf")));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(QStringLiteral(
                     "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
                     "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                     "<busconfig><type>session</type><listen>unix:dir=%1</listen>"
                     "<auth>EXTERNAL</auth><policy context=\"default\">"
                     "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                     "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                     .arg(dir.path())
                     .toUtf8());
    config.close();
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"),
                 {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                  QStringLiteral("--config-file=") + config.fileName()});
    QVERIFY(daemon.waitForStarted());
    QTRY_VERIFY(daemon.canReadLine());
    const QString address = QString::fromUtf8(daemon.readLine()).trimmed();

    {
        QDBusConnection bare = QDBusConnection::connectToBus(address, QStringLiteral("bare"));
        QVERIFY(bare.isConnected());
        QVERIFY(!bare.interface()->isServiceRegistered(
            QStringLiteral("org.freedesktop.Notifications")));
        auto notifier = makeNotifier(bare);
        notifier->post(QStringLiteral("Title"), QStringLiteral("x").repeated(400));
        QTRY_COMPARE(m_fallbacks.size(), 1);
        QCOMPARE(m_fallbacks.first().first, QStringLiteral("Title"));
        QCOMPARE(m_fallbacks.first().second, QStringLiteral("x").repeated(300));
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("bare"));
    daemon.terminate();
    QVERIFY(daemon.waitForFinished(5000));
}

void FreedesktopNotifierTest::noBusAtAllUsesFallback()
{
    QDBusConnection none = QDBusConnection::connectToBus(
        QStringLiteral("unix:path=/nonexistent/zqb-test-bus"), QStringLiteral("none"));
    QVERIFY(!none.isConnected());
    auto notifier = makeNotifier(none);
    notifier->post(QStringLiteral("Title"), QStringLiteral("Body"));
    QTRY_COMPARE(m_fallbacks.size(), 1);
    QDBusConnection::disconnectFromBus(QStringLiteral("none"));
}

void FreedesktopNotifierTest::requestAuthorizationAsksNothing()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->requestAuthorization();
    QTest::qWait(100);
    QVERIFY(m_service->calls.isEmpty());
    QVERIFY(m_fallbacks.isEmpty());
}

void FreedesktopNotifierTest::engineTextIsNeverMarkupOnAServerThatReadsMarkup()
{
    m_service->calls.clear();
    m_service->capabilities = {QStringLiteral("body"), QStringLiteral("body-markup")};
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("ZQB backup completed"), QStringLiteral("<b>2.0</b> &amp; <i>x"));
    QTRY_COMPARE(m_service->calls.size(), 1);
    QCOMPARE(m_service->calls.first().body,
             QStringLiteral("&lt;b&gt;2.0&lt;/b&gt; &amp;amp; &lt;i&gt;x"));
    m_service->capabilities.clear();
}

void FreedesktopNotifierTest::engineTextIsSentAsItIsToAServerWithoutMarkup()
{
    m_service->calls.clear();
    m_service->capabilities = {QStringLiteral("body")};
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("ZQB backup completed"), QStringLiteral("<b>2.0</b> &amp;"));
    QTRY_COMPARE(m_service->calls.size(), 1);
    QCOMPARE(m_service->calls.first().body, QStringLiteral("<b>2.0</b> &amp;"));
    m_service->capabilities.clear();
}


// The hint as a server reads it: (iiibiiay).
static QImage imageFromHint(const QVariant &hint)
{
    if (hint.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const QDBusArgument argument = hint.value<QDBusArgument>();
    int width = 0, height = 0, stride = 0, bitsPerSample = 0, channels = 0;
    bool alpha = false;
    QByteArray pixels;
    argument.beginStructure();
    argument >> width >> height >> stride >> alpha >> bitsPerSample >> channels >> pixels;
    argument.endStructure();
    if (!alpha || bitsPerSample != 8 || channels != 4 || pixels.size() < stride * height)
        return {};
    return QImage(reinterpret_cast<const uchar *>(pixels.constData()), width, height, stride,
                  QImage::Format_RGBA8888)
        .copy();
}

void FreedesktopNotifierTest::theIconPictureTravelsWithEachNotification()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    QImage picture(48, 40, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 48; ++x)
            picture.setPixelColor(x, y, QColor(0x34, 0xc7, 0x59));
    notifier->setIconImage(picture);
    notifier->post(QStringLiteral("ZQB backup Recovery Ready"), QStringLiteral("Verified."));
    notifier->post(QStringLiteral("ZQB backup completed"), QStringLiteral("Again."));
    QTRY_COMPARE(m_service->calls.size(), 2);
    for (const ReceivedCall &call : std::as_const(m_service->calls)) {
        // The name and the desktop entry still go along for servers that look them up.
        QCOMPARE(call.appIcon, QStringLiteral("zqb-agent"));
        QCOMPARE(call.hints.value(QStringLiteral("desktop-entry")).toString(),
                 QStringLiteral("zqb-agent"));
        const QImage received = imageFromHint(call.hints.value(QStringLiteral("image-data")));
        QCOMPARE(received.size(), QSize(48, 40));
        QCOMPARE(received.pixelColor(10, 5), QColor(0x34, 0xc7, 0x59));
        QCOMPARE(received.pixelColor(10, 30).alpha(), 0);
    }
}

void FreedesktopNotifierTest::withoutAPictureOnlyTheIconNameIsSent()
{
    m_service->calls.clear();
    auto notifier = makeNotifier(QDBusConnection::sessionBus());
    notifier->post(QStringLiteral("ZQB backup completed"), QStringLiteral("Done."));
    QTRY_COMPARE(m_service->calls.size(), 1);
    QVERIFY(!m_service->calls.first().hints.contains(QStringLiteral("image-data")));
    QCOMPARE(m_service->calls.first().appIcon, QStringLiteral("zqb-agent"));
}

QTEST_GUILESS_MAIN(FreedesktopNotifierTest)
#include "tst_freedesktop_notifier.moc"
