// Feeds arbitrary bytes to the readers of the engine's documents and to the
// decoding of its output streams. Besides crashes, leaks and undefined
// behaviour, it checks two properties of every document that reads:
//   - it is valid JSON to two independent parsers, Qt's own and simdjson,
//     neither sharing code with the nlohmann/json parser the readers use;
//   - writing the record and reading it back gives the same record.
#include "AgentDocuments.h"
#include "EngineOutput.h"
#include "TextRules.h"

#include <QStringDecoder>

#include <QJsonDocument>
#include <QJsonParseError>

#include <simdjson.h>

#include <cstdint>
#include <cstdlib>

namespace {

// Each oracle has limits that valid JSON can exceed: Qt refuses nesting
// beyond 1,024 levels and numbers that underflow a double; simdjson refuses
// integers beyond 64 bits and a byte order mark. A refusal for such a limit
// is no verdict; any other refusal by either parser is.
bool isJson(QByteArrayView bytes)
{
    QJsonParseError qtError;
    QJsonDocument::fromJson(bytes.toByteArray(), &qtError);
    if (qtError.error == QJsonParseError::NoError || qtError.error == QJsonParseError::DeepNesting)
        return true;
    if (qtError.error != QJsonParseError::IllegalNumber)
        return false;

    QByteArrayView text = bytes;
    if (text.startsWith("\xef\xbb\xbf"))
        text = text.sliced(3);
    static simdjson::dom::parser parser;
    static const bool allocated = parser.allocate(1 << 16, 1 << 16) == simdjson::SUCCESS;
    if (!allocated)
        std::abort();
    const simdjson::padded_string padded(text.data(), std::size_t(text.size()));
    const simdjson::error_code error = parser.parse(padded).error();
    return error == simdjson::SUCCESS || error == simdjson::NUMBER_ERROR;
}

template <class Record, class Decode>
void check(const std::uint8_t *data, std::size_t size, Decode decode)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<Record> record = decode(bytes);
    if (!record)
        return;
    if (!isJson(bytes))
        std::abort(); // accepted something that is not JSON
    const QByteArray written = AgentDocuments::encode(*record);
    const std::optional<Record> again = decode(written);
    if (!again || !(*again == *record))
        std::abort(); // the written form does not read back
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    check<AgentUIStatus>(data, size, AgentDocuments::decodeStatus);
    check<AgentSettings>(data, size, AgentDocuments::decodeSettings);
    check<TransferPolicy>(data, size, AgentDocuments::decodeTransferPolicy);

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = EngineOutput::decode(bytes, size % 2 == 1, 64);
    if (text.size() > bytes.size())
        std::abort(); // decoding never yields more code units than bytes

    // The capped text converts only a prefix: it must equal converting all.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString all = decoder.decode(bytes);
    const QString capped =
        decoder.hasError() ? QString() : TextRules::leftGraphemes(all, 64).trimmed();
    if (EngineOutput::decode(bytes, false, 64) != capped)
        std::abort();
    // The whole text is the same text without the cap, and a view into the bytes.
    const QByteArrayView whole = EngineOutput::wholeText(bytes);
    const QString uncapped = decoder.hasError() ? QString() : all.trimmed();
    if (decoder.decode(whole) != uncapped)
        std::abort();
    return 0;
}
