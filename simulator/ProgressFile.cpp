#include "ProgressFile.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace {

using nlohmann::json;

qint64 signed64(const json &object, const char *key)
{
    const json &value = object.at(key);
    if (value.is_number_unsigned() &&
        value.get<quint64>() > quint64(std::numeric_limits<qint64>::max()))
        throw std::range_error(key);
    if (!value.is_number_integer())
        throw std::range_error(key);
    return value.get<qint64>();
}

quint64 unsigned64(const json &value)
{
    if (!value.is_number_unsigned())
        throw std::range_error("unsigned");
    return value.get<quint64>();
}

quint64 unsigned64(const json &object, const char *key)
{
    return unsigned64(object.at(key));
}

} // namespace

namespace ProgressFile {

std::optional<BackupProgressStatus> decode(QByteArrayView bytes)
{
    try {
        const json object = json::parse(bytes.begin(), bytes.end());
        if (!object.is_object())
            return std::nullopt;
        BackupProgressStatus progress;
        const json &phase = object.at("phase");
        if (!phase.is_string())
            return std::nullopt;
        progress.phase = QString::fromStdString(phase.get<std::string>());
        progress.sourceIndex = signed64(object, "sourceIndex");
        progress.sourceCount = signed64(object, "sourceCount");
        progress.filesScanned = unsigned64(object, "filesScanned");
        progress.totalFiles = unsigned64(object, "totalFiles");
        progress.bytesScanned = unsigned64(object, "bytesScanned");
        progress.totalBytes = unsigned64(object, "totalBytes");
        progress.objectsPrepared = unsigned64(object, "objectsPrepared");
        progress.totalObjects = unsigned64(object, "totalObjects");
        progress.objectsUploaded = unsigned64(object, "objectsUploaded");
        progress.objectsReused = unsigned64(object, "objectsReused");
        progress.bytesUploaded = unsigned64(object, "bytesUploaded");
        progress.resumedPreparation = object.at("resumedPreparation").get<bool>();
        const auto last = object.find("lastProgressAt");
        if (last != object.end() && !last->is_null())
            progress.lastProgressAt = QString::fromStdString(last->get<std::string>());
        const auto elapsed = object.find("elapsedSeconds");
        if (elapsed != object.end() && !elapsed->is_null())
            progress.elapsedSeconds = unsigned64(*elapsed);
        return progress;
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

} // namespace ProgressFile
