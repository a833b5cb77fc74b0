#pragma once

#include <QString>

// Texts that call the local machine "this Mac" say "this computer" off macOS;
// "the target Mac" stays, the target being a Mac. On macOS texts are kept.
QString localMachineText(const QString &macText);
QString localMachineText(const QString &macText, bool onMacOS);

// The translation of such a text: `macText` as this platform words it, looked
// up in `context`. The wording off macOS is what the translations hold.
QString localMachineTranslation(const char *context, const QString &macText);

// Whether the loaded translation reads right to left (Qt's own rule: its
// "QT_LAYOUT_DIRECTION" entry says "RTL").
bool translationIsRightToLeft();
// Left-to-right text (a path, a version) kept whole and in its order inside a
// right-to-left window: there it is held between left-to-right marks, after
// a right-to-left mark (so its label still starts on the right); unchanged
// otherwise.
QString leftToRightIsolated(const QString &text);
// Text whose direction its own letters decide (an engine message or error, a
// date, a count), kept apart from the mirrored line around it and starting on
// the right in a right-to-left window; unchanged otherwise.
QString firstStrongIsolated(const QString &text);

// The Full Disk Access permission exists on macOS only.
bool platformOffersFullDiskAccess();
