// Folders, skip patterns, the save chains and their feedback, and the
// network transfer policy that every save carries.

#include "FolderList.h"
#include "ModelTestSupport.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

const QByteArray defaultSettingsDocument =
    R"({"schema":"zqb.agent-settings.v1","enabled":false,"intervalMinutes":240,"sources":[],)"
    R"("exclusions":[".DS_Store",".Spotlight-V100",".Trashes",".fseventsd"]})";
const QByteArray defaultPolicyDocument =
    R"({"schema":"zqb.agent-transfer-policy.v1","paused":false,"bandwidthLimitKibPerSecond":0,)"
    R"("currentNetworkMetered":false,"allowMeteredNetwork":false,"retryAttempts":3})";
const QString savedMessage = QStringLiteral("Folders, schedule, and network policy saved.");
const QString folderSettingsMessage =
    QStringLiteral("ZQB Agent could not prepare the folder settings.");
const QString networkPolicyMessage =
    QStringLiteral("ZQB Agent could not prepare the network policy.");
const QString recoveryReadyBody = QStringLiteral(
    "The authorized target returned signed zero-error verification for non-empty data.");

} // namespace

class ModelSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // Folders
    void addingListedFolderAddsNoSecondEntry();
    void addingSortsEngineOrder();
    void uppercaseSortsBeforeLowercase();
    void sortingIsByCodePointBeyondBasicPlane();
    void chosenPathsAreNormalised();
    void cancelledOrMissingChooserChangesNothing();
    void removeFolderRemovesEveryEqualEntryKeepingOrder();
    void unsavedFolderEditsRevertAtNextRefresh();

    // Skip patterns
    void parsedExclusions_data();
    void parsedExclusions();

    // Saving
    void saveBeforeFirstStatusSendsDefaults();
    void saveSendsSourcesInModelOrderAndSortedExclusions();
    void saveWithEmptyFolderListIsAllowed();
    void backUpNowWithoutFoldersIsRefused();
    void backUpNowWithFoldersStartsTheChain();

    // The save chain, row by row
    void settingsThatDoNotEncodeRunNothing();
    void configureFailureEndsChain();
    void configureSuccessSavesPolicyWhileBusy();
    void policyFailureAfterConfigureEndsChain();
    void policyThatDoesNotEncodeEndsChain();
    void saveSuccessSetsNoticeAndRefreshesQuietly();
    void saveThenBackupSuccessRefreshesWithAnnouncement();
    void saveThenBackupSuccessShowsFailingRefresh();
    void backupFailureErrorIsClearedByFollowingRefresh();
    void busyNeverIdleBetweenChainCommands();
    void thousandFoldersReachTheEngineWholeWhileTheWindowStaysFree();

    // Transfer policy
    void policyDefaultsDocument();
    void policyCarriesModelFields();
    void policyNeverEchoesDeviceOrRetries();
    void policyCompletionOnlyOnSuccess();

    void fullDiskAccessChangesNothingHere();

private:
    QStringList sentSettings() const;
    std::unique_ptr<FakeEngine> m_engine;
    std::unique_ptr<RecordingNotifier> m_notifier;
    std::unique_ptr<ScriptedChooser> m_chooser;
    std::unique_ptr<TestModel> m_model;
};

void ModelSettingsTest::init()
{
    QVERIFY(waitForCommands());
    m_engine = std::make_unique<FakeEngine>();
    m_engine->answer(QStringLiteral("default"), QByteArray());
    m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
    m_notifier = std::make_unique<RecordingNotifier>();
    m_chooser = std::make_unique<ScriptedChooser>();
    m_model =
        std::make_unique<TestModel>(servicesFor(*m_engine, m_notifier.get(), m_chooser.get()));
}

void ModelSettingsTest::cleanup()
{
    m_model.reset();
    QVERIFY(waitForCommands());
}

QStringList ModelSettingsTest::sentSettings() const
{
    QStringList documents;
    for (const auto &call : m_engine->invocations())
        documents << QString::fromUtf8(call.standardInput);
    return documents;
}

// Folders

