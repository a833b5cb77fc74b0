#include "AgentDocuments.h"
#include "AgentRunner.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

// A complete status document as the engine prints it during a backup.
const char *const fullStatus = R"({
  "schema": "zqb.agent-ui-status.v1",
  "agentVersion": "1.4.2",
  "settings": {"schema": "zqb.agent-settings.v1", "enabled": true, "intervalMinutes": 60,
               "sources": ["\/Users\/alice\/Documents", "/Users/alice/Photos"],
               "exclusions": ["*.tmp", "node_modules"]},
  "transferPolicy": {"schema": "zqb.agent-transfer-policy.v1", "paused": false,
                     "bandwidthLimitKibPerSecond": 2048, "currentNetworkMetered": false,
                     "allowMeteredNetwork": true, "preferredTargetDeviceId": "dev-7",
                     "retryAttempts": 5},
  "runtime": {
    "state": "backing-up", "message": "Backing up 2 folders", "enrolled": true,
    "repositoryReady": true, "serviceReachable": true, "authorizedTargets": 1,
    "serviceVersion": "2.1.0", "latestAgentVersion": "1.5.0", "agentUpdateAvailable": true,
    "compatibility": "compatible", "active": true,
    "backupProgress": {"phase": "uploading", "sourceIndex": 1, "sourceCount": 2,
      "filesScanned": 1200, "totalFiles": 3400, "bytesScanned": 50000000,
      "totalBytes": 90000000, "objectsPrepared": 800, "totalObjects": 2000,
      "objectsUploaded": 300, "objectsReused": 120, "bytesUploaded": 12000000,
      "resumedPreparation": false, "lastProgressAt": "2026-03-01T10:15:00Z",
      "elapsedSeconds": 754},
    "lastContactAt": "2026-03-01T10:14:58Z", "lastBackupAttemptAt": "2026-03-01T10:02:26Z",
    "lastBackupAt": "2026-02-28T10:02:26Z", "recoveryReady": true,
    "lastError": "Target was asleep"
  }
})";

Json base()
{
    return Json::parse(fullStatus);
}

QByteArray text(const Json &document)
{
    return QByteArray::fromStdString(document.dump());
}

std::optional<AgentUIStatus> decode(const Json &document)
{
    return AgentDocuments::decodeStatus(text(document));
}

} // namespace

class TestEngineDocuments : public QObject
{
    Q_OBJECT

private slots:
    // Writing.
    void settingsWriteByteExact();
    void settingsWithoutFoldersWriteEmptyArray();
    void policyWithoutDeviceHasSixKeys();
    void policyWithDeviceHasSevenKeys();
    void everySolidusIsEscaped();
    void statusWritesKeysInOrderAndLeavesAbsentOut();
    void recordsRoundTrip();

    // Reading settings and policy.
    void deviceNullOrMissingIsAbsent();
    void missingRetryAttemptsFails();
    void otherSchemaIsKept();
    void extraKeyIsDropped();
    void numberAsBooleanFails();
    void settingsBreaches_data();
    void settingsBreaches();
    void plainAndEscapedSolidusReadAlike();
    void jsonTextRules_data();
    void jsonTextRules();
    void whitespaceAndByteOrderMark();
    void aNulByteAnywhereFailsTheDocument();

    // Reading the status document.
    void fullDocumentReads();
    void progressAbsentOrNull();
    void progressMissingAKeyFailsTheDocument();
    void recoveryReadinessUnknownDiffersFromFalse();
    void counterLimits_data();
    void counterLimits();
    void elapsedZeroDiffersFromAbsent();
    void unknownWordsRead();
    void extraKeysAreIgnoredAtEveryLevel();
    void settingsWithoutExclusionsFailsTheDocument();
    void requiredKeysAreRequired();
    void breachesFailTheDocument_data();
    void breachesFailTheDocument();
    void aRepeatedKeyCountsItsLastCopy();
    void everyCopyOfARepeatedKeyIsChecked();
    void documentLongerThanTheOutputCapReadsWhole();
    void textRulesHoldInIgnoredValues_data();
    void textRulesHoldInIgnoredValues();
};

void TestEngineDocuments::settingsWriteByteExact()
{
    AgentSettings settings;
    settings.enabled = true;
    settings.intervalMinutes = 60;
    settings.sources = {QStringLiteral("/Users/alice/Documents"),
                        QStringLiteral("/Volumes/Photo \"Lib\"/Grüße")};
    settings.exclusions = {QStringLiteral("*.tmp"), QStringLiteral("cache\\")};
    QCOMPARE(AgentDocuments::encode(settings),
             QByteArray("{\"schema\":\"zqb.agent-settings.v1\",\"enabled\":true,"
                        "\"intervalMinutes\":60,\"sources\":[\"\\/Users\\/alice\\/Documents\","
                        "\"\\/Volumes\\/Photo \\\"Lib\\\"\\/Grüße\"],"
                        "\"exclusions\":[\"*.tmp\",\"cache\\\\\"]}"));
}

void TestEngineDocuments::settingsWithoutFoldersWriteEmptyArray()
{
    AgentSettings settings;
    QCOMPARE(AgentDocuments::encode(settings),
             QByteArray(R"({"schema":"zqb.agent-settings.v1","enabled":false,)"
                        R"("intervalMinutes":0,"sources":[],"exclusions":[]})"));
}

