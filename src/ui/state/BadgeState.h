#pragma once

#include "ColorRole.h"
#include "RuntimeStatus.h"

#include <QString>

#include <optional>

// What the status badge shows for one runtime record (or none yet).
struct BadgeProgress
{
    std::optional<double> fraction; // 0..1; absent: indeterminate
    QString phaseLine;
    std::optional<QString> lastProgressLine;
    std::optional<QString> elapsedLine;

    friend bool operator==(const BadgeProgress &, const BadgeProgress &) = default;
};

struct BadgeState
{
    ColorRole dot = ColorRole::Red;
    QString title;
    QString message;
    std::optional<QString> errorLine;
    std::optional<BadgeProgress> progress;

    friend bool operator==(const BadgeState &, const BadgeState &) = default;
};

BadgeState badgeState(const std::optional<RuntimeStatus> &runtime);

// "waiting-for-target" -> "Waiting For Target".
QString stateTitle(const QString &state);
// The bar's fraction, or absent for an indeterminate bar.
std::optional<double> progressFraction(const BackupProgressStatus &progress);
// "Folder 2/3 · 7/10 uploaded · 6 reused" and the like.
QString phaseLine(const BackupProgressStatus &progress);
