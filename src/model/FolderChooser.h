#pragma once

#include <QStringList>

#include <optional>

// Asks the user for folders to protect: directories only, several at once,
// no folder creation. Absent when the user cancels.
class FolderChooser
{
public:
    static inline const QString title = QStringLiteral("Choose folders ZQB should protect");
    static inline const QString confirmLabel = QStringLiteral("Protect folders");

    virtual ~FolderChooser() = default;
    virtual std::optional<QStringList> chooseFolders() = 0;
};
