// Run with --benchmark_repetitions=N to get medians:
//   zqb-bench-engine-interface --benchmark_repetitions=15 --benchmark_report_aggregates_only=true
#include "AgentDocuments.h"
#include "AgentPaths.h"
#include "AgentRunner.h"
#include "EngineOutput.h"

#include <QFile>

#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/wait.h>

extern "C" char **environ;

namespace {

BackupProgressStatus progress()
{
    BackupProgressStatus p;
    p.phase = QStringLiteral("uploading");
    p.sourceIndex = 3;
    p.sourceCount = 12;
    p.filesScanned = 184223;
    p.totalFiles = 402117;
    p.bytesScanned = 81234567890ull;
    p.totalBytes = 190123456789ull;
    p.objectsPrepared = 51234;
    p.totalObjects = 120456;
    p.objectsUploaded = 20345;
    p.objectsReused = 18234;
    p.bytesUploaded = 23456789012ull;
    p.resumedPreparation = true;
    p.lastProgressAt = QStringLiteral("2026-03-01T10:15:00Z");
    p.elapsedSeconds = 4521;
    return p;
}

// A status document as the engine prints it during a backup: about 3 KB.
QByteArray realisticStatus()
{
    AgentUIStatus status;
    status.schema = QStringLiteral("zqb.agent-ui-status.v1");
    status.agentVersion = QStringLiteral("1.4.2");
    status.settings.enabled = true;
    status.settings.intervalMinutes = 60;
    const char *folders[] = {"Documents",
                             "Desktop",
                             "Pictures/Photo Library",
                             "Music",
                             "Projects/website",
                             "Projects/thesis",
                             "Mail archive",
                             "Movies/Family",
                             "Downloads/keep",
                             "Work/Clients",
                             "Work/Invoices 2025",
                             "Notes",
                             "Library/Mobile Documents",
                             "Projects/app/src",
                             "Projects/app/assets",
                             "Family/Scans",
                             "Family/Recipes",
                             "Archive/2019",
                             "Archive/2020",
                             "Archive/2021",
                             "Archive/2022",
                             "Archive/2023",
                             "Archive/2024",
                             "Studio/Sessions",
                             "Studio/Mixes",
                             "Studio/Stems",
                             "Video/Raw footage",
                             "Video/Exports",
                             "Teaching/Courses",
                             "Teaching/Grades",
                             "Volunteering",
                             "Taxes",
                             "Health records",
                             "Garden plans"};
    for (const char *folder : folders)
        status.settings.sources << QStringLiteral("/Users/alice/") + QLatin1String(folder);
    status.settings.exclusions = {"*.tmp",     "*.cache",   "node_modules", ".DS_Store",
                                  "*.partial", "Thumbs.db", "build/",       ".git/objects",
                                  "*.swp",     "Caches/",   "*.iso",        "VirtualBox VMs/",
                                  "*.dmg"};
    status.transferPolicy.bandwidthLimitKibPerSecond = 4096;
    status.transferPolicy.allowMeteredNetwork = false;
    status.transferPolicy.preferredTargetDeviceId =
        QStringLiteral("device-7f3a9c12-4b5e-4d2a-9f1e-0c8b7a6d5e4f");
    RuntimeStatus &runtime = status.runtime;
    runtime.state = QStringLiteral("backing-up");
    runtime.message = QStringLiteral(
        "Backing up folder 4 of 34 to the authorized target; 20,345 of 120,456 objects sent.");
    runtime.enrolled = true;
    runtime.repositoryReady = true;
    runtime.serviceReachable = true;
    runtime.authorizedTargets = 2;
    runtime.serviceVersion = QStringLiteral("2.1.0");
    runtime.latestAgentVersion = QStringLiteral("1.5.0");
    runtime.agentUpdateAvailable = true;
    runtime.compatibility = QStringLiteral("compatible");
    runtime.active = true;
    runtime.backupProgress = progress();
    runtime.lastContactAt = QStringLiteral("2026-03-01T10:14:58Z");
    runtime.lastBackupAttemptAt = QStringLiteral("2026-03-01T09:00:02Z");
    runtime.lastBackupAt = QStringLiteral("2026-02-28T09:41:37Z");
    runtime.recoveryReady = true;
    runtime.lastError = QStringLiteral(
        "The previous run was interrupted because the target went to sleep; it resumed "
        "automatically when the target woke up again.");
    QByteArray json = AgentDocuments::encode(status);
    // The engine prints it with a little layout, as real engines do.
    json.replace(",\"", ", \"");
    return json;
}

// Reads `json` as the refresh does, as often as the benchmark asks.
void measureDecoding(benchmark::State &state, const QByteArray &json)
{
    if (!AgentDocuments::decodeStatus(json)) {
        state.SkipWithError("the sample document does not read");
        return;
    }
    for (auto _ : state) {
        auto status = AgentDocuments::decodeStatus(json);
        benchmark::DoNotOptimize(status);
    }
    state.counters["bytes"] = double(json.size());
}

// Budget: at most 50 microseconds median. A refresh costs about a millisecond
// of the app's time every 15 seconds, so reading need not be faster than that.
void decodeStatus(benchmark::State &state)
{
    measureDecoding(state, realisticStatus());
}
BENCHMARK(decodeStatus);

// The same document protecting a thousand folders of 200 characters: some
// 220 KB, nearly all of it folder paths.
QByteArray statusWithThousandLongFolders()
{
    std::optional<AgentUIStatus> status = AgentDocuments::decodeStatus(realisticStatus());
    status->settings.sources.clear();
    for (int i = 0; i < 1000; ++i) {
        const QString path = QStringLiteral("/home/ann/Projects/%1/").arg(i, 4, 10, QLatin1Char('0'));
        status->settings.sources << path + QString(200 - path.size(), QLatin1Char('x'));
    }
    return AgentDocuments::encode(*status);
}

// Per-refresh reading cost with a thousand folders, against decodeStatus.
void decodeStatusWithThousandLongFolders(benchmark::State &state)
{
    measureDecoding(state, statusWithThousandLongFolders());
}
BENCHMARK(decodeStatusWithThousandLongFolders);

// What the runner does with those 220 KB besides reading them: the capped
// text every result carries, and the whole text the status is read from.
void outputTextsOfThousandLongFolders(benchmark::State &state)
{
    const QByteArray bytes = statusWithThousandLongFolders() + '\n';
    for (auto _ : state) {
        QString capped = EngineOutput::decode(bytes, false, 8192);
        QByteArrayView whole = EngineOutput::wholeText(bytes);
        benchmark::DoNotOptimize(capped);
        benchmark::DoNotOptimize(whole);
    }
    state.counters["bytes"] = double(bytes.size());
}
BENCHMARK(outputTextsOfThousandLongFolders);

void encodeSettingsWith50Folders(benchmark::State &state)
{
    AgentSettings settings;
    settings.enabled = true;
    settings.intervalMinutes = 240;
    for (int i = 0; i < 50; ++i)
        settings.sources << QStringLiteral("/Users/alice/Projects/client %1/deliverables").arg(i);
    settings.exclusions = {"*.tmp", "node_modules", ".DS_Store"};
    for (auto _ : state) {
        QByteArray bytes = AgentDocuments::encode(settings);
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["bytes"] = double(AgentDocuments::encode(settings).size());
}
BENCHMARK(encodeSettingsWith50Folders);

// The whole run: checks, pipes, environment, spawn, reading, waiting, decoding.
void runnerInstantEngine(benchmark::State &state)
{
    const AgentRunner runner(QStringLiteral(ZQB_INSTANT_ENGINE));
    for (auto _ : state) {
        CommandResult result = runner.run({QStringLiteral("ui-status")});
        if (!result.succeeded) {
            state.SkipWithError("the instant engine did not run");
            return;
        }
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(runnerInstantEngine)->UseRealTime();

// The floor: the same engine and arguments, spawned and reaped, nothing else.
void bareSpawnInstantEngine(benchmark::State &state)
{
    QByteArray program = ZQB_INSTANT_ENGINE;
    QByteArray command = "ui-status";
    QByteArray option = "--state";
    QByteArray directory = QFile::encodeName(agentStateDirectory());
    char *argv[] = {program.data(), command.data(), option.data(), directory.data(), nullptr};
    for (auto _ : state) {
        pid_t pid = -1;
        if (posix_spawn(&pid, program.constData(), nullptr, nullptr, argv, environ) != 0) {
            state.SkipWithError("spawn failed");
            return;
        }
        int status = 0;
        waitpid(pid, &status, 0);
        benchmark::DoNotOptimize(status);
    }
}
BENCHMARK(bareSpawnInstantEngine)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