void TestEngineDocuments::policyWithoutDeviceHasSixKeys()
{
    TransferPolicy policy;
    policy.paused = true;
    policy.bandwidthLimitKibPerSecond = 512;
    policy.currentNetworkMetered = true;
    const QByteArray written = AgentDocuments::encode(policy);
    QCOMPARE(written, QByteArray(R"({"schema":"zqb.agent-transfer-policy.v1","paused":true,)"
                                 R"("bandwidthLimitKibPerSecond":512,"currentNetworkMetered":true,)"
                                 R"("allowMeteredNetwork":false,"retryAttempts":3})"));
    QCOMPARE(Json::parse(written.toStdString()).size(), 6u);
}

void TestEngineDocuments::policyWithDeviceHasSevenKeys()
{
    TransferPolicy policy;
    policy.allowMeteredNetwork = true;
    policy.preferredTargetDeviceId = QStringLiteral("dev/7");
    const QByteArray written = AgentDocuments::encode(policy);
    QCOMPARE(written, QByteArray(R"({"schema":"zqb.agent-transfer-policy.v1","paused":false,)"
                                 R"("bandwidthLimitKibPerSecond":0,"currentNetworkMetered":false,)"
                                 R"("allowMeteredNetwork":true,"preferredTargetDeviceId":"dev\/7",)"
                                 R"("retryAttempts":3})"));
    QCOMPARE(Json::parse(written.toStdString()).size(), 7u);
}

void TestEngineDocuments::everySolidusIsEscaped()
{
    AgentSettings settings;
    settings.sources = {QStringLiteral("//a///b/"), QStringLiteral("\\/")};
    const QByteArray written = AgentDocuments::encode(settings);
    QVERIFY(written.contains(R"(["\/\/a\/\/\/b\/","\\\/"])"));
    for (qsizetype i = written.indexOf('/'); i >= 0; i = written.indexOf('/', i + 1))
        QCOMPARE(written.at(i - 1), '\\');
    QCOMPARE(AgentDocuments::decodeSettings(written), settings);
}

void TestEngineDocuments::statusWritesKeysInOrderAndLeavesAbsentOut()
{
    AgentUIStatus status;
    status.schema = QStringLiteral("s");
    status.agentVersion = QStringLiteral("1");
    status.runtime.state = QStringLiteral("connected");
    status.runtime.authorizedTargets = -2;
    status.runtime.recoveryReady = false;
    QCOMPARE(AgentDocuments::encode(status),
             QByteArray(R"({"schema":"s","agentVersion":"1",)"
                        R"("settings":{"schema":"zqb.agent-settings.v1","enabled":false,)"
                        R"("intervalMinutes":0,"sources":[],"exclusions":[]},)"
                        R"("transferPolicy":{"schema":"zqb.agent-transfer-policy.v1",)"
                        R"("paused":false,"bandwidthLimitKibPerSecond":0,)"
                        R"("currentNetworkMetered":false,"allowMeteredNetwork":false,)"
                        R"("retryAttempts":3},)"
                        R"("runtime":{"state":"connected","message":"","enrolled":false,)"
                        R"("repositoryReady":false,"serviceReachable":false,)"
                        R"("authorizedTargets":-2,"agentUpdateAvailable":false,)"
                        R"("compatibility":"","active":false,"recoveryReady":false}})"));

    BackupProgressStatus progress;
    progress.phase = QStringLiteral("scanning");
    progress.totalBytes = std::numeric_limits<quint64>::max();
    progress.elapsedSeconds = 0;
    QCOMPARE(AgentDocuments::encode(progress),
             QByteArray(R"({"phase":"scanning","sourceIndex":0,"sourceCount":0,)"
                        R"("filesScanned":0,"totalFiles":0,"bytesScanned":0,)"
                        R"("totalBytes":18446744073709551615,"objectsPrepared":0,)"
                        R"("totalObjects":0,"objectsUploaded":0,"objectsReused":0,)"
                        R"("bytesUploaded":0,"resumedPreparation":false,"elapsedSeconds":0})"));
}

void TestEngineDocuments::recordsRoundTrip()
{
    const std::optional<AgentUIStatus> status = AgentDocuments::decodeStatus(fullStatus);
    QVERIFY(status);
    QCOMPARE(AgentDocuments::decodeStatus(AgentDocuments::encode(*status)), status);
    QCOMPARE(AgentDocuments::decodeSettings(AgentDocuments::encode(status->settings)),
             status->settings);
    QCOMPARE(AgentDocuments::decodeTransferPolicy(AgentDocuments::encode(status->transferPolicy)),
             status->transferPolicy);

    AgentSettings odd;
    odd.schema = QStringLiteral("\"quoted\"\n\ttab \u0001 \U0001F600");
    odd.intervalMinutes = std::numeric_limits<qint64>::min();
    odd.sources = {QString(), QStringLiteral("\u2028")};
    QCOMPARE(AgentDocuments::decodeSettings(AgentDocuments::encode(odd)), odd);
}

