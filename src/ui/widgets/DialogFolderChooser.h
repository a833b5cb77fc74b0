#pragma once

#include "FolderChooser.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QFileDialog;

// The folder chooser of the desktop app: Qt's own file dialog (the native
// dialogs cannot pick several folders), directories only, several at once,
// no folder creation.
class DialogFolderChooser : public FolderChooser
{
public:
    explicit DialogFolderChooser(QWidget *parent = nullptr);

    // The dialog as it is shown, configured and not yet run.
    std::unique_ptr<QFileDialog> createDialog() const;
    std::optional<QStringList> chooseFolders() override;

private:
    QPointer<QWidget> m_parent;
};
