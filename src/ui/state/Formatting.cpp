#include "Formatting.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <climits>

QString backupDurationLabel(std::optional<quint64> seconds)
{
    if (!seconds)
        return QCoreApplication::translate("Formatting", "Duration not available");
    const quint64 s = *seconds;
    const quint64 days = s / 86400;
    const quint64 hours = (s % 86400) / 3600;
    const quint64 minutes = (s % 3600) / 60;
    const quint64 secs = s % 60;

    QStringList parts;
    if (s >= 86400)
        parts << (days == 1 ? QCoreApplication::translate("Formatting", "1 day")
                            : countedText("Formatting",
                                          QT_TRANSLATE_N_NOOP("Formatting", "%n days"), days));
    if (days > 0 || hours > 0)
        parts << countedText("Formatting", QT_TRANSLATE_N_NOOP("Formatting", "%n hr"), hours);
    if (days > 0 || hours > 0 || minutes > 0)
        parts << countedText("Formatting", QT_TRANSLATE_N_NOOP("Formatting", "%n min"), minutes);
    parts << countedText("Formatting", QT_TRANSLATE_N_NOOP("Formatting", "%n sec"), secs);
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
        return QCoreApplication::translate("Formatting", "recently");
    const QLocale locale;
    return locale.toString(instant->toLocalTime().time(), standardTimeFormat(locale));
}

QString dateLabel(const std::optional<QString> &text)
{
    if (!text)
        return QCoreApplication::translate("Formatting", "Not yet");
    const std::optional<QDateTime> instant = parseInternetDateTime(*text);
    if (!instant)
        return QCoreApplication::translate("Formatting", "Not yet");
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
        return countedText("Formatting", QT_TRANSLATE_N_NOOP("Formatting", "%n minutes"),
                           quint64(minutes));
    if (minutes == 60)
        return QCoreApplication::translate("Formatting", "1 hour");
    if (minutes >= 1440)
        return QCoreApplication::translate("Formatting", "1 day");
    return countedText("Formatting", QT_TRANSLATE_N_NOOP("Formatting", "%n hours"),
                       quint64(minutes / 60));
}

QList<qint64> scheduleIntervals()
{
    return {15, 60, 240, 720, 1440};
}

QList<BandwidthChoice> bandwidthChoices()
{
    // Made on each call, so the labels are in the language loaded by then.
    const auto mbps = [](int n) {
        return QCoreApplication::translate("Formatting", "%1 Mbps").arg(n);
    };
    return {
        {QCoreApplication::translate("Formatting", "Unlimited"), 0},
        {mbps(1), 128},
        {mbps(5), 640},
        {mbps(10), 1280},
        {mbps(25), 3200},
        {mbps(50), 6400},
    };
}

QString countedText(const char *context, const char *source, quint64 count)
{
    // Plural rules look at the number and its last digits; a count beyond
    // int keeps its last six digits above a million, which selects the same
    // form, and is written out in full afterwards.
    const bool fits = count <= quint64(INT_MAX);
    const int representative = fits ? int(count) : int(1000000000 + count % 1000000);
    QString text = QCoreApplication::translate(context, source, nullptr, representative);
    if (!fits)
        text.replace(QString::number(representative), QString::number(count));
    return text;
}
