#pragma once

#include "AgentSettings.h"
#include "AgentUIStatus.h"
#include "BackupProgressStatus.h"
#include "RuntimeStatus.h"
#include "TransferPolicy.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

// The JSON form of the records exchanged with the engine.
//
// Writing: one compact object, keys in declared order, absent optional members
// left out (never null), every solidus escaped as "\/".
// Reading: strict. Every required key present with the right JSON type,
// integers exact and within their width (no fraction, no exponent), booleans
// only true/false; optional keys may be missing or null; unknown keys are
// ignored. Any breach fails the whole read (std::nullopt).
namespace AgentDocuments {

QByteArray encode(const AgentSettings &settings);
QByteArray encode(const TransferPolicy &policy);
QByteArray encode(const BackupProgressStatus &progress);
QByteArray encode(const RuntimeStatus &runtime);
QByteArray encode(const AgentUIStatus &status);

std::optional<AgentSettings> decodeSettings(QByteArrayView json);
std::optional<TransferPolicy> decodeTransferPolicy(QByteArrayView json);
std::optional<AgentUIStatus> decodeStatus(QByteArrayView json);

} // namespace AgentDocuments