void TestEngineDocuments::deviceNullOrMissingIsAbsent()
{
    Json policy = base()["transferPolicy"];
    policy["preferredTargetDeviceId"] = nullptr;
    auto read = AgentDocuments::decodeTransferPolicy(text(policy));
    QVERIFY(read);
    QCOMPARE(read->preferredTargetDeviceId, std::nullopt);
    policy.erase("preferredTargetDeviceId");
    read = AgentDocuments::decodeTransferPolicy(text(policy));
    QVERIFY(read);
    QCOMPARE(read->preferredTargetDeviceId, std::nullopt);
    QCOMPARE(read->retryAttempts, 5);
}

void TestEngineDocuments::missingRetryAttemptsFails()
{
    Json policy = base()["transferPolicy"];
    policy.erase("retryAttempts");
    QCOMPARE(AgentDocuments::decodeTransferPolicy(text(policy)), std::nullopt);
    Json document = base();
    document["transferPolicy"].erase("retryAttempts");
    QCOMPARE(decode(document), std::nullopt);
}

void TestEngineDocuments::otherSchemaIsKept()
{
    Json settings = base()["settings"];
    settings["schema"] = "zqb.agent-settings.v9-future";
    const auto read = AgentDocuments::decodeSettings(text(settings));
    QVERIFY(read);
    QCOMPARE(read->schema, QStringLiteral("zqb.agent-settings.v9-future"));
}

void TestEngineDocuments::extraKeyIsDropped()
{
    Json settings = base()["settings"];
    settings["compressionLevel"] = {{"nested", {1, 2.5, nullptr}}};
    const auto read = AgentDocuments::decodeSettings(text(settings));
    QVERIFY(read);
    QVERIFY(!AgentDocuments::encode(*read).contains("compressionLevel"));
    QCOMPARE(read->exclusions, (QStringList{"*.tmp", "node_modules"}));
}

void TestEngineDocuments::numberAsBooleanFails()
{
    Json settings = base()["settings"];
    settings["enabled"] = 1;
    QCOMPARE(AgentDocuments::decodeSettings(text(settings)), std::nullopt);
    settings["enabled"] = "true";
    QCOMPARE(AgentDocuments::decodeSettings(text(settings)), std::nullopt);
    Json document = base();
    document["runtime"]["recoveryReady"] = 0;
    QCOMPARE(decode(document), std::nullopt);
}

void TestEngineDocuments::settingsBreaches_data()
{
    QTest::addColumn<QByteArray>("json");
    const QByteArray tail = R"(,"sources":[],"exclusions":[]})";
    const QByteArray valid = R"({"schema":"s","enabled":true,"intervalMinutes":5)" + tail;
    QTest::newRow("valid control (reads)") << QByteArray();
    QTest::newRow("not an object") << QByteArray(R"(["schema"])");
    QTest::newRow("null document") << QByteArray("null");
    QTest::newRow("empty text") << QByteArray("");
    QTest::newRow("interval with fraction")
        << QByteArray(R"({"schema":"s","enabled":true,"intervalMinutes":5.0)" + tail);
    QTest::newRow("interval with exponent")
        << QByteArray(R"({"schema":"s","enabled":true,"intervalMinutes":1e3)" + tail);
    QTest::newRow("interval above signed 64") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":9223372036854775808)" + tail);
    QTest::newRow("interval below signed 64") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":-9223372036854775809)" + tail);
    QTest::newRow("interval as string")
        << QByteArray(R"({"schema":"s","enabled":true,"intervalMinutes":"5")" + tail);
    QTest::newRow("schema null") << QByteArray(
        R"({"schema":null,"enabled":true,"intervalMinutes":5)" + tail);
    QTest::newRow("list member not a string") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":5,"sources":["a",1],"exclusions":[]})");
    QTest::newRow("list member null") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":5,"sources":[null],"exclusions":[]})");
    QTest::newRow("nested list") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":5,"sources":[["a"]],"exclusions":[]})");
    QTest::newRow("list as object") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":5,"sources":{},"exclusions":[]})");
    QTest::newRow("sources null") << QByteArray(
        R"({"schema":"s","enabled":true,"intervalMinutes":5,"sources":null,"exclusions":[]})");
    QTest::newRow("trailing garbage") << valid + "x";
    QTest::newRow("two objects") << valid + valid;
    QTest::newRow("comment") << QByteArray("/* c */") + valid;
    QTest::newRow("invalid UTF-8 in a string")
        << QByteArray("{\"schema\":\"\xff\",\"enabled\":true,\"intervalMinutes\":5") + tail;
    QTest::newRow("lone surrogate escape")
        << QByteArray(R"({"schema":"\ud800","enabled":true,"intervalMinutes":5)" + tail);
    QTest::newRow("unterminated") << valid.chopped(1);
}

void TestEngineDocuments::settingsBreaches()
{
    QFETCH(QByteArray, json);
    if (json.isNull()) {
        const auto read = AgentDocuments::decodeSettings(
            R"( {"schema":"s","enabled":true,"intervalMinutes":-9223372036854775808,"sources":[],"exclusions":[]} )");
        QVERIFY(read);
        QCOMPARE(read->intervalMinutes, std::numeric_limits<qint64>::min());
        return;
    }
    QCOMPARE(AgentDocuments::decodeSettings(json), std::nullopt);
}

void TestEngineDocuments::plainAndEscapedSolidusReadAlike()
{
    const auto status = AgentDocuments::decodeStatus(fullStatus);
    QVERIFY(status);
    QCOMPARE(status->settings.sources,
             (QStringList{"/Users/alice/Documents", "/Users/alice/Photos"}));
}