void ModelSettingsTest::addingListedFolderAddsNoSecondEntry()
{
    m_model->setSources({QStringLiteral("/b"), QStringLiteral("/a")});
    m_chooser->next = QStringList{QStringLiteral("/a"), QStringLiteral("/c"), QStringLiteral("/c")};
    QSignalSpy spy(m_model.get(), &AgentModel::sourcesChanged);
    m_model->addFolders();
    QCOMPARE(m_chooser->calls, 1);
    QCOMPARE(spy.count(), 1); // one assignment
    QCOMPARE(m_model->sources(), (QStringList{"/a", "/b", "/c"}));
}

void ModelSettingsTest::addingSortsEngineOrder()
{
    m_model->setSources({QStringLiteral("/b"), QStringLiteral("/a")});
    m_chooser->next = QStringList{QStringLiteral("/c")};
    m_model->addFolders();
    QCOMPARE(m_model->sources(), (QStringList{"/a", "/b", "/c"}));
}

void ModelSettingsTest::uppercaseSortsBeforeLowercase()
{
    m_chooser->next = QStringList{QStringLiteral("/alpha"), QStringLiteral("/Zeta")};
    m_model->addFolders();
    QCOMPARE(m_model->sources(), (QStringList{"/Zeta", "/alpha"}));
}

void ModelSettingsTest::sortingIsByCodePointBeyondBasicPlane()
{
    // U+FF21 is below U+1F4C1 as code points, above it as UTF-16 units.
    const QString fullwidth = QStringLiteral("/\uFF21");
    const QString astral = QStringLiteral("/\U0001F4C1");
    QVERIFY(astral < fullwidth); // what plain QString comparison would say
    m_chooser->next = QStringList{astral, fullwidth, QStringLiteral("/z")};
    m_model->addFolders();
    QCOMPARE(m_model->sources(), (QStringList{"/z", fullwidth, astral}));

    QVERIFY(FolderList::codePointLess(u"/a", u"/ab"));
    QVERIFY(!FolderList::codePointLess(u"/ab", u"/a"));
    QVERIFY(!FolderList::codePointLess(u"/a", u"/a"));
    QVERIFY(FolderList::codePointLess(u"\uD7FF", u"\U00010000"));
    QVERIFY(FolderList::codePointLess(u"\uE000", u"\U00010000"));
}

void ModelSettingsTest::chosenPathsAreNormalised()
{
    m_chooser->next = QStringList{QStringLiteral("/data/photos/"), QStringLiteral("/"),
                                  QStringLiteral("relative/dir"), QString()};
    m_model->addFolders();
    const QString relative = QDir::current().absoluteFilePath(QStringLiteral("relative/dir"));
    QCOMPARE(m_model->sources(),
             FolderList::sortedUnique(
                 {QStringLiteral("/"), QStringLiteral("/data/photos"), QDir::cleanPath(relative)}));
}

void ModelSettingsTest::cancelledOrMissingChooserChangesNothing()
{
    m_model->setSources({QStringLiteral("/b"), QStringLiteral("/a")});
    QSignalSpy spy(m_model.get(), &AgentModel::changed);
    m_chooser->next = std::nullopt;
    m_model->addFolders();
    QCOMPARE(m_chooser->calls, 1);

    TestModel withoutChooser(servicesFor(*m_engine));
    QSignalSpy otherSpy(&withoutChooser, &AgentModel::changed);
    withoutChooser.addFolders();

    QCOMPARE(spy.count(), 0);
    QCOMPARE(otherSpy.count(), 0);
    QCOMPARE(m_model->sources(), (QStringList{"/b", "/a"}));
    QVERIFY(m_engine->invocations().isEmpty());
}

void ModelSettingsTest::removeFolderRemovesEveryEqualEntryKeepingOrder()
{
    m_model->setSources(
        {QStringLiteral("/c"), QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/a")});
    m_model->removeFolder(QStringLiteral("/a"));
    QCOMPARE(m_model->sources(), (QStringList{"/c", "/b"}));
    QTest::qWait(50);
    QVERIFY(m_engine->invocations().isEmpty()); // nothing reaches the engine yet
}

void ModelSettingsTest::unsavedFolderEditsRevertAtNextRefresh()
{
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    const QStringList engineList = sampleStatus().settings.sources;
    m_chooser->next = QStringList{QStringLiteral("/added")};
    m_model->addFolders();
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->sources(), engineList);
    m_model->removeFolder(engineList.first());
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->sources(), engineList);
}

