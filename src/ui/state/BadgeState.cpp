#include "BadgeState.h"

#include "Formatting.h"
#include "PlatformText.h"
#include "ShownText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace {

bool isObjectPhase(const QString &phase)
{
    return phase == QLatin1String("uploading") || phase == QLatin1String("waiting-for-receipts") ||
           phase == QLatin1String("committing") || phase == QLatin1String("verifying");
}

bool isBytePhase(const QString &phase)
{
    return phase == QLatin1String("scanning") || phase == QLatin1String("chunking") ||
           phase == QLatin1String("finalizing");
}

ColorRole dotColor(const RuntimeStatus &runtime)
{
    const QString &state = runtime.state;
    if (state == QLatin1String("setup-required") && runtime.serviceReachable)
        return ColorRole::Blue;
    if (state == QLatin1String("connected"))
        return ColorRole::Green;
    if (state == QLatin1String("backing-up"))
        return ColorRole::Blue;
    if (state == QLatin1String("waiting-for-target") || state == QLatin1String("paused"))
        return ColorRole::Orange;
    return ColorRole::Red;
}

QString capitalizedWord(const QString &word)
{
    if (word.isEmpty())
        return word;
    const qsizetype head = word.at(0).isHighSurrogate() && word.size() > 1 ? 2 : 1;
    return word.left(head).toUpper() + word.mid(head).toLower();
}

} // namespace

QString stateTitle(const QString &state)
{
    // The state words the window knows have their own translated titles;
    // any other word is the engine's and is only capitalised.
    static const char *const knownTitles[][2] = {
        {"setup-required", QT_TRANSLATE_NOOP("BadgeState", "Setup Required")},
        {"connected", QT_TRANSLATE_NOOP("BadgeState", "Connected")},
        {"backing-up", QT_TRANSLATE_NOOP("BadgeState", "Backing Up")},
        {"waiting-for-target", QT_TRANSLATE_NOOP("BadgeState", "Waiting For Target")},
        {"paused", QT_TRANSLATE_NOOP("BadgeState", "Paused")},
    };
    for (const auto &known : knownTitles)
        if (state == QLatin1String(known[0]))
            return QCoreApplication::translate("BadgeState", known[1]);
    QString spaced = state;
    spaced.replace(QLatin1Char('-'), QLatin1Char(' '));
    // Words are separated by blanks; runs of blanks are kept as they are.
    QStringList words = spaced.split(QLatin1Char(' '));
    for (QString &word : words)
        word = capitalizedWord(word);
    return words.join(QLatin1Char(' '));
}

std::optional<double> progressFraction(const BackupProgressStatus &progress)
{
    if (isObjectPhase(progress.phase) && progress.totalObjects > 0) {
        // An overflowing sum is capped rather than wrapped: the bar is full.
        quint64 done = 0;
        if (qAddOverflow(progress.objectsUploaded, progress.objectsReused, &done))
            done = progress.totalObjects;
        done = std::min(done, progress.totalObjects);
        return double(done) / double(progress.totalObjects);
    }
    if (isBytePhase(progress.phase) && progress.totalBytes > 0)
        return std::min(1.0, double(progress.bytesScanned) / double(progress.totalBytes));
    return std::nullopt;
}

QString phaseLine(const BackupProgressStatus &p)
{
    QString line;
    if (p.sourceCount >= 2)
        line = QCoreApplication::translate("BadgeState", "Folder %1/%2 · ")
                   .arg(p.sourceIndex)
                   .arg(p.sourceCount);
    const QString &phase = p.phase;
    if (phase == QLatin1String("preflight"))
        line += countedText("BadgeState", QT_TRANSLATE_N_NOOP("BadgeState", "Checking %n files"),
                            p.filesScanned);
    else if (phase == QLatin1String("resuming"))
        line += countedText("BadgeState",
                            QT_TRANSLATE_N_NOOP("BadgeState", "Validating %n prepared objects"),
                            p.objectsPrepared);
    else if (isBytePhase(phase))
        line += countedText("BadgeState",
                            QT_TRANSLATE_N_NOOP("BadgeState", "%1/%2 files · %3 objects ready"),
                            p.objectsPrepared)
                    .arg(p.filesScanned)
                    .arg(p.totalFiles)
                    .arg(p.objectsPrepared);
    else if (phase == QLatin1String("querying"))
        line += QCoreApplication::translate("BadgeState", "Checking target inventory");
    else if (phase == QLatin1String("uploading"))
        line += countedText("BadgeState",
                            QT_TRANSLATE_N_NOOP("BadgeState", "%1/%2 uploaded · %3 reused"),
                            p.objectsReused)
                    .arg(p.objectsUploaded)
                    .arg(p.totalObjects)
                    .arg(p.objectsReused);
    else if (phase == QLatin1String("waiting-for-receipts"))
        line += QCoreApplication::translate("BadgeState", "Waiting for durable receipts");
    else if (phase == QLatin1String("committing"))
        line += QCoreApplication::translate("BadgeState", "Committing recovery point");
    else if (phase == QLatin1String("verifying"))
        line += QCoreApplication::translate("BadgeState", "Verifying recovery point");
    else
        line += QCoreApplication::translate("BadgeState", "Backup active");
    return line;
}

BadgeState badgeState(const std::optional<RuntimeStatus> &shownRuntime)
{
    BadgeState badge;
    if (!shownRuntime) {
        badge.dot = ColorRole::Red;
        badge.title = QCoreApplication::translate("BadgeState", "Checking status");
        badge.message =
            QCoreApplication::translate("BadgeState", "Reading the local ZQB Agent state…");
        return badge;
    }
    // The tray reads the badge too, from the broadcast's record: cut here as well.
    const std::optional<RuntimeStatus> runtime = ShownText::bounded(*shownRuntime);
    badge.dot = dotColor(*runtime);
    badge.title = stateTitle(runtime->state);
    badge.message = firstStrongIsolated(runtime->message);
    if (runtime->lastError && !runtime->lastError->isEmpty())
        badge.errorLine = firstStrongIsolated(*runtime->lastError);
    if (runtime->active && runtime->backupProgress) {
        const BackupProgressStatus &p = *runtime->backupProgress;
        BadgeProgress progress;
        progress.fraction = progressFraction(p);
        progress.phaseLine = phaseLine(p);
        if (p.lastProgressAt)
            progress.lastProgressLine =
                QCoreApplication::translate("BadgeState", "Last progress %1")
                    .arg(compactDate(*p.lastProgressAt));
        if (p.elapsedSeconds)
            progress.elapsedLine = QCoreApplication::translate("BadgeState", "Elapsed time %1")
                                       .arg(backupDurationLabel(p.elapsedSeconds));
        badge.progress = progress;
    }
    return badge;
}
