#pragma once

#include <QString>

// Texts that call the local machine "this Mac" say "this computer" off macOS;
// "the target Mac" stays, the target being a Mac. On macOS texts are kept.
QString localMachineText(const QString &macText);
QString localMachineText(const QString &macText, bool onMacOS);

// The Full Disk Access permission exists on macOS only.
bool platformOffersFullDiskAccess();
