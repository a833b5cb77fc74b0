#include "E2eSession.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>
#include <QtEndian>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString appService = QStringLiteral("local.zqb.agent");
const QString probePath = QStringLiteral("/Test");
const QString probeInterface = QStringLiteral("local.zqb.agent.Test");
const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

bool waitUntil(const std::function<bool()> &condition, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QTest::qWait(25);
    }
    return true;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString tail(const QString &path)
{
    const QByteArray bytes = readFile(path);
    return QString::fromUtf8(bytes.right(2000));
}

// Every thread's stack of a running process, as gdb prints it.
QString backtraceOf(qint64 pid)
{
    QProcess gdb;
    gdb.setProcessChannelMode(QProcess::MergedChannels);
    gdb.start(QStringLiteral("gdb"),
              {QStringLiteral("-batch"), QStringLiteral("-nx"), QStringLiteral("-p"),
               QString::number(pid), QStringLiteral("-ex"),
               QStringLiteral("thread apply all bt 30")});
    if (!gdb.waitForFinished(60000)) {
        gdb.kill();
        gdb.waitForFinished(3000);
        return QStringLiteral("(gdb did not finish)");
    }
    const QByteArray out = gdb.readAll();
    return gdb.exitStatus() == QProcess::NormalExit ? QString::fromUtf8(out.right(12000))
                                                    : QStringLiteral("(gdb did not run)");
}

QVariant unwrap(const QVariant &value)
{
    if (value.canConvert<QDBusVariant>() && value.metaType() == QMetaType::fromType<QDBusVariant>())
        return value.value<QDBusVariant>().variant();
    return value;
}

// One node of a com.canonical.dbusmenu layout: (ia{sv}av).
struct LayoutNode
{
    int id = 0;
    QVariantMap properties;
    QList<LayoutNode> children;
};

void readLayout(const QDBusArgument &argument, LayoutNode &node)
{
    argument.beginStructure();
    argument >> node.id;
    argument >> node.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        LayoutNode childNode;
        readLayout(child.variant().value<QDBusArgument>(), childNode);
        node.children << childNode;
    }
    argument.endArray();
    argument.endStructure();
}

QStringList readShortcut(const QVariant &value)
{
    QStringList keys;
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return keys;
    const QDBusArgument argument = value.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QStringList chord;
        argument >> chord;
        keys << chord;
    }
    argument.endArray();
    return keys;
}

struct IconPixmap
{
    int width = 0;
    int height = 0;
    QByteArray argb; // ARGB32 in network byte order
};

// An a(iiay) array of StatusNotifierItem icon pixmaps, read from where
// `argument` stands: the icon itself, or the one inside the tooltip.
QList<IconPixmap> readIconPixmaps(const QDBusArgument &argument)
{
    QList<IconPixmap> pixmaps;
    argument.beginArray();
    while (!argument.atEnd()) {
        IconPixmap pixmap;
        argument.beginStructure();
        argument >> pixmap.width >> pixmap.height >> pixmap.argb;
        argument.endStructure();
        pixmaps << pixmap;
    }
    argument.endArray();
    return pixmaps;
}

QImage imageFromIconPixmaps(const QVariant &value)
{
    QImage best;
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return best;
    for (const IconPixmap &pixmap : readIconPixmaps(value.value<QDBusArgument>())) {
        const int width = pixmap.width;
        const int height = pixmap.height;
        if (width <= 0 || height <= 0 || pixmap.argb.size() < qsizetype(width) * height * 4)
            continue;
        if (!best.isNull() && width * height <= best.width() * best.height())
            continue;
        QImage image(width, height, QImage::Format_ARGB32);
        const auto *pixels = reinterpret_cast<const uchar *>(pixmap.argb.constData());
        for (int y = 0; y < height; ++y) {
            auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = 0; x < width; ++x)
                line[x] = qFromBigEndian<quint32>(pixels + 4 * (y * width + x));
        }
        best = image;
    }
    return best;
}

} // namespace

E2eSession::E2eSession(Platform platform) : m_platform(platform)
{
    static std::atomic<int> sessions{0};
    m_connectionName = QStringLiteral("e2e-session-%1").arg(++sessions);
    if (qEnvironmentVariableIsSet("ZQB_E2E_KEEP"))
        m_dir.setAutoRemove(false);
}

