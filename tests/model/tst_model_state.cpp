// The model's fields, start-up, dispatch step and failure text.

#include "AgentPaths.h"
#include "ModelTestSupport.h"

#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <memory>

class ModelStateTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void freshModelHasInitialValues();
    void everyAssignmentSignalsEvenWhenEqual();
    void startTwiceActsOnce();
    void checkConnectionBroadcastBeforeStartDoesNothing();
    void checkConnectionBroadcastAfterStartChecksOncePerPosting();
    void broadcastAfterModelIsGoneIsIgnored();
    void dispatchWithoutBusyLeavesBusyButClearsError();
    void dispatchWithBusyClearsBusyBeforeCompletion();
    void dispatchPassesArgumentsStateHomeAndInput();
    void settledFollowsEachCompletionOnce();
    void overlappingBusyDispatchesFirstFinisherClearsBusy();
    void presentableError_data();
    void presentableError();
    void completionAfterModelIsDestroyedDoesNothing();
    void unsavedExclusionTextIsReplacedByRefresh();

private:
    std::unique_ptr<FakeEngine> m_engine;
};

void ModelStateTest::init()
{
    QVERIFY(waitForCommands());
    m_engine = std::make_unique<FakeEngine>();
    m_engine->answer(QStringLiteral("default"), QByteArray());
}

void ModelStateTest::freshModelHasInitialValues()
{
    TestModel model(servicesFor(*m_engine));
    QVERIFY(!model.status());
    QCOMPARE(model.invitation(), QString());
    QCOMPARE(model.sources(), QStringList());
    QCOMPARE(model.intervalMinutes(), 240);
    QCOMPARE(model.scheduleEnabled(), false);
    QCOMPARE(model.exclusionText(),
             QStringLiteral(".DS_Store, .Spotlight-V100, .Trashes, .fseventsd"));
    QCOMPARE(model.transfersPaused(), false);
    QCOMPARE(model.bandwidthLimitKibPerSecond(), 0);
    QCOMPARE(model.currentNetworkMetered(), false);
    QCOMPARE(model.allowMeteredNetwork(), false);
    QCOMPARE(model.busy(), false);
    QVERIFY(!model.notice());
    QVERIFY(!model.error());
    QVERIFY(!model.observedBackup());
    QCOMPARE(model.started(), false);
    QVERIFY(m_engine->invocations().isEmpty()); // nothing is read at creation
}

void ModelStateTest::everyAssignmentSignalsEvenWhenEqual()
{
    TestModel model(servicesFor(*m_engine));
    QStringList log;
    const auto record = [&](const char *name) { return [&log, name] { log << name; }; };
    connect(&model, &AgentModel::changed, this, record("changed"));
    connect(&model, &AgentModel::invitationChanged, this, record("invitation"));
    connect(&model, &AgentModel::sourcesChanged, this, record("sources"));
    connect(&model, &AgentModel::intervalMinutesChanged, this, record("intervalMinutes"));
    connect(&model, &AgentModel::scheduleEnabledChanged, this, record("scheduleEnabled"));
    connect(&model, &AgentModel::exclusionTextChanged, this, record("exclusionText"));
    connect(&model, &AgentModel::transfersPausedChanged, this, record("transfersPaused"));
    connect(&model, &AgentModel::bandwidthLimitKibPerSecondChanged, this, record("bandwidth"));
    connect(&model, &AgentModel::currentNetworkMeteredChanged, this, record("metered"));
    connect(&model, &AgentModel::allowMeteredNetworkChanged, this, record("allowMetered"));
    connect(&model, &AgentModel::noticeChanged, this, record("notice"));
    connect(&model, &AgentModel::errorChanged, this, record("error"));

    // Each value equals the current one; every assignment still announces itself.
    model.setInvitation(QString());
    model.setSources({});
    model.setIntervalMinutes(240);
    model.setScheduleEnabled(false);
    model.setExclusionText(AgentModel::defaultExclusionText);
    model.setTransfersPaused(false);
    model.setBandwidthLimitKibPerSecond(0);
    model.setCurrentNetworkMetered(false);
    model.setAllowMeteredNetwork(false);
    model.setNotice(std::nullopt);
    model.setError(std::nullopt);

    const QStringList expected{
        "invitation",      "changed", "sources",       "changed", "intervalMinutes", "changed",
        "scheduleEnabled", "changed", "exclusionText", "changed", "transfersPaused", "changed",
        "bandwidth",       "changed", "metered",       "changed", "allowMetered",    "changed",
        "notice",          "changed", "error",         "changed"};
    QCOMPARE(log, expected);

    // Properties are readable and writable through the meta-object, for bindings.
    QVERIFY(model.setProperty("intervalMinutes", qint64(60)));
    QCOMPARE(model.intervalMinutes(), 60);
    QCOMPARE(model.property("intervalMinutes").toLongLong(), 60);
}

