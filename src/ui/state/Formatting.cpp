#include "Formatting.h"

#include <QLocale>
#include <QStringList>

QString backupDurationLabel(std::optional<quint64> seconds)
{
    if (!seconds)
        return QStringLiteral("Duration not available");
    const quint64 s = *seconds;
    const quint64 days = s / 86400;
    const quint64 hours = (s % 86400) / 3600;
    const quint64 minutes = (s % 3600) / 60;
    const quint64 secs = s % 60;

    QStringList parts;
    if (s >= 86400)
        parts << QString::number(days) +
                     (days == 1 ? QStringLiteral(" day") : QStringLiteral(" days"));
    if (days > 0 || hours > 0)
        parts << QString::number(hours) + QStringLiteral(" hr");
    if (days > 0 || hours > 0 || minutes > 0)
        parts << QString::number(minutes) + QStringLiteral(" min");
    parts << QString::number(secs) + QStringLiteral(" sec");
    return parts.join(QLatin1Char(' '));
}

namespace {

// Reads exactly `count` ASCII digits at `pos`.
bool readDigits(QStringView text, qsizetype pos, int count, int &value)
{
    if (pos + count > text.size())
        return false;
    value = 0;
    for (int i = 0; i < count; ++i) {
        const QChar c = text[pos + i];
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
        value = value * 10 + (c.unicode() - '0');
    }
    return true;
}

bool isAt(QStringView text, qsizetype pos, char c)
{
    return pos < text.size() && text[pos] == QLatin1Char(c);
}

// Splits a QLocale format into literal and field runs, keeping quoted parts.
struct FormatToken
{
    QString text;
    bool field = false;
};

QList<FormatToken> tokenize(const QString &format)
{
    QList<FormatToken> tokens;
    qsizetype i = 0;
    while (i < format.size()) {
        const QChar c = format[i];
        if (c == QLatin1Char('\'')) {
            qsizetype end = format.indexOf(QLatin1Char('\''), i + 1);
            if (end < 0)
                end = format.size() - 1;
            tokens.append({format.mid(i, end - i + 1), false});
            i = end + 1;
        } else if (c.isLetter()) {
            qsizetype end = i;
            while (end < format.size() && format[end] == c)
                ++end;
            tokens.append({format.mid(i, end - i), true});
            i = end;
        } else {
            tokens.append({QString(c), false});
            ++i;
        }
    }
    return tokens;
}

QString join(const QList<FormatToken> &tokens)
{
    QString out;
    for (const FormatToken &t : tokens)
        out += t.text;
    return out.trimmed();
}

} // namespace

