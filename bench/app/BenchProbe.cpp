#include "BenchProbe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QVariant>
#include <QWidget>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/resource.h>
#include <time.h>
#include <tuple>
#include <unistd.h>

namespace {

constexpr int cpuPassRefreshes = 200;
constexpr int stallPassRefreshes = 200;
constexpr int settleMs = 1000;
constexpr int refreshTimeoutMs = 10000;

QList<std::pair<QString, qint64>> &marks()
{
    static QList<std::pair<QString, qint64>> list;
    return list;
}

qint64 rusageUs(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    return qint64(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000000 +
           usage.ru_utime.tv_usec + usage.ru_stime.tv_usec;
}

} // namespace

BenchProbe::BenchProbe(std::function<void()> refresh, QObject *statusSource,
                       const char *statusSignal)
    : m_refresh(std::move(refresh)), m_out(qEnvironmentVariable("ZQB_BENCH_OUT")),
      m_title(qEnvironmentVariable("ZQB_BENCH_TITLE"))
{
    m_out.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
    for (const auto &[name, ns] : std::as_const(marks()))
        record(name, ns);
    bool ok = false;
    const int target = qEnvironmentVariableIntValue("ZQB_BENCH_REFRESHES", &ok);
    if (ok && target > 0)
        m_refreshTarget = target;

    connect(statusSource, statusSignal, this, SLOT(statusApplied()));
    if (!m_title.isEmpty())
        qApp->installEventFilter(this);

    m_watchdog = new QTimer(this);
    m_watchdog->setSingleShot(true);
    m_watchdog->setInterval(refreshTimeoutMs);
    connect(m_watchdog, &QTimer::timeout, this, [this] {
        record(QStringLiteral("error_refresh_timeout_in_pass"), m_pass);
        finish();
    });

    m_schedstat = ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);

    m_probe = new QTimer(this);
    m_probe->setTimerType(Qt::PreciseTimer);
    m_probe->setInterval(1);
    connect(m_probe, &QTimer::timeout, this, &BenchProbe::probeTick);
}

void BenchProbe::mark(const char *name)
{
    marks().append({QString::fromLatin1(name) + QStringLiteral("_ns"), monotonicNs()});
}

bool BenchProbe::enabled()
{
    return !qEnvironmentVariableIsEmpty("ZQB_BENCH_OUT");
}

qint64 BenchProbe::monotonicNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

qint64 BenchProbe::rollupKib(const QByteArray &field)
{
    QFile rollup(QStringLiteral("/proc/self/smaps_rollup"));
    if (!rollup.open(QIODevice::ReadOnly | QIODevice::Text))
        return -1;
    // A /proc file reports size 0, so read it whole rather than line by line.
    qint64 sum = 0;
    bool found = false;
    const QList<QByteArray> lines = rollup.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0 || !line.left(colon).startsWith(field))
            continue;
        // "Private" sums Private_Clean and Private_Dirty; the others are exact.
        if (field != "Private" && colon != field.size())
            continue;
        sum += line.mid(colon + 1).trimmed().split(' ').value(0).toLongLong();
        found = true;
    }
    return found ? sum : -1;
}

void BenchProbe::recordMemory(const QString &when)
{
    record(QStringLiteral("pss_%1_kib").arg(when), rollupKib("Pss"));
    record(QStringLiteral("pss_anon_%1_kib").arg(when), rollupKib("Pss_Anon"));
    record(QStringLiteral("private_%1_kib").arg(when), rollupKib("Private"));
}

std::pair<qint64, qint64> BenchProbe::schedstat() const
{
    // "<on-CPU ns> <waiting-for-a-CPU ns> <slices>" of this (the main) thread.
    char text[96];
    const ssize_t n = m_schedstat >= 0 ? pread(m_schedstat, text, sizeof text - 1, 0) : -1;
    if (n <= 0)
        return {0, 0};
    text[n] = '\0';
    char *end = nullptr;
    const qint64 onCpu = std::strtoll(text, &end, 10);
    return {onCpu, std::strtoll(end, nullptr, 10)};
}

void BenchProbe::startProbe()
{
    m_maxGapNs = m_maxStallNs = m_maxBusyNs = 0;
    m_over4 = m_over8 = 0;
    std::tie(m_lastCpuNs, m_lastDelayNs) = schedstat();
    m_sinceTick.start();
    m_probe->start();
}

void BenchProbe::record(const QString &key, qint64 value)
{
    m_out.write(QStringLiteral("%1 %2\n").arg(key).arg(value).toUtf8());
    m_out.flush();
}

bool BenchProbe::eventFilter(QObject *watched, QEvent *event)
{
    // The title counts as on screen once the paint that drew it has been
    // flushed: the posted event is handled after the repaint that is under
    // way, and ahead of anything the app queued during that repaint (at high
    // priority), so work the app leaves for after its frame is not counted.
    if (!m_titleSeen && event->type() == QEvent::Paint && watched->isWidgetType() &&
        watched->property("text").toString() == m_title) {
        m_titleSeen = true;
        qApp->removeEventFilter(this);
        QCoreApplication::postEvent(this, new QEvent(frameFlushedEvent), Qt::HighEventPriority);
    }
    return QObject::eventFilter(watched, event);
}

