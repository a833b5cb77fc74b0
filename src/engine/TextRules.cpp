#include "TextRules.h"

#include <QChar>
#include <QTextBoundaryFinder>

namespace TextRules {

namespace {

uint codeUnit(QChar unit)
{
    return unit.unicode();
}

uint codeUnit(char unit)
{
    return uchar(unit);
}

template <class Text> bool plainAsciiPrefix(Text text, qsizetype count)
{
    const qsizetype checked = qMin(text.size(), count);
    for (qsizetype i = 0; i < checked; ++i) {
        const uint unit = codeUnit(text[i]);
        if (unit >= 0x80 || unit == '\r')
            return false;
    }
    return true;
}

} // namespace

bool startsWithPlainAscii(QStringView text, qsizetype count)
{
    return plainAsciiPrefix(text, count);
}

bool startsWithPlainAscii(QByteArrayView utf8, qsizetype count)
{
    return plainAsciiPrefix(utf8, count);
}

qsizetype graphemePrefixEnd(QStringView text, qsizetype count)
{
    // The character after the last one counted is checked too: it must not
    // join the last cluster.
    if (startsWithPlainAscii(text, count + 1))
        return text.size() >= count ? count : -1;

    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    qsizetype position = 0;
    for (qsizetype n = 0; n < count; ++n) {
        position = finder.toNextBoundary();
        if (position < 0)
            return -1;
    }
    return position;
}

qsizetype graphemeCount(QStringView text)
{
    if (text.isEmpty())
        return 0;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

QString leftGraphemes(QStringView text, qsizetype count)
{
    if (count <= 0)
        return QString();
    // Every cluster holds at least one UTF-16 unit.
    if (text.size() <= count)
        return text.toString();

    // The finder analyses all the text it is given, and engine output may be a
    // megabyte. Boundaries strictly inside a prefix are boundaries of the whole
    // text (a break depends only on what precedes it and the next character),
    // so try a generous prefix first and fall back to the whole text only when
    // the prefix ends inside the wanted clusters. The last unit of the prefix
    // is kept out of the answer, as it may be half of a surrogate pair.
    const qsizetype prefixLength = count * 4 + 64;
    if (prefixLength < text.size()) {
        const qsizetype end = graphemePrefixEnd(text.left(prefixLength), count);
        if (end >= 0 && end < prefixLength - 1)
            return text.left(end).toString();
    }
    const qsizetype end = graphemePrefixEnd(text, count);
    return end < 0 ? text.toString() : text.left(end).toString();
}

} // namespace TextRules
