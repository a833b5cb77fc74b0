#include "FoldersSection.h"

#include "FolderRow.h"
#include "Symbols.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

FoldersSection::FoldersSection(QWidget *parent)
    : QGroupBox(tr("Folders to protect"), parent),
      m_noFolders(new WrappedLabel(tr("No folders selected yet."))), m_rows(new QWidget),
      m_rowsLayout(new QVBoxLayout(m_rows)), m_add(new QPushButton(tr("Add folders…"))),
      m_fullDiskAccess(new QPushButton(tr("Full Disk Access…"))), m_nextSlice(new QTimer(this))
{
    setObjectName(QStringLiteral("foldersBox"));
    // A zero timer, not a queued call: it fires once the window system's
    // events, paints included, have been handled.
    m_nextSlice->setSingleShot(true);
    m_nextSlice->setInterval(0);
    connect(m_nextSlice, &QTimer::timeout, this, [this] { syncRows(1); });
    auto *column = new QVBoxLayout(this);
    column->setSpacing(8);
    m_noFolders->setObjectName(QStringLiteral("noFolders"));
    column->addWidget(m_noFolders);
    m_rows->setObjectName(QStringLiteral("folderRows"));
    m_rowsLayout->setContentsMargins(0, 0, 0, 0);
    m_rowsLayout->setSpacing(2);
    column->addWidget(m_rows);

    auto *buttons = new QHBoxLayout;
    m_add->setObjectName(QStringLiteral("addFoldersButton"));
    m_add->setAccessibleName(m_add->text());
    m_fullDiskAccess->setObjectName(QStringLiteral("fullDiskAccessButton"));
    m_fullDiskAccess->setAccessibleName(m_fullDiskAccess->text());
    m_fullDiskAccess->setToolTip(
        tr("Some protected folders require macOS Full Disk Access for the ZQB Agent engine."));
    buttons->addWidget(m_add);
    buttons->addWidget(m_fullDiskAccess);
    buttons->addStretch();
    column->addLayout(buttons);

    connect(m_add, &QPushButton::clicked, this, &FoldersSection::addRequested);
    connect(m_fullDiskAccess, &QPushButton::clicked, this,
            &FoldersSection::fullDiskAccessRequested);
    applyColors();
}

namespace {

// Enough rows to fill a tall screen are made at once, so a short list is
// whole as soon as its state is set; beyond that a slice stops after this
// long, well inside one frame.
constexpr qsizetype rowsMadeAtOnce = 32;
constexpr qint64 sliceNs = 4'000'000;

} // namespace

void FoldersSection::setState(const FoldersState &state)
{
    // Equal lists that share their data compare at once; after a refresh the
    // model's list is new, and comparing it costs one pass over the paths.
    const bool rowsChanged = !m_rowsBuilt || state.paths != m_state.paths;
    m_state = state; // from now on shares the model's list
    m_rowsBuilt = true;
    if (rowsChanged && !m_nextSlice->isActive())
        syncRows(rowsMadeAtOnce);
    m_noFolders->setVisible(state.showNoFolders);
    m_fullDiskAccess->setVisible(state.fullDiskAccessVisible);
}

QList<QWidget *> FoldersSection::focusChain() const
{
    QList<QWidget *> chain;
    chain.reserve(m_folderRows.size() + 2);
    for (FolderRow *row : m_folderRows)
        chain << row->removeButton();
    chain << m_add << m_fullDiskAccess;
    return chain;
}

void FoldersSection::syncRows(qsizetype atLeast)
{
    // Only the rows that differ are replaced: the shown list and the wanted
    // one usually share a long head and tail (a removed folder, added
    // folders, an unchanged list, the rows of an earlier slice).
    const QStringList &paths = m_state.paths;
    const qsizetype oldCount = m_folderRows.size();
    const qsizetype newCount = paths.size();
    qsizetype head = 0;
    while (head < oldCount && head < newCount && m_folderRows.at(head)->path() == paths.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < oldCount - head && tail < newCount - head &&
           m_folderRows.at(oldCount - 1 - tail)->path() == paths.at(newCount - 1 - tail))
        ++tail;

    bool removedFocus = false;
    QWidget *focused = QApplication::focusWidget();
    for (qsizetype i = oldCount - tail - 1; i >= head; --i) {
        FolderRow *row = m_folderRows.takeAt(i);
        removedFocus = removedFocus || row == focused || row->isAncestorOf(focused);
        m_rowsLayout->removeWidget(row);
        delete row;
    }

    const QColor blue = colorForRole(ColorRole::Blue, palette());
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    QElapsedTimer slice;
    slice.start();
    const qsizetype end = newCount - tail;
    qsizetype i = head;
    // Showing a row lays out its siblings at once, and a thousand rows shown
    // one by one would lay out the list a thousand times: the slice's rows
    // are shown with the layout off, and the list is laid out once after.
    m_rowsLayout->setEnabled(false);
    for (; i < end; ++i) {
        if (i - head >= atLeast && slice.nsecsElapsed() >= sliceNs)
            break;
        auto *row = new FolderRow(paths.at(i));
        row->setColors(blue, secondary, devicePixelRatioF());
        connect(row, &FolderRow::removeRequested, this, &FoldersSection::removeRequested);
        m_rowsLayout->insertWidget(int(i), row);
        if (m_rows->isVisible())
            row->show();
        m_folderRows.insert(i, row);
    }
    m_rowsLayout->setEnabled(true);
    m_rowsLayout->invalidate();
    m_rows->setVisible(!paths.isEmpty());
    if (i < end) {
        // The rest after this turn's paint and input; the next slice reads the
        // wanted list again, so a change meanwhile is simply followed.
        m_nextSlice->start();
    } else {
        emit focusChainChanged();
    }
    if (removedFocus)
        m_add->setFocus(Qt::OtherFocusReason);
}

void FoldersSection::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void FoldersSection::applyColors()
{
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    WidgetStyle::setTextColor(m_noFolders, secondary);
    const QColor blue = colorForRole(ColorRole::Blue, palette());
    for (FolderRow *row : std::as_const(m_folderRows))
        row->setColors(blue, secondary, devicePixelRatioF());
}

bool FoldersSection::rowsComplete() const
{
    return !m_nextSlice->isActive();
}
