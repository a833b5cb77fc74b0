#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class FolderRow;
class QLabel;
class QPushButton;
class QTimer;
class QVBoxLayout;

// "Folders to protect": one row per folder with its remove button, then
// "Add folders…" (and "Full Disk Access…" where the platform has it).
//
// Rows are made in slices of a few milliseconds, one slice per event-loop
// turn: a list of a thousand folders then shows its first screenful at once
// and fills in behind it while the window keeps painting and taking input.
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
    // The rows shown, in list order; while rowsComplete() is false the tail
    // of the list is still being made.
    const QList<FolderRow *> &rows() const { return m_folderRows; }
    bool rowsComplete() const;

signals:
    void addRequested();
    void removeRequested(const QString &path);
    void fullDiskAccessRequested();
    // After rows were removed, or the last slice of new rows was made.
    void focusChainChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    // Brings the rows one slice closer to m_state.paths, and queues the next
    // slice while rows are missing.
    // At least `atLeast` rows are made whatever the time.
    void syncRows(qsizetype atLeast);
    void applyColors();

    FoldersState m_state;
    bool m_rowsBuilt = false;
    QLabel *m_noFolders;
    QWidget *m_rows;
    QVBoxLayout *m_rowsLayout;
    QList<FolderRow *> m_folderRows;
    QPushButton *m_add;
    QPushButton *m_fullDiskAccess;
    QTimer *m_nextSlice;
};
