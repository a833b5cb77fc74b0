#include "HeaderSection.h"

#include "ControlSync.h"
#include "PlatformText.h"
#include "Symbols.h"
#include "VersionCapsule.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

HeaderSection::HeaderSection(QWidget *parent)
    : QWidget(parent), m_appIcon(new QLabel), m_subtitle(new WrappedLabel),
      m_versionLine(new QLabel), m_capsule(new VersionCapsule)
{
    setObjectName(QStringLiteral("header"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);

    m_appIcon->setObjectName(QStringLiteral("appIcon"));
    m_appIcon->setFixedSize(56, 56);
    m_appIcon->setScaledContents(true);
    m_appIcon->setAccessibleName(QStringLiteral("ZQB Agent"));
    row->addWidget(m_appIcon, 0, Qt::AlignTop);

    auto *column = new QVBoxLayout;
    column->setSpacing(3);
    auto *title = new QLabel(leftToRightIsolated(QStringLiteral("ZQB Agent")));
    title->setObjectName(QStringLiteral("appTitle"));
    title->setTextFormat(Qt::PlainText);
    title->setFont(WidgetStyle::titleFont(font()));
    column->addWidget(title);
    m_subtitle->setObjectName(QStringLiteral("subtitle"));
    column->addWidget(m_subtitle);

    auto *versionRow = new QHBoxLayout;
    versionRow->setSpacing(10);
    m_versionLine->setObjectName(QStringLiteral("versionLine"));
    // The version is the engine's text: shown as sent, never as markup.
    m_versionLine->setTextFormat(Qt::PlainText);
    m_versionLine->setFont(WidgetStyle::headlineFont(font()));
    m_versionLine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    versionRow->addWidget(m_versionLine);
    versionRow->addWidget(m_capsule);
    versionRow->addStretch();
    column->addSpacing(2);
    column->addLayout(versionRow);
    row->addLayout(column, 1);
    applyColors();
}

void HeaderSection::setState(const HeaderState &state)
{
    m_state = state;
    ControlSync::text(m_subtitle, state.subtitle);
    ControlSync::text(m_versionLine, state.versionLine);
    m_capsule->setState(state.capsule);
}

void HeaderSection::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void HeaderSection::applyColors()
{
    WidgetStyle::setTextColor(m_subtitle, colorForRole(ColorRole::Secondary, palette()));
    m_appIcon->setPixmap(Symbols::appPixmap(QSize(56, 56), devicePixelRatioF()));
}