void TestEngineDocuments::jsonTextRules_data()
{
    // Each row is the schema value and number of a settings document, and
    // what it reads as (null: the document fails).
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QString>("schemaRead");
    QTest::newRow("escapes") << QByteArray(R"("\b\f\n\r\t\\\/\u00e9")") << QByteArray("1")
                             << QStringLiteral("\b\f\n\r\t\\/\u00e9");
    QTest::newRow("escaped quote")
        << QByteArray("\"a\\\"b\"") << QByteArray("1") << QStringLiteral("a\"b");
    QTest::newRow("surrogate pair escape")
        << QByteArray(R"("\ud83d\ude00")") << QByteArray("1") << QStringLiteral("\U0001F600");
    QTest::newRow("escaped nul") << QByteArray(R"("a\u0000b")") << QByteArray("1")
                                 << QString::fromUtf8("a\0b", 3);
    QTest::newRow("raw multibyte") << QByteArray("\"Gr\xc3\xbc\xc3\x9f \xf0\x9f\x98\x80\"")
                                   << QByteArray("1") << QStringLiteral("Grüß \U0001F600");
    QTest::newRow("empty string") << QByteArray(R"("")") << QByteArray("0") << QString("");
    QTest::newRow("lone low surrogate")
        << QByteArray(R"("\udc00")") << QByteArray("1") << QString();
    QTest::newRow("high surrogate then letter")
        << QByteArray(R"("\ud800x")") << QByteArray("1") << QString();
    QTest::newRow("bad escape") << QByteArray(R"("\x41")") << QByteArray("1") << QString();
    QTest::newRow("short unicode escape")
        << QByteArray(R"("\u12")") << QByteArray("1") << QString();
    QTest::newRow("raw control character")
        << QByteArray("\"a\tb\"") << QByteArray("1") << QString();
    QTest::newRow("overlong encoding")
        << QByteArray("\"\xc0\xaf\"") << QByteArray("1") << QString();
    QTest::newRow("encoded surrogate")
        << QByteArray("\"\xed\xa0\x80\"") << QByteArray("1") << QString();
    QTest::newRow("unterminated string") << QByteArray("\"abc") << QByteArray("1") << QString();
    QTest::newRow("leading zero") << QByteArray(R"("s")") << QByteArray("01") << QString();
    QTest::newRow("plus sign") << QByteArray(R"("s")") << QByteArray("+1") << QString();
    QTest::newRow("bare minus") << QByteArray(R"("s")") << QByteArray("-") << QString();
    QTest::newRow("trailing dot") << QByteArray(R"("s")") << QByteArray("1.") << QString();
    QTest::newRow("NaN") << QByteArray(R"("s")") << QByteArray("NaN") << QString();
    QTest::newRow("hex") << QByteArray(R"("s")") << QByteArray("0x10") << QString();
    QTest::newRow("truncated literal") << QByteArray("tru") << QByteArray("1") << QString();
}

void TestEngineDocuments::jsonTextRules()
{
    QFETCH(QByteArray, schema);
    QFETCH(QByteArray, number);
    QFETCH(QString, schemaRead);
    const QByteArray json = "{\"schema\":" + schema +
                            ",\"enabled\":false,\"intervalMinutes\":" + number +
                            ",\"sources\":[],\"exclusions\":[]}";
    const auto read = AgentDocuments::decodeSettings(json);
    QCOMPARE(read.has_value(), !schemaRead.isNull());
    if (read)
        QCOMPARE(read->schema, schemaRead);
}

void TestEngineDocuments::aNulByteAnywhereFailsTheDocument()
{
    // A raw NUL byte is never JSON: not whitespace, and not allowed unescaped
    // in a string. A document it follows, ends or splits is not read.
    const QByteArray nul(1, '\0');
    const QByteArray settings =
        R"({"schema":"s","enabled":false,"intervalMinutes":1,"sources":["a"],"exclusions":[]})";
    QVERIFY(AgentDocuments::decodeSettings(settings));
    QCOMPARE(AgentDocuments::decodeSettings(settings + nul), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(settings + nul + "garbage"), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(settings + QByteArray(200, '\0')), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(settings + " " + nul + " "), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(
                 QByteArray(settings).replace("[\"a\"]", "[\"a" + nul + "\"]")),
             std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(nul + settings), std::nullopt);

    QVERIFY(AgentDocuments::decodeStatus(fullStatus));
    QCOMPARE(AgentDocuments::decodeStatus(QByteArray(fullStatus) + nul), std::nullopt);

    const auto status = AgentDocuments::decodeStatus(fullStatus);
    const QByteArray policy = AgentDocuments::encode(status->transferPolicy);
    QVERIFY(AgentDocuments::decodeTransferPolicy(policy));
    QCOMPARE(AgentDocuments::decodeTransferPolicy(policy + nul + "}"), std::nullopt);
}

void TestEngineDocuments::whitespaceAndByteOrderMark()
{
    const QByteArray json =
        R"({"schema":"s","enabled":false,"intervalMinutes":1,"sources":[],"exclusions":[]})";
    QVERIFY(AgentDocuments::decodeSettings(" \t\r\n" + json + "\n\t "));
    QVERIFY(AgentDocuments::decodeSettings("\xef\xbb\xbf" + json));
    QCOMPARE(AgentDocuments::decodeSettings("\v" + json), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(json + "\f"), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(json + ","), std::nullopt);
    QCOMPARE(AgentDocuments::decodeSettings(QByteArray(json).replace(":", " :\n ")),
             AgentDocuments::decodeSettings(json));
}

