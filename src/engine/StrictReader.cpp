#include "StrictReader.h"

#include "ReaderFrames.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

namespace StrictReader {
namespace {

using namespace Frames;

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// Receives the events of nlohmann/json's SAX parser and fills the records.
// Returning false stops the parse, which then fails. The parser keeps its
// nesting on the heap, so hostile nesting costs memory, never stack.
template <class Top> class Handler
{
public:
    explicit Handler(Top &top) : m_top(top) {}

    bool finished() const { return m_finished; }

    bool null()
    {
        if (m_ignoreDepth > 0)
            return true;
        Slot *slot = pendingSlot();
        if (!slot)
            return acceptUnknown();
        switch (slot->kind) {
        case Kind::OptionalString:
            static_cast<std::optional<QString> *>(slot->target)->reset();
            break;
        case Kind::OptionalBool:
            static_cast<std::optional<bool> *>(slot->target)->reset();
            break;
        case Kind::OptionalUInt64:
            static_cast<std::optional<quint64> *>(slot->target)->reset();
            break;
        case Kind::OptionalProgress:
            static_cast<std::optional<BackupProgressStatus> *>(slot->target)->reset();
            break;
        default:
            return false;
        }
        return markSeen();
    }

    bool boolean(bool value)
    {
        if (m_ignoreDepth > 0)
            return true;
        Slot *slot = pendingSlot();
        if (!slot)
            return acceptUnknown();
        if (slot->kind == Kind::Bool)
            *static_cast<bool *>(slot->target) = value;
        else if (slot->kind == Kind::OptionalBool)
            *static_cast<std::optional<bool> *>(slot->target) = value;
        else
            return false;
        return markSeen();
    }

    bool number_integer(std::int64_t value)
    {
        if (m_ignoreDepth > 0)
            return true;
        Slot *slot = pendingSlot();
        if (!slot)
            return acceptUnknown();
        if (slot->kind == Kind::Int64) {
            *static_cast<qint64 *>(slot->target) = value;
            return markSeen();
        }
        // The parser reports only negative numbers (and -0) here.
        if (value < 0)
            return false;
        return setUnsigned(*slot, quint64(value));
    }

    bool number_unsigned(std::uint64_t value)
    {
        if (m_ignoreDepth > 0)
            return true;
        Slot *slot = pendingSlot();
        if (!slot)
            return acceptUnknown();
        if (slot->kind == Kind::Int64) {
            if (value > quint64(std::numeric_limits<qint64>::max()))
                return false;
            *static_cast<qint64 *>(slot->target) = qint64(value);
            return markSeen();
        }
        return setUnsigned(*slot, value);
    }

    // A fraction, an exponent, or an integer beyond 64 bits: never an integer.
    bool number_float(double, const std::string &)
    {
        if (m_ignoreDepth > 0)
            return true;
        return !pendingSlot() && acceptUnknown();
    }

    bool string(std::string &value)
    {
        if (m_ignoreDepth > 0)
            return true;
        if (m_depth > 0 && frame().isList) {
            frame().list->append(toQString(value));
            return true;
        }
        Slot *slot = pendingSlot();
        if (!slot)
            return acceptUnknown();
        if (slot->kind == Kind::String)
            *static_cast<QString *>(slot->target) = toQString(value);
        else if (slot->kind == Kind::OptionalString)
            *static_cast<std::optional<QString> *>(slot->target) = toQString(value);
        else
            return false;
        return markSeen();
    }

    // The document's bytes carry no binary values.
    bool binary(nlohmann::json::binary_t &) { return false; }

    bool parse_error(std::size_t, const std::string &, const nlohmann::json::exception &)
    {
        return false;
    }

    bool start_object(std::size_t)
    {
        if (m_ignoreDepth > 0) {
            ++m_ignoreDepth;
            return true;
        }
        if (m_depth == 0) {
            if (m_finished)
                return false;
            m_top = Top();
            bind(push(), m_top);
            return true;
        }
        Slot *slot = pendingSlot();
        if (!slot) {
            if (!acceptUnknown())
                return false;
            m_ignoreDepth = 1;
            return true;
        }
        // A repeated key starts its record afresh: the last occurrence counts.
        switch (slot->kind) {
        case Kind::Settings:
            return openRecord<AgentSettings>(*slot);
        case Kind::Policy:
            return openRecord<TransferPolicy>(*slot);
        case Kind::Runtime:
            return openRecord<RuntimeStatus>(*slot);
        case Kind::OptionalProgress: {
            if (!markSeen())
                return false;
            auto &progress = *static_cast<std::optional<BackupProgressStatus> *>(slot->target);
            progress.emplace();
            bind(push(), *progress);
            return true;
        }
        default:
            return false;
        }
    }

    bool key(std::string &name)
    {
        if (m_ignoreDepth > 0)
            return true;
        Frame &current = frame();
        current.pending = -1;
        for (int i = 0; i < current.slotCount; ++i) {
            const Slot &slot = current.fieldSlots[std::size_t(i)];
            if (slot.keyLength == name.size() &&
                std::memcmp(slot.key, name.data(), name.size()) == 0) {
                current.pending = i;
                break;
            }
        }
        return true;
    }

    bool end_object()
    {
        if (m_ignoreDepth > 0) {
            --m_ignoreDepth;
            return true;
        }
        const Frame &current = frame();
        if ((current.seen & current.required) != current.required)
            return false;
        --m_depth;
        if (m_depth == 0)
            m_finished = true;
        return true;
    }

    bool start_array(std::size_t)
    {
        if (m_ignoreDepth > 0) {
            ++m_ignoreDepth;
            return true;
        }
        if (m_depth == 0 || frame().isList)
            return false;
        Slot *slot = pendingSlot();
        if (!slot) {
            m_ignoreDepth = 1;
            return true;
        }
        if (slot->kind != Kind::StringList || !markSeen())
            return false;
        auto *list = static_cast<QStringList *>(slot->target);
        list->clear();
        Frame &listFrame = push();
        listFrame = Frame();
        listFrame.isList = true;
        listFrame.list = list;
        return true;
    }

    bool end_array()
    {
        if (m_ignoreDepth > 0) {
            --m_ignoreDepth;
            return true;
        }
        --m_depth;
        return true;
    }

private:
    template <class Record> bool openRecord(Slot &slot)
    {
        if (!markSeen())
            return false;
        auto &record = *static_cast<Record *>(slot.target);
        record = Record();
        bind(push(), record);
        return true;
    }

    Frame &frame() { return m_frames[std::size_t(m_depth - 1)]; }

    Frame &push()
    {
        // Records nest at most three deep, plus one list; nothing else opens a
        // frame, so this bound holds for any input.
        Q_ASSERT(m_depth < int(m_frames.size()));
        return m_frames[std::size_t(m_depth++)];
    }

    // The slot the current value belongs to; null for an unknown key, and
    // for a value outside any record (the top level must be an object).
    Slot *pendingSlot()
    {
        if (m_depth == 0)
            return nullptr;
        Frame &current = frame();
        if (current.isList || current.pending < 0)
            return nullptr;
        return &current.fieldSlots[std::size_t(current.pending)];
    }

    // A value that belongs to no field: fine under an unknown key; a breach
    // at the top level or as a list member.
    bool acceptUnknown()
    {
        if (m_depth == 0)
            return false;
        return !frame().isList;
    }

    bool markSeen()
    {
        Frame &current = frame();
        current.seen |= std::uint32_t(1) << current.pending;
        return true;
    }

    bool setUnsigned(Slot &slot, quint64 value)
    {
        if (slot.kind == Kind::UInt64)
            *static_cast<quint64 *>(slot.target) = value;
        else if (slot.kind == Kind::OptionalUInt64)
            *static_cast<std::optional<quint64> *>(slot.target) = value;
        else
            return false;
        return markSeen();
    }

    Top &m_top;
    std::array<Frame, 4> m_frames;
    int m_depth = 0;
    int m_ignoreDepth = 0;
    bool m_finished = false;
};

template <class Top> bool readTop(QByteArrayView json, Top &record)
{
    // nlohmann/json's lexer takes a NUL byte for the end of the input, so a
    // document followed by one (and anything after it) would read. A raw NUL
    // is never valid JSON text, in a string or between values.
    if (json.contains('\0'))
        return false;
    Handler<Top> handler(record);
    const char *begin = json.data();
    const char *end = begin + json.size();
    if (!begin) // an empty view may have no data at all
        begin = end = "";
    // Strict: exactly one value and nothing but whitespace after it; no
    // comments. The parser checks UTF-8 in every string (keys included),
    // rejects unpaired surrogate escapes and raw control characters, and
    // reports integers as signed or unsigned only when they fit 64 bits.
    const bool parsed =
        nlohmann::json::sax_parse(begin, end, &handler, nlohmann::json::input_format_t::json,
                                  /*strict=*/true, /*ignore_comments=*/false);
    return parsed && handler.finished();
}

} // namespace

bool read(QByteArrayView json, AgentUIStatus &record)
{
    return readTop(json, record);
}

bool read(QByteArrayView json, AgentSettings &record)
{
    return readTop(json, record);
}

bool read(QByteArrayView json, TransferPolicy &record)
{
    return readTop(json, record);
}

} // namespace StrictReader
