#pragma once

#include "AgentUIStatus.h"
#include "ColorRole.h"
#include "Symbol.h"

#include <QString>

#include <optional>

// The duration row of the main window: which duration it is, and its value.
struct DurationDetail
{
    QString label;
    QString value;

    friend bool operator==(const DurationDetail &, const DurationDetail &) = default;
};

DurationDetail backupDurationDetail(const std::optional<AgentUIStatus> &status);

// An update is offered only when the engine announces one for a version other
// than the running one (plain text comparison, no version ordering).
bool updateIsActuallyAvailable(const std::optional<AgentUIStatus> &status);

// "Update available: 2.4.1", "Latest version", "Could not verify latest",
// "Checking latest…".
QString versionStatusLabel(const std::optional<AgentUIStatus> &status);
// Follows the label text: blue, green, orange or secondary.
ColorRole versionStatusColor(const std::optional<AgentUIStatus> &status);
// The capsule's symbol, chosen the same way as its colour.
Symbol versionStatusSymbol(const std::optional<AgentUIStatus> &status);
