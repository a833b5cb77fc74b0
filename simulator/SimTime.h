#pragma once

#include <QDateTime>
#include <QString>

// Time stamps as the status document carries them: ISO 8601 in UTC, whole
// seconds ("2025-03-01T14:05:09Z").
namespace SimTime {

QDateTime now();
QString text(const QDateTime &moment);
QString nowText();
// Invalid when `text` is not such a time stamp.
QDateTime parse(const QString &text);

} // namespace SimTime
