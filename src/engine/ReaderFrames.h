#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "RecordFields.h"
#include "TransferPolicy.h"

#include <array>
#include <cstddef>
#include <cstdint>

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

// Collects a record's fields into a frame.
struct Binder
{
    Frame &frame;

    template <std::size_t N> void add(const char (&key)[N], Kind kind, void *target)
    {
        Slot &slot = frame.fieldSlots[std::size_t(frame.slotCount)];
        slot = {key, N - 1, kind, target};
        if (!isOptional(kind))
            frame.required |= std::uint32_t(1) << frame.slotCount;
        ++frame.slotCount;
    }

    template <std::size_t N> void operator()(const char (&k)[N], QString &v)
    {
        add(k, Kind::String, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], std::optional<QString> &v)
    {
        add(k, Kind::OptionalString, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], bool &v)
    {
        add(k, Kind::Bool, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], std::optional<bool> &v)
    {
        add(k, Kind::OptionalBool, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], qint64 &v)
    {
        add(k, Kind::Int64, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], quint64 &v)
    {
        add(k, Kind::UInt64, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], std::optional<quint64> &v)
    {
        add(k, Kind::OptionalUInt64, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], QStringList &v)
    {
        add(k, Kind::StringList, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], AgentSettings &v)
    {
        add(k, Kind::Settings, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], TransferPolicy &v)
    {
        add(k, Kind::Policy, &v);
    }
    template <std::size_t N> void operator()(const char (&k)[N], RuntimeStatus &v)
    {
        add(k, Kind::Runtime, &v);
    }
    template <std::size_t N>
    void operator()(const char (&k)[N], std::optional<BackupProgressStatus> &v)
    {
        add(k, Kind::OptionalProgress, &v);
    }
};

template <class Record> void bind(Frame &frame, Record &record)
{
    frame = Frame();
    RecordFields::forEach(record, Binder{frame});
}

} // namespace StrictReader::Frames
