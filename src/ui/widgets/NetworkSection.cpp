#include "NetworkSection.h"

#include "ControlSync.h"
#include "Formatting.h"
#include "WheelSafeComboBox.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QCheckBox *checkBox(const QString &text, const char *name)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(text);
    return box;
}

int bandwidthIndex(qint64 kibPerSecond)
{
    const QList<BandwidthChoice> &choices = bandwidthChoices();
    for (qsizetype i = 0; i < choices.size(); ++i)
        if (choices.at(i).kibPerSecond == kibPerSecond)
            return int(i);
    return -1;
}

} // namespace

NetworkSection::NetworkSection(QWidget *parent)
    : QGroupBox(tr("Network transfer"), parent),
      m_paused(checkBox(tr("Pause encrypted transfers"), "pausedToggle")),
      m_bandwidth(new WheelSafeComboBox),
      m_metered(checkBox(tr("Treat the current network as metered"), "meteredToggle")),
      m_allowMetered(checkBox(tr("Allow backup on metered networks"), "allowMeteredToggle")),
      m_note(new WrappedLabel(tr("Interrupted transfers resume from durable "
                                 "ciphertext receipts. ZQB retries safe status "
                                 "checks and never sends plaintext.")))
{
    setObjectName(QStringLiteral("networkBox"));
    auto *column = new QVBoxLayout(this);
    column->setSpacing(10);
    column->addWidget(m_paused);

    auto *bandwidthRow = new QHBoxLayout;
    bandwidthRow->setSpacing(10);
    auto *bandwidthLabel = new QLabel(tr("Bandwidth limit"));
    bandwidthLabel->setObjectName(QStringLiteral("bandwidthLabel"));
    bandwidthLabel->setTextFormat(Qt::PlainText);
    bandwidthRow->addWidget(bandwidthLabel);
    m_bandwidth->setObjectName(QStringLiteral("bandwidthPicker"));
    m_bandwidth->setAccessibleName(tr("Bandwidth limit"));
    m_bandwidth->setMinimumWidth(170);
    bandwidthLabel->setBuddy(m_bandwidth);
    for (const BandwidthChoice &choice : bandwidthChoices())
        m_bandwidth->addItem(choice.label, choice.kibPerSecond);
    bandwidthRow->addWidget(m_bandwidth);
    bandwidthRow->addStretch();
    column->addLayout(bandwidthRow);

    column->addWidget(m_metered);
    column->addWidget(m_allowMetered);
    m_note->setObjectName(QStringLiteral("networkNote"));
    // Sized from the window's text, not from a group box title's font.
    m_note->setFont(WidgetStyle::captionFont(QApplication::font()));
    column->addWidget(m_note);

    connect(m_paused, &QCheckBox::toggled, this, &NetworkSection::pausedChanged);
    connect(m_bandwidth, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0 && index < bandwidthChoices().size())
            emit bandwidthChanged(bandwidthChoices().at(index).kibPerSecond);
    });
    connect(m_metered, &QCheckBox::toggled, this, &NetworkSection::currentNetworkMeteredChanged);
    connect(m_allowMetered, &QCheckBox::toggled, this, &NetworkSection::allowMeteredNetworkChanged);
    WidgetStyle::setTextColor(m_note, colorForRole(ColorRole::Secondary, palette()));
}

void NetworkSection::setState(const NetworkState &state)
{
    m_state = state;
    ControlSync::checked(m_paused, state.paused);
    ControlSync::index(m_bandwidth, bandwidthIndex(state.bandwidthLimitKibPerSecond));
    ControlSync::checked(m_metered, state.currentNetworkMetered);
    // Greyed out while the network is not metered; its value is kept.
    ControlSync::checked(m_allowMetered, state.allowMeteredNetwork);
    ControlSync::enabled(m_allowMetered, state.allowMeteredEnabled);
}

QList<QWidget *> NetworkSection::focusChain() const
{
    return {m_paused, m_bandwidth, m_metered, m_allowMetered};
}

void NetworkSection::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        WidgetStyle::setTextColor(m_note, colorForRole(ColorRole::Secondary, palette()));
}
