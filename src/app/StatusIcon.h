#pragma once

#include "AppDelegate.h"

#include <QColor>
#include <QIcon>

// The tray icon's colour in each look: a neutral grey that reads on light and
// dark panels until the engine's state is known, then green or orange.
QColor statusItemColor(AppDelegate::Look look);

// The drive-with-check mark in the look's colour, at the sizes trays ask for.
QIcon statusItemIcon(AppDelegate::Look look);