std::optional<QDateTime> parseInternetDateTime(QStringView text)
{
    // YYYY-MM-DDTHH:MM:SS then Z or (+|-)HH:MM, nothing else.
    int year, month, day, hour, minute, second;
    if (!readDigits(text, 0, 4, year) || !isAt(text, 4, '-') || !readDigits(text, 5, 2, month) ||
        !isAt(text, 7, '-') || !readDigits(text, 8, 2, day) || !isAt(text, 10, 'T') ||
        !readDigits(text, 11, 2, hour) || !isAt(text, 13, ':') ||
        !readDigits(text, 14, 2, minute) || !isAt(text, 16, ':') ||
        !readDigits(text, 17, 2, second))
        return std::nullopt;
    const QDate date(year, month, day);
    if (!date.isValid() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const QTime time(hour, minute, second);

    int offsetSeconds = 0;
    if (isAt(text, 19, 'Z')) {
        if (text.size() != 20)
            return std::nullopt;
    } else if (isAt(text, 19, '+') || isAt(text, 19, '-')) {
        int offHours, offMinutes;
        if (text.size() != 25 || !readDigits(text, 20, 2, offHours) || !isAt(text, 22, ':') ||
            !readDigits(text, 23, 2, offMinutes) || offHours > 23 || offMinutes > 59)
            return std::nullopt;
        offsetSeconds = (offHours * 3600 + offMinutes * 60) * (isAt(text, 19, '-') ? -1 : 1);
    } else {
        return std::nullopt;
    }
    return QDateTime(date, time, Qt::OffsetFromUTC, offsetSeconds);
}

namespace {

// The derived formats depend only on the locale's own pattern, so each thread
// remembers the last pattern it converted: every refresh formats the same
// dates in the same locale.
struct DerivedFormat
{
    QString pattern;
    QString format;
    bool valid = false;
};

template <typename Derive>
QString derivedOnce(DerivedFormat &cache, const QString &pattern, Derive derive)
{
    if (!cache.valid || cache.pattern != pattern)
        cache = {pattern, derive(pattern), true};
    return cache.format;
}

QString deriveTimeFormat(const QString &pattern)
{
    // The long time style minus its time-zone field.
    QList<FormatToken> tokens = tokenize(pattern);
    QList<FormatToken> kept;
    for (const FormatToken &t : tokens) {
        if (t.field && t.text.startsWith(QLatin1Char('t'))) {
            while (!kept.isEmpty() && !kept.last().field && kept.last().text.trimmed().isEmpty())
                kept.removeLast();
            continue;
        }
        kept.append(t);
    }
    return join(kept);
}

QString deriveDateFormat(const QString &pattern)
{
    // The long date style without its weekday and with short month names.
    QList<FormatToken> tokens = tokenize(pattern);
    QList<FormatToken> kept;
    bool dropSeparators = false;
    for (FormatToken t : tokens) {
        if (t.field && t.text.startsWith(QLatin1Char('d')) && t.text.size() >= 3) {
            dropSeparators = true;
            continue;
        }
        if (dropSeparators && !t.field && !t.text.startsWith(QLatin1Char('\'')))
            continue;
        dropSeparators = false;
        if (t.field && t.text == QLatin1String("MMMM"))
            t.text = QStringLiteral("MMM");
        kept.append(t);
    }
    // A weekday at the end leaves its separator behind.
    while (!kept.isEmpty() && !kept.last().field && !kept.last().text.startsWith(QLatin1Char('\'')))
        kept.removeLast();
    return join(kept);
}

} // namespace

QString standardTimeFormat(const QLocale &locale)
{
    thread_local DerivedFormat cache;
    return derivedOnce(cache, locale.timeFormat(QLocale::LongFormat), deriveTimeFormat);
}

QString abbreviatedDateFormat(const QLocale &locale)
{
    thread_local DerivedFormat cache;
    return derivedOnce(cache, locale.dateFormat(QLocale::LongFormat), deriveDateFormat);
}

QString compactDate(const QString &text)
{
    const std::optional<QDateTime> instant = parseInternetDateTime(text);
    if (!instant)
        return QStringLiteral("recently");
    const QLocale locale;
    return locale.toString(instant->toLocalTime().time(), standardTimeFormat(locale));
}

QString dateLabel(const std::optional<QString> &text)
{
    if (!text)
        return QStringLiteral("Not yet");
    const std::optional<QDateTime> instant = parseInternetDateTime(*text);
    if (!instant)
        return QStringLiteral("Not yet");
    const QLocale locale;
    const QDateTime local = instant->toLocalTime();
    const QString date = locale.toString(local.date(), abbreviatedDateFormat(locale));
    const QString time = locale.toString(local.time(), QLocale::ShortFormat);
    const QString joiner =
        locale.language() == QLocale::English ? QStringLiteral(" at ") : QStringLiteral(", ");
    return date + joiner + time;
}

QString intervalLabel(qint64 minutes)
{
    if (minutes < 60)
        return QString::number(minutes) + QStringLiteral(" minutes");
    if (minutes == 60)
        return QStringLiteral("1 hour");
    if (minutes >= 1440)
        return QStringLiteral("1 day");
    return QString::number(minutes / 60) + QStringLiteral(" hours");
}

QList<qint64> scheduleIntervals()
{
    return {15, 60, 240, 720, 1440};
}

const QList<BandwidthChoice> &bandwidthChoices()
{
    static const QList<BandwidthChoice> choices = {
        {QStringLiteral("Unlimited"), 0},  {QStringLiteral("1 Mbps"), 128},
        {QStringLiteral("5 Mbps"), 640},   {QStringLiteral("10 Mbps"), 1280},
        {QStringLiteral("25 Mbps"), 3200}, {QStringLiteral("50 Mbps"), 6400},
    };
    return choices;
}