void ModelStateTest::startTwiceActsOnce()
{
    m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
    RecordingNotifier notifier;
    TestModel model(servicesFor(*m_engine, &notifier));

    model.start();
    QCOMPARE(model.started(), true);
    model.start();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), QStringList{"ui-status"});
    QCOMPARE(notifier.authorizationRequests, 1);

    // One observer: one posting gives one connection check.
    m_engine->forgetInvocations();
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    QTRY_COMPARE(m_engine->commands().size(), 2);
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"run-once", "ui-status"}));
}

void ModelStateTest::checkConnectionBroadcastBeforeStartDoesNothing()
{
    TestModel model(servicesFor(*m_engine));
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    QTest::qWait(200);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
}

void ModelStateTest::checkConnectionBroadcastAfterStartChecksOncePerPosting()
{
    TestModel model(servicesFor(*m_engine));
    model.start();
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();

    // Delivery is not synchronous with the posting: it is scheduled on the main thread.
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    QCOMPARE(model.busy(), false);
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    QVERIFY(waitForCommands());
    QTRY_COMPARE(m_engine->commands().count(QStringLiteral("check-service")), 2);
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands().count(QStringLiteral("check-service")), 2);
    QCOMPARE(m_engine->commands().count(QStringLiteral("ui-status")), 2);
}

void ModelStateTest::broadcastAfterModelIsGoneIsIgnored()
{
    auto model = std::make_unique<TestModel>(servicesFor(*m_engine));
    model->start();
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();
    // Posted while the model exists, delivered after it is gone.
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    model.reset();
    NotificationCenter::defaultCenter().post(AgentModel::checkConnectionNotification);
    QTest::qWait(200);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
}

void ModelStateTest::dispatchWithoutBusyLeavesBusyButClearsError()
{
    TestModel model(servicesFor(*m_engine));
    model.setError(QStringLiteral("earlier failure"));
    model.setNotice(QStringLiteral("earlier notice"));
    QSignalSpy busySpy(&model, &AgentModel::busyChanged);
    bool called = false;
    model.run({QStringLiteral("ui-status")}, nullptr, false,
              [&](const CommandResult &) { called = true; });
    QVERIFY(!model.error()); // cleared at once
    QCOMPARE(model.notice(), std::optional<QString>(QStringLiteral("earlier notice")));
    QVERIFY(!called); // never synchronous
    QTRY_VERIFY(called);
    QCOMPARE(busySpy.count(), 0);
    QCOMPARE(model.busy(), false);

    // Also while another command shows busy, a quiet one does not touch it.
    m_engine->answer(QStringLiteral("slow"), QByteArray(), {}, 0, 0.5);
    model.run({QStringLiteral("slow")}, nullptr, true, [](const CommandResult &) {});
    QCOMPARE(busySpy.count(), 1);
    called = false;
    model.run({QStringLiteral("quick")}, nullptr, false,
              [&](const CommandResult &) { called = true; });
    QTRY_VERIFY(called);
    QCOMPARE(model.busy(), true);
    QCOMPARE(busySpy.count(), 1);
    QVERIFY(waitForCommands());
    QCOMPARE(model.busy(), false);
}

void ModelStateTest::dispatchWithBusyClearsBusyBeforeCompletion()
{
    m_engine->answer(QStringLiteral("configure"), "saved", {}, 0);
    TestModel model(servicesFor(*m_engine));
    QStringList order;
    connect(&model, &AgentModel::busyChanged, this,
            [&] { order << QStringLiteral("busy=%1").arg(int(model.busy())); });
    std::optional<CommandResult> received;
    bool onMainThread = false;
    model.run({QStringLiteral("configure")}, nullptr, true, [&](const CommandResult &result) {
        order << QStringLiteral("completion busy=%1").arg(int(model.busy()));
        onMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
        received = result;
    });
    QCOMPARE(model.busy(), true);
    QTRY_VERIFY(received.has_value());
    QCOMPARE(order, (QStringList{"busy=1", "busy=0", "completion busy=0"}));
    QVERIFY(onMainThread);
    QCOMPARE(received->output, QStringLiteral("saved"));
    QCOMPARE(received->succeeded, true);
}

void ModelStateTest::settledFollowsEachCompletionOnce()
{
    m_engine->answer(QStringLiteral("configure"), "saved", {}, 0);
    TestModel model(servicesFor(*m_engine));
    QStringList order;
    connect(&model, &AgentModel::settled, this,
            [&] { order << QStringLiteral("settled busy=%1").arg(int(model.busy())); });
    // A completion that starts the next command (a chain): each step settles.
    model.run({QStringLiteral("configure")}, nullptr, true, [&](const CommandResult &) {
        order << QStringLiteral("first");
        model.run({QStringLiteral("configure")}, nullptr, true,
                  [&](const CommandResult &) { order << QStringLiteral("second"); });
    });
    QVERIFY(order.isEmpty()); // nothing settles before the engine has answered
    QTRY_COMPARE(order.size(), 4);
    QTest::qWait(20);
    QCOMPARE(order, (QStringList{"first", "settled busy=1", "second", "settled busy=0"}));
}

