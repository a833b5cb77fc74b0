#include "ConnectionSection.h"

#include "ControlSync.h"
#include "Symbols.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int rowCount = 9;
}

ConnectionSection::ConnectionSection(QWidget *parent)
    : QGroupBox(tr("Connection and compatibility"), parent), m_grid(new QGridLayout),
      m_updateCard(new QWidget), m_updateIcon(new QLabel), m_install(new QPushButton),
      m_check(new QPushButton)
{
    setObjectName(QStringLiteral("connectionSection"));
    auto *column = new QVBoxLayout(this);
    column->setSpacing(10);
    m_grid->setHorizontalSpacing(16);
    m_grid->setVerticalSpacing(6);
    m_grid->setColumnStretch(1, 1);
    for (int i = 0; i < rowCount; ++i) {
        auto *label = new QLabel;
        auto *value = new WrappedLabel;
        label->setObjectName(QStringLiteral("detailLabel%1").arg(i));
        value->setObjectName(QStringLiteral("detailValue%1").arg(i));
        label->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setBuddy(value);
        m_grid->addWidget(label, i, 0, Qt::AlignLeft | Qt::AlignVCenter);
        m_grid->addWidget(value, i, 1, Qt::AlignVCenter);
        m_labels << label;
        m_values << value;
    }
    column->addLayout(m_grid);

    m_updateCard->setObjectName(QStringLiteral("updateCard"));
    auto *card = new QHBoxLayout(m_updateCard);
    card->setContentsMargins(0, 4, 0, 0);
    card->setSpacing(8);
    m_updateIcon->setFixedSize(18, 18);
    card->addWidget(m_updateIcon);
    auto *cardText = new WrappedLabel(tr("A newer compatible ZQB Agent is available."));
    cardText->setObjectName(QStringLiteral("updateText"));
    card->addWidget(cardText, 1);
    m_install->setObjectName(QStringLiteral("installButton"));
    m_install->setText(tr("Install verified update"));
    m_install->setAccessibleName(m_install->text());
    card->addWidget(m_install);
    column->addWidget(m_updateCard);

    m_check->setObjectName(QStringLiteral("checkButton"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_check);
    buttons->addStretch();
    column->addLayout(buttons);

    connect(m_install, &QPushButton::clicked, this, &ConnectionSection::installRequested);
    connect(m_check, &QPushButton::clicked, this, &ConnectionSection::checkRequested);
    setState(connectionState(std::nullopt, false));
}

void ConnectionSection::setState(const ConnectionState &state)
{
    if (m_initialized && state == m_state)
        return;
    m_initialized = true;
    m_state = state;
    for (int i = 0; i < rowCount; ++i) {
        const DetailRow row = state.rows.value(i);
        if (m_labels[i]->text() != row.label)
            m_labels[i]->setText(row.label);
        if (m_values[i]->text() != row.value)
            m_values[i]->setText(row.value);
        // Named by its label too: a row whose label changes while its value
        // stays ("Current backup elapsed" becomes "Last backup duration")
        // must not keep announcing the old label.
        const QString name = row.label + QStringLiteral(": ") + row.value;
        if (m_values[i]->accessibleName() != name)
            m_values[i]->setAccessibleName(name);
    }
    m_updateCard->setVisible(state.showUpdateCard);
    ControlSync::enabled(m_install, state.installEnabled);
    if (m_check->text() != state.checkLabel) {
        m_check->setText(state.checkLabel);
        m_check->setAccessibleName(state.checkLabel);
    }
    ControlSync::enabled(m_check, state.checkEnabled);
    applyColors();
}

QList<DetailRow> ConnectionSection::shownRows() const
{
    QList<DetailRow> rows;
    for (int i = 0; i < rowCount; ++i)
        rows.append({m_labels[i]->text(), m_values[i]->text()});
    return rows;
}

void ConnectionSection::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void ConnectionSection::applyColors()
{
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    for (QLabel *label : std::as_const(m_labels))
        WidgetStyle::setTextColor(label, secondary);
    const QColor blue = colorForRole(ColorRole::Blue, palette());
    if (m_updateIcon->property("tint").value<QColor>() != blue) {
        m_updateIcon->setPixmap(
            Symbols::pixmap(Symbol::ArrowDownCircle, blue, QSize(18, 18), devicePixelRatioF()));
        m_updateIcon->setProperty("tint", blue);
    }
}
