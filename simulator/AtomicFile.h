#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

// Whole-file reads and crash-safe writes for the stand-in's state files.
namespace AtomicFile {

// Writes a temporary file beside `path`, flushes it to disk and renames it over
// `path`, so a reader (or a crash) only ever sees the old or the new content.
bool write(const QString &path, QByteArrayView data, QString *problem = nullptr);

// The whole content of `path`, or nothing when it is missing, unreadable or
// larger than `limit` bytes.
std::optional<QByteArray> read(const QString &path, qint64 limit = 16 * 1024 * 1024);

// Removes temporary files that a killed writer left behind in `directory`.
void removeStaleTemporaries(const QString &directory);

} // namespace AtomicFile
