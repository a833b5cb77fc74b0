#include "FoldersSection.h"

#include "ElidedLabel.h"
#include "Symbols.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
constexpr QSize symbolSize(16, 16);
}

FoldersSection::FoldersSection(QWidget *parent)
    : QGroupBox(QStringLiteral("Folders to protect"), parent),
      m_noFolders(new WrappedLabel(QStringLiteral("No folders selected yet."))),
      m_rows(new QWidget), m_rowsLayout(new QVBoxLayout(m_rows)),
      m_add(new QPushButton(QStringLiteral("Add folders\u2026"))),
      m_fullDiskAccess(new QPushButton(QStringLiteral("Full Disk Access\u2026")))
{
    setObjectName(QStringLiteral("foldersBox"));
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
    m_fullDiskAccess->setToolTip(QStringLiteral(
        "Some protected folders require macOS Full Disk Access for the ZQB Agent engine."));
    buttons->addWidget(m_add);
    buttons->addWidget(m_fullDiskAccess);
    buttons->addStretch();
    column->addLayout(buttons);

    connect(m_add, &QPushButton::clicked, this, &FoldersSection::addRequested);
    connect(m_fullDiskAccess, &QPushButton::clicked, this,
            &FoldersSection::fullDiskAccessRequested);
    applyColors();
}

void FoldersSection::setState(const FoldersState &state)
{
    const bool rowsChanged = !m_rowsBuilt || state.paths != m_state.paths;
    m_state = state;
    m_noFolders->setVisible(state.showNoFolders);
    if (rowsChanged)
        rebuildRows(state.paths);
    m_fullDiskAccess->setVisible(state.fullDiskAccessVisible);
}

QList<QWidget *> FoldersSection::focusChain() const
{
    QList<QWidget *> chain;
    for (QToolButton *remove : m_removeButtons)
        chain << remove;
    chain << m_add << m_fullDiskAccess;
    return chain;
}

void FoldersSection::rebuildRows(const QStringList &paths)
{
    const bool hadFocus = m_rows->isAncestorOf(QApplication::focusWidget());
    m_rowsBuilt = true;
    while (QLayoutItem *item = m_rowsLayout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_removeButtons.clear();
    m_folderIcons.clear();

    const QColor blue = colorForRole(ColorRole::Blue, palette());
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    for (const QString &path : paths) {
        auto *row = new QWidget;
        row->setObjectName(QStringLiteral("folderRow"));
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(8);
        auto *icon = new QLabel;
        icon->setFixedSize(symbolSize);
        icon->setPixmap(Symbols::pixmap(Symbol::Folder, blue, symbolSize, devicePixelRatioF()));
        layout->addWidget(icon);
        m_folderIcons << icon;
        auto *label = new ElidedLabel;
        label->setObjectName(QStringLiteral("folderPath"));
        label->setFullText(path);
        layout->addWidget(label, 1);
        auto *remove = new QToolButton;
        remove->setObjectName(QStringLiteral("removeFolderButton"));
        remove->setAutoRaise(true);
        remove->setIcon(Symbols::icon(Symbol::MinusCircle, secondary, symbolSize));
        remove->setIconSize(symbolSize);
        remove->setToolTip(QStringLiteral("Remove folder"));
        remove->setAccessibleName(QStringLiteral("Remove folder"));
        remove->setAccessibleDescription(path);
        remove->setFocusPolicy(Qt::StrongFocus);
        connect(remove, &QToolButton::clicked, this, [this, path] { emit removeRequested(path); });
        layout->addWidget(remove);
        m_removeButtons << remove;
        m_rowsLayout->addWidget(row);
    }
    m_rows->setVisible(!paths.isEmpty());
    emit focusChainChanged();
    if (hadFocus)
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
    for (QLabel *icon : std::as_const(m_folderIcons))
        icon->setPixmap(Symbols::pixmap(Symbol::Folder, blue, symbolSize, devicePixelRatioF()));
    for (QToolButton *remove : std::as_const(m_removeButtons))
        remove->setIcon(Symbols::icon(Symbol::MinusCircle, secondary, symbolSize));
}
