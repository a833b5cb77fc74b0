// The 15-second refresh: it starts the model once, runs with no window at
// all, and skips (never queues) its ticks while an operation is busy.

#include "ModelTestSupport.h"
#include "PeriodicRefresh.h"

#include <QtTest>

#include <memory>

class PeriodicRefreshTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(waitForCommands());
        m_engine = std::make_unique<FakeEngine>();
        m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
        m_notifier = std::make_unique<RecordingNotifier>();
        m_model = std::make_unique<TestModel>(servicesFor(*m_engine, m_notifier.get()));
    }

    void cleanup()
    {
        m_model.reset();
        QVERIFY(waitForCommands());
    }

    void startStartsTheModelOnceAndTheTimer()
    {
        PeriodicRefresh refresh(*m_model);
        QCOMPARE(refresh.interval(), 15000);
        QVERIFY(!refresh.isActive());
        QVERIFY(!m_model->started());
        QTest::qWait(50);
        QVERIFY(m_engine->commands().isEmpty()); // nothing before start()

        refresh.start();
        refresh.start();
        m_model->start(); // as the window's first show would, later
        QVERIFY(m_model->started());
        QVERIFY(refresh.isActive());
        QVERIFY(waitForCommands());
        QCOMPARE(m_engine->commands(), QStringList{"ui-status"});
        QCOMPARE(m_notifier->authorizationRequests, 1);
        QTRY_VERIFY(m_model->status().has_value());
    }

    void timerRefreshesWithoutAnyWindow()
    {
        PeriodicRefresh refresh(*m_model);
        refresh.setInterval(200);
        refresh.start();
        QTRY_VERIFY_WITH_TIMEOUT(m_engine->commands().count(QStringLiteral("ui-status")) >= 3,
                                 20000);
        const QStringList commands = m_engine->commands();
        QCOMPARE(commands.count(QStringLiteral("ui-status")), commands.size());
        QCOMPARE(m_notifier->authorizationRequests, 1);
    }

    void ticksAreSkippedWhileBusy()
    {
        PeriodicRefresh refresh(*m_model);
        refresh.start();
        QTRY_VERIFY(m_model->status().has_value());
        QVERIFY(waitForCommands());
        m_engine->answer("run-once", "checked", {}, 0, 0.6);
        m_engine->forgetInvocations();
        m_model->checkConnection(); // enrolled: "run-once", with the busy flag
        QVERIFY(m_model->busy());
        for (int i = 0; i < 5; ++i) {
            refresh.tick();
            QTest::qWait(20);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!m_model->busy(), 10000);
        QVERIFY(waitForCommands());
        // Only the refresh that follows the check itself: no tick was queued.
        QCOMPARE(m_engine->commands(), (QStringList{"run-once", "ui-status"}));

        // Idle, a tick refreshes at once.
        refresh.tick();
        QVERIFY(waitForCommands());
        QCOMPARE(m_engine->commands().count(QStringLiteral("ui-status")), 2);
    }

    void finishedBackupIsAnnouncedByATick()
    {
        // A backup that ends while nobody looks is told once, by the timer.
        PeriodicRefresh refresh(*m_model);
        refresh.start();
        QTRY_VERIFY(m_model->status().has_value());
        QVERIFY(waitForCommands());
        AgentUIStatus done = sampleStatus();
        done.runtime.lastBackupAt = QStringLiteral("2026-11-22T10:00:00Z");
        done.runtime.recoveryReady = true;
        m_engine->answer(QStringLiteral("ui-status"), statusJson(done));
        refresh.tick();
        QVERIFY(waitForCommands());
        QVERIFY(m_notifier->posts.isEmpty()); // the first backup seen is not news
        done.runtime.lastBackupAt = QStringLiteral("2026-11-22T14:00:00Z");
        m_engine->answer(QStringLiteral("ui-status"), statusJson(done));
        refresh.tick();
        refresh.tick();
        QVERIFY(waitForCommands());
        refresh.tick();
        QVERIFY(waitForCommands());
        QCOMPARE(m_notifier->posts.size(), 1);
        QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup Recovery Ready"));
    }

private:
    std::unique_ptr<FakeEngine> m_engine;
    std::unique_ptr<RecordingNotifier> m_notifier;
    std::unique_ptr<TestModel> m_model;
};

QTEST_GUILESS_MAIN(PeriodicRefreshTest)
#include "tst_model_periodic_refresh.moc"
