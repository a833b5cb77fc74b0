// An engine whose status read hangs: the periodic refresh never holds more
// than one status read, the runner ends it after its limit, the person's own
// commands still run meanwhile, and the app recovers by itself once the engine
// answers again.

#include "ModelTestSupport.h"
#include "PeriodicRefresh.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <csignal>
#include <memory>

namespace {

// An engine in a temporary folder. "ui-status" prints status.json, or hangs
// (exec'ed sleep, noting its pid in "hung") while the file "hang" exists;
// every other command succeeds at once. Each run appends its command to "calls".
class HangingEngine
{
public:
    HangingEngine()
    {
        QFile script(path());
        script.open(QIODevice::WriteOnly);
        script.write(R"SH(#!/bin/bash
dir="$(dirname "$0")"
printf '%s\n' "$1" >> "$dir/calls"
if [ "$1" = ui-status ]; then
  if [ -f "$dir/hang" ]; then echo $$ >> "$dir/hung"; exec sleep 3600; fi
  exec cat "$dir/status.json"
fi
exit 0
)SH");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setStatus(sampleStatus());
    }

    QString path() const { return m_dir.filePath(QStringLiteral("engine")); }

    void setStatus(const AgentUIStatus &status)
    {
        QFile file(m_dir.filePath(QStringLiteral("status.json")));
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(statusJson(status));
    }

    void setHanging(bool hanging)
    {
        QFile flag(m_dir.filePath(QStringLiteral("hang")));
        if (hanging)
            flag.open(QIODevice::WriteOnly);
        else
            flag.remove();
    }

    QStringList calls() const
    {
        return QString::fromUtf8(read(QStringLiteral("calls"))).split('\n', Qt::SkipEmptyParts);
    }

    int hungReadsStarted() const { return int(read(QStringLiteral("hung")).count('\n')); }

    // Hung status reads whose process still exists.
    int hungReadsAlive() const
    {
        int alive = 0;
        for (const QByteArray &line : read(QStringLiteral("hung")).split('\n')) {
            const pid_t pid = pid_t(line.toInt());
            if (pid > 0 && (::kill(pid, 0) == 0 || errno != ESRCH))
                ++alive;
        }
        return alive;
    }

private:
    QByteArray read(const QString &name) const
    {
        QFile file(m_dir.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_dir;
};

AgentRunner::StatusReadLimit limitOf(int answerMs, int endMs)
{
    return {std::chrono::milliseconds(answerMs), std::chrono::milliseconds(endMs)};
}

} // namespace

class HungEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(waitForCommands());
        m_engine = std::make_unique<HangingEngine>();
        m_notifier = std::make_unique<RecordingNotifier>();
    }

    void cleanup()
    {
        m_refresh.reset();
        m_model.reset();
        QVERIFY(waitForCommands(30000));
    }

    void atMostOneStatusReadOverManyTicks()
    {
        makeModel(limitOf(250, 200));
        m_engine->setHanging(true);
        m_refresh->setInterval(10); // far more ticks than reads can end
        m_refresh->start();

        int mostAlive = 0;
        int ticksWhileReading = 0;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 3000) {
            QTest::qWait(5);
            mostAlive = std::max(mostAlive, m_engine->hungReadsAlive());
            ticksWhileReading += m_model->statusReadRunning();
        }
        QCOMPARE(mostAlive, 1);
        QVERIFY(ticksWhileReading > 100);
        // Each read was ended after its limit and the next tick read again:
        // no more reads than 3 s of 250 ms limits allow, and more than one.
        const int reads = m_engine->hungReadsStarted();
        QVERIFY2(reads >= 3 && reads <= 3000 / 250 + 1, qPrintable(QString::number(reads)));
        QCOMPARE(m_engine->calls().count(QStringLiteral("ui-status")), reads);
        QVERIFY(!m_model->status());
        QVERIFY(!m_model->error()); // periodic reads fail silently

