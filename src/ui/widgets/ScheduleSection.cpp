#include "ScheduleSection.h"

#include "BusySpinner.h"
#include "ControlSync.h"
#include "Formatting.h"
#include "WheelSafeComboBox.h"
#include "WidgetStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

ScheduleSection::ScheduleSection(QList<qint64> intervals, QWidget *parent)
    : QGroupBox(tr("Automatic protection"), parent), m_intervals(std::move(intervals)),
      m_enabled(new QCheckBox(tr("Back up selected folders automatically"))),
      m_interval(new WheelSafeComboBox), m_save(new QPushButton(tr("Save settings"))),
      m_backUpNow(new QPushButton(tr("Back up now"))), m_busy(new BusySpinner(16))
{
    setObjectName(QStringLiteral("scheduleBox"));
    auto *column = new QVBoxLayout(this);
    column->setSpacing(10);
    m_enabled->setObjectName(QStringLiteral("scheduleToggle"));
    m_enabled->setAccessibleName(m_enabled->text());
    column->addWidget(m_enabled);

    auto *intervalRow = new QHBoxLayout;
    intervalRow->setSpacing(10);
    auto *runEvery = new QLabel(tr("Run every"));
    runEvery->setObjectName(QStringLiteral("runEveryLabel"));
    runEvery->setTextFormat(Qt::PlainText);
    intervalRow->addWidget(runEvery);
    m_interval->setObjectName(QStringLiteral("intervalPicker"));
    m_interval->setFixedWidth(170);
    m_interval->setAccessibleName(tr("Run every"));
    runEvery->setBuddy(m_interval);
    for (qint64 minutes : std::as_const(m_intervals))
        m_interval->addItem(intervalLabel(minutes), minutes);
    intervalRow->addWidget(m_interval);
    intervalRow->addStretch();
    column->addLayout(intervalRow);

    auto *buttons = new QHBoxLayout;
    m_save->setObjectName(QStringLiteral("saveButton"));
    m_save->setAccessibleName(m_save->text());
    m_backUpNow->setObjectName(QStringLiteral("backUpNowButton"));
    m_backUpNow->setAccessibleName(m_backUpNow->text());
    m_busy->setObjectName(QStringLiteral("busyIndicator"));
    m_busy->setAccessibleName(tr("Working"));
    m_busy->setVisible(false);
    buttons->addWidget(m_save);
    buttons->addWidget(m_backUpNow);
    // As tall as the buttons' row, so that its circle is drawn on the row's
    // centre line: a 16-pixel widget cannot be centred in a row of odd height
    // (25 pixels with some fonts) and would sit half a pixel high.
    m_busy->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
    buttons->addWidget(m_busy);
    buttons->addStretch();
    column->addLayout(buttons);

    connect(m_enabled, &QCheckBox::toggled, this, &ScheduleSection::enabledChanged);
    connect(m_interval, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0 && index < m_intervals.size())
            emit intervalChanged(m_intervals.at(index));
    });
    connect(m_save, &QPushButton::clicked, this, &ScheduleSection::saveRequested);
    connect(m_backUpNow, &QPushButton::clicked, this, &ScheduleSection::backUpNowRequested);
    WidgetStyle::makeProminent(m_backUpNow);
}

void ScheduleSection::setState(const ScheduleState &state)
{
    m_state = state;
    ControlSync::checked(m_enabled, state.enabled);
    ControlSync::index(m_interval, int(m_intervals.indexOf(state.intervalMinutes)));
    ControlSync::enabled(m_save, state.saveEnabled);
    ControlSync::enabled(m_backUpNow, state.backUpNowEnabled);
    m_busy->setVisible(state.busy);
}

QList<QWidget *> ScheduleSection::focusChain() const
{
    return {m_enabled, m_interval, m_save, m_backUpNow};
}

void ScheduleSection::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        WidgetStyle::makeProminent(m_backUpNow);
}