E2eSession::~E2eSession()
{
    if (QTest::currentTestFailed()) {
        // What the app and the engine were doing, for whoever reads the failure.
        qWarning("app's standard error:\n%s", qPrintable(tail(path(QStringLiteral("app.err")))));
        qWarning("engine runs:\n%s", qPrintable(engineRuns().join(QLatin1Char('\n'))));
        qWarning("notifications:\n%s", qPrintable(notifications().join(QLatin1Char('\n'))));
        if (m_app && m_app->state() == QProcess::Running)
            qWarning("window:\n%s", qPrintable(describeWidgets()));
        if (m_secondLaunch) {
            qWarning("second launch's standard error:\n%s",
                     qPrintable(tail(path(QStringLiteral("second.err")))));
            // A launch that should have handed over and ended: where is it stuck?
            if (m_secondLaunch->state() == QProcess::Running)
                qWarning("second launch, still running:\n%s",
                         qPrintable(backtraceOf(m_secondLaunch->processId())));
        }
    }
    stop(m_secondLaunch);
    stop(m_app);
    stop(m_otherWindow);
    stop(m_tray);
    stop(m_notifications);
    stop(m_compositor);
    stop(m_xServer);
    QDBusConnection::disconnectFromBus(m_connectionName);
    stop(m_busDaemon);
    endOrphans();
}

E2eSession::Platform E2eSession::platformUnderTest()
{
    return qEnvironmentVariable("ZQB_E2E_PLATFORM") == QStringLiteral("wayland") ? Platform::Wayland
                                                                                 : Platform::X11;
}

void E2eSession::becomeSubreaper()
{
    // Engines the app started are reparented to us when the app ends, so the
    // teardown can find and end them.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
}

std::unique_ptr<QProcess> E2eSession::startProcess(const QString &program,
                                                   const QStringList &arguments,
                                                   const QString &logName)
{
    auto process = std::make_unique<QProcess>();
    process->setProgram(program);
    process->setArguments(arguments);
    process->setProcessEnvironment(m_env);
    process->setStandardInputFile(QProcess::nullDevice());
    if (!logName.isEmpty()) {
        process->setStandardOutputFile(path(logName + QStringLiteral(".out")), QIODevice::Append);
        process->setStandardErrorFile(path(logName + QStringLiteral(".err")), QIODevice::Append);
    }
    process->start();
    return process;
}

void E2eSession::stop(std::unique_ptr<QProcess> &process)
{
    if (!process)
        return;
    if (process->state() != QProcess::NotRunning) {
        process->terminate();
        if (!process->waitForFinished(3000)) {
            process->kill();
            process->waitForFinished(3000);
        }
    }
    process.reset();
}

void E2eSession::endOrphans()
{
    const QByteArray self = QByteArray::number(getpid());
    for (int round = 0; round < 20; ++round) {
        QList<pid_t> children;
        const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
        for (const QString &entry : entries) {
            bool number = false;
            const pid_t pid = entry.toInt(&number);
            if (!number)
                continue;
            const QByteArray stat = readFile(QStringLiteral("/proc/%1/stat").arg(pid));
            const qsizetype close = stat.lastIndexOf(')');
            if (close < 0)
                continue;
            const QList<QByteArray> fields = stat.mid(close + 2).split(' ');
            if (fields.size() > 1 && fields[1] == self)
                children << pid;
        }
        if (children.isEmpty())
            return;
        for (pid_t pid : children) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, nullptr, 0);
        }
    }
}

