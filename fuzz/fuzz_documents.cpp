// Feeds arbitrary bytes to the readers of the engine's documents and to the
// decoding of its output streams. Besides crashes, leaks and undefined
// behaviour, it checks two properties of every document that reads:
//   - it is valid JSON to an independent parser;
//   - writing the record and reading it back gives the same record.
#include "AgentDocuments.h"
#include "EngineOutput.h"
#include "TextRules.h"

#include <QStringDecoder>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdlib>

namespace {

template <class Record, class Decode>
void check(const std::uint8_t *data, std::size_t size, Decode decode)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<Record> record = decode(bytes);
    if (!record)
        return;
    if (!nlohmann::json::accept(data, data + size))
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
        decoder.hasError() ? QString() : TextRules::trimmed(TextRules::leftGraphemes(all, 64));
    if (EngineOutput::decode(bytes, false, 64) != capped)
        std::abort();
    // The whole text is the same text without the cap, and a view into the bytes.
    const QByteArrayView whole = EngineOutput::wholeText(bytes);
    const QString uncapped = decoder.hasError() ? QString() : TextRules::trimmed(all);
    if (decoder.decode(whole) != uncapped)
        std::abort();
    return 0;
}