// Skip patterns

void ModelSettingsTest::parsedExclusions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("blanks, duplicates, empties")
        << QStringLiteral(" a ,   , b,\ta , ,c\n") << QStringList{"a", "b", "c"};
    QTest::newRow("empty") << QString() << QStringList{};
    QTest::newRow("all blank") << QStringLiteral("  \t\n ,  , \u00A0") << QStringList{};
    QTest::newRow("default") << AgentModel::defaultExclusionText
                             << QStringList{".DS_Store", ".Spotlight-V100", ".Trashes",
                                            ".fseventsd"};
    QTest::newRow("uppercase first") << QStringLiteral("B, a") << QStringList{"B", "a"};
    QTest::newRow("line break does not separate")
        << QStringLiteral("a\nb") << QStringList{QStringLiteral("a\nb")};
    QTest::newRow("sorted") << QStringLiteral("zeta, alpha, Mid")
                            << QStringList{"Mid", "alpha", "zeta"};
    QTest::newRow("only commas") << QStringLiteral(",,,") << QStringList{};
}

void ModelSettingsTest::parsedExclusions()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    m_model->setExclusionText(text);
    QCOMPARE(m_model->parsedExclusions(), expected);
    QCOMPARE(m_model->exclusionText(), text); // the text itself stays
}

// Saving

void ModelSettingsTest::saveBeforeFirstStatusSendsDefaults()
{
    m_model->save();
    QVERIFY(waitForCommands());
    const auto calls = m_engine->invocations();
    QCOMPARE(m_engine->commands(), (QStringList{"configure", "configure-transfer", "ui-status"}));
    QCOMPARE(calls[0].arguments.mid(0, 2), (QStringList{"configure", "--json-stdin"}));
    QCOMPARE(calls[0].standardInput, defaultSettingsDocument);
    QCOMPARE(calls[1].arguments.mid(0, 2), (QStringList{"configure-transfer", "--json-stdin"}));
    QCOMPARE(calls[1].standardInput, defaultPolicyDocument);
    QVERIFY(!calls[2].hadInput);
}

void ModelSettingsTest::saveSendsSourcesInModelOrderAndSortedExclusions()
{
    m_model->setSources({QStringLiteral("/b/x"), QStringLiteral("/a")});
    m_model->setScheduleEnabled(true);
    m_model->setIntervalMinutes(1440);
    m_model->setExclusionText(QStringLiteral("*.tmp, .cache, *.tmp"));
    m_model->save();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->invocations().first().standardInput,
             QByteArray(R"({"schema":"zqb.agent-settings.v1","enabled":true,)"
                        R"("intervalMinutes":1440,"sources":["\/b\/x","\/a"],)"
                        R"("exclusions":["*.tmp",".cache"]})"));
}

void ModelSettingsTest::saveWithEmptyFolderListIsAllowed()
{
    m_model->setExclusionText(QString());
    m_model->save();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->invocations().first().standardInput,
             QByteArray(R"({"schema":"zqb.agent-settings.v1","enabled":false,)"
                        R"("intervalMinutes":240,"sources":[],"exclusions":[]})"));
}

void ModelSettingsTest::backUpNowWithoutFoldersIsRefused()
{
    m_model->setNotice(QStringLiteral("earlier"));
    FeedbackTrace trace(m_model.get());
    m_model->backUpNow();
    QCOMPARE(trace.entries, QStringList{"error=Choose and save at least one folder first."});
    QTest::qWait(100);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
    QCOMPARE(m_model->notice(), std::optional<QString>(QStringLiteral("earlier")));
}

void ModelSettingsTest::backUpNowWithFoldersStartsTheChain()
{
    m_model->setSources({QStringLiteral("/data")});
    m_model->backUpNow();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(),
             (QStringList{"configure", "configure-transfer", "backup-all", "ui-status"}));
}

// The save chain

