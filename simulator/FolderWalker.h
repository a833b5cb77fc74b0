#pragma once

#include "SkipPatterns.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Lists what a backup of one folder would contain, for real: recursively,
// without following symbolic links (a link is kept as a link, never entered),
// leaving out entries whose name matches a skip pattern and entries that
// cannot be read. Sockets, pipes and device files are not backed up.
class FolderWalker
{
public:
    struct Entry
    {
        QByteArray path;  // absolute, file-system encoding
        quint64 size = 0; // 0 for links
        qint64 modifiedNs = 0;
        bool link = false;
    };

    struct Result
    {
        QList<Entry> entries;
        bool folderMissing = false; // the folder itself could not be opened
        quint64 skippedByPattern = 0;
        quint64 unreadable = 0;
    };

    explicit FolderWalker(SkipPatterns patterns);

    Result walk(const QString &folder) const;

    static constexpr int maximumDepth = 128;

private:
    void walkDirectory(int directoryFd, const QByteArray &path, int depth, Result &result) const;

    SkipPatterns m_patterns;
};
