#pragma once

#include "FolderChooser.h"

#include <QWidget>

#include <functional>
#include <memory>

class QFileDialog;

// The folder chooser of the desktop app: Qt's own file dialog (the native
// dialogs cannot pick several folders), directories only, several at once,
// no folder creation. The panel belongs to the window it was asked from: its
// transient child (so the desktop places it over that window and keeps it
// above), centred over it and modal to it alone.
class DialogFolderChooser : public FolderChooser
{
public:
    // Asked each time the panel opens: the window it belongs to, if any.
    using ParentWindow = std::function<QWidget *()>;
    // Given each dialog before it is shown: what the platform needs to be
    // told about it beyond Qt's own window properties.
    using PrepareDialog = std::function<void(QWidget *dialog)>;

    explicit DialogFolderChooser(ParentWindow parentWindow = {}, PrepareDialog prepareDialog = {});

    // The dialog as it is shown, configured and not yet run.
    std::unique_ptr<QFileDialog> createDialog() const;
    std::optional<QStringList> chooseFolders() override;

private:
    ParentWindow m_parentWindow;
    PrepareDialog m_prepareDialog;
};