void ModelSettingsTest::settingsThatDoNotEncodeRunNothing()
{
    m_model->settingsDoNotEncode = true;
    m_model->setNotice(QStringLiteral("earlier"));
    FeedbackTrace trace(m_model.get());
    m_model->save();
    m_model->saveThenBackup();
    QCOMPARE(trace.entries,
             (QStringList{"error=" + folderSettingsMessage, "error=" + folderSettingsMessage}));
    QTest::qWait(100);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
    QVERIFY(!m_model->busy());
}

void ModelSettingsTest::configureFailureEndsChain()
{
    m_engine->answer(QStringLiteral("configure"), QByteArray(), "sources must be absolute", 64);
    m_model->setNotice(QStringLiteral("earlier"));
    FeedbackTrace trace(m_model.get());
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), QStringList{"configure"});
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "error=sources must be absolute"}));
    QCOMPARE(m_model->notice(), std::optional<QString>(QStringLiteral("earlier")));
}

void ModelSettingsTest::configureSuccessSavesPolicyWhileBusy()
{
    m_engine->answer(QStringLiteral("configure-transfer"), QByteArray(), {}, 0, 0.4);
    m_model->save();
    QTRY_COMPARE(m_engine->commands(), (QStringList{"configure", "configure-transfer"}));
    QVERIFY(m_model->busy());
    QVERIFY(!m_model->error());
    QVERIFY(waitForCommands());
}

void ModelSettingsTest::policyFailureAfterConfigureEndsChain()
{
    m_engine->answer(QStringLiteral("configure-transfer"), QByteArray(), "bandwidth out of range",
                     1);
    m_model->setSources({QStringLiteral("/data")});
    FeedbackTrace trace(m_model.get());
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"configure", "configure-transfer"}));
    QCOMPARE(trace.entries, (QStringList{"busy=1", "error=-", "busy=0", "busy=1", "error=-",
                                         "busy=0", "error=bandwidth out of range"}));
    QVERIFY(!m_model->notice());
}

void ModelSettingsTest::policyThatDoesNotEncodeEndsChain()
{
    m_model->policyDoesNotEncode = true;
    FeedbackTrace trace(m_model.get());
    m_model->save();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), QStringList{"configure"});
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "error=" + networkPolicyMessage}));
}

void ModelSettingsTest::saveSuccessSetsNoticeAndRefreshesQuietly()
{
    m_engine->answer(QStringLiteral("ui-status"), "not a document"); // a quiet refresh hides this
    m_model->setSources({QStringLiteral("/data")});
    FeedbackTrace trace(m_model.get());
    m_model->save();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"configure", "configure-transfer", "ui-status"}));
    QCOMPARE(trace.entries, (QStringList{"busy=1", "error=-", "busy=0", "busy=1", "error=-",
                                         "busy=0", "notice=" + savedMessage, "error=-"}));
    QCOMPARE(m_engine->invocations()[1].standardInput, defaultPolicyDocument);
}

void ModelSettingsTest::saveThenBackupSuccessRefreshesWithAnnouncement()
{
    AgentUIStatus status = sampleStatus();
    status.runtime.lastBackupAt = QStringLiteral("2026-11-22T10:00:00Z");
    status.runtime.recoveryReady = true;
    m_engine->answer(QStringLiteral("ui-status"), statusJson(status));
    // The same backup was already seen: the announcement is forced.
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();
    m_model->setSources({QStringLiteral("/data")});

    FeedbackTrace trace(m_model.get());
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(),
             (QStringList{"configure", "configure-transfer", "backup-all", "ui-status"}));
    QVERIFY(!m_engine->invocations()[2].hadInput);
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "busy=1", "error=-", "busy=0", "busy=1",
                          "error=-", "busy=0", "error=-", "notice=" + recoveryReadyBody}));
    QCOMPARE(m_notifier->posts.size(), 1);
    QCOMPARE(m_notifier->posts.first().title, QStringLiteral("ZQB backup Recovery Ready"));
}

