#pragma once

#include "AgentUIStatus.h"
#include "BadgeState.h"
#include "ColorRole.h"
#include "ConnectionState.h"
#include "Symbol.h"

#include <QString>
#include <QStringList>

#include <optional>

class AgentModel;

// Which box sits between the cards and the folders.
enum class ConnectionBox { Connect, Restoring, None };

struct VersionCapsuleState
{
    QString label;
    ColorRole color = ColorRole::Secondary;
    Symbol symbol = Symbol::Clock;

    friend bool operator==(const VersionCapsuleState &, const VersionCapsuleState &) = default;
};

// The model fields the window reads, gathered so the rules can be tested alone.
struct WindowInputs
{
    std::optional<AgentUIStatus> status;
    QString invitation;
    QStringList sources;
    bool currentNetworkMetered = false;
    bool busy = false;
    std::optional<QString> notice;
    std::optional<QString> error;
    QString appVersion; // the app's own version; empty when unknown
};

struct WindowState
{
    QString subtitle;
    QString versionLine;
    VersionCapsuleState capsule;
    BadgeState badge;
    std::optional<QString> errorCard;
    std::optional<QString> noticeCard;

    ConnectionBox connectionBox = ConnectionBox::Restoring;
    QString connectTitle;
    QString connectText;
    QString enrollLabel;
    bool enrollEnabled = false;
    QString restoringText;

    QStringList folders;
    bool showNoFolders = true;
    bool fullDiskAccessVisible = false;

    bool saveEnabled = true;
    bool backUpNowEnabled = false;
    bool allowMeteredEnabled = false;

    ConnectionState connection;

    friend bool operator==(const WindowState &, const WindowState &) = default;
};

// An invitation must have this many user-perceived characters to be sent.
inline constexpr int minimumInvitationLength = 40;

WindowState windowState(const WindowInputs &inputs);
WindowInputs windowInputs(const AgentModel &model, const QString &appVersion);
