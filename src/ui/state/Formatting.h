#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

// Texts made from single values of the status document. Dates and times use
// QLocale() (the default locale) and the local time zone.

// "1 day 0 hr 0 min 5 sec"; "Duration not available" when absent.
QString backupDurationLabel(std::optional<quint64> seconds);

// Strict internet date-time: "2025-03-01T14:05:09Z" or with "+01:00"/"-05:30".
// Fractional seconds, missing zones and out-of-range fields are rejected.
std::optional<QDateTime> parseInternetDateTime(QStringView text);

// The time of day in the standard style ("2:05:09 PM"); "recently" when the
// text does not parse.
QString compactDate(const QString &text);

// Abbreviated date with short time ("Mar 1, 2025 at 2:05 PM"); "Not yet" when
// absent or unparsable.
QString dateLabel(const std::optional<QString> &text);

// The standard time style of `locale`: hours, minutes and seconds, no zone.
QString standardTimeFormat(const QLocale &locale);
// The abbreviated date style of `locale`: no weekday, short month name.
QString abbreviatedDateFormat(const QLocale &locale);

// Label of a schedule choice: "15 minutes", "1 hour", "4 hours", "1 day".
QString intervalLabel(qint64 minutes);
// The schedule choices offered by the window, in minutes.
QList<qint64> scheduleIntervals();

struct BandwidthChoice
{
    QString label;
    qint64 kibPerSecond = 0;
};
// "Unlimited", "1 Mbps", ... in KiB per second (128 KiB/s per Mbit/s).
QList<BandwidthChoice> bandwidthChoices();

// The translation of `source` (marked with QT_TRANSLATE_N_NOOP in `context`)
// in the plural form for `count`; "%n" becomes the count. Untranslated, the
// source text with the count in it.
QString countedText(const char *context, const char *source, quint64 count);