bool E2eSession::startDesktop(QString *why)
{
    auto fail = [why](const QString &reason) {
        if (why)
            *why = reason;
        return false;
    };
    if (!m_dir.isValid())
        return fail(QStringLiteral("no temporary directory"));
    QDir root(m_dir.path());
    for (const char *name : {"run", "state", "home", "config", "cache", "data", "folders"})
        root.mkpath(QString::fromLatin1(name));
    QFile::setPermissions(path(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    // A bus of our own that activates nothing: every service on it is one we started.
    const QString busConfig = path(QStringLiteral("session.conf"));
    writeFile(
        busConfig,
        QStringLiteral(
            R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)")
            .arg(path(QStringLiteral("run")))
            .toUtf8());

    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "SWAYSOCK",
          "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DESKTOP_SESSION", "QT_QPA_PLATFORMTHEME",
          "SESSION_MANAGER", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID", "ZQB_E2E_HANG_COMMAND"})
        env.remove(QString::fromLatin1(name));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("run")));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    env.insert(QStringLiteral("XDG_CACHE_HOME"), path(QStringLiteral("cache")));
    env.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    env.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    env.insert(QStringLiteral("ZQB_SIM_STATE"), stateDirectory());
    env.insert(QStringLiteral("ZQB_SIM_SPEED"), QStringLiteral("100"));
    env.insert(QStringLiteral("ZQB_E2E_FOLDERS"), path(QStringLiteral("chosen-folders.txt")));
    env.insert(QStringLiteral("ZQB_E2E_ENGINE_LOG"), path(QStringLiteral("engine-runs.log")));
    env.insert(QStringLiteral("ZQB_E2E_NOTIFY_LOG"), path(QStringLiteral("notifications.log")));
    m_env = env;

    m_busDaemon = startProcess(QStringLiteral("dbus-daemon"),
                               {QStringLiteral("--config-file=") + busConfig,
                                QStringLiteral("--nofork"), QStringLiteral("--print-address")},
                               {});
    if (!m_busDaemon->waitForStarted(5000))
        return fail(QStringLiteral("dbus-daemon did not start"));
    QElapsedTimer timer;
    timer.start();
    while (!m_busDaemon->canReadLine() && timer.elapsed() < 10000)
        m_busDaemon->waitForReadyRead(200);
    m_busAddress = QString::fromUtf8(m_busDaemon->readLine().trimmed());
    if (m_busAddress.isEmpty())
        return fail(QStringLiteral("dbus-daemon printed no address"));
    m_env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_busAddress);
    if (!bus().isConnected())
        return fail(QStringLiteral("cannot connect to the private bus: ") +
                    bus().lastError().message());

    if (!(m_platform == Platform::Wayland ? startCompositor(why) : startXServer(why)))
        return false;

    if (!restartNotificationServer(why))
        return false;

    if (!m_withTray)
        return true;
    return startTray(why);
}

bool E2eSession::startTray(QString *why)
{
    stop(m_tray);
    // Each start logs apart, so a restarted tray's log shows only its own items.
    const QString logName = QStringLiteral("tray-%1").arg(++m_trayStarts);
    m_tray = startProcess(QStringLiteral(ZQB_E2E_SNI_HOST), {}, logName);
    if (!waitForBusName(watcherService, 15000)) {
        if (why)
            *why = QStringLiteral("the tray host did not start: ") + tail(path(logName + ".err"));
        return false;
    }
    return true;
}

void E2eSession::stopTray()
{
    stop(m_tray);
}

bool E2eSession::startXServer(QString *why)
{
    auto fail = [why](const QString &reason) {
        if (why)
            *why = reason;
        return false;
    };
    // An X server on whichever display is free; it tells us which.
    int fds[2];
    if (::pipe(fds) != 0)
        return fail(QStringLiteral("pipe failed"));
    ::fcntl(fds[0], F_SETFD, FD_CLOEXEC);
    m_xServer = startProcess(QStringLiteral("Xvfb"),
                             {QStringLiteral("-displayfd"), QString::number(fds[1]),
                              QStringLiteral("-screen"), QStringLiteral("0"),
                              QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                              QStringLiteral("tcp"), QStringLiteral("-noreset")},
                             QStringLiteral("xvfb"));
    ::close(fds[1]);
    QByteArray displayNumber;
    pollfd poller{fds[0], POLLIN, 0};
    QElapsedTimer timer;
    timer.start();
    while (!displayNumber.contains('\n') && timer.elapsed() < 15000) {
        if (::poll(&poller, 1, 200) > 0) {
            char buffer[32];
            const ssize_t got = ::read(fds[0], buffer, sizeof buffer);
            if (got <= 0)
                break;
            displayNumber.append(buffer, got);
        }
    }
    ::close(fds[0]);
    if (!displayNumber.contains('\n'))
        return fail(QStringLiteral("Xvfb did not start: ") + tail(path("xvfb.err")));
    m_display = QLatin1Char(':') + QString::fromLatin1(displayNumber.trimmed());
    m_env.insert(QStringLiteral("DISPLAY"), m_display);

    m_env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return true;
}

