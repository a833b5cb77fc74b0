#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "RecordFields.h"
#include "TransferPolicy.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>

// How the strict reader maps a record's fields to the keys it expects: each
// record names its fields once (RecordFields), and binding a record fills a
// frame with one slot per field. Used only by StrictReader.cpp.
namespace StrictReader::Frames {

enum class Kind : std::uint8_t {
    String,
    OptionalString,
    Bool,
    OptionalBool,
    Int64,
    UInt64,
    OptionalUInt64,
    StringList,
    Settings,
    Policy,
    Runtime,
    OptionalProgress,
};

inline bool isOptional(Kind kind)
{
    return kind == Kind::OptionalString || kind == Kind::OptionalBool ||
           kind == Kind::OptionalUInt64 || kind == Kind::OptionalProgress;
}

struct Slot
{
    const char *key = nullptr;
    std::size_t keyLength = 0;
    Kind kind = Kind::String;
    void *target = nullptr;
};

// The biggest record (RuntimeStatus) has 17 fields.
constexpr int maxFields = 20;

// An object being read into a record, or an array being read into a list.
struct Frame
{
    bool isList = false;
    QStringList *list = nullptr;
    std::array<Slot, maxFields> fieldSlots;
    int slotCount = 0;
    std::uint32_t required = 0;
    std::uint32_t seen = 0;
    int pending = -1; // slot of the current key; -1 for an unknown key
};

// The kind of slot each field type reads into; a field of any other type
// does not compile.
template <class Field> constexpr Kind kindOf()
{
    using std::is_same_v, std::optional;
    if constexpr (is_same_v<Field, QString>)
        return Kind::String;
    else if constexpr (is_same_v<Field, optional<QString>>)
        return Kind::OptionalString;
    else if constexpr (is_same_v<Field, bool>)
        return Kind::Bool;
    else if constexpr (is_same_v<Field, optional<bool>>)
        return Kind::OptionalBool;
    else if constexpr (is_same_v<Field, qint64>)
        return Kind::Int64;
    else if constexpr (is_same_v<Field, quint64>)
        return Kind::UInt64;
    else if constexpr (is_same_v<Field, optional<quint64>>)
        return Kind::OptionalUInt64;
    else if constexpr (is_same_v<Field, QStringList>)
        return Kind::StringList;
    else if constexpr (is_same_v<Field, AgentSettings>)
        return Kind::Settings;
    else if constexpr (is_same_v<Field, TransferPolicy>)
        return Kind::Policy;
    else if constexpr (is_same_v<Field, RuntimeStatus>)
        return Kind::Runtime;
    else if constexpr (is_same_v<Field, optional<BackupProgressStatus>>)
        return Kind::OptionalProgress;
    else
        static_assert(sizeof(Field) == 0, "no slot kind reads this field type");
}

// Collects a record's fields into a frame.
struct Binder
{
    Frame &frame;

    template <std::size_t N, class Field> void operator()(const char (&key)[N], Field &field)
    {
        constexpr Kind kind = kindOf<Field>();
        Slot &slot = frame.fieldSlots[std::size_t(frame.slotCount)];
        slot = {key, N - 1, kind, &field};
        if (!isOptional(kind))
            frame.required |= std::uint32_t(1) << frame.slotCount;
        ++frame.slotCount;
    }
};

template <class Record> void bind(Frame &frame, Record &record)
{
    frame = Frame();
    RecordFields::forEach(record, Binder{frame});
}

} // namespace StrictReader::Frames