void BenchProbe::customEvent(QEvent *event)
{
    if (event->type() == frameFlushedEvent)
        record(QStringLiteral("state_on_screen_ns"), monotonicNs());
}

void BenchProbe::statusApplied()
{
    if (!m_firstSeen) {
        m_firstSeen = true;
        record(QStringLiteral("first_refresh_ns"), monotonicNs());
        QTimer::singleShot(5000, this, [this] {
            recordMemory(QStringLiteral("first"));
            startPasses();
        });
        return;
    }
    if (m_pass < 0 || m_pass >= m_passes.size() || m_left <= 0)
        return; // the window's own periodic refresh, outside a pass
    m_watchdog->stop();
    if (--m_left > 0) {
        // Queued so the view's coalesced render of this refresh runs first.
        QTimer::singleShot(0, this, &BenchProbe::nextRefresh);
        return;
    }
    const Pass &pass = m_passes.at(m_pass);
    if (pass.end)
        pass.end();
    QTimer::singleShot(settleMs, this, [this] { runPass(m_pass + 1); });
}

void BenchProbe::nextRefresh()
{
    m_watchdog->start();
    m_refresh();
}

void BenchProbe::startPasses()
{
    const int n = m_refreshTarget;
    m_passes = {
        {QStringLiteral("memory"),
         n,
         {},
         [this, n] {
             QTimer::singleShot(settleMs / 2, this,
                                [this, n] { recordMemory(QStringLiteral("after_%1").arg(n)); });
         }},
        {QStringLiteral("memory"),
         n,
         {},
         [this, n] {
             QTimer::singleShot(settleMs / 2, this,
                                [this, n] { recordMemory(QStringLiteral("after_%1").arg(2 * n)); });
         }},
        {QStringLiteral("cpu"), cpuPassRefreshes,
         [this] {
             m_cpuStartUs = rusageUs(RUSAGE_SELF);
             m_mainCpuStartUs = rusageUs(RUSAGE_THREAD);
             m_wallStartNs = monotonicNs();
         },
         [this] {
             record(QStringLiteral("cpu_per_refresh_us"),
                    (rusageUs(RUSAGE_SELF) - m_cpuStartUs) / cpuPassRefreshes);
             record(QStringLiteral("main_cpu_per_refresh_us"),
                    (rusageUs(RUSAGE_THREAD) - m_mainCpuStartUs) / cpuPassRefreshes);
             record(QStringLiteral("wall_per_refresh_us"),
                    (monotonicNs() - m_wallStartNs) / 1000 / cpuPassRefreshes);
         }},
        // The probe alone first: how long this machine stalls an idle loop.
        {QStringLiteral("idle-stall"), 0, [this] { startProbe(); },
         [this] {
             m_probe->stop();
             record(QStringLiteral("idle_max_gap_us"), m_maxGapNs / 1000);
             record(QStringLiteral("idle_max_stall_us"), m_maxStallNs / 1000);
             record(QStringLiteral("idle_max_busy_us"), m_maxBusyNs / 1000);
         }},
        {QStringLiteral("stall"), stallPassRefreshes, [this] { startProbe(); },
         [this] {
             m_probe->stop();
             record(QStringLiteral("max_gap_us"), m_maxGapNs / 1000);
             record(QStringLiteral("max_stall_us"), m_maxStallNs / 1000);
             record(QStringLiteral("max_busy_us"), m_maxBusyNs / 1000);
             record(QStringLiteral("stall_over_4ms"), m_over4);
             record(QStringLiteral("stall_over_8ms"), m_over8);
         }},
    };
    runPass(0);
}

void BenchProbe::runPass(int index)
{
    m_pass = index;
    if (index >= m_passes.size()) {
        finish();
        return;
    }
    const Pass &pass = m_passes.at(index);
    if (pass.begin)
        pass.begin();
    if (pass.count == 0) {
        QTimer::singleShot(settleMs, this, [this, index] {
            if (m_passes.at(index).end)
                m_passes.at(index).end();
            runPass(index + 1);
        });
        return;
    }
    m_left = pass.count;
    nextRefresh();
}

void BenchProbe::probeTick()
{
    const qint64 gap = m_sinceTick.nsecsElapsed();
    m_sinceTick.start();
    const auto [cpu, delay] = schedstat();
    const qint64 stall = gap - (delay - m_lastDelayNs);
    m_maxBusyNs = qMax(m_maxBusyNs, cpu - m_lastCpuNs);
    m_lastCpuNs = cpu;
    m_lastDelayNs = delay;
    m_maxGapNs = qMax(m_maxGapNs, gap);
    m_maxStallNs = qMax(m_maxStallNs, stall);
    if (stall > 4000000)
        ++m_over4;
    if (stall > 8000000)
        ++m_over8;
}

void BenchProbe::finish()
{
    if (m_schedstat >= 0)
        ::close(m_schedstat);
    m_schedstat = -1;
    record(QStringLiteral("done"), 1);
    m_out.close();
    QCoreApplication::exit(0);
}
