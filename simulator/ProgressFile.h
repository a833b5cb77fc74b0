#pragma once

#include "BackupProgressStatus.h"

#include <QByteArrayView>

#include <optional>

// Reading back the progress record that a backup run writes with
// AgentDocuments::encode (progress.json). The app never reads a progress record
// on its own, so the stand-in carries this small reader itself.
namespace ProgressFile {

std::optional<BackupProgressStatus> decode(QByteArrayView json);

} // namespace ProgressFile
