#include "FolderRow.h"

#include "ElidedLabel.h"
#include "PlatformText.h"
#include "Symbols.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

FolderRow::FolderRow(const QString &path, QWidget *parent) : QWidget(parent), m_path(path)
{
    setObjectName(QStringLiteral("folderRow"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_icon = new QLabel;
    m_icon->setFixedSize(16, 16);
    layout->addWidget(m_icon);
    m_label = new ElidedLabel;
    m_label->setObjectName(QStringLiteral("folderPath"));
    m_label->setFullText(leftToRightIsolated(path));
    layout->addWidget(m_label, 1);
    m_remove = new QToolButton;
    m_remove->setObjectName(QStringLiteral("removeFolderButton"));
    m_remove->setAutoRaise(true);
    m_remove->setIconSize(QSize(16, 16));
    m_remove->setToolTip(tr("Remove folder"));
    // Said with its folder: a list of identical "Remove folder" buttons
    // tells a screen reader's user nothing.
    m_remove->setAccessibleName(tr("Remove folder %1").arg(path));
    m_remove->setFocusPolicy(Qt::StrongFocus);
    connect(m_remove, &QToolButton::clicked, this, [this] { emit removeRequested(m_path); });
    layout->addWidget(m_remove);
}

void FolderRow::setColors(const QColor &folder, const QColor &remove, qreal devicePixelRatio)
{
    m_icon->setPixmap(Symbols::pixmap(Symbol::Folder, folder, QSize(16, 16), devicePixelRatio));
    m_remove->setIcon(Symbols::icon(Symbol::MinusCircle, remove, QSize(16, 16)));
}
