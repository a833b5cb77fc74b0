#include "StatusBadge.h"

#include "BusySpinner.h"
#include "DotWidget.h"
#include "LineLabel.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr int barSteps = 1000;

// The title, message and error wrap: a message can be long and must stay whole.
QLabel *makeLabel(const char *name, QWidget *parent)
{
    auto *label = new WrappedLabel(parent);
    label->setObjectName(QLatin1String(name));
    return label;
}

// The progress lines change on every refresh while a backup runs; as single
// lines of fixed height their new texts only repaint them.
QLabel *makeLine(const char *name, QWidget *parent)
{
    auto *label = new LineLabel(parent);
    label->setObjectName(QLatin1String(name));
    return label;
}

void setLabel(QLabel *label, const std::optional<QString> &text)
{
    if (text && label->text() != *text)
        label->setText(*text);
    label->setVisible(text.has_value());
}

} // namespace

StatusBadge::StatusBadge(QWidget *parent)
    : QWidget(parent), m_dot(new DotWidget(12)), m_title(makeLabel("badgeTitle", this)),
      m_message(makeLabel("badgeMessage", this)), m_error(makeLabel("badgeError", this)),
      m_progress(new QWidget(this)), m_bar(new QProgressBar), m_spinner(new BusySpinner(16)),
      m_phase(makeLine("badgePhase", this)), m_lastProgress(makeLine("badgeLastProgress", this)),
      m_elapsed(makeLine("badgeElapsed", this))
{
    setObjectName(QStringLiteral("statusBadge"));
    m_dot->setObjectName(QStringLiteral("badgeDot"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);

    // 4 points above the dot line it up with the title.
    auto *dotColumn = new QVBoxLayout;
    dotColumn->setContentsMargins(0, 4, 0, 0);
    dotColumn->addWidget(m_dot);
    dotColumn->addStretch();
    row->addLayout(dotColumn);

    auto *column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    row->addLayout(column, 1);

    m_title->setFont(WidgetStyle::headlineFont(font()));
    m_error->setFont(WidgetStyle::captionFont(font()));
    column->addWidget(m_title);
    column->addWidget(m_message);
    column->addWidget(m_error);

    m_progress->setObjectName(QStringLiteral("badgeProgress"));
    auto *progressColumn = new QVBoxLayout(m_progress);
    progressColumn->setContentsMargins(0, 2, 0, 0);
    progressColumn->setSpacing(4);
    auto *barRow = new QHBoxLayout;
    barRow->setSpacing(8);
    m_bar->setObjectName(QStringLiteral("badgeBar"));
    m_bar->setRange(0, barSteps);
    m_bar->setTextVisible(false);
    m_bar->setMaximumWidth(240);
    m_bar->setMinimumWidth(160);
    m_bar->setFixedHeight(8);
    m_bar->setAccessibleName(tr("Backup progress"));
    m_spinner->setObjectName(QStringLiteral("badgeSpinner"));
    m_spinner->setAccessibleName(tr("Backup progress"));
    barRow->addWidget(m_bar, 0, Qt::AlignVCenter);
    barRow->addWidget(m_spinner, 0, Qt::AlignVCenter);
    m_phase->setFont(WidgetStyle::captionFont(font()));
    barRow->addWidget(m_phase, 1, Qt::AlignVCenter);
    progressColumn->addLayout(barRow);
    m_lastProgress->setFont(WidgetStyle::caption2Font(font()));
    m_elapsed->setFont(WidgetStyle::caption2Font(font()));
    progressColumn->addWidget(m_lastProgress);
    progressColumn->addWidget(m_elapsed);
    column->addWidget(m_progress);

    setState(badgeState(std::nullopt));
}

void StatusBadge::setState(const BadgeState &state)
{
    if (m_initialized && state == m_state)
        return;
    m_initialized = true;
    m_state = state;
    setLabel(m_title, state.title);
    setLabel(m_message, state.message);
    setLabel(m_error, state.errorLine);
    m_progress->setVisible(state.progress.has_value());
    if (state.progress) {
        const BadgeProgress &p = *state.progress;
        m_bar->setVisible(p.fraction.has_value());
        m_spinner->setVisible(!p.fraction.has_value());
        if (p.fraction)
            m_bar->setValue(int(std::lround(*p.fraction * barSteps)));
        setLabel(m_phase, p.phaseLine);
        setLabel(m_lastProgress, p.lastProgressLine);
        setLabel(m_elapsed, p.elapsedLine);
    }
    setAccessibleName(state.title);
    setAccessibleDescription(state.message);
    applyColors();
}

void StatusBadge::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void StatusBadge::applyColors()
{
    m_dot->setColor(colorForRole(m_state.dot, palette()));
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    WidgetStyle::setTextColor(m_message, secondary);
    WidgetStyle::setTextColor(m_phase, secondary);
    WidgetStyle::setTextColor(m_lastProgress, secondary);
    WidgetStyle::setTextColor(m_elapsed, secondary);
    WidgetStyle::setTextColor(m_error, colorForRole(ColorRole::Red, palette()));
}