bool E2eSession::startCompositor(QString *why)
{
    auto fail = [why](const QString &reason) {
        if (why)
            *why = reason;
        return false;
    };
    // sway with no screen and no input devices. Windows float, as on the
    // common desktops, and a window that asks for the focus with a valid
    // activation token gets it there, as it does on those desktops.
    const QString dir = path(QStringLiteral("compositor"));
    QDir().mkpath(dir);
    const QString config = QDir(dir).filePath(QStringLiteral("config"));
    writeFile(config, QByteArrayLiteral("output HEADLESS-1 resolution 1280x1024\n"
                                        "xwayland disable\n"
                                        "focus_on_window_activation smart\n"
                                        "default_border none\n"
                                        "default_floating_border none\n"
                                        "for_window [title=\".*\"] floating enable\n"));

    QProcessEnvironment env = m_env;
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), dir);
    env.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    env.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    env.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    QString program = QStringLiteral("sway");
    QStringList arguments{QStringLiteral("-c"), config};
    if (::geteuid() == 0) {
        // sway will not run as root; it runs as nobody, in a folder of its
        // own inside ours. Its clients (root) may use its sockets all the same.
        const uid_t nobody = 65534;
        if (::chown(QFile::encodeName(dir).constData(), nobody, nobody) != 0)
            return fail(QStringLiteral("cannot give the compositor its folder"));
        QFile::setPermissions(m_dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                                QFile::ExeGroup | QFile::ExeOther);
        QFile::setPermissions(config, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
        arguments = QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                QStringLiteral("--clear-groups"), QStringLiteral("--"), program} +
                    arguments;
        program = QStringLiteral("setpriv");
        env.insert(QStringLiteral("HOME"), dir);
    }
    const QProcessEnvironment saved = m_env;
    m_env = env;
    m_compositor = startProcess(program, arguments, QStringLiteral("sway"));
    m_env = saved;

    QString display;
    QString ipc;
    const bool up = waitUntil(
        [&] {
            const QStringList entries = QDir(dir).entryList(QDir::System | QDir::Files);
            for (const QString &entry : entries) {
                if (entry.startsWith(QStringLiteral("wayland-")) &&
                    !entry.endsWith(QStringLiteral(".lock")))
                    display = QDir(dir).filePath(entry);
                if (entry.startsWith(QStringLiteral("sway-ipc.")))
                    ipc = QDir(dir).filePath(entry);
            }
            return m_compositor->state() == QProcess::NotRunning ||
                   (!display.isEmpty() && !ipc.isEmpty());
        },
        15000);
    if (!up || m_compositor->state() == QProcess::NotRunning)
        return fail(QStringLiteral("sway did not start: ") + tail(path("sway.err")) +
                    tail(path("sway.out")));
    m_display = display;
    // An absolute path: the clients keep our own runtime folder.
    m_env.insert(QStringLiteral("WAYLAND_DISPLAY"), display);
    m_env.insert(QStringLiteral("SWAYSOCK"), ipc);
    m_env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    // Sanitizer builds: what Qt's Wayland platform leaves to process exit is not ours.
    // Some of it is allocated inside the EGL driver, which is unloaded before the
    // leak check runs; only a stack unwound whole at allocation time still shows
    // the Qt frames the suppressions name.
    const QString lsan = m_env.value(QStringLiteral("LSAN_OPTIONS"));
    m_env.insert(QStringLiteral("LSAN_OPTIONS"),
                 (lsan.isEmpty() ? QString() : lsan + QLatin1Char(':')) +
                     QStringLiteral("fast_unwind_on_malloc=0:suppressions=" ZQB_E2E_LSAN_WAYLAND));
    // The compositor answers once its outputs are set up.
    if (!waitUntil([this] { return !compositorTree().isEmpty(); }, 15000))
        return fail(QStringLiteral("sway does not answer on its socket: ") +
                    tail(path("sway.err")));
    return true;
}

bool E2eSession::restartNotificationServer(QString *why)
{
    if (m_notifications) {
        stop(m_notifications);
        waitUntil(
            [this] {
                return !bus()
                            .interface()
                            ->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications"))
                            .value();
            },
            10000);
    }
    // A real notification server, recording every notification it shows.
    m_notifications = startProcess(QStringLiteral("dunst"),
                                   {QStringLiteral("-config"), QStringLiteral(ZQB_E2E_DUNSTRC)},
                                   QStringLiteral("dunst"));
    if (!waitForBusName(QStringLiteral("org.freedesktop.Notifications"), 15000)) {
        if (why)
            *why = QStringLiteral("dunst did not take the notification service: ") +
                   tail(path("dunst.err"));
        return false;
    }
    return true;
}

