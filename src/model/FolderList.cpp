#include "FolderList.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace FolderList {

namespace {

// Maps a UTF-16 unit so that unit order becomes code-point order: surrogates
// (which encode U+10000 and above) move above U+E000..U+FFFF.
char16_t codePointRank(char16_t unit)
{
    if (unit >= 0xE000)
        return char16_t(unit - 0x800);
    if (unit >= 0xD800)
        return char16_t(unit + 0x2000);
    return unit;
}

} // namespace

bool codePointLess(QStringView a, QStringView b)
{
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        const char16_t x = a[i].unicode();
        const char16_t y = b[i].unicode();
        if (x != y)
            return codePointRank(x) < codePointRank(y);
    }
    return a.size() < b.size();
}

QStringList sortedUnique(QStringList list)
{
    std::sort(list.begin(), list.end(),
              [](const QString &a, const QString &b) { return codePointLess(a, b); });
    // Equal strings are adjacent after sorting, as the order is total.
    list.erase(std::unique(list.begin(), list.end()), list.end());
    return list;
}

QString normalizedPath(const QString &path)
{
    if (path.isEmpty())
        return QString();
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace FolderList
