#include "StrictReader.h"

#include "RecordFields.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace StrictReader {
namespace {

using Json = nlohmann::json;

// One overload of readValue per field type: the compiler picks the rule for
// every field RecordFields lists, and a field type without one does not
// compile. Each returns false when the JSON value breaks the rule.

bool readValue(const Json &value, QString &field)
{
    if (!value.is_string())
        return false;
    const std::string &text = value.get_ref<const std::string &>();
    field = QString::fromUtf8(text.data(), qsizetype(text.size()));
    return true;
}

bool readValue(const Json &value, bool &field)
{
    if (!value.is_boolean())
        return false;
    field = value.get<bool>();
    return true;
}

// The parser keeps a number without fraction or exponent that fits 64 bits as
// unsigned when it has no minus sign and as signed when it has one; any other
// number is a float, which no integer field takes.
bool readValue(const Json &value, qint64 &field)
{
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        if (number > std::uint64_t(std::numeric_limits<qint64>::max()))
            return false;
        field = qint64(number);
        return true;
    }
    if (!value.is_number_integer())
        return false;
    field = value.get<std::int64_t>();
    return true;
}

bool readValue(const Json &value, quint64 &field)
{
    if (value.is_number_unsigned()) {
        field = value.get<std::uint64_t>();
        return true;
    }
    // -0 is the one signed number that is not negative.
    if (!value.is_number_integer() || value.get<std::int64_t>() != 0)
        return false;
    field = 0;
    return true;
}

bool readValue(const Json &value, QStringList &field)
{
    if (!value.is_array())
        return false;
    field.clear();
    field.reserve(qsizetype(value.size()));
    for (const Json &member : value) {
        if (!readValue(member, field.emplace_back()))
            return false;
    }
    return true;
}

// A type is a record when RecordFields lists its fields.
struct AnyVisitor
{
    template <class Field> void operator()(const char *, Field &) const {}
};
template <class T>
concept Record = requires(T &record)
{
    RecordFields::forEach(record, AnyVisitor());
};

template <Record R> bool readValue(const Json &value, R &record);

// Null means absent, as a missing key does.
template <class T> bool readValue(const Json &value, std::optional<T> &field)
{
    if (value.is_null()) {
        field.reset();
        return true;
    }
    return readValue(value, field.emplace());
}

template <class T> constexpr bool isOptional = false;
template <class T> constexpr bool isOptional<std::optional<T>> = true;

// Reads each field of a record from the object's member of the same key;
// members the record does not know are never looked at.
struct FieldReader
{
    const Json &object;
    bool ok = true;

    template <class Field> void operator()(const char *key, Field &field)
    {
        if (!ok)
            return;
        const auto member = object.find(key);
        if (member != object.end())
            ok = readValue(*member, field);
        else if constexpr (isOptional<Field>)
            field.reset();
        else
            ok = false;
    }
};

template <Record R> bool readValue(const Json &value, R &record)
{
    if (!value.is_object())
        return false;
    FieldReader reader{value};
    RecordFields::forEach(record, reader);
    return reader.ok;
}

// Parses the whole text: exactly one value, nothing but whitespace after it,
// no comments. The parser checks UTF-8 in every string (keys and ignored
// values included), rejects unpaired surrogate escapes, raw control
// characters and numbers beyond a double, and keeps its nesting on the heap,
// so hostile nesting costs memory, never stack.
std::optional<Json> parse(QByteArrayView json)
{
    // The lexer takes a NUL byte for the end of the input, so a document
    // followed by one (and anything after it) would read. A raw NUL is never
    // valid JSON text, in a string or between values.
    if (json.contains('\0'))
        return std::nullopt;
    const char *begin = json.data();
    const char *end = begin + json.size();
    if (!begin) // an empty view may have no data at all
        begin = end = "";

    // An object keeps only the last of a repeated key; counting the keys read
    // into each object tells whether one was repeated.
    std::vector<std::size_t> keysRead;
    bool repeatedKey = false;
    const auto countKeys = [&](int, Json::parse_event_t event, Json &parsed) {
        if (event == Json::parse_event_t::object_start) {
            keysRead.push_back(0);
        } else if (event == Json::parse_event_t::key) {
            ++keysRead.back();
        } else if (event == Json::parse_event_t::object_end) {
            repeatedKey = repeatedKey || keysRead.back() != parsed.size();
            keysRead.pop_back();
        }
        return true;
    };
    Json document = Json::parse(begin, end, countKeys, /*allow_exceptions=*/false,
                                /*ignore_comments=*/false);
    if (document.is_discarded() || repeatedKey)
        return std::nullopt;
    return document;
}

template <class Top> bool readTop(QByteArrayView json, Top &record)
{
    const std::optional<Json> document = parse(json);
    record = Top();
    return document && readValue(*document, record);
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
