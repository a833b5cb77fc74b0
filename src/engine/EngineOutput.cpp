#include "EngineOutput.h"

#include "TextRules.h"

#include <QStringDecoder>

namespace EngineOutput {

qsizetype lengthWithoutIncompleteTail(const QByteArray &bytes)
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
    const qsizetype length = wasCut ? lengthWithoutIncompleteTail(bytes) : bytes.size();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder.decode(QByteArrayView(bytes).first(length));
    if (decoder.hasError())
        return QString();
    return TextRules::trimmed(TextRules::leftGraphemes(text, characterCap));
}

} // namespace EngineOutput