void TestEngineDocuments::fullDocumentReads()
{
    const auto status = AgentDocuments::decodeStatus(fullStatus);
    QVERIFY(status);
    QCOMPARE(status->schema, QStringLiteral("zqb.agent-ui-status.v1"));
    QCOMPARE(status->agentVersion, QStringLiteral("1.4.2"));
    QCOMPARE(status->settings.intervalMinutes, 60);
    QCOMPARE(status->transferPolicy.bandwidthLimitKibPerSecond, 2048);
    QCOMPARE(status->transferPolicy.preferredTargetDeviceId, QStringLiteral("dev-7"));
    const RuntimeStatus &runtime = status->runtime;
    QCOMPARE(runtime.state, QStringLiteral("backing-up"));
    QCOMPARE(runtime.authorizedTargets, 1);
    QCOMPARE(runtime.serviceVersion, QStringLiteral("2.1.0"));
    QCOMPARE(runtime.recoveryReady, std::optional<bool>(true));
    QCOMPARE(runtime.lastError, QStringLiteral("Target was asleep"));
    QVERIFY(runtime.backupProgress);
    QCOMPARE(runtime.backupProgress->phase, QStringLiteral("uploading"));
    QCOMPARE(runtime.backupProgress->objectsReused, 120u);
    QCOMPARE(runtime.backupProgress->elapsedSeconds, std::optional<quint64>(754));
    QCOMPARE(runtime.backupProgress->lastProgressAt, QStringLiteral("2026-03-01T10:15:00Z"));
}

void TestEngineDocuments::progressAbsentOrNull()
{
    Json document = base();
    document["runtime"].erase("backupProgress");
    auto status = decode(document);
    QVERIFY(status);
    QCOMPARE(status->runtime.backupProgress, std::nullopt);
    document["runtime"]["backupProgress"] = nullptr;
    status = decode(document);
    QVERIFY(status);
    QCOMPARE(status->runtime.backupProgress, std::nullopt);
}

void TestEngineDocuments::progressMissingAKeyFailsTheDocument()
{
    Json document = base();
    document["runtime"]["backupProgress"].erase("objectsReused");
    QCOMPARE(decode(document), std::nullopt);
}

void TestEngineDocuments::recoveryReadinessUnknownDiffersFromFalse()
{
    Json document = base();
    document["runtime"].erase("recoveryReady");
    const auto unknown = decode(document);
    QVERIFY(unknown);
    QCOMPARE(unknown->runtime.recoveryReady, std::nullopt);
    document["runtime"]["recoveryReady"] = false;
    const auto no = decode(document);
    QVERIFY(no);
    QCOMPARE(no->runtime.recoveryReady, std::optional<bool>(false));
    QVERIFY(unknown->runtime.recoveryReady != no->runtime.recoveryReady);
}

void TestEngineDocuments::counterLimits_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("reads");
    QTest::newRow("2^64 - 1") << QByteArray("18446744073709551615") << true;
    QTest::newRow("zero") << QByteArray("0") << true;
    QTest::newRow("minus zero") << QByteArray("-0") << true;
    QTest::newRow("-1") << QByteArray("-1") << false;
    QTest::newRow("2^64") << QByteArray("18446744073709551616") << false;
    QTest::newRow("1.0") << QByteArray("1.0") << false;
    QTest::newRow("1e3") << QByteArray("1e3") << false;
    QTest::newRow("string") << QByteArray("\"12\"") << false;
    QTest::newRow("true") << QByteArray("true") << false;
    QTest::newRow("null") << QByteArray("null") << false;
}

void TestEngineDocuments::counterLimits()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, reads);
    QByteArray document = fullStatus;
    document.replace("\"bytesUploaded\": 12000000", "\"bytesUploaded\": " + value);
    QVERIFY(document != QByteArray(fullStatus));
    const auto status = AgentDocuments::decodeStatus(document);
    QCOMPARE(status.has_value(), reads);
    if (reads && value.startsWith('1'))
        QCOMPARE(status->runtime.backupProgress->bytesUploaded,
                 std::numeric_limits<quint64>::max());
}

void TestEngineDocuments::elapsedZeroDiffersFromAbsent()
{
    Json document = base();
    document["runtime"]["backupProgress"]["elapsedSeconds"] = 0;
    const auto zero = decode(document);
    QVERIFY(zero);
    QCOMPARE(zero->runtime.backupProgress->elapsedSeconds, std::optional<quint64>(0));
    document["runtime"]["backupProgress"].erase("elapsedSeconds");
    const auto absent = decode(document);
    QVERIFY(absent);
    QCOMPARE(absent->runtime.backupProgress->elapsedSeconds, std::nullopt);
    document["runtime"]["backupProgress"]["elapsedSeconds"] = nullptr;
    QCOMPARE(decode(document)->runtime.backupProgress->elapsedSeconds, std::nullopt);
}

