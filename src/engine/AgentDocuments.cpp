#include "AgentDocuments.h"

#include "RecordFields.h"
#include "StrictReader.h"

#include <nlohmann/json.hpp>

#include <string>

namespace AgentDocuments {
namespace {

using OrderedJson = nlohmann::ordered_json;

std::string utf8(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return std::string(bytes.constData(), size_t(bytes.size()));
}

template <class Record> OrderedJson toJson(const Record &record);

// Adds one field to an object, in the order the fields are visited.
struct Writer
{
    OrderedJson &object;

    void operator()(const char *key, const QString &value) { object[key] = utf8(value); }
    void operator()(const char *key, bool value) { object[key] = value; }
    void operator()(const char *key, qint64 value)
    {
        object[key] = OrderedJson::number_integer_t(value);
    }
    void operator()(const char *key, quint64 value)
    {
        object[key] = OrderedJson::number_unsigned_t(value);
    }
    void operator()(const char *key, const QStringList &values)
    {
        OrderedJson array = OrderedJson::array(); // an empty list stays []
        for (const QString &value : values)
            array.push_back(utf8(value));
        object[key] = std::move(array);
    }
    template <class T> void operator()(const char *key, const std::optional<T> &value)
    {
        if (value) // absent members are left out, never null
            (*this)(key, *value);
    }
    void operator()(const char *key, const AgentSettings &value) { object[key] = toJson(value); }
    void operator()(const char *key, const TransferPolicy &value) { object[key] = toJson(value); }
    void operator()(const char *key, const RuntimeStatus &value) { object[key] = toJson(value); }
    void operator()(const char *key, const BackupProgressStatus &value)
    {
        object[key] = toJson(value);
    }
};

template <class Record> OrderedJson toJson(const Record &record)
{
    OrderedJson object = OrderedJson::object();
    RecordFields::forEach(record, Writer{object});
    return object;
}

template <class Record> QByteArray encodeRecord(const Record &record)
{
    // Compact, and never throwing: text that is not valid UTF-8 cannot come
    // from a QString, but would be replaced rather than abort the write.
    const std::string compact =
        toJson(record).dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
    // In compact JSON a solidus can only stand inside a string, so escaping
    // every one in the text is exact.
    QByteArray bytes;
    bytes.reserve(qsizetype(compact.size()) + 64);
    for (const char c : compact) {
        if (c == '/')
            bytes.append('\\');
        bytes.append(c);
    }
    return bytes;
}

template <class Record> std::optional<Record> decodeRecord(QByteArrayView json)
{
    std::optional<Record> record(std::in_place);
    if (!StrictReader::read(json, *record))
        return std::nullopt;
    return record;
}

} // namespace

QByteArray encode(const AgentSettings &settings)
{
    return encodeRecord(settings);
}

QByteArray encode(const TransferPolicy &policy)
{
    return encodeRecord(policy);
}

QByteArray encode(const BackupProgressStatus &progress)
{
    return encodeRecord(progress);
}

QByteArray encode(const RuntimeStatus &runtime)
{
    return encodeRecord(runtime);
}

QByteArray encode(const AgentUIStatus &status)
{
    return encodeRecord(status);
}

std::optional<AgentSettings> decodeSettings(QByteArrayView json)
{
    return decodeRecord<AgentSettings>(json);
}

std::optional<TransferPolicy> decodeTransferPolicy(QByteArrayView json)
{
    return decodeRecord<TransferPolicy>(json);
}

std::optional<AgentUIStatus> decodeStatus(QByteArrayView json)
{
    return decodeRecord<AgentUIStatus>(json);
}

} // namespace AgentDocuments
