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

} // namespace

qsizetype graphemePrefixEnd(QStringView text, qsizetype count)
{
    // ASCII needs no analysis, and engine text is nearly always ASCII: each
    // character but CR is a cluster of its own as long as the one after it is
    // ASCII too (only CR LF joins two ASCII characters; the marks that extend
    // a cluster are all beyond ASCII).
    const qsizetype checked = qMin(text.size(), count + 1);
    qsizetype plain = 0;
    while (plain < checked && text[plain].unicode() < 0x80 && text[plain] != u'\r')
        ++plain;
    if (plain == checked)
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
