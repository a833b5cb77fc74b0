#include "TextRules.h"

#include <QChar>
#include <QTextBoundaryFinder>

namespace TextRules {

bool isWhitespaceOrLineBreak(char32_t c)
{
    if (c == U'\t' || (c >= 0x0A && c <= 0x0D) || c == 0x85)
        return true;
    if (c > 0x10FFFF)
        return false;
    switch (QChar::category(c)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

namespace {

// Code point starting at `i`, and its length in UTF-16 units. A lone
// surrogate is returned as itself (it is never whitespace).
char32_t codePointAt(QStringView text, qsizetype i, qsizetype *length)
{
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
        *length = 2;
        return QChar::surrogateToUcs4(c, text[i + 1]);
    }
    *length = 1;
    return c.unicode();
}

// Code point ending just before `end`.
char32_t codePointBefore(QStringView text, qsizetype end, qsizetype *length)
{
    const QChar c = text[end - 1];
    if (c.isLowSurrogate() && end >= 2 && text[end - 2].isHighSurrogate()) {
        *length = 2;
        return QChar::surrogateToUcs4(text[end - 2], c);
    }
    *length = 1;
    return c.unicode();
}

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

QString trimmed(QStringView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end) {
        qsizetype length = 0;
        if (!isWhitespaceOrLineBreak(codePointAt(text, begin, &length)))
            break;
        begin += length;
    }
    while (end > begin) {
        qsizetype length = 0;
        if (!isWhitespaceOrLineBreak(codePointBefore(text, end, &length)))
            break;
        end -= length;
    }
    return text.mid(begin, end - begin).toString();
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
