#include "EngineOutput.h"

#include "TextRules.h"

#include <QChar>
#include <QStringDecoder>

namespace EngineOutput {
namespace {

QString toText(QByteArrayView utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(utf8);
}

// Code point starting at `i` of valid UTF-8, and its length in bytes.
char32_t codePointAt(QByteArrayView utf8, qsizetype i, qsizetype *length)
{
    const uchar lead = uchar(utf8[i]);
    char32_t value = lead;
    *length = 1;
    if (lead >= 0xF0) {
        *length = 4;
        value = lead & 0x07;
    } else if (lead >= 0xE0) {
        *length = 3;
        value = lead & 0x0F;
    } else if (lead >= 0xC0) {
        *length = 2;
        value = lead & 0x1F;
    }
    for (qsizetype k = 1; k < *length; ++k)
        value = (value << 6) | (uchar(utf8[i + k]) & 0x3F);
    return value;
}

// Code point of valid UTF-8 ending just before `end`.
char32_t codePointBefore(QByteArrayView utf8, qsizetype end, qsizetype *length)
{
    qsizetype lead = end - 1;
    while (lead > 0 && (uchar(utf8[lead]) & 0xC0) == 0x80)
        --lead;
    return codePointAt(utf8, lead, length);
}

} // namespace

qsizetype lengthWithoutIncompleteTail(QByteArrayView bytes)
{
    const qsizetype size = bytes.size();
    // Walk back over at most three continuation bytes to the lead byte.
    qsizetype lead = size - 1;
    while (lead >= 0 && size - lead <= 4 && (uchar(bytes[lead]) & 0xC0) == 0x80)
        --lead;
    if (lead < 0 || size - lead > 4)
        return size;
    const uchar first = uchar(bytes[lead]);
    qsizetype expected = 1;
    if ((first & 0xE0) == 0xC0)
        expected = 2;
    else if ((first & 0xF0) == 0xE0)
        expected = 3;
    else if ((first & 0xF8) == 0xF0)
        expected = 4;
    return size - lead < expected ? lead : size;
}

QString decode(const QByteArray &bytes, bool wasCut, qsizetype characterCap)
{
    const QByteArrayView whole =
        QByteArrayView(bytes).first(wasCut ? lengthWithoutIncompleteTail(bytes) : bytes.size());
    if (!whole.isValidUtf8() || characterCap <= 0)
        return QString();

    // Plain ASCII needs no cluster analysis: convert just the capped bytes
    // rather than a prefix of many times the cap.
    if (TextRules::startsWithPlainAscii(whole, characterCap + 1))
        return toText(whole.first(qMin(whole.size(), characterCap))).trimmed();

    // Otherwise convert a prefix first. Every cluster holds at least one UTF-16 unit and
    // every three bytes at least one unit, so the prefix nearly always holds
    // the wanted clusters. A boundary before the prefix's end is a boundary of
    // the whole text (a break depends only on what precedes it and the next
    // character); otherwise the whole text is converted after all.
    const qsizetype prefixBytes = (characterCap * 4 + 64) * 3;
    if (prefixBytes < whole.size()) {
        const QByteArrayView prefix =
            whole.first(lengthWithoutIncompleteTail(whole.first(prefixBytes)));
        const QString text = toText(prefix);
        const qsizetype end = TextRules::graphemePrefixEnd(text, characterCap);
        if (end >= 0 && end < text.size())
            return QStringView(text).first(end).trimmed().toString();
    }
    return TextRules::leftGraphemes(toText(whole), characterCap).trimmed();
}

QByteArrayView wholeText(QByteArrayView bytes)
{
    if (!bytes.isValidUtf8())
        return QByteArrayView();
    // Trimmed here rather than by Qt: QByteArray::trimmed() knows only ASCII
    // whitespace, and converting the whole text to trim it would copy it.
    qsizetype begin = 0;
    qsizetype end = bytes.size();
    while (begin < end) {
        qsizetype length = 0;
        if (!QChar::isSpace(codePointAt(bytes, begin, &length)))
            break;
        begin += length;
    }
    while (end > begin) {
        qsizetype length = 0;
        if (!QChar::isSpace(codePointBefore(bytes, end, &length)))
            break;
        end -= length;
    }
    return bytes.sliced(begin, end - begin);
}

} // namespace EngineOutput
