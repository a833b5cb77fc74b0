#include "ScriptedFolderChooser.h"

#include <QFile>

std::optional<QStringList> ScriptedFolderChooser::chooseFolders()
{
    QFile file(m_listFile);
    if (m_listFile.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QStringList folders;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (!line.trimmed().isEmpty())
            folders << QString::fromUtf8(line.trimmed());
    if (folders.isEmpty())
        return std::nullopt;
    return folders;
}