bool E2eSession::startApp(QString *why, const QString &hangCommand, const QString &activationToken)
{
    auto fail = [why](const QString &reason) {
        if (why)
            *why = reason;
        return false;
    };
    QProcessEnvironment saved = m_env;
    if (!hangCommand.isEmpty())
        m_env.insert(QStringLiteral("ZQB_E2E_HANG_COMMAND"), hangCommand);
    // As the desktop's launchers hand it on: X11 ones as a startup id.
    if (!activationToken.isEmpty())
        m_env.insert(m_platform == Platform::X11 ? QStringLiteral("DESKTOP_STARTUP_ID")
                                                 : QStringLiteral("XDG_ACTIVATION_TOKEN"),
                     activationToken);
    m_app = startProcess(QStringLiteral(ZQB_E2E_APP), {}, QStringLiteral("app"));
    m_env = saved;
    if (!hangCommand.isEmpty())
        m_env.insert(QStringLiteral("ZQB_E2E_HANG_COMMAND"), hangCommand);

    const bool shown = waitUntil(
        [this] {
            return m_app->state() == QProcess::NotRunning ||
                   window().value(QStringLiteral("visible")).toBool();
        },
        30000);
    if (!shown || m_app->state() == QProcess::NotRunning)
        return fail(QStringLiteral("the app did not show its window: ") + tail(path("app.err")));
    return true;
}

bool E2eSession::startAppInBackground(QString *why, int refreshMs)
{
    QProcessEnvironment saved = m_env;
    if (refreshMs > 0)
        m_env.insert(QStringLiteral("ZQB_E2E_REFRESH_MS"), QString::number(refreshMs));
    m_app = startProcess(QStringLiteral(ZQB_E2E_APP), {QStringLiteral("--background")},
                         QStringLiteral("app"));
    m_env = saved;
    const bool answers = waitUntil(
        [this] {
            return m_app->state() == QProcess::NotRunning ||
                   window().value(QStringLiteral("exists")).toBool();
        },
        30000);
    if (!answers || m_app->state() == QProcess::NotRunning) {
        if (why)
            *why = QStringLiteral("the app did not start: ") + tail(path("app.err"));
        return false;
    }
    return true;
}

QProcess *E2eSession::launchAgain(const QString &activationToken, const QString &variable)
{
    const QProcessEnvironment saved = m_env;
    if (!activationToken.isEmpty())
        m_env.insert(variable, activationToken);
    stop(m_secondLaunch);
    m_secondLaunch = startProcess(QStringLiteral(ZQB_E2E_APP), {}, QStringLiteral("second"));
    m_env = saved;
    return m_secondLaunch.get();
}

QString E2eSession::stateDirectory() const
{
    return path(QStringLiteral("state"));
}

QDBusConnection E2eSession::bus() const
{
    QDBusConnection connection(m_connectionName);
    if (connection.isConnected())
        return connection;
    return QDBusConnection::connectToBus(m_busAddress, m_connectionName);
}

bool E2eSession::waitForBusName(const QString &name, int timeoutMs) const
{
    return waitUntil([&] { return bus().interface()->isServiceRegistered(name).value(); },
                     timeoutMs);
}

