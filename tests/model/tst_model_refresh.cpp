// Status refresh: mirroring the document, the status broadcast, and the
// announcements of finished backups.

#include "ModelTestSupport.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {
const QString firstBackup = QStringLiteral("2026-11-22T10:00:00Z");
const QString secondBackup = QStringLiteral("2026-11-22T14:00:00Z");
const QString recoveryReadyBody = QStringLiteral(
    "The authorized target returned signed zero-error verification for non-empty data.");
const QString emptyBackupBody = QStringLiteral(
    "The target verified this run with zero errors, but no files were present after exclusions.");

AgentUIStatus statusWithBackup(std::optional<QString> lastBackupAt,
                               std::optional<bool> recoveryReady = std::nullopt)
{
    AgentUIStatus status = sampleStatus();
    status.runtime.lastBackupAt = std::move(lastBackupAt);
    status.runtime.recoveryReady = recoveryReady;
    return status;
}
} // namespace

class ModelRefreshTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void firstRefreshDoesNotAnnounceButBroadcasts();
    void appliesDocumentInOrder();
    void changedLastBackupWithRecoveryReadyIsAnnounced();
    void sameLastBackupIsNotAnnounced();
    void forcedAnnouncementRepeatsUnchangedBackup();
    void forcedAnnouncementWithoutLastBackupIsSilent();
    void forcedAnnouncementThenPeriodicRefreshesAnnounceOnce();
    void emptyBackupIsAnnouncedAsCompleted();
    void unknownRecoveryUsesEngineMessageCutForNotification();
    void exclusionsJoinedWithCommaAndSpace();
    void unreadableOutputWithErrorsShown();
    void unreadableOutputSilentKeepsStatus();
    void failedCommandWithAndWithoutErrors();
    void documentOverOutputCharacterCapReadsWhole();
    void thousandLongFoldersMirrorIntoSources();
    void documentOverTheByteCapIsUnreadable();
    void textsShownToThePersonStayCapped();
    void missingLastBackupResetsObservedBackup();
    void refreshesAskedForDuringAReadFollowItOnce();

private:
    void refreshWith(const AgentUIStatus &status, bool showErrors = false, bool announce = false);

    std::unique_ptr<FakeEngine> m_engine;
    std::unique_ptr<RecordingNotifier> m_notifier;
    std::unique_ptr<TestModel> m_model;
};

void ModelRefreshTest::init()
{
    QVERIFY(waitForCommands());
    m_engine = std::make_unique<FakeEngine>();
    m_notifier = std::make_unique<RecordingNotifier>();
    m_model = std::make_unique<TestModel>(servicesFor(*m_engine, m_notifier.get()));
}

void ModelRefreshTest::cleanup()
{
    m_model.reset();
    QVERIFY(waitForCommands());
}

void ModelRefreshTest::refreshWith(const AgentUIStatus &status, bool showErrors, bool announce)
{
    m_engine->answer(QStringLiteral("ui-status"), statusJson(status));
    m_model->refresh(showErrors, announce);
    QVERIFY(waitForCommands());
}

void ModelRefreshTest::firstRefreshDoesNotAnnounceButBroadcasts()
{
    StatusBroadcasts broadcasts;
    refreshWith(statusWithBackup(firstBackup, true));
    QCOMPARE(m_engine->commands(), QStringList{"ui-status"});
    QVERIFY(!m_engine->invocations().first().hadInput);
    QVERIFY(!m_model->notice());
    QVERIFY(m_notifier->posts.isEmpty());
    QCOMPARE(m_model->observedBackup(), std::optional<QString>(firstBackup));
    QCOMPARE(broadcasts.received.size(), 1);
    const QVariantMap info = broadcasts.received.first();
    QCOMPARE(info.keys(), (QStringList{"runtime", "state"}));
    QCOMPARE(info.value("state"), QVariant(QStringLiteral("connected")));
    // The whole runtime record travels along, for the tray's tooltip.
    QCOMPARE(info.value("runtime").value<RuntimeStatus>(),
             statusWithBackup(firstBackup, true).runtime);

    // Posted on every successful decode, even when nothing changed.
    refreshWith(statusWithBackup(firstBackup, true));
    QCOMPARE(broadcasts.received.size(), 2);
}

