#include "DialogFolderChooser.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QListView>
#include <QTreeView>

DialogFolderChooser::DialogFolderChooser(ParentWindow parentWindow, PrepareDialog prepareDialog)
    : m_parentWindow(std::move(parentWindow)), m_prepareDialog(std::move(prepareDialog))
{
}

std::unique_ptr<QFileDialog> DialogFolderChooser::createDialog() const
{
    QWidget *parent = m_parentWindow ? m_parentWindow() : nullptr;
    // A dialog with a parent widget is a separate window whose transient
    // parent is the parent's window, on every platform; Qt centres it over
    // that window when it is shown.
    auto dialog = std::make_unique<QFileDialog>(parent ? parent->window() : nullptr, title);
    // Modal to its window only: the tray menu and other windows stay usable,
    // and the desktop never lets the window be raised over its own panel.
    dialog->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::ShowDirsOnly |
                       QFileDialog::ReadOnly);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setLabelText(QFileDialog::Accept, confirmLabel);
    dialog->setDirectory(QDir::home());
    // Qt's dialog picks one folder by default; its views allow several.
    for (QAbstractItemView *view : dialog->findChildren<QAbstractItemView *>()) {
        if (qobject_cast<QListView *>(view) || qobject_cast<QTreeView *>(view))
            if (view->objectName() == QLatin1String("listView") ||
                view->objectName() == QLatin1String("treeView"))
                view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    if (m_prepareDialog)
        m_prepareDialog(dialog.get());
    return dialog;
}

std::optional<QStringList> DialogFolderChooser::chooseFolders()
{
    std::unique_ptr<QFileDialog> dialog = createDialog();
    if (dialog->exec() != QDialog::Accepted)
        return std::nullopt;
    QStringList paths;
    for (const QString &path : dialog->selectedFiles())
        paths << QDir::cleanPath(QDir(path).absolutePath());
    return paths;
}