void ModelStateTest::dispatchPassesArgumentsStateHomeAndInput()
{
    TestModel model(servicesFor(*m_engine));
    model.run({QStringLiteral("configure"), QStringLiteral("--json-stdin")},
              std::make_shared<QByteArray>("{\"a\":1}"), true, [](const CommandResult &) {});
    model.run({QStringLiteral("backup-all")}, nullptr, true, [](const CommandResult &) {});
    QVERIFY(waitForCommands());
    const auto calls = m_engine->invocations();
    QCOMPARE(calls.size(), 2);
    for (const auto &call : calls) {
        QCOMPARE(call.home, agentUserHome());
        if (call.arguments.first() == QStringLiteral("configure")) {
            QCOMPARE(call.arguments,
                     (QStringList{"configure", "--json-stdin", "--state", agentStateDirectory()}));
            QVERIFY(call.hadInput);
            QCOMPARE(call.standardInput, QByteArray("{\"a\":1}"));
        } else {
            QCOMPARE(call.arguments, (QStringList{"backup-all", "--state", agentStateDirectory()}));
            QVERIFY(!call.hadInput);
        }
    }
}

void ModelStateTest::overlappingBusyDispatchesFirstFinisherClearsBusy()
{
    m_engine->answer(QStringLiteral("slow"), QByteArray(), {}, 0, 0.6);
    TestModel model(servicesFor(*m_engine));
    bool quickDone = false;
    bool slowDone = false;
    model.run({QStringLiteral("slow")}, nullptr, true,
              [&](const CommandResult &) { slowDone = true; });
    model.run({QStringLiteral("quick")}, nullptr, true,
              [&](const CommandResult &) { quickDone = true; });
    QTRY_VERIFY(quickDone);
    QVERIFY(!slowDone);
    QCOMPARE(model.busy(), false); // the slow command still runs
    QTRY_VERIFY(slowDone);
}

void ModelStateTest::presentableError_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("expected");

    QTest::newRow("error wins over output") << "some output"
                                            << "engine said no"
                                            << "engine said no";
    QTest::newRow("output when error empty, cut to 500")
        << QString(700, QLatin1Char('x')) << QString() << QString(500, QLatin1Char('x'));
    QTest::newRow("both empty") << QString() << QString()
                                << "ZQB Agent could not complete that operation.";
    QTest::newRow("short output whole") << "short" << QString() << "short";
    const QString accented = QStringLiteral("e\u0301");
    QTest::newRow("500 user-perceived characters")
        << QString() << accented.repeated(700) << accented.repeated(500);
    QTest::newRow("error of 600 cut")
        << QString() << QString(600, QLatin1Char('e')) << QString(500, QLatin1Char('e'));
}

void ModelStateTest::presentableError()
{
    QFETCH(QString, output);
    QFETCH(QString, error);
    QFETCH(QString, expected);
    QCOMPARE(AgentModel::presentableError(CommandResult{output, error, false}), expected);
}

void ModelStateTest::completionAfterModelIsDestroyedDoesNothing()
{
    AgentUIStatus status = sampleStatus();
    status.runtime.lastBackupAt = QStringLiteral("2026-11-22T10:00:00Z");
    m_engine->answer(QStringLiteral("ui-status"), statusJson(status), {}, 0, 0.3);
    m_engine->answer(QStringLiteral("backup-all"), QByteArray(), {}, 0, 0.3);
    // Slow too, so the chain's first step cannot complete while the model
    // still exists (waiting for the runs to start lets events through).
    m_engine->answer(QStringLiteral("configure"), QByteArray(), {}, 0, 0.3);
    RecordingNotifier notifier;
    StatusBroadcasts broadcasts;
    bool completionCalled = false;
    {
        auto model = std::make_unique<TestModel>(servicesFor(*m_engine, &notifier));
        model->refresh(true, true);
        model->run({QStringLiteral("backup-all")}, nullptr, true,
                   [&](const CommandResult &) { completionCalled = true; });
        model->saveThenBackup();
        QTRY_VERIFY(m_engine->startedCount() >= 2);
    }
    QVERIFY(waitForCommands());
    QVERIFY(!completionCalled);
    QVERIFY(broadcasts.received.isEmpty());
    QVERIFY(notifier.posts.isEmpty());
    // The chains stopped with the model: no command after the first of each.
    QCOMPARE(m_engine->commands().count(QStringLiteral("configure-transfer")), 0);
}

void ModelStateTest::unsavedExclusionTextIsReplacedByRefresh()
{
    m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
    TestModel model(servicesFor(*m_engine));
    model.setExclusionText(QStringLiteral("edited, but, not, saved"));
    model.refresh(false, false);
    QVERIFY(waitForCommands());
    QCOMPARE(model.exclusionText(), QStringLiteral("*.tmp, node_modules"));
}

QTEST_GUILESS_MAIN(ModelStateTest)
#include "tst_model_state.moc"
