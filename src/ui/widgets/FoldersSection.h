#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class QLabel;
class QPushButton;
class QToolButton;
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

signals:
    void addRequested();
    void removeRequested(const QString &path);
    void fullDiskAccessRequested();
    void focusChainChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    void rebuildRows(const QStringList &paths);
    void applyColors();

    FoldersState m_state;
    bool m_rowsBuilt = false;
    QLabel *m_noFolders;
    QWidget *m_rows;
    QVBoxLayout *m_rowsLayout;
    QList<QToolButton *> m_removeButtons;
    QList<QLabel *> m_folderIcons;
    QPushButton *m_add;
    QPushButton *m_fullDiskAccess;
};