        // The engine answers again: the next read shows its state.
        m_engine->setHanging(false);
        QTRY_VERIFY_WITH_TIMEOUT(m_model->status().has_value(), 5000);
        QCOMPARE(m_model->status()->runtime.message,
                 QStringLiteral("Connected to the authorized target."));
        QTRY_COMPARE_WITH_TIMEOUT(m_engine->hungReadsAlive(), 0, 5000);
    }

    void hungReadFailsWithTheEngineDidNotAnswer()
    {
        makeModel(limitOf(200, 200));
        m_engine->setHanging(true);
        QElapsedTimer clock;
        clock.start();
        m_model->refresh(true, false);
        QTRY_VERIFY_WITH_TIMEOUT(!m_model->statusReadRunning(), 5000);
        QVERIFY(clock.elapsed() >= 200);
        QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral(
                                       "The ZQB Agent background engine did not answer.")));
        QCOMPARE(m_engine->hungReadsAlive(), 0);
    }

    void personsCommandsRunWhileAReadHangs()
    {
        makeModel(limitOf(6000, 300));
        m_refresh->setInterval(20);
        m_refresh->start();
        QTRY_VERIFY(m_model->status().has_value()); // enrolled, with two folders
        m_engine->setHanging(true);
        QTRY_COMPARE_WITH_TIMEOUT(m_engine->hungReadsAlive(), 1, 5000);

        int mostAlive = 1;
        auto watch = [&](auto done) {
            QElapsedTimer clock;
            clock.start();
            while (!done() && clock.elapsed() < 3000) {
                QTest::qWait(5);
                mostAlive = std::max(mostAlive, m_engine->hungReadsAlive());
            }
            return done();
        };

        // "Check Connection": enrolled, so "run-once".
        m_model->checkConnection();
        QVERIFY(m_model->busy());
        QVERIFY(watch([&] { return !m_model->busy(); }));
        QVERIFY(m_engine->calls().contains(QStringLiteral("run-once")));
        QCOMPARE(m_model->notice(), std::optional<QString>(QString())); // the check's own output

        // "Save settings": the settings, then the transfer policy.
        m_model->save();
        QVERIFY(m_model->busy());
        QVERIFY(watch([&] { return !m_model->busy(); }));
        QCOMPARE(m_engine->calls().count(QStringLiteral("configure-transfer")), 1);

        // "Back up now": saved again, then the backup itself.
        m_model->backUpNow();
        QVERIFY(m_model->busy());
        QVERIFY(watch([&] { return m_engine->calls().contains(QStringLiteral("backup-all")); }));
        QVERIFY(watch([&] { return !m_model->busy(); }));
        QCOMPARE(m_engine->calls().count(QStringLiteral("configure-transfer")), 2);

        // All that time the first hung read was the only one; the reads the
        // commands asked for wait behind it.
        QCOMPARE(mostAlive, 1);
        QCOMPARE(m_engine->hungReadsStarted(), 1);

        // Recovery once the engine answers: the read asked for by the backup
        // follows the ended one and shows the backup.
        AgentUIStatus done = sampleStatus();
        done.runtime.lastBackupAt = QStringLiteral("2026-11-25T08:00:00Z");
        done.runtime.recoveryReady = true;
        m_engine->setStatus(done);
        m_engine->setHanging(false);
        QTRY_VERIFY_WITH_TIMEOUT(m_model->status() && m_model->status()->runtime.lastBackupAt,
                                 10000);
        QCOMPARE(m_notifier->posts.size(), 1);
        QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup Recovery Ready"));
    }

private:
    void makeModel(AgentRunner::StatusReadLimit limit)
    {
        m_model = std::make_unique<TestModel>(
            AgentModel::Services{AgentRunner(m_engine->path(), limit), m_notifier.get(), nullptr});
        m_refresh = std::make_unique<PeriodicRefresh>(*m_model);
    }

    std::unique_ptr<HangingEngine> m_engine;
    std::unique_ptr<RecordingNotifier> m_notifier;
    std::unique_ptr<TestModel> m_model;
    std::unique_ptr<PeriodicRefresh> m_refresh;
};

QTEST_GUILESS_MAIN(HungEngineTest)
#include "tst_model_hung_engine.moc"
