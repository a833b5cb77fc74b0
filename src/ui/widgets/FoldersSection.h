#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class FolderRow;
class QLabel;
class QPushButton;
class QVBoxLayout;

// "Folders to protect": one row per folder with its remove button, then
// "Add folders…" (and "Full Disk Access…" where the platform has it).
class FoldersSection : public QGroupBox
{
    Q_OBJECT
public:
    explicit FoldersSection(QWidget *parent = nullptr);

    const FoldersState &state() const { return m_state; }
    void setState(const FoldersState &state);

    // Its controls in visual order, for the window's tab order; it changes
    // with the rows (focusChainChanged).
    QList<QWidget *> focusChain() const;
    // The rows shown, in list order.
    const QList<FolderRow *> &rows() const { return m_folderRows; }

signals:
    void addRequested();
    void removeRequested(const QString &path);
    void fullDiskAccessRequested();
    void focusChainChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    void updateRows(const QStringList &paths);
    void applyColors();

    FoldersState m_state;
    bool m_rowsBuilt = false;
    QLabel *m_noFolders;
    QWidget *m_rows;
    QVBoxLayout *m_rowsLayout;
    QList<FolderRow *> m_folderRows; // parallel to m_state.paths once built
    QPushButton *m_add;
    QPushButton *m_fullDiskAccess;
};