void ModelSettingsTest::saveThenBackupSuccessShowsFailingRefresh()
{
    m_engine->answer(QStringLiteral("ui-status"), "garbage");
    m_model->setSources({QStringLiteral("/data")});
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral(
                                   "ZQB Agent returned an unreadable local status.")));
    QVERIFY(!m_model->notice());
}

void ModelSettingsTest::backupFailureErrorIsClearedByFollowingRefresh()
{
    m_engine->answer(QStringLiteral("backup-all"), "target offline", {}, 75);
    m_engine->answer(QStringLiteral("ui-status"), "garbage"); // quiet: no error from it
    m_model->setSources({QStringLiteral("/data")});
    FeedbackTrace trace(m_model.get());
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(),
             (QStringList{"configure", "configure-transfer", "backup-all", "ui-status"}));
    // The failure is set, and the refresh's dispatch clears it in the same step.
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "busy=1", "error=-", "busy=0", "busy=1",
                          "error=-", "busy=0", "error=target offline", "error=-"}));
    QVERIFY(!m_model->error());
    QVERIFY(!m_model->notice());
    QVERIFY(m_notifier->posts.isEmpty());
}

void ModelSettingsTest::busyNeverIdleBetweenChainCommands()
{
    m_engine->answer(QStringLiteral("configure"), QByteArray(), {}, 0, 0.15);
    m_engine->answer(QStringLiteral("configure-transfer"), QByteArray(), {}, 0, 0.15);
    m_engine->answer(QStringLiteral("backup-all"), QByteArray(), {}, 0, 0.15);
    m_model->setSources({QStringLiteral("/data")});

    // What a view could see: busy sampled at every turn of the event loop,
    // and every change with the turn in which it happened.
    int turn = 0;
    QList<bool> samples;
    QTimer sampler;
    sampler.setInterval(0);
    connect(&sampler, &QTimer::timeout, this, [&] {
        ++turn;
        samples << m_model->busy();
    });
    QList<QPair<int, bool>> changes;
    connect(m_model.get(), &AgentModel::busyChanged, this, [&] {
        changes.append({turn, m_model->busy()});
    });
    sampler.start();
    m_model->saveThenBackup();
    QVERIFY(waitForCommands());
    sampler.stop();

    QCOMPARE(changes.size(), 6);
    for (int i = 0; i < changes.size(); ++i)
        QCOMPARE(changes[i].second, i % 2 == 0);
    // Each false that ends a command is followed by the next true in the same turn.
    QCOMPARE(changes[1].first, changes[2].first);
    QCOMPARE(changes[3].first, changes[4].first);
    // No turn between the first and the last change saw busy false.
    const qsizetype first = samples.indexOf(true);
    const qsizetype last = samples.lastIndexOf(true);
    QVERIFY(first >= 0);
    QVERIFY(last - first > 10); // the sampler really ran while the chain did
    for (qsizetype i = first; i <= last; ++i)
        QVERIFY2(samples[i], qPrintable(QStringLiteral("idle at turn %1").arg(i)));
}

// Transfer policy

void ModelSettingsTest::policyDefaultsDocument()
{
    bool completed = false;
    m_model->saveTransferPolicy([&] { completed = true; });
    QVERIFY(m_model->busy());
    QVERIFY(waitForCommands());
    QVERIFY(completed);
    const auto calls = m_engine->invocations();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0].arguments.mid(0, 2), (QStringList{"configure-transfer", "--json-stdin"}));
    QCOMPARE(calls[0].standardInput, defaultPolicyDocument);
    QVERIFY(!calls[0].standardInput.contains("preferredTargetDeviceId"));
}

void ModelSettingsTest::policyCarriesModelFields()
{
    m_model->setTransfersPaused(true);
    m_model->setBandwidthLimitKibPerSecond(10240);
    m_model->setCurrentNetworkMetered(true);
    m_model->setAllowMeteredNetwork(true);
    m_model->saveTransferPolicy({});
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->invocations().first().standardInput,
             QByteArray(R"({"schema":"zqb.agent-transfer-policy.v1","paused":true,)"
                        R"("bandwidthLimitKibPerSecond":10240,"currentNetworkMetered":true,)"
                        R"("allowMeteredNetwork":true,"retryAttempts":3})"));
}