QVariant E2eSession::probeCall(const QString &method, const QVariantList &arguments,
                               int timeoutMs) const
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(appService, probePath, probeInterface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus().call(call, QDBus::Block, timeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return reply.arguments().constFirst();
}

QJsonArray E2eSession::widgets(QString *why) const
{
    const QVariant answer = probeCall(QStringLiteral("Widgets"));
    if (!answer.isValid() && why)
        *why = QStringLiteral("the app's probe did not answer");
    return QJsonDocument::fromJson(answer.toString().toUtf8()).array();
}

bool E2eSession::showsText(const QString &text) const
{
    const QJsonArray all = widgets();
    return std::any_of(all.begin(), all.end(), [&](const QJsonValue &widget) {
        return widget[QStringLiteral("text")].toString() == text;
    });
}

QString E2eSession::describeWidgets() const
{
    QStringList lines;
    for (const QJsonValue &widget : widgets()) {
        lines << QStringLiteral("%1 name=\"%2\" text=\"%3\"%4")
                     .arg(widget[QStringLiteral("class")].toString(),
                          widget[QStringLiteral("name")].toString(),
                          widget[QStringLiteral("text")].toString().left(80),
                          widget[QStringLiteral("enabled")].toBool() ? QString()
                                                                     : QStringLiteral(" disabled"));
    }
    return lines.join(QLatin1Char('\n'));
}

QString E2eSession::valueBeside(const QString &label) const
{
    const QJsonArray all = widgets();
    QJsonObject anchor;
    for (const QJsonValue &widget : all)
        if (widget[QStringLiteral("text")].toString() == label &&
            widget[QStringLiteral("class")].toString() == QStringLiteral("QLabel"))
            anchor = widget.toObject();
    if (anchor.isEmpty())
        return {};
    const int middle =
        anchor[QStringLiteral("y")].toInt() + anchor[QStringLiteral("height")].toInt() / 2;
    const int right = anchor[QStringLiteral("x")].toInt() + anchor[QStringLiteral("width")].toInt();
    QString value;
    int nearest = INT_MAX;
    for (const QJsonValue &widget : all) {
        if (widget[QStringLiteral("class")].toString() != QStringLiteral("QLabel"))
            continue;
        const int top = widget[QStringLiteral("y")].toInt();
        const int x = widget[QStringLiteral("x")].toInt();
        if (middle < top || middle > top + widget[QStringLiteral("height")].toInt() || x < right)
            continue;
        if (x - right < nearest) {
            nearest = x - right;
            value = widget[QStringLiteral("text")].toString();
        }
    }
    return value;
}

bool E2eSession::canClick(const QString &name) const
{
    const QJsonArray all = widgets();
    return std::any_of(all.begin(), all.end(), [&](const QJsonValue &widget) {
        const QString type = widget[QStringLiteral("class")].toString();
        const bool button =
            type.endsWith(QStringLiteral("Button")) || type == QStringLiteral("QCheckBox");
        return button && widget[QStringLiteral("enabled")].toBool() &&
               (widget[QStringLiteral("name")].toString() == name ||
                widget[QStringLiteral("text")].toString() == name);
    });
}

bool E2eSession::click(const QString &name) const
{
    return probeCall(QStringLiteral("Click"), {name}).toBool();
}

bool E2eSession::type(const QString &field, const QString &text) const
{
    return probeCall(QStringLiteral("Type"), {field, text}).toBool();
}

QJsonObject E2eSession::window() const
{
    const QVariant answer = probeCall(QStringLiteral("Window"), {}, 2000);
    return QJsonDocument::fromJson(answer.toString().toUtf8()).object();
}

int E2eSession::paints() const
{
    return probeCall(QStringLiteral("Paints")).toInt();
}

bool E2eSession::closeWindow() const
{
    return probeCall(QStringLiteral("CloseWindow")).toBool();
}

qint64 E2eSession::probeRoundTrip() const
{
    QElapsedTimer timer;
    timer.start();
    if (!probeCall(QStringLiteral("Window"), {}, 10000).isValid())
        return -1;
    return timer.elapsed();
}

QString E2eSession::trayItem() const
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherService, QStringLiteral("/StatusNotifierWatcher"),
                                       propertiesInterface, QStringLiteral("Get"));
    call.setArguments({watcherService, QStringLiteral("RegisteredStatusNotifierItems")});
    const QDBusMessage reply = bus().call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QStringList items = unwrap(reply.arguments().constFirst()).toStringList();
    return items.size() == 1 ? items.constFirst() : QString();
}

QVariantMap E2eSession::trayProperties() const
{
    const QString item = trayItem();
    const qsizetype slash = item.indexOf(QLatin1Char('/'));
    if (slash < 0)
        return {};
    QDBusMessage call = QDBusMessage::createMethodCall(
        item.left(slash), item.mid(slash), propertiesInterface, QStringLiteral("GetAll"));
    call.setArguments({QStringLiteral("org.kde.StatusNotifierItem")});
    const QDBusMessage reply = bus().call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QVariant first = reply.arguments().constFirst();
    QVariantMap properties = first.metaType() == QMetaType::fromType<QDBusArgument>()
                                 ? qdbus_cast<QVariantMap>(first.value<QDBusArgument>())
                                 : first.toMap();
    properties.insert(QStringLiteral("_service"), item.left(slash));
    return properties;
}

QImage E2eSession::trayIcon() const
{
    const QVariantMap properties = trayProperties();
    QImage image = imageFromIconPixmaps(properties.value(QStringLiteral("IconPixmap")));
    if (image.isNull()) {
        // Some trays get the icon as a file the item writes for them.
        const QString name = properties.value(QStringLiteral("IconName")).toString();
        if (name.startsWith(QLatin1Char('/')))
            image.load(name);
    }
    return image;
}

