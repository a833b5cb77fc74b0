#include "BadgeState.h"

#include "Formatting.h"
#include "ShownText.h"

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
        line = QStringLiteral("Folder %1/%2 \u00b7 ").arg(p.sourceIndex).arg(p.sourceCount);
    const QString &phase = p.phase;
    if (phase == QLatin1String("preflight"))
        line += QStringLiteral("Checking %1 files").arg(p.filesScanned);
    else if (phase == QLatin1String("resuming"))
        line += QStringLiteral("Validating %1 prepared objects").arg(p.objectsPrepared);
    else if (isBytePhase(phase))
        line += QStringLiteral("%1/%2 files \u00b7 %3 objects ready")
                    .arg(p.filesScanned)
                    .arg(p.totalFiles)
                    .arg(p.objectsPrepared);
    else if (phase == QLatin1String("querying"))
        line += QStringLiteral("Checking target inventory");
    else if (phase == QLatin1String("uploading"))
        line += QStringLiteral("%1/%2 uploaded \u00b7 %3 reused")
                    .arg(p.objectsUploaded)
                    .arg(p.totalObjects)
                    .arg(p.objectsReused);
    else if (phase == QLatin1String("waiting-for-receipts"))
        line += QStringLiteral("Waiting for durable receipts");
    else if (phase == QLatin1String("committing"))
        line += QStringLiteral("Committing recovery point");
    else if (phase == QLatin1String("verifying"))
        line += QStringLiteral("Verifying recovery point");
    else
        line += QStringLiteral("Backup active");
    return line;
}

BadgeState badgeState(const std::optional<RuntimeStatus> &shownRuntime)
{
    BadgeState badge;
    if (!shownRuntime) {
        badge.dot = ColorRole::Red;
        badge.title = QStringLiteral("Checking status");
        badge.message = QStringLiteral("Reading the local ZQB Agent state\u2026");
        return badge;
    }
    // The tray reads the badge too, from the broadcast's record: cut here as well.
    const std::optional<RuntimeStatus> runtime = ShownText::bounded(*shownRuntime);
    badge.dot = dotColor(*runtime);
    badge.title = stateTitle(runtime->state);
    badge.message = runtime->message;
    if (runtime->lastError && !runtime->lastError->isEmpty())
        badge.errorLine = *runtime->lastError;
    if (runtime->active && runtime->backupProgress) {
        const BackupProgressStatus &p = *runtime->backupProgress;
        BadgeProgress progress;
        progress.fraction = progressFraction(p);
        progress.phaseLine = phaseLine(p);
        if (p.lastProgressAt)
            progress.lastProgressLine =
                QStringLiteral("Last progress ") + compactDate(*p.lastProgressAt);
        if (p.elapsedSeconds)
            progress.elapsedLine =
                QStringLiteral("Elapsed time ") + backupDurationLabel(p.elapsedSeconds);
        badge.progress = progress;
    }
    return badge;
}
