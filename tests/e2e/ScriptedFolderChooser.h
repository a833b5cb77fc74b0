#pragma once

#include "FolderChooser.h"

#include <QString>

// Test-only: "chooses" the folders listed one per line in a file the test
// writes; a missing or empty file is a cancelled choice.
class ScriptedFolderChooser : public FolderChooser
{
public:
    explicit ScriptedFolderChooser(QString listFile) : m_listFile(std::move(listFile)) {}
    std::optional<QStringList> chooseFolders() override;

private:
    QString m_listFile;
};
