#pragma once

#include "AgentUIStatus.h"
#include "BadgeState.h"
#include "ConnectionState.h"
#include "SectionStates.h"

#include <QString>
#include <QStringList>

#include <optional>

class AgentModel;

// The model fields the window reads, gathered so the rules can be tested alone.
struct WindowInputs
{
    std::optional<AgentUIStatus> status;
    QString invitation; // only counted here, never copied into the view state
    QStringList sources;
    qint64 intervalMinutes = 240;
    bool scheduleEnabled = false;
    QString exclusionText;
    bool transfersPaused = false;
    qint64 bandwidthLimitKibPerSecond = 0;
    bool currentNetworkMetered = false;
    bool allowMeteredNetwork = false;
    bool busy = false;
    std::optional<QString> notice;
    std::optional<QString> error;
    QString appVersion; // the app's own version; empty when unknown
};

// Everything the window shows, section by section from top to bottom.
struct WindowState
{
    HeaderState header;
    BadgeState badge;
    std::optional<QString> errorCard;
    std::optional<QString> noticeCard;
    ConnectBoxState connect; // at most one of these two boxes is visible
    RestoringBoxState restoring;
    FoldersState folders;
    ScheduleState schedule;
    SkipPatternsState skipPatterns;
    NetworkState network;
    ConnectionState connection;

    friend bool operator==(const WindowState &, const WindowState &) = default;
};

// An invitation must have this many user-perceived characters to be sent.
inline constexpr int minimumInvitationLength = 40;

WindowState windowState(const WindowInputs &inputs);
WindowInputs windowInputs(const AgentModel &model, const QString &appVersion);
