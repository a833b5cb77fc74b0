// The engine the measurements run against: answers every command at once, so
// what is measured is the app, not the engine. "ui-status" prints a realistic
// document: three folders, a backup running in its upload phase, and counters
// that move with the clock so each refresh really changes what the badge shows.
//
// ZQB_BENCH_FOLDERS=N (from the app's environment, which the engine inherits)
// lists N folders of 200 characters each instead of the three usual ones, to
// measure the app with many long folders.
//
// When a file named engine-calls.log exists beside this executable, every run
// appends "<CLOCK_MONOTONIC ns> <command>" to it (one write, O_APPEND), which
// lets the script see when refreshes happen.
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

std::int64_t monotonicNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return std::int64_t(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

void logCall(std::int64_t now, const char *command)
{
    char self[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0)
        return;
    self[length] = '\0';
    std::string path(self);
    path.resize(path.rfind('/') + 1);
    path += "engine-calls.log";
    const int fd = open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (fd < 0)
        return;
    char line[128];
    const int n = std::snprintf(line, sizeof line, "%lld %s\n", (long long)now, command);
    if (n > 0 && write(fd, line, size_t(n)) < 0) {
        // Logging is best effort; the answer matters more.
    }
    close(fd);
}

// The "sources" array: three everyday folders, or `count` of 200 characters.
std::string sourcesJson(int count)
{
    if (count <= 0)
        return "[\"/home/alex/Documents\",\"/home/alex/Pictures/Family and trips\","
               "\"/home/alex/Projects\"]";
    std::string list = "[";
    for (int i = 0; i < count; ++i) {
        char head[64];
        std::snprintf(head, sizeof head, "/home/alex/Projects/client-%05d/", i);
        std::string path = head;
        while (path.size() < 200)
            path += "archive/";
        path.resize(200);
        list += (i ? ",\"" : "\"") + path + "\"";
    }
    return list + "]";
}

void printStatus(std::int64_t now)
{
    const char *folders = std::getenv("ZQB_BENCH_FOLDERS");
    const int count = folders ? std::atoi(folders) : 0;
    const std::string sources = sourcesJson(count == 3 ? 0 : count);
    const int shown = count > 0 ? count : 3;
    const unsigned long long tick = (unsigned long long)(now / 1000000); // ms
    const unsigned long long totalObjects = 18342;
    const unsigned long long uploaded = tick % 9000;
    const unsigned long long reused = 6120 + tick % 7;
    std::printf("{\"schema\":\"zqb.agent-ui-status.v1\",\"agentVersion\":\"1.4.2\","
                "\"settings\":{\"schema\":\"zqb.agent-settings.v1\",\"enabled\":true,"
                "\"intervalMinutes\":60,\"sources\":%s,\"exclusions\":[\".DS_Store\","
                "\"node_modules\",\"*.tmp\",\".cache\"]},"
                "\"transferPolicy\":{\"schema\":\"zqb.agent-transfer-policy.v1\",\"paused\":false,"
                "\"bandwidthLimitKibPerSecond\":1280,\"currentNetworkMetered\":false,"
                "\"allowMeteredNetwork\":false,\"preferredTargetDeviceId\":\"target-7f3a\","
                "\"retryAttempts\":3},"
                "\"runtime\":{\"state\":\"backing-up\",\"message\":\"Protecting %d folders on the "
                "authorized target.\",\"enrolled\":true,\"repositoryReady\":true,"
                "\"serviceReachable\":true,\"authorizedTargets\":1,\"serviceVersion\":\"2.3.0\","
                "\"latestAgentVersion\":\"1.4.2\",\"agentUpdateAvailable\":false,"
                "\"compatibility\":\"compatible\",\"active\":true,"
                "\"backupProgress\":{\"phase\":\"uploading\",\"sourceIndex\":2,\"sourceCount\":%d,"
                "\"filesScanned\":48213,\"totalFiles\":48213,\"bytesScanned\":21474836480,"
                "\"totalBytes\":21474836480,\"objectsPrepared\":%llu,\"totalObjects\":%llu,"
                "\"objectsUploaded\":%llu,\"objectsReused\":%llu,\"bytesUploaded\":%llu,"
                "\"resumedPreparation\":false,\"lastProgressAt\":\"2025-03-01T14:05:09Z\","
                "\"elapsedSeconds\":%llu},"
                "\"lastContactAt\":\"2025-03-01T14:05:09Z\","
                "\"lastBackupAttemptAt\":\"2025-03-01T13:00:00Z\","
                "\"lastBackupAt\":\"2025-03-01T13:02:41Z\",\"recoveryReady\":true}}\n",
                sources.c_str(), shown, shown, totalObjects, totalObjects, uploaded, reused,
                uploaded * 1048576ULL, 600 + tick / 1000);
}

} // namespace

int main(int argc, char **argv)
{
    const std::int64_t now = monotonicNs();
    const char *command = argc > 1 ? argv[1] : "";
    logCall(now, command);

    if (std::strcmp(command, "ui-status") == 0) {
        printStatus(now);
        return 0;
    }
    if (std::strcmp(command, "check-service") == 0 || std::strcmp(command, "run-once") == 0) {
        std::puts("The ZQB service is reachable.");
        return 0;
    }
    if (std::strcmp(command, "configure") == 0 || std::strcmp(command, "configure-transfer") == 0 ||
        std::strcmp(command, "enroll") == 0) {
        // Drain the document so the app's write never meets a closed pipe.
        char buffer[4096];
        while (read(STDIN_FILENO, buffer, sizeof buffer) > 0) {
        }
        return 0;
    }
    std::fprintf(stderr, "zqb-bench-engine: %s is not simulated\n", command);
    return 1;
}