void ModelRefreshTest::appliesDocumentInOrder()
{
    StatusBroadcasts broadcasts;
    QStringList log;
    const auto record = [&](const char *name) { return [&log, name] { log << name; }; };
    connect(m_model.get(), &AgentModel::statusChanged, this, record("status"));
    connect(m_model.get(), &AgentModel::sourcesChanged, this, record("sources"));
    connect(m_model.get(), &AgentModel::intervalMinutesChanged, this, record("intervalMinutes"));
    connect(m_model.get(), &AgentModel::scheduleEnabledChanged, this, record("scheduleEnabled"));
    connect(m_model.get(), &AgentModel::exclusionTextChanged, this, record("exclusionText"));
    connect(m_model.get(), &AgentModel::transfersPausedChanged, this, record("transfersPaused"));
    connect(m_model.get(), &AgentModel::bandwidthLimitKibPerSecondChanged, this,
            record("bandwidth"));
    connect(m_model.get(), &AgentModel::currentNetworkMeteredChanged, this, record("metered"));
    connect(m_model.get(), &AgentModel::allowMeteredNetworkChanged, this, record("allowMetered"));
    connect(m_model.get(), &AgentModel::errorChanged, this, record("error"));
    connect(m_model.get(), &AgentModel::changed, this, record("changed"));
    QObject observer; // ends the observation with this test
    NotificationCenter::defaultCenter().observe(QStringLiteral("ZQBAgentStatusDidChange"),
                                                &observer,
                                                [&](const QVariantMap &) { log << "broadcast"; });

    AgentUIStatus status = sampleStatus();
    status.transferPolicy.preferredTargetDeviceId = QStringLiteral("device-7");
    status.transferPolicy.retryAttempts = 9;
    refreshWith(status);

    const QStringList expected{"error",           "changed", // the dispatch clears error at once
                               "status",          "changed", "sources",         "changed",
                               "intervalMinutes", "changed", "scheduleEnabled", "changed",
                               "exclusionText",   "changed", "transfersPaused", "changed",
                               "bandwidth",       "changed", "metered",         "changed",
                               "allowMetered",    "changed", "broadcast"};
    QCOMPARE(log, expected);
    QCOMPARE(m_model->status(), std::optional<AgentUIStatus>(status));
    QCOMPARE(m_model->sources(), status.settings.sources);
    QCOMPARE(m_model->intervalMinutes(), 60);
    QCOMPARE(m_model->scheduleEnabled(), true);
    QCOMPARE(m_model->transfersPaused(), true);
    QCOMPARE(m_model->bandwidthLimitKibPerSecond(), 2048);
    QCOMPARE(m_model->currentNetworkMetered(), true);
    QCOMPARE(m_model->allowMeteredNetwork(), true);
    QVERIFY(!m_model->busy());
}

void ModelRefreshTest::changedLastBackupWithRecoveryReadyIsAnnounced()
{
    refreshWith(statusWithBackup(firstBackup, true));
    refreshWith(statusWithBackup(secondBackup, true));
    QCOMPARE(m_model->notice(), std::optional<QString>(recoveryReadyBody));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup Recovery Ready"));
    QCOMPARE(m_notifier->posts.first().body, recoveryReadyBody);
    QCOMPARE(m_model->observedBackup(), std::optional<QString>(secondBackup));
}

void ModelRefreshTest::sameLastBackupIsNotAnnounced()
{
    refreshWith(statusWithBackup(firstBackup, true));
    refreshWith(statusWithBackup(firstBackup, true));
    QVERIFY(!m_model->notice());
    QVERIFY(m_notifier->posts.isEmpty());
}

void ModelRefreshTest::forcedAnnouncementRepeatsUnchangedBackup()
{
    refreshWith(statusWithBackup(firstBackup, true));
    refreshWith(statusWithBackup(firstBackup, true), false, true);
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_model->notice(), std::optional<QString>(recoveryReadyBody));
}

void ModelRefreshTest::forcedAnnouncementWithoutLastBackupIsSilent()
{
    refreshWith(statusWithBackup(std::nullopt, true), true, true);
    QVERIFY(!m_model->notice());
    QVERIFY(m_notifier->posts.isEmpty());
}

void ModelRefreshTest::forcedAnnouncementThenPeriodicRefreshesAnnounceOnce()
{
    refreshWith(statusWithBackup(firstBackup, true), true, true);
    refreshWith(statusWithBackup(firstBackup, true));
    refreshWith(statusWithBackup(firstBackup, true));
    QCOMPARE(m_notifier->posts.size(), 1);
}

void ModelRefreshTest::emptyBackupIsAnnouncedAsCompleted()
{
    refreshWith(statusWithBackup(firstBackup, false), true, true);
    QCOMPARE(m_model->notice(), std::optional<QString>(emptyBackupBody));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB empty backup completed"));
    QCOMPARE(m_notifier->posts.first().body, emptyBackupBody);
}