void ModelSettingsTest::policyNeverEchoesDeviceOrRetries()
{
    AgentUIStatus status = sampleStatus();
    status.transferPolicy.preferredTargetDeviceId = QStringLiteral("mac-mini/studio");
    status.transferPolicy.retryAttempts = 7;
    m_engine->answer(QStringLiteral("ui-status"), statusJson(status));
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();
    m_model->save();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->invocations()[1].standardInput,
             QByteArray(R"({"schema":"zqb.agent-transfer-policy.v1","paused":true,)"
                        R"("bandwidthLimitKibPerSecond":2048,"currentNetworkMetered":true,)"
                        R"("allowMeteredNetwork":true,"retryAttempts":3})"));
}

void ModelSettingsTest::policyCompletionOnlyOnSuccess()
{
    m_engine->answer(QStringLiteral("configure-transfer"), "policy rejected", {}, 1);
    int completions = 0;
    m_model->saveTransferPolicy([&] { ++completions; });
    QVERIFY(waitForCommands());
    QCOMPARE(completions, 0);
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral("policy rejected")));

    m_model->policyDoesNotEncode = true;
    m_model->saveTransferPolicy([&] { ++completions; });
    QCOMPARE(m_model->error(), std::optional<QString>(networkPolicyMessage));
    QVERIFY(waitForCommands());
    QCOMPARE(completions, 0);
    QCOMPARE(m_engine->commands(), QStringList{"configure-transfer"});

    // Gone before the command ends: the completion is not called.
    m_model->policyDoesNotEncode = false;
    m_engine->answer(QStringLiteral("configure-transfer"), QByteArray(), {}, 0, 0.2);
    m_model->saveTransferPolicy([&] { ++completions; });
    m_model.reset();
    QVERIFY(waitForCommands());
    QCOMPARE(completions, 0);
}

void ModelSettingsTest::fullDiskAccessChangesNothingHere()
{
    QSignalSpy spy(m_model.get(), &AgentModel::changed);
    m_model->openFullDiskAccess();
    QCOMPARE(spy.count(), 0);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
}

void ModelSettingsTest::thousandFoldersReachTheEngineWholeWhileTheWindowStaysFree()
{
    // An engine that reads the first 16 KiB of the settings document, then
    // waits for a word from this test's main thread before it reads the rest.
    // Were the document written from the main thread, the write would block on
    // the full pipe and the word could never be given.
    QTemporaryDir dir;
    const QString engine = dir.filePath(QStringLiteral("engine"));
    QFile script(engine);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(R"SH(#!/bin/bash
export LC_ALL=C
dir="$(dirname "$0")"
if [ "$1" = configure ]; then
  IFS= read -r -d '' -N 16384 part
  printf '%s' "$part" > "$dir/first"
  touch "$dir/halfway"
  while [ ! -f "$dir/go" ]; do sleep 0.02; done
  cat > "$dir/rest"
fi
exit 0
)SH");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    TestModel model(AgentModel::Services{AgentRunner(engine), nullptr, nullptr});

    const QStringList folders = longFolders(1000);
    model.setSources(folders);
    model.save();
    QVERIFY(model.busy());
    QVERIFY(QTest::qWaitFor([&] { return QFile::exists(dir.filePath("halfway")); }, 15000));
    QVERIFY(model.busy()); // the engine is still reading the document
    QFile(dir.filePath("go")).open(QIODevice::WriteOnly);
    QVERIFY(waitForCommands());
    QCOMPARE(model.notice(), std::optional<QString>(savedMessage));

    QFile first(dir.filePath("first"));
    QFile rest(dir.filePath("rest"));
    QVERIFY(first.open(QIODevice::ReadOnly) && rest.open(QIODevice::ReadOnly));
    const QByteArray received = first.readAll() + rest.readAll();
    QVERIFY2(received.size() > 200 * 1000, QByteArray::number(received.size()));
    const std::optional<AgentSettings> settings = AgentDocuments::decodeSettings(received);
    QVERIFY(settings);
    QCOMPARE(settings->sources, folders);
}

QTEST_GUILESS_MAIN(ModelSettingsTest)
#include "tst_model_settings.moc"