void TestEngineDocuments::unknownWordsRead()
{
    Json document = base();
    document["runtime"]["state"] = "hibernating";
    document["runtime"]["compatibility"] = "legacy-v0";
    document["runtime"]["backupProgress"]["phase"] = "defragmenting";
    const auto status = decode(document);
    QVERIFY(status);
    QCOMPARE(status->runtime.state, QStringLiteral("hibernating"));
    QCOMPARE(status->runtime.compatibility, QStringLiteral("legacy-v0"));
    QCOMPARE(status->runtime.backupProgress->phase, QStringLiteral("defragmenting"));
}

void TestEngineDocuments::extraKeysAreIgnoredAtEveryLevel()
{
    const auto expected = AgentDocuments::decodeStatus(fullStatus);
    Json document = base();
    document["newTopLevel"] = {{"deep", {{"deeper", {1, "two", nullptr, 3.5, {{"x", false}}}}}}};
    document["runtime"]["extra"] = Json::array({Json::object(), Json::array()});
    document["runtime"]["backupProgress"]["rate"] = 1.5;
    document["settings"]["future"] = -1;
    document["transferPolicy"]["future"] = nullptr;
    const auto status = decode(document);
    QVERIFY(status);
    QCOMPARE(status, expected);
    QVERIFY(!AgentDocuments::encode(*status).contains("newTopLevel"));

    // Deep nesting under an unknown key is skipped without recursion.
    QByteArray deep = fullStatus;
    deep.chop(1);
    deep += ",\"deep\":" + QByteArray(100000, '[') + QByteArray(100000, ']') + "}";
    QCOMPARE(AgentDocuments::decodeStatus(deep), expected);
}

void TestEngineDocuments::settingsWithoutExclusionsFailsTheDocument()
{
    Json document = base();
    document["settings"].erase("exclusions");
    QCOMPARE(decode(document), std::nullopt);
}

void TestEngineDocuments::requiredKeysAreRequired()
{
    // Every required key, removed or set to null, fails the whole document;
    // every optional one may go.
    const QStringList optional = {
        "serviceVersion",      "latestAgentVersion", "backupProgress",         "lastContactAt",
        "lastBackupAttemptAt", "lastBackupAt",       "recoveryReady",          "lastError",
        "lastProgressAt",      "elapsedSeconds",     "preferredTargetDeviceId"};
    const Json full = base();
    int required = 0;
    auto check = [&](const std::vector<std::string> &path) {
        const std::string &key = path.back();
        Json removed = full;
        Json nulled = full;
        Json *inRemoved = &removed;
        Json *inNulled = &nulled;
        for (size_t i = 0; i + 1 < path.size(); ++i) {
            inRemoved = &(*inRemoved)[path[i]];
            inNulled = &(*inNulled)[path[i]];
        }
        inRemoved->erase(key);
        (*inNulled)[key] = nullptr;
        const bool isOptional = optional.contains(QString::fromStdString(key));
        QVERIFY2(decode(removed).has_value() == isOptional, key.c_str());
        QVERIFY2(decode(nulled).has_value() == isOptional, key.c_str());
        required += isOptional ? 0 : 1;
    };
    for (const auto &[key, value] : full.items()) {
        check({key});
        if (value.is_object()) {
            for (const auto &[inner, innerValue] : value.items()) {
                check({key, inner});
                if (innerValue.is_object()) {
                    for (const auto &[deepest, ignored] : innerValue.items())
                        check({key, inner, deepest});
                }
            }
        }
    }
    // 5 top-level + 5 settings + 6 policy + 9 runtime + 13 progress.
    QCOMPARE(required, 38);
}

void TestEngineDocuments::breachesFailTheDocument_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("signed field with fraction")
        << QByteArray("\"authorizedTargets\": 1") << QByteArray("\"authorizedTargets\": 1.0");
    QTest::newRow("signed field with exponent")
        << QByteArray("\"sourceIndex\": 1") << QByteArray("\"sourceIndex\": 1E0");
    QTest::newRow("boolean as string")
        << QByteArray("\"active\": true") << QByteArray("\"active\": \"true\"");
    QTest::newRow("string as number")
        << QByteArray("\"agentVersion\": \"1.4.2\"") << QByteArray("\"agentVersion\": 142");
    QTest::newRow("optional string as number")
        << QByteArray("\"lastError\": \"Target was asleep\"") << QByteArray("\"lastError\": 7");
    QTest::newRow("record as array")
        << QByteArray("\"backupProgress\": {") << QByteArray("\"backupProgress\": [], \"x\": {");
    QTest::newRow("record as string")
        << QByteArray("\"runtime\": {") << QByteArray("\"runtime\": \"none\", \"x\": {");
    QTest::newRow("negative unsigned elapsed")
        << QByteArray("\"elapsedSeconds\": 754") << QByteArray("\"elapsedSeconds\": -754");
    QTest::newRow("unsigned with fraction")
        << QByteArray("\"elapsedSeconds\": 754") << QByteArray("\"elapsedSeconds\": 754.5");
    QTest::newRow("settings list holds a number")
        << QByteArray("\"node_modules\"") << QByteArray("42");
    QTest::newRow("keys in another case")
        << QByteArray("\"objectsReused\"") << QByteArray("\"ObjectsReused\"");
    QTest::newRow("trailing comma") << QByteArray("\"lastError\": \"Target was asleep\"")
                                    << QByteArray("\"lastError\": \"Target was asleep\",");
    QTest::newRow("single quotes") << QByteArray("\"schema\": \"zqb.agent-ui-status.v1\"")
                                   << QByteArray("'schema': 'zqb.agent-ui-status.v1'");
}