QString E2eSession::trayToolTip() const
{
    // (s a(iiay) s s): icon name, icon pixmaps, title, text.
    const QVariant value = trayProperties().value(QStringLiteral("ToolTip"));
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const QDBusArgument argument = value.value<QDBusArgument>();
    QString iconName;
    QString title;
    QString text;
    argument.beginStructure();
    argument >> iconName;
    readIconPixmaps(argument); // the tooltip's own icon: not what is asked here
    argument >> title >> text;
    argument.endStructure();
    return text.isEmpty() ? title : title + QLatin1Char('\n') + text;
}

QList<E2eSession::MenuEntry> E2eSession::trayMenu(QString *why) const
{
    const QVariantMap properties = trayProperties();
    const QString service = properties.value(QStringLiteral("_service")).toString();
    const QVariant menuValue = properties.value(QStringLiteral("Menu"));
    const QString menuPath = menuValue.value<QDBusObjectPath>().path();
    if (service.isEmpty() || menuPath.isEmpty()) {
        if (why)
            *why = QStringLiteral("the tray item has no menu");
        return {};
    }
    const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
    QDBusMessage aboutToShow = QDBusMessage::createMethodCall(service, menuPath, menuInterface,
                                                              QStringLiteral("AboutToShow"));
    aboutToShow.setArguments({0});
    bus().call(aboutToShow, QDBus::Block, 5000);

    QDBusMessage call = QDBusMessage::createMethodCall(service, menuPath, menuInterface,
                                                       QStringLiteral("GetLayout"));
    call.setArguments({0, -1, QStringList()});
    const QDBusMessage reply = bus().call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() < 2) {
        if (why)
            *why = QStringLiteral("GetLayout failed: ") + reply.errorMessage();
        return {};
    }
    LayoutNode root;
    readLayout(reply.arguments().at(1).value<QDBusArgument>(), root);
    QList<MenuEntry> entries;
    for (const LayoutNode &node : std::as_const(root.children)) {
        MenuEntry entry;
        entry.id = node.id;
        entry.label = node.properties.value(QStringLiteral("label")).toString();
        entry.separator =
            node.properties.value(QStringLiteral("type")).toString() == QStringLiteral("separator");
        entry.enabled = node.properties.value(QStringLiteral("enabled"), true).toBool();
        entry.visible = node.properties.value(QStringLiteral("visible"), true).toBool();
        entry.shortcut = readShortcut(node.properties.value(QStringLiteral("shortcut")));
        entries << entry;
    }
    return entries;
}

