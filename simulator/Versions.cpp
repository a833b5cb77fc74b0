#include "Versions.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

struct Parsed
{
    QList<qulonglong> numbers;
    QString label;
};

Parsed parse(const QString &version)
{
    Parsed parsed;
    const qsizetype dash = version.indexOf(QLatin1Char('-'));
    const QString numeric = dash < 0 ? version : version.left(dash);
    parsed.label = dash < 0 ? QString() : version.mid(dash + 1);
    for (const QString &part : numeric.split(QLatin1Char('.')))
        parsed.numbers.append(part.toULongLong());
    while (parsed.numbers.size() < 4)
        parsed.numbers.append(0);
    return parsed;
}

} // namespace

namespace Versions {

bool isValid(const QString &version)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[0-9]{1,6}(\\.[0-9]{1,6}){0,3}(-[0-9A-Za-z.]+)?\\z"));
    return version.size() <= 32 && form.match(version).hasMatch();
}

int compare(const QString &a, const QString &b)
{
    const Parsed left = parse(a);
    const Parsed right = parse(b);
    for (qsizetype i = 0; i < 4; ++i) {
        if (left.numbers[i] != right.numbers[i])
            return left.numbers[i] < right.numbers[i] ? -1 : 1;
    }
    if (left.label.isEmpty() != right.label.isEmpty())
        return left.label.isEmpty() ? 1 : -1;
    return left.label.compare(right.label);
}

} // namespace Versions
