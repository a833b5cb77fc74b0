#pragma once

#include "TranslatedText.h"

#include <QStringList>

#include <optional>

// Asks the user for folders to protect: directories only, several at once,
// no folder creation. Absent when the user cancels.
class FolderChooser
{
public:
    static inline const TranslatedText title = {
        "FolderChooser", QT_TRANSLATE_NOOP("FolderChooser", "Choose folders ZQB should protect")};
    static inline const TranslatedText confirmLabel = {
        "FolderChooser", QT_TRANSLATE_NOOP("FolderChooser", "Protect folders")};

    virtual ~FolderChooser() = default;
    virtual std::optional<QStringList> chooseFolders() = 0;
};
