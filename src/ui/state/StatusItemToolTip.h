#pragma once

#include "RuntimeStatus.h"

#include <QString>

#include <optional>

// The tray item's tooltip for one runtime record: the state's title as the
// status badge shows it and, while a backup runs, the badge's progress line
// below it. No record yet gives the badge's own text for that case.
QString statusItemToolTip(const std::optional<RuntimeStatus> &runtime);
