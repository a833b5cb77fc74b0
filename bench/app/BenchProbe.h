#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QObject>
#include <QString>

#include <functional>

class QTimer;

// Measures the running app from inside, for the bench-only build of the app.
// Writes "key value" lines to the file named by ZQB_BENCH_OUT:
//   state_on_screen_ns  CLOCK_MONOTONIC when a widget whose text is
//                       ZQB_BENCH_TITLE was first painted (and flushed)
//   main_ns, qapp_ns, launched_ns   start-up milestones (see bench_app_main.cpp)
//   first_refresh_ns    when the first status document was applied
//   pss_first_kib       PSS five seconds after the first refresh
//   pss_after_N_kib     PSS after N refreshes driven back to back
//   cpu_per_refresh_us, main_cpu_per_refresh_us, wall_per_refresh_us
//   max_gap_us          longest time between two ticks of a 1 ms timer on
//                       the main thread during 200 refreshes (wall clock)
//   max_stall_us        the same gaps less the time the thread waited for a
//                       CPU (schedstat run delay): what the app itself held
//                       the loop for, by computing or blocking
//   max_busy_us         the most CPU the main thread used between two ticks:
//                       work that held the loop, whatever the machine did
//   stall_over_4ms, stall_over_8ms, idle_max_gap_us, idle_max_stall_us,
//   idle_max_busy_us
// then quits the app. ZQB_BENCH_REFRESHES (default 1000) sets the size of the
// two memory passes; the CPU and stall passes are 200 refreshes each.
class BenchProbe : public QObject
{
    Q_OBJECT
public:
    // `refresh` starts one refresh; `statusSource` emits `statusSignal`
    // (SIGNAL(...) text) when a refresh has applied its document.
    BenchProbe(std::function<void()> refresh, QObject *statusSource, const char *statusSignal);

    static bool enabled();
    // Start-up milestones taken before the probe exists; written when it is made.
    static void mark(const char *name);
    static qint64 monotonicNs();
    // Pss, Pss_Anon and Private_* of /proc/self/smaps_rollup, in KiB.
    static qint64 rollupKib(const QByteArray &field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void customEvent(QEvent *event) override;

private slots:
    void statusApplied();
    void probeTick();

private:
    struct Pass
    {
        QString name;
        int count = 0;
        std::function<void()> begin;
        std::function<void()> end;
    };

    void record(const QString &key, qint64 value);
    void startPasses();
    void runPass(int index);
    void nextRefresh();
    void finish();
    void recordMemory(const QString &when);
    void startProbe();
    std::pair<qint64, qint64> schedstat() const; // on-CPU and run-delay ns

    std::function<void()> m_refresh;
    QFile m_out;
    QString m_title;
    bool m_titleSeen = false;
    static constexpr QEvent::Type frameFlushedEvent = QEvent::Type(QEvent::User + 1);
    bool m_firstSeen = false;
    int m_refreshTarget = 1000;

    QList<Pass> m_passes;
    int m_pass = -1;
    int m_left = 0;
    QTimer *m_watchdog = nullptr;

    QTimer *m_probe = nullptr;
    QElapsedTimer m_sinceTick;
    int m_schedstat = -1;
    qint64 m_lastCpuNs = 0;
    qint64 m_lastDelayNs = 0;
    qint64 m_maxBusyNs = 0;
    qint64 m_maxGapNs = 0;
    qint64 m_maxStallNs = 0;
    int m_over4 = 0;
    int m_over8 = 0;

    qint64 m_cpuStartUs = 0;
    qint64 m_mainCpuStartUs = 0;
    qint64 m_wallStartNs = 0;
};