void TestEngineDocuments::breachesFailTheDocument()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QByteArray document = fullStatus;
    QVERIFY(document.contains(from));
    document.replace(document.indexOf(from), from.size(), to);
    QCOMPARE(AgentDocuments::decodeStatus(document), std::nullopt);
    QVERIFY(AgentDocuments::decodeStatus(fullStatus)); // the control still reads
}

void TestEngineDocuments::aRepeatedKeyCountsItsLastCopy()
{
    // The last copy of a repeated key counts, whole: the second "runtime"
    // has no progress and no error, so the status has none either.
    QByteArray document = fullStatus;
    document.chop(1);
    document +=
        R"(,"agentVersion":"9.9","runtime":{"state":"paused","message":"m","enrolled":false,)"
        R"("repositoryReady":false,"serviceReachable":false,"authorizedTargets":0,)"
        R"("agentUpdateAvailable":false,"compatibility":"c","active":false}})";
    const auto status = AgentDocuments::decodeStatus(document);
    QVERIFY(status);
    QCOMPARE(status->agentVersion, QStringLiteral("9.9"));
    QCOMPARE(status->runtime.state, QStringLiteral("paused"));
    QCOMPARE(status->runtime.backupProgress, std::nullopt);
    QCOMPARE(status->runtime.lastError, std::nullopt);

    QByteArray repeatedList = fullStatus;
    repeatedList.replace("\"exclusions\": [", "\"exclusions\": [\"a\"], \"exclusions\": [");
    QCOMPARE(AgentDocuments::decodeStatus(repeatedList)->settings.exclusions,
             (QStringList{"*.tmp", "node_modules"}));

    // Deep inside, and three times over.
    QByteArray repeatedInProgress = fullStatus;
    repeatedInProgress.replace("\"elapsedSeconds\": 754",
                               "\"elapsedSeconds\": 1, \"elapsedSeconds\": 2, \"elapsedSeconds\": 754");
    QCOMPARE(AgentDocuments::decodeStatus(repeatedInProgress)->runtime.backupProgress->elapsedSeconds,
             754);

    // Under an unknown key a repeat is only text to skip.
    QByteArray repeatedUnknown = fullStatus;
    repeatedUnknown.chop(1);
    QVERIFY(AgentDocuments::decodeStatus(repeatedUnknown + R"(,"x":{"a":1,"a":"b"}})"));
    QVERIFY(AgentDocuments::decodeStatus(repeatedUnknown + R"(,"x":[{"b":[{"a":1,"a":[]}]}]})"));
}

void TestEngineDocuments::everyCopyOfARepeatedKeyIsChecked()
{
    // A bad copy fails the document, wherever it stands among the copies.
    QByteArray badFirst = fullStatus;
    badFirst.replace("\"elapsedSeconds\": 754", "\"elapsedSeconds\": -1, \"elapsedSeconds\": 754");
    QCOMPARE(AgentDocuments::decodeStatus(badFirst), std::nullopt);

    QByteArray badMiddle = fullStatus;
    badMiddle.replace("\"elapsedSeconds\": 754",
                      "\"elapsedSeconds\": 1, \"elapsedSeconds\": 1.5, \"elapsedSeconds\": 754");
    QCOMPARE(AgentDocuments::decodeStatus(badMiddle), std::nullopt);

    // An earlier copy of a record is checked whole: this one lacks "state".
    QByteArray document = fullStatus;
    document.replace("\"runtime\": {", R"("runtime": {"message":"m"}, "runtime": {)");
    QVERIFY(document.contains(R"("runtime": {"message":"m"}, "runtime": {)"));
    QCOMPARE(AgentDocuments::decodeStatus(document), std::nullopt);

    // A repeat inside an earlier copy is checked too.
    QByteArray nested = fullStatus;
    const QByteArray runtime = nested.mid(nested.indexOf("\"runtime\": {"));
    QByteArray earlierRuntime = runtime.left(runtime.indexOf("\"lastError\""));
    earlierRuntime.replace("\"elapsedSeconds\": 754", "\"elapsedSeconds\": true, \"elapsedSeconds\": 754");
    earlierRuntime += "\"lastError\": null}, ";
    QByteArray nestedBad = nested;
    nestedBad.replace("\"runtime\": {", earlierRuntime + "\"runtime\": {");
    QCOMPARE(AgentDocuments::decodeStatus(nestedBad), std::nullopt);
    // ... and the same earlier copy without the bad repeat reads.
    earlierRuntime.replace("\"elapsedSeconds\": true, ", "");
    nested.replace("\"runtime\": {", earlierRuntime + "\"runtime\": {");
    QVERIFY(AgentDocuments::decodeStatus(nested));
}

