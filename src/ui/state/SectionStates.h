#pragma once

#include "ColorRole.h"
#include "Symbol.h"

#include <QString>
#include <QStringList>

// What each section of the window shows, one slice of the window's view
// state per section widget. Plain values only, so every rule that makes them
// is tested without widgets, and a section redraws only when its slice changes.

struct VersionCapsuleState
{
    QString label;
    ColorRole color = ColorRole::Secondary;
    Symbol symbol = Symbol::Clock;

    friend bool operator==(const VersionCapsuleState &, const VersionCapsuleState &) = default;
};

// The app's name, the subtitle, and the running version with its capsule.
struct HeaderState
{
    QString subtitle;
    QString versionLine;
    VersionCapsuleState capsule;

    friend bool operator==(const HeaderState &, const HeaderState &) = default;
};

// "Connect this computer": shown to a computer that is not enrolled. The
// invitation itself is a secret and is never part of a stored view state;
// the box takes it straight from the model.
struct ConnectBoxState
{
    bool visible = false;
    QString title;
    QString text;
    QString enrollLabel;
    bool enrollEnabled = false;

    friend bool operator==(const ConnectBoxState &, const ConnectBoxState &) = default;
};

// "Restoring connection": shown until the first status document is read.
struct RestoringBoxState
{
    bool visible = true;
    QString text;

    friend bool operator==(const RestoringBoxState &, const RestoringBoxState &) = default;
};

// "Folders to protect": the model's folders in its order, duplicates kept.
struct FoldersState
{
    QStringList paths;
    bool showNoFolders = true;
    bool fullDiskAccessVisible = false;

    friend bool operator==(const FoldersState &, const FoldersState &) = default;
};

// "Automatic protection": the schedule, "Save settings" and "Back up now".
struct ScheduleState
{
    bool enabled = false;
    qint64 intervalMinutes = 0;
    bool saveEnabled = true;
    bool backUpNowEnabled = false;
    bool busy = false; // the activity indicator beside the buttons

    friend bool operator==(const ScheduleState &, const ScheduleState &) = default;
};

// "Skip patterns": the comma-separated text as edited.
struct SkipPatternsState
{
    QString text;

    friend bool operator==(const SkipPatternsState &, const SkipPatternsState &) = default;
};

// "Network transfer".
struct NetworkState
{
    bool paused = false;
    qint64 bandwidthLimitKibPerSecond = 0;
    bool currentNetworkMetered = false;
    bool allowMeteredNetwork = false;
    bool allowMeteredEnabled = false; // greyed out unless metered; its value is kept

    friend bool operator==(const NetworkState &, const NetworkState &) = default;
};