bool E2eSession::triggerTrayEntry(const QString &label) const
{
    const QVariantMap properties = trayProperties();
    const QString service = properties.value(QStringLiteral("_service")).toString();
    const QString menuPath =
        properties.value(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    for (const MenuEntry &entry : trayMenu()) {
        if (entry.label != label)
            continue;
        QDBusMessage event = QDBusMessage::createMethodCall(
            service, menuPath, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("Event"));
        event.setArguments({entry.id, QStringLiteral("clicked"),
                            QVariant::fromValue(QDBusVariant(QVariant(0))), uint(0)});
        // Not waited for: "Quit" may end the app before it answers.
        return bus().send(event);
    }
    return false;
}

QStringList E2eSession::notifications() const
{
    const QString text = QString::fromUtf8(readFile(path(QStringLiteral("notifications.log"))));
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList E2eSession::engineRuns() const
{
    const QString text = QString::fromUtf8(readFile(path(QStringLiteral("engine-runs.log"))));
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool E2eSession::screenshot(const QString &file) const
{
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (m_platform == Platform::Wayland) {
        // Tall enough to show the whole window down to the connection details.
        QProcess resize;
        resize.setProcessEnvironment(m_env);
        resize.start(QStringLiteral("swaymsg"),
                     {QStringLiteral("[title=\"^ZQB Agent$\"]"), QStringLiteral("resize"),
                      QStringLiteral("set"), QStringLiteral("760"), QStringLiteral("1020")});
        resize.waitForFinished(10000);
        QTest::qWait(500); // let the window redraw at its new size
        QProcess grim;
        grim.setProcessEnvironment(m_env);
        grim.start(QStringLiteral("grim"), {file});
        return grim.waitForFinished(20000) && grim.exitStatus() == QProcess::NormalExit &&
               grim.exitCode() == 0;
    }
    // Tall enough to show the whole window down to the connection details.
    QProcess resize;
    resize.setProcessEnvironment(m_env);
    resize.start(QStringLiteral("xdotool"),
                 {QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^ZQB Agent$"),
                  QStringLiteral("windowsize"), QStringLiteral("760"), QStringLiteral("1020")});
    resize.waitForFinished(10000);
    QTest::qWait(300); // let the window redraw at its new size
    QProcess import;
    import.setProcessEnvironment(m_env);
    import.start(QStringLiteral("import"),
                 {QStringLiteral("-display"), m_display, QStringLiteral("-window"),
                  QStringLiteral("root"), file});
    return import.waitForFinished(20000) && import.exitStatus() == QProcess::NormalExit &&
           import.exitCode() == 0;
}

QByteArray E2eSession::runEngine(const QStringList &arguments, const QByteArray &input,
                                 int *exitCode) const
{
    QProcess engine;
    engine.setProcessEnvironment(m_env);
    engine.start(QStringLiteral(ZQB_E2E_ENGINE_SIM),
                 arguments + QStringList{QStringLiteral("--state"), stateDirectory()});
    engine.waitForStarted(10000);
    engine.write(input);
    engine.closeWriteChannel();
    engine.waitForFinished(30000);
    if (exitCode)
        *exitCode = engine.exitStatus() == QProcess::NormalExit ? engine.exitCode() : -1;
    return engine.readAllStandardOutput();
}

QJsonArray E2eSession::compositorTree() const
{
    if (m_platform != Platform::Wayland)
        return {};
    QProcess query;
    query.setProcessEnvironment(m_env);
    query.start(QStringLiteral("swaymsg"),
                {QStringLiteral("-r"), QStringLiteral("-t"), QStringLiteral("get_tree")});
    if (!query.waitForFinished(10000) || query.exitCode() != 0)
        return {};
    // Every window, tiled or floating, as one flat list.
    QJsonArray windows;
    std::function<void(const QJsonObject &)> collect = [&](const QJsonObject &node) {
        if (node.contains(QStringLiteral("pid")))
            windows.append(node);
        for (const char *key : {"nodes", "floating_nodes"})
            for (const QJsonValue &child : node.value(QLatin1String(key)).toArray())
                collect(child.toObject());
    };
    const QJsonObject root = QJsonDocument::fromJson(query.readAllStandardOutput()).object();
    if (root.isEmpty())
        return {};
    collect(root);
    // The root itself marks a compositor that answered, with or without windows.
    windows.prepend(QJsonObject{{QStringLiteral("root"), true}});
    return windows;
}

QJsonObject E2eSession::compositorWindow(const QString &title) const
{
    for (const QJsonValue &node : compositorTree())
        if (node[QStringLiteral("name")].toString() == title)
            return node.toObject();
    return {};
}

QString E2eSession::focusedWindowTitle() const
{
    for (const QJsonValue &node : compositorTree())
        if (node[QStringLiteral("focused")].toBool())
            return node[QStringLiteral("name")].toString();
    return {};
}

QString E2eSession::newActivationToken() const
{
    QProcess helper;
    helper.setProcessEnvironment(m_env);
    helper.start(QStringLiteral(ZQB_E2E_WAYLAND_HELPER), {QStringLiteral("token")});
    if (!helper.waitForFinished(10000) || helper.exitCode() != 0)
        return {};
    return QString::fromUtf8(helper.readAllStandardOutput().trimmed());
}

bool E2eSession::showOtherWindow(const QString &title, QString *why)
{
    m_otherWindow = startProcess(QStringLiteral(ZQB_E2E_WAYLAND_HELPER),
                                 {QStringLiteral("window"), title}, QStringLiteral("other"));
    const bool shown = waitUntil(
        [&] {
            return m_otherWindow->state() == QProcess::NotRunning || focusedWindowTitle() == title;
        },
        15000);
    if (!shown || m_otherWindow->state() == QProcess::NotRunning) {
        if (why)
            *why = QStringLiteral("the other window did not take the focus: ") +
                   tail(path("other.err"));
        return false;
    }
    return true;
}

QString E2eSession::prepareFolderToProtect()
{
    const QString folder = path(QStringLiteral("folders/Documents"));
    if (!QDir().mkpath(folder))
        return {};
    for (int i = 0; i < 5; ++i) {
        QFile file(folder + QStringLiteral("/note-%1.txt").arg(i));
        if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(1000 + i, 'z')) != 1000 + i)
            return {};
    }
    QFile chosen(path(QStringLiteral("chosen-folders.txt")));
    if (!chosen.open(QIODevice::WriteOnly) || chosen.write(folder.toUtf8() + '\n') < 0)
        return {};
    return folder;
}
