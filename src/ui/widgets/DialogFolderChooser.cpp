#include "DialogFolderChooser.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QListView>
#include <QTreeView>

DialogFolderChooser::DialogFolderChooser(QWidget *parent) : m_parent(parent) {}

std::unique_ptr<QFileDialog> DialogFolderChooser::createDialog() const
{
    auto dialog = std::make_unique<QFileDialog>(m_parent.data(), title);
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