void ModelRefreshTest::unknownRecoveryUsesEngineMessageCutForNotification()
{
    refreshWith(statusWithBackup(firstBackup));
    AgentUIStatus status = statusWithBackup(secondBackup);
    // 400 user-perceived characters, some of them two code points long.
    status.runtime.message = QStringLiteral("a\u0301b").repeated(200);
    refreshWith(status);
    QCOMPARE(m_model->notice(), std::optional<QString>(status.runtime.message));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup completed"));
    QCOMPARE(m_notifier->posts.first().body, QStringLiteral("a\u0301b").repeated(150));
}

void ModelRefreshTest::exclusionsJoinedWithCommaAndSpace()
{
    AgentUIStatus status = sampleStatus();
    status.settings.exclusions = {QStringLiteral(".cache"), QStringLiteral("*.iso")};
    refreshWith(status);
    QCOMPARE(m_model->exclusionText(), QStringLiteral(".cache, *.iso"));
    status.settings.exclusions = {};
    refreshWith(status);
    QCOMPARE(m_model->exclusionText(), QString());
}

void ModelRefreshTest::unreadableOutputWithErrorsShown()
{
    m_engine->answer(QStringLiteral("ui-status"), "this is not JSON");
    m_model->refresh(true, false);
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral(
                                   "ZQB Agent returned an unreadable local status.")));
    QVERIFY(!m_model->status());
}

void ModelRefreshTest::unreadableOutputSilentKeepsStatus()
{
    StatusBroadcasts broadcasts;
    const AgentUIStatus first = statusWithBackup(firstBackup, true);
    refreshWith(first);
    m_model->setSources({QStringLiteral("/edited")});
    m_engine->answer(QStringLiteral("ui-status"), "{\"schema\":");
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    QVERIFY(!m_model->error());
    QCOMPARE(m_model->status(), std::optional<AgentUIStatus>(first));
    QCOMPARE(m_model->sources(), QStringList{"/edited"}); // editable fields untouched
    QCOMPARE(m_model->observedBackup(), std::optional<QString>(firstBackup));
    QCOMPARE(broadcasts.received.size(), 1); // nothing posted for the failure
}

void ModelRefreshTest::failedCommandWithAndWithoutErrors()
{
    m_engine->answer(QStringLiteral("ui-status"), "partial output", "state directory locked", 3);
    m_model->refresh(true, false);
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral("state directory locked")));

    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    QVERIFY(!m_model->error()); // the dispatch cleared it and nothing set it again
    QVERIFY(!m_model->status());
}

void ModelRefreshTest::documentOverOutputCharacterCapReadsWhole()
{
    // Longer than the cap on texts shown to the person: the document is read
    // from all the engine printed, not from that capped text.
    AgentUIStatus status = sampleStatus();
    status.runtime.message = QString(9000, QLatin1Char('m'));
    const QByteArray json = statusJson(status);
    QVERIFY(json.size() > AgentRunner::outputCharacterCap);
    m_engine->answer(QStringLiteral("ui-status"), "\n  " + json + "\n");
    m_model->refresh(true, false);
    QVERIFY(waitForCommands());
    QVERIFY(!m_model->error());
    QCOMPARE(m_model->status(), std::optional<AgentUIStatus>(status));
    QCOMPARE(m_model->status()->runtime.message.size(), 9000);
}

void ModelRefreshTest::thousandLongFoldersMirrorIntoSources()
{
    StatusBroadcasts broadcasts;
    AgentUIStatus status = sampleStatus();
    status.settings.sources = longFolders(1000);
    const QByteArray json = statusJson(status);
    QVERIFY2(json.size() > 200 * 1000, QByteArray::number(json.size()));
    m_engine->answer(QStringLiteral("ui-status"), json + "\n");
    m_model->refresh(true, false);
    QVERIFY(waitForCommands());
    QVERIFY(!m_model->error());
    QCOMPARE(m_model->sources().size(), 1000);
    QCOMPARE(m_model->sources(), status.settings.sources);
    QCOMPARE(m_model->status(), std::optional<AgentUIStatus>(status));
    QCOMPARE(broadcasts.received.size(), 1);
}

void ModelRefreshTest::documentOverTheByteCapIsUnreadable()
{
    StatusBroadcasts broadcasts;
    const AgentUIStatus first = statusWithBackup(firstBackup, true);
    refreshWith(first);

    // About 1.1 MiB of folders: the runner keeps the first MiB, which is not
    // a whole document.
    AgentUIStatus huge = sampleStatus();
    huge.settings.sources = longFolders(5500);
    const QByteArray json = statusJson(huge);
    QVERIFY2(json.size() > AgentRunner::streamByteCap + 64 * 1024, QByteArray::number(json.size()));
    QVERIFY(AgentDocuments::decodeStatus(json).has_value()); // readable when whole
    m_engine->answer(QStringLiteral("ui-status"), json);

    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    QVERIFY(!m_model->error());
    m_model->refresh(true, false);
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral(
                                   "ZQB Agent returned an unreadable local status.")));
    QCOMPARE(m_model->status(), std::optional<AgentUIStatus>(first));
    QCOMPARE(m_model->sources(), first.settings.sources);
    QCOMPARE(broadcasts.received.size(), 1); // only the first, readable one
}

