#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

// Ordering and normalising of folder paths and skip patterns.
namespace FolderList {

// Plain Unicode code-point order: case-sensitive, no locale. Differs from
// UTF-16 unit order for characters beyond U+FFFF against U+E000..U+FFFF.
bool codePointLess(QStringView a, QStringView b);

// Exact duplicates removed, then sorted by codePointLess.
QStringList sortedUnique(QStringList list);

// An absolute, cleaned path without a trailing separator ("/" stays "/").
// Empty for an empty input.
QString normalizedPath(const QString &path);

} // namespace FolderList
