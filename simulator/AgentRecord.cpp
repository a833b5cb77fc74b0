#include "AgentRecord.h"

#include <nlohmann/json.hpp>

using nlohmann::ordered_json;

namespace {

#ifndef ZQB_SIM_AGENT_VERSION
#define ZQB_SIM_AGENT_VERSION "1.0.0"
#endif

const char serviceVersionOfStandIn[] = "2.3.0";

std::string toStd(const QString &text)
{
    return text.toStdString();
}
QString fromStd(const std::string &text)
{
    return QString::fromStdString(text);
}

void putOptional(ordered_json &object, const char *key, const std::optional<QString> &value)
{
    if (value)
        object[key] = toStd(*value);
}

// Readers throw on any breach; fromJson turns that into "no record".
QString text(const ordered_json &object, const char *key)
{
    return fromStd(object.at(key).get_ref<const std::string &>());
}

bool flag(const ordered_json &object, const char *key)
{
    return object.at(key).get<bool>();
}

std::optional<QString> optionalText(const ordered_json &object, const char *key)
{
    const auto found = object.find(key);
    if (found == object.end() || found->is_null())
        return std::nullopt;
    return fromStd(found->get_ref<const std::string &>());
}

} // namespace

AgentRecord AgentRecord::fresh()
{
    AgentRecord record;
    record.agentVersion = QStringLiteral(ZQB_SIM_AGENT_VERSION);
    record.latestAgentVersion = record.agentVersion;
    record.serviceVersion = QString::fromLatin1(serviceVersionOfStandIn);
    return record;
}

QByteArray AgentRecord::toJson() const
{
    ordered_json object;
    object["schema"] = toStd(currentSchema);
    object["agentVersion"] = toStd(agentVersion);
    object["latestAgentVersion"] = toStd(latestAgentVersion);
    object["serviceVersion"] = toStd(serviceVersion);
    object["compatibility"] = toStd(compatibility);
    object["online"] = online;
    object["enrolled"] = enrolled;
    object["targetName"] = toStd(targetName);
    object["targetDeviceId"] = toStd(targetDeviceId);
    ordered_json used = ordered_json::array();
    for (const QString &digest : usedInvitations)
        used.push_back(toStd(digest));
    object["usedInvitations"] = std::move(used);
    putOptional(object, "lastContactAt", lastContactAt);
    putOptional(object, "lastBackupAttemptAt", lastBackupAttemptAt);
    putOptional(object, "lastBackupAt", lastBackupAt);
    if (recoveryReady)
        object["recoveryReady"] = *recoveryReady;
    putOptional(object, "lastError", lastError);
    return QByteArray::fromStdString(object.dump(2)) + '\n';
}

std::optional<AgentRecord> AgentRecord::fromJson(QByteArrayView json)
{
    try {
        const ordered_json object = ordered_json::parse(json.begin(), json.end());
        if (!object.is_object())
            return std::nullopt;
        AgentRecord record;
        record.agentVersion = text(object, "agentVersion");
        record.latestAgentVersion = text(object, "latestAgentVersion");
        record.serviceVersion = text(object, "serviceVersion");
        record.compatibility = text(object, "compatibility");
        record.online = flag(object, "online");
        record.enrolled = flag(object, "enrolled");
        record.targetName = text(object, "targetName");
        record.targetDeviceId = text(object, "targetDeviceId");
        for (const auto &digest : object.at("usedInvitations"))
            record.usedInvitations.append(fromStd(digest.get_ref<const std::string &>()));
        record.lastContactAt = optionalText(object, "lastContactAt");
        record.lastBackupAttemptAt = optionalText(object, "lastBackupAttemptAt");
        record.lastBackupAt = optionalText(object, "lastBackupAt");
        const auto ready = object.find("recoveryReady");
        if (ready != object.end() && !ready->is_null())
            record.recoveryReady = ready->get<bool>();
        record.lastError = optionalText(object, "lastError");
        return record;
    } catch (const nlohmann::json::exception &) {
        return std::nullopt;
    }
}