void ModelRefreshTest::textsShownToThePersonStayCapped()
{
    // A long message from a connection check becomes the notice, cut to the
    // runner's 8,192 characters.
    m_engine->answer(QStringLiteral("check-service"), QByteArray(10000, 'n'));
    m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->notice(), std::optional<QString>(QString(8192, QLatin1Char('n'))));

    // A long error text reaches the model cut to 2,048 characters, and the
    // person sees the first 500 of those.
    m_engine->answer(QStringLiteral("autonomous-update"), QByteArray(10000, 'o'),
                     QByteArray(10000, 'e'), 1);
    CommandResult seen;
    m_model->run({QStringLiteral("autonomous-update")}, nullptr, true,
                 [&](const CommandResult &result) { seen = result; });
    QVERIFY(waitForCommands());
    QCOMPARE(seen.error, QString(2048, QLatin1Char('e')));
    QCOMPARE(seen.output, QString(8192, QLatin1Char('o')));
    m_model->installUpdate();
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QString(500, QLatin1Char('e'))));

    // A completed backup whose message is 20,000 characters (each a letter
    // and a combining accent): the notice holds the first 8,192 of them, the
    // notification the first 300.
    QString accented;
    for (int i = 0; i < 20000; ++i)
        accented += QStringLiteral("e\u0301");
    AgentUIStatus flooded = statusWithBackup(firstBackup);
    flooded.runtime.message = accented;
    refreshWith(flooded);
    QCOMPARE(m_model->status()->runtime.message, accented); // the document is kept whole
    flooded.runtime.lastBackupAt = secondBackup;
    refreshWith(flooded);
    QCOMPARE(m_model->notice(), std::optional<QString>(accented.left(2 * 8192)));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup completed"));
    QCOMPARE(m_notifier->posts.first().body, accented.left(2 * 300));
}

void ModelRefreshTest::missingLastBackupResetsObservedBackup()
{
    refreshWith(statusWithBackup(firstBackup, true));
    refreshWith(statusWithBackup(std::nullopt, true));
    QVERIFY(!m_model->observedBackup());
    refreshWith(statusWithBackup(secondBackup, true));
    QCOMPARE(m_model->observedBackup(), std::optional<QString>(secondBackup));
    QVERIFY(m_notifier->posts.isEmpty());
    QVERIFY(!m_model->notice());
}

void ModelRefreshTest::refreshesAskedForDuringAReadFollowItOnce()
{
    refreshWith(statusWithBackup(firstBackup, true));
    m_engine->forgetInvocations();

    // Both report the same new backup; they differ in what else they say.
    AgentUIStatus slow = statusWithBackup(secondBackup, true);
    slow.runtime.message = QStringLiteral("slow document");
    AgentUIStatus fast = statusWithBackup(secondBackup, true);
    fast.runtime.message = QStringLiteral("fast document");
    m_engine->answerOnce(QStringLiteral("ui-status"), statusJson(slow), {}, 0, 0.8);
    m_engine->answerOnce(QStringLiteral("ui-status"), statusJson(fast));

    QStringList arrivals;
    connect(m_model.get(), &AgentModel::statusChanged, this,
            [&] { arrivals << m_model->status()->runtime.message; });
    m_model->setError(QStringLiteral("earlier failure"));
    m_model->refresh(false, false);
    QTRY_COMPARE(m_engine->startedCount(), 1); // the slow one has its answer
    m_model->setError(QStringLiteral("earlier failure"));
    m_model->refresh(false, false);
    QVERIFY(!m_model->error()); // cleared at once, as by any dispatch
    m_model->refresh(false, false);
    QVERIFY(m_model->statusReadRunning());
    QTest::qWait(200);
    QCOMPARE(m_engine->startedCount(), 1); // nothing else started while the first runs
    QVERIFY(waitForCommands());

    // One read followed for both, after the first: its document is the newer one.
    QCOMPARE(m_engine->commands(), (QStringList{"ui-status", "ui-status"}));
    QCOMPARE(arrivals, (QStringList{"slow document", "fast document"}));
    QCOMPARE(m_model->status()->runtime.message, QStringLiteral("fast document"));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup Recovery Ready"));
    QVERIFY(!m_model->statusReadRunning());
}

QTEST_GUILESS_MAIN(ModelRefreshTest)
#include "tst_model_refresh.moc"
