#include "StrictReader.h"

#include "ParsedJson.h"
#include "RecordFields.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace StrictReader {
namespace {

using Json = ParsedJson::Json;

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

template <class T> constexpr bool isOptional = false;
template <class T> constexpr bool isOptional<std::optional<T>> = true;

// One overload of read() per field type: the compiler picks the rule for
// every field RecordFields lists, and a field type without one does not
// compile. Each returns false when the JSON value breaks the rule.
class ValueReader
{
public:
    explicit ValueReader(const ParsedJson &document) : document(document) {}

    bool read(const Json &value, QString &field) const
    {
        if (!value.is_string())
            return false;
        const std::string &text = value.get_ref<const std::string &>();
        field = QString::fromUtf8(text.data(), qsizetype(text.size()));
        return true;
    }

    bool read(const Json &value, bool &field) const
    {
        if (!value.is_boolean())
            return false;
        field = value.get<bool>();
        return true;
    }

    // The parser keeps a number without fraction or exponent that fits 64
    // bits as unsigned when it has no minus sign and as signed when it has
    // one; any other number is a float, which no integer field takes.
    bool read(const Json &value, qint64 &field) const
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

    bool read(const Json &value, quint64 &field) const
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

    bool read(const Json &value, QStringList &field) const
    {
        if (!value.is_array())
            return false;
        field.clear();
        field.reserve(qsizetype(value.size()));
        for (const Json &member : value) {
            if (!read(member, field.emplace_back()))
                return false;
        }
        return true;
    }

    // Null means absent, as a missing key does.
    template <class T> bool read(const Json &value, std::optional<T> &field) const
    {
        if (value.is_null()) {
            field.reset();
            return true;
        }
        return read(value, field.emplace());
    }

    // Reads each field from the object's member of the same key. A key the
    // text repeats must be valid in every copy, and the last copy counts.
    // Members the record does not know are never looked at.
    template <Record R> bool read(const Json &value, R &record) const
    {
        if (!value.is_object())
            return false;
        bool ok = true;
        RecordFields::forEach(record, [&]<class Field>(const char *key, Field &field) {
            if (!ok)
                return;
            const auto member = value.find(key);
            if (member == value.end()) {
                if constexpr (isOptional<Field>)
                    field.reset();
                else
                    ok = false;
                return;
            }
            for (const Json &copy : document.earlierCopies(value, key)) {
                Field earlier{};
                ok = ok && read(copy, earlier);
            }
            ok = ok && read(*member, field);
        });
        return ok;
    }

private:
    const ParsedJson &document;
};

template <class Top> bool readTop(QByteArrayView json, Top &record)
{
    const std::optional<ParsedJson> document = ParsedJson::parse(json);
    record = Top();
    return document && ValueReader(*document).read(document->value, record);
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
