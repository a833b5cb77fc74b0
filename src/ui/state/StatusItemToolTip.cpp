#include "StatusItemToolTip.h"

#include "BadgeState.h"

QString statusItemToolTip(const std::optional<RuntimeStatus> &runtime)
{
    // The badge's own rules, so the tray and the window never disagree.
    const BadgeState badge = badgeState(runtime);
    if (!badge.progress)
        return badge.title;
    return badge.title + QLatin1Char('\n') + badge.progress->phaseLine;
}