void TestEngineDocuments::textRulesHoldInIgnoredValues_data()
{
    // Each row adds one member to the full document (null: it is added twice,
    // the first time as given and then as a valid "agentVersion").
    QTest::addColumn<QByteArray>("member");
    QTest::addColumn<bool>("reads");
    QTest::newRow("plain unknown key") << QByteArray(R"("x": "y")") << true;
    QTest::newRow("invalid UTF-8 in an unknown key's name") << QByteArray("\"x\xff\": 1") << false;
    QTest::newRow("invalid UTF-8 in an unknown key's value")
        << QByteArray("\"x\": [\"\xc0\xaf\"]") << false;
    QTest::newRow("lone surrogate in an unknown key's value")
        << QByteArray(R"("x": {"y": "\ud800"})") << false;
    QTest::newRow("raw NUL in an unknown key's value")
        << QByteArray("\"x\": \"a\0b\"", 10) << false;
    QTest::newRow("escaped NUL in an unknown key's value")
        << QByteArray(R"("x": "a\u0000b")") << true;
    QTest::newRow("raw NUL between members") << QByteArray("\0\"x\": 1", 7) << false;
    QTest::newRow("integer beyond 64 bits under an unknown key")
        << QByteArray(R"("x": 100000000000000000000)") << true;
    QTest::newRow("large float under an unknown key") << QByteArray(R"("x": -1e300)") << true;
    // Beyond the range of a double: no reader could keep such a number, so
    // the document fails even where the value would be ignored.
    QTest::newRow("float beyond a double under an unknown key")
        << QByteArray(R"("x": 1e400)") << false;
    QTest::newRow("integer beyond a double under an unknown key")
        << QByteArray(R"("x": 1)" + QByteArray(400, '0')) << false;
    // A repeated key is read every time: a bad first occurrence fails.
    QTest::newRow("repeated key, first occurrence invalid")
        << QByteArray(R"("agentVersion": 1, "agentVersion": "1.4.2")") << false;
    QTest::newRow("repeated key, both valid")
        << QByteArray(R"("agentVersion": "0", "agentVersion": "1.4.2")") << true;
}

void TestEngineDocuments::textRulesHoldInIgnoredValues()
{
    QFETCH(QByteArray, member);
    QFETCH(bool, reads);
    QByteArray document = fullStatus;
    QVERIFY(document.endsWith('}'));
    document.chop(1);
    document += ", " + member + "}";
    const auto expected = AgentDocuments::decodeStatus(fullStatus);
    QVERIFY(expected);
    if (reads)
        QCOMPARE(AgentDocuments::decodeStatus(document), expected);
    else
        QCOMPARE(AgentDocuments::decodeStatus(document), std::nullopt);
}

void TestEngineDocuments::documentLongerThanTheOutputCapReadsWhole()
{
    QTemporaryDir dir;
    Json document = base();
    auto runWith = [&](const Json &printed) {
        QFile file(dir.filePath("status.json"));
        file.open(QIODevice::WriteOnly);
        file.write(text(printed) + "\n");
        file.close();
        const QString engine = dir.filePath("engine");
        QFile script(engine);
        script.open(QIODevice::WriteOnly);
        script.write("#!/bin/sh\ncat '" + QFile::encodeName(file.fileName()) + "'\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return AgentRunner(engine).run({"ui-status"});
    };

    // One character beyond the cap of the shown text: `output` is cut, the
    // document is read from everything the engine printed.
    document["runtime"]["message"] = "";
    const qsizetype room = 8192 - qsizetype(text(document).size());
    document["runtime"]["message"] = std::string(size_t(room + 1), 'm');
    CommandResult result = runWith(document);
    QVERIFY(result.succeeded);
    QCOMPARE(result.output.size(), 8192);
    QCOMPARE(AgentDocuments::decodeStatus(result.output.toUtf8()), std::nullopt);
    std::optional<AgentUIStatus> status = AgentDocuments::decodeStatus(result.wholeOutput());
    QVERIFY(status);
    QCOMPARE(status->runtime.message.size(), room + 1);

    // A thousand folders of 200 characters, about 220 KB.
    Json sources = Json::array();
    QStringList expected;
    for (int i = 0; i < 1000; ++i) {
        QString path = QStringLiteral("/Volumes/Archive/%1/").arg(i, 4, 10, QLatin1Char('0'));
        path += QString(200 - path.size(), QChar(0x00E9)); // two bytes each in UTF-8
        expected << path;
        sources.push_back(path.toStdString());
    }
    document["runtime"]["message"] = "m";
    document["settings"]["sources"] = sources;
    QVERIFY(text(document).size() > 200 * 1000);
    result = runWith(document);
    QVERIFY(result.succeeded);
    status = AgentDocuments::decodeStatus(result.wholeOutput());
    QVERIFY(status);
    QCOMPARE(status->settings.sources, expected);

    // Beyond the runner's byte cap (about 1.1 MiB): only the first MiB is
    // kept, and that is no document.
    Json more = sources;
    for (int i = 0; i < 2; ++i)
        for (const Json &path : sources)
            more.push_back(path);
    document["settings"]["sources"] = more;
    QVERIFY(text(document).size() > AgentRunner::streamByteCap + 64 * 1024);
    QVERIFY(text(document).size() < AgentRunner::streamByteCap * 2);
    result = runWith(document);
    QVERIFY(result.succeeded);
    QCOMPARE(result.outputBytes.size(), AgentRunner::streamByteCap);
    QCOMPARE(AgentDocuments::decodeStatus(result.wholeOutput()), std::nullopt);
}

QTEST_GUILESS_MAIN(TestEngineDocuments)
#include "tst_engine_documents.moc"
