#include "AgentView.h"

#include "AgentModel.h"
#include "BetaWarning.h"
#include "BusySpinner.h"
#include "ConnectionSection.h"
#include "ElidedLabel.h"
#include "Formatting.h"
#include "MessageCard.h"
#include "StatusBadge.h"
#include "Symbols.h"
#include "VersionCapsule.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// How deep widgets with their own layouts nest inside the view.
constexpr int layoutDepth = 6;

QLabel *wrappedLabel(const QString &text, const char *name)
{
    auto *label = new WrappedLabel(text);
    label->setObjectName(QLatin1String(name));
    return label;
}

QPushButton *button(const QString &text, const char *name)
{
    auto *b = new QPushButton(text);
    b->setObjectName(QLatin1String(name));
    b->setAccessibleName(text);
    return b;
}

void setTextIfChanged(QLabel *label, const QString &text)
{
    if (label->text() != text)
        label->setText(text);
}

void setEnabledIfChanged(QWidget *widget, bool enabled)
{
    if (widget->isEnabled() != enabled)
        widget->setEnabled(enabled);
}

// Rendering never feeds back into the model: no signals while syncing.
void syncChecked(QCheckBox *box, bool checked)
{
    if (box->isChecked() == checked)
        return;
    const QSignalBlocker blocker(box);
    box->setChecked(checked);
}

void syncIndex(QComboBox *combo, int index)
{
    if (combo->currentIndex() == index)
        return;
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(index);
}

// An edit that already shows the model's text is left alone, so typing keeps
// its cursor and selection.
void syncText(QLineEdit *edit, const QString &text)
{
    if (edit->text() == text)
        return;
    const QSignalBlocker blocker(edit);
    edit->setText(text);
}

} // namespace

AgentView::AgentView(AgentModel &model, QList<qint64> intervals, QWidget *parent)
    : QWidget(parent), m_model(model), m_intervals(std::move(intervals))
{
    setObjectName(QStringLiteral("agentView"));
    setMinimumSize(720, 680);
    build();
    bindControls();

    connect(&m_model, &AgentModel::changed, this, &AgentView::scheduleRender);
    connect(&m_model, &AgentModel::settled, this, &AgentView::renderPending);
    render();
}

AgentView::~AgentView() = default;

void AgentView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_model.start(); // only its first call acts
}

void AgentView::paintEvent(QPaintEvent *event)
{
    m_painted = true;
    QWidget::paintEvent(event);
}

void AgentView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_colorsDirty = true;
        scheduleRender();
    }
}

// ---- building ------------------------------------------------------------

void AgentView::build()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    m_scroll = new QScrollArea;
    m_scroll->setObjectName(QStringLiteral("agentScroll"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    outer->addWidget(m_scroll);

    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("agentContent"));
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);

    m_badge = new StatusBadge;
    m_errorCard = new MessageCard(ColorRole::Red);
    m_noticeCard = new MessageCard(ColorRole::Green);
    m_connection = new ConnectionSection;
    m_beta = new BetaWarning;

    column->addWidget(buildHeader());     // 1
    column->addWidget(m_badge);           // 2
    column->addWidget(m_errorCard);       // 3
    column->addWidget(m_noticeCard);      // 4
    column->addWidget(buildConnectBox()); // 5, one of these two or neither
    column->addWidget(buildRestoringBox());
    column->addWidget(buildFoldersBox());  // 6
    column->addWidget(buildScheduleBox()); // 7
    column->addWidget(buildSkipBox());     // 8
    column->addWidget(buildNetworkBox());  // 9
    column->addWidget(m_connection);       // 10
    column->addWidget(m_beta);             // 11
    column->addStretch(1);
    m_scroll->setWidget(content);
}

QWidget *AgentView::buildHeader()
{
    auto *header = new QWidget;
    header->setObjectName(QStringLiteral("header"));
    auto *row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);

    m_appIcon = new QLabel;
    m_appIcon->setObjectName(QStringLiteral("appIcon"));
    m_appIcon->setFixedSize(56, 56);
    m_appIcon->setScaledContents(true);
    m_appIcon->setAccessibleName(QStringLiteral("ZQB Agent"));
    row->addWidget(m_appIcon, 0, Qt::AlignTop);

    auto *column = new QVBoxLayout;
    column->setSpacing(3);
    auto *title = new QLabel(QStringLiteral("ZQB Agent"));
    title->setObjectName(QStringLiteral("appTitle"));
    title->setFont(WidgetStyle::titleFont(font()));
    column->addWidget(title);
    m_subtitle = wrappedLabel(QString(), "subtitle");
    m_secondaryLabels << m_subtitle;
    column->addWidget(m_subtitle);

    auto *versionRow = new QHBoxLayout;
    versionRow->setSpacing(10);
    m_versionLine = new QLabel;
    m_versionLine->setObjectName(QStringLiteral("versionLine"));
    m_versionLine->setFont(WidgetStyle::headlineFont(font()));
    m_versionLine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    versionRow->addWidget(m_versionLine);
    m_capsule = new VersionCapsule;
    versionRow->addWidget(m_capsule);
    versionRow->addStretch();
    column->addSpacing(2);
    column->addLayout(versionRow);
    row->addLayout(column, 1);
    return header;
}

QGroupBox *AgentView::buildConnectBox()
{
    m_connectBox = new QGroupBox;
    m_connectBox->setObjectName(QStringLiteral("connectBox"));
    auto *column = new QVBoxLayout(m_connectBox);
    column->setSpacing(10);
    m_connectText = wrappedLabel(QString(), "connectText");
    m_secondaryLabels << m_connectText;
    column->addWidget(m_connectText);
    m_invitation = new QLineEdit;
    m_invitation->setObjectName(QStringLiteral("invitationField"));
    m_invitation->setEchoMode(QLineEdit::Password);
    m_invitation->setPlaceholderText(QStringLiteral("One-time invitation"));
    m_invitation->setAccessibleName(QStringLiteral("One-time invitation"));
    // The invitation is a secret: no drag out, no undo history kept around.
    m_invitation->setDragEnabled(false);
    m_invitation->setClearButtonEnabled(false);
    column->addWidget(m_invitation);
    auto *buttons = new QHBoxLayout;
    m_enroll = button(QString(), "enrollButton");
    buttons->addWidget(m_enroll);
    buttons->addStretch();
    column->addLayout(buttons);
    return m_connectBox;
}

QGroupBox *AgentView::buildRestoringBox()
{
    m_restoringBox = new QGroupBox(QStringLiteral("Restoring connection"));
    m_restoringBox->setObjectName(QStringLiteral("restoringBox"));
    auto *row = new QHBoxLayout(m_restoringBox);
    row->setSpacing(10);
    auto *spinner = new BusySpinner(16);
    spinner->setObjectName(QStringLiteral("restoringSpinner"));
    row->addWidget(spinner);
    m_restoringText = wrappedLabel(QString(), "restoringText");
    m_secondaryLabels << m_restoringText;
    row->addWidget(m_restoringText, 1);
    return m_restoringBox;
}

QGroupBox *AgentView::buildFoldersBox()
{
    m_foldersBox = new QGroupBox(QStringLiteral("Folders to protect"));
    m_foldersBox->setObjectName(QStringLiteral("foldersBox"));
    auto *column = new QVBoxLayout(m_foldersBox);
    column->setSpacing(8);
    m_noFolders = wrappedLabel(QStringLiteral("No folders selected yet."), "noFolders");
    m_secondaryLabels << m_noFolders;
    column->addWidget(m_noFolders);
    m_folderRows = new QWidget;
    m_folderRows->setObjectName(QStringLiteral("folderRows"));
    m_folderRowsLayout = new QVBoxLayout(m_folderRows);
    m_folderRowsLayout->setContentsMargins(0, 0, 0, 0);
    m_folderRowsLayout->setSpacing(2);
    column->addWidget(m_folderRows);

    auto *buttons = new QHBoxLayout;
    m_addFolders = button(QStringLiteral("Add folders\u2026"), "addFoldersButton");
    m_fullDiskAccess = button(QStringLiteral("Full Disk Access\u2026"), "fullDiskAccessButton");
    m_fullDiskAccess->setToolTip(QStringLiteral(
        "Some protected folders require macOS Full Disk Access for the ZQB Agent engine."));
    buttons->addWidget(m_addFolders);
    buttons->addWidget(m_fullDiskAccess);
    buttons->addStretch();
    column->addLayout(buttons);
    return m_foldersBox;
}

QGroupBox *AgentView::buildScheduleBox()
{
    auto *box = new QGroupBox(QStringLiteral("Automatic protection"));
    box->setObjectName(QStringLiteral("scheduleBox"));
    auto *column = new QVBoxLayout(box);
    column->setSpacing(10);
    m_scheduleEnabled = new QCheckBox(QStringLiteral("Back up selected folders automatically"));
    m_scheduleEnabled->setObjectName(QStringLiteral("scheduleToggle"));
    m_scheduleEnabled->setAccessibleName(m_scheduleEnabled->text());
    column->addWidget(m_scheduleEnabled);

    auto *intervalRow = new QHBoxLayout;
    intervalRow->setSpacing(10);
    auto *runEvery = new QLabel(QStringLiteral("Run every"));
    runEvery->setObjectName(QStringLiteral("runEveryLabel"));
    intervalRow->addWidget(runEvery);
    m_interval = new QComboBox;
    m_interval->setObjectName(QStringLiteral("intervalPicker"));
    m_interval->setFixedWidth(170);
    m_interval->setAccessibleName(QStringLiteral("Run every"));
    runEvery->setBuddy(m_interval);
    for (qint64 minutes : std::as_const(m_intervals))
        m_interval->addItem(intervalLabel(minutes), minutes);
    intervalRow->addWidget(m_interval);
    intervalRow->addStretch();
    column->addLayout(intervalRow);

    auto *buttons = new QHBoxLayout;
    m_save = button(QStringLiteral("Save settings"), "saveButton");
    m_backUpNow = button(QStringLiteral("Back up now"), "backUpNowButton");
    buttons->addWidget(m_save);
    buttons->addWidget(m_backUpNow);
    buttons->addStretch();
    column->addLayout(buttons);
    return box;
}

QGroupBox *AgentView::buildSkipBox()
{
    auto *box = new QGroupBox(QStringLiteral("Skip patterns"));
    box->setObjectName(QStringLiteral("skipBox"));
    auto *column = new QVBoxLayout(box);
    column->setSpacing(8);
    m_exclusions = new QLineEdit;
    m_exclusions->setObjectName(QStringLiteral("exclusionsField"));
    m_exclusions->setPlaceholderText(
        QStringLiteral("Comma-separated names, such as node_modules, *.tmp"));
    m_exclusions->setAccessibleName(QStringLiteral("Skip patterns"));
    column->addWidget(m_exclusions);
    m_exclusionsNote = wrappedLabel(QStringLiteral("Patterns match file or folder names. ZQB "
                                                   "always shows the complete configured list."),
                                    "exclusionsNote");
    m_exclusionsNote->setFont(WidgetStyle::captionFont(font()));
    m_secondaryLabels << m_exclusionsNote;
    column->addWidget(m_exclusionsNote);
    return box;
}

QGroupBox *AgentView::buildNetworkBox()
{
    auto *box = new QGroupBox(QStringLiteral("Network transfer"));
    box->setObjectName(QStringLiteral("networkBox"));
    auto *column = new QVBoxLayout(box);
    column->setSpacing(10);
    m_paused = new QCheckBox(QStringLiteral("Pause encrypted transfers"));
    m_paused->setObjectName(QStringLiteral("pausedToggle"));
    m_paused->setAccessibleName(m_paused->text());
    column->addWidget(m_paused);

    auto *bandwidthRow = new QHBoxLayout;
    bandwidthRow->setSpacing(10);
    auto *bandwidthLabel = new QLabel(QStringLiteral("Bandwidth limit"));
    bandwidthLabel->setObjectName(QStringLiteral("bandwidthLabel"));
    bandwidthRow->addWidget(bandwidthLabel);
    m_bandwidth = new QComboBox;
    m_bandwidth->setObjectName(QStringLiteral("bandwidthPicker"));
    m_bandwidth->setAccessibleName(QStringLiteral("Bandwidth limit"));
    m_bandwidth->setMinimumWidth(170);
    bandwidthLabel->setBuddy(m_bandwidth);
    for (const BandwidthChoice &choice : bandwidthChoices())
        m_bandwidth->addItem(choice.label, choice.kibPerSecond);
    bandwidthRow->addWidget(m_bandwidth);
    bandwidthRow->addStretch();
    column->addLayout(bandwidthRow);

    m_metered = new QCheckBox(QStringLiteral("Treat the current network as metered"));
    m_metered->setObjectName(QStringLiteral("meteredToggle"));
    m_metered->setAccessibleName(m_metered->text());
    column->addWidget(m_metered);
    m_allowMetered = new QCheckBox(QStringLiteral("Allow backup on metered networks"));
    m_allowMetered->setObjectName(QStringLiteral("allowMeteredToggle"));
    m_allowMetered->setAccessibleName(m_allowMetered->text());
    column->addWidget(m_allowMetered);
    m_networkNote = wrappedLabel(QStringLiteral("Interrupted transfers resume from durable "
                                                "ciphertext receipts. ZQB retries safe status "
                                                "checks and never sends plaintext."),
                                 "networkNote");
    m_networkNote->setFont(WidgetStyle::captionFont(font()));
    m_secondaryLabels << m_networkNote;
    column->addWidget(m_networkNote);
    return box;
}

// ---- binding -------------------------------------------------------------

void AgentView::bindControls()
{
    AgentModel *model = &m_model;
    // User edits only: textEdited, clicked and activated never fire when the
    // render sets a control.
    connect(m_invitation, &QLineEdit::textEdited, model, &AgentModel::setInvitation);
    connect(m_exclusions, &QLineEdit::textEdited, model, &AgentModel::setExclusionText);
    connect(m_scheduleEnabled, &QCheckBox::clicked, model, &AgentModel::setScheduleEnabled);
    connect(m_paused, &QCheckBox::clicked, model, &AgentModel::setTransfersPaused);
    connect(m_metered, &QCheckBox::clicked, model, &AgentModel::setCurrentNetworkMetered);
    connect(m_allowMetered, &QCheckBox::clicked, model, &AgentModel::setAllowMeteredNetwork);
    connect(m_interval, &QComboBox::activated, this, [this](int index) {
        if (index >= 0 && index < m_intervals.size())
            m_model.setIntervalMinutes(m_intervals.at(index));
    });
    connect(m_bandwidth, &QComboBox::activated, this, [this](int index) {
        if (index >= 0 && index < bandwidthChoices().size())
            m_model.setBandwidthLimitKibPerSecond(bandwidthChoices().at(index).kibPerSecond);
    });

    connect(m_enroll, &QPushButton::clicked, model, &AgentModel::enroll);
    connect(m_addFolders, &QPushButton::clicked, model, &AgentModel::addFolders);
    connect(m_fullDiskAccess, &QPushButton::clicked, model, &AgentModel::openFullDiskAccess);
    connect(m_save, &QPushButton::clicked, model, &AgentModel::save);
    connect(m_backUpNow, &QPushButton::clicked, model, &AgentModel::backUpNow);
    connect(m_connection, &ConnectionSection::installRequested, model, &AgentModel::installUpdate);
    connect(m_connection, &ConnectionSection::checkRequested, model, &AgentModel::checkConnection);
    connect(m_errorCard, &MessageCard::dismissed, model,
            [model] { model->setError(std::nullopt); });
    connect(m_noticeCard, &MessageCard::dismissed, model,
            [model] { model->setNotice(std::nullopt); });
}

// ---- rendering -----------------------------------------------------------

void AgentView::scheduleRender()
{
    // Any number of model assignments in one event-loop turn cost one render.
    if (m_renderPending)
        return;
    m_renderPending = true;
    QMetaObject::invokeMethod(this, &AgentView::renderPending, Qt::QueuedConnection);
}

void AgentView::renderPending()
{
    if (!m_renderPending)
        return;
    render();
    if (!m_painted) {
        // Before the first paint, lay the column out now: the window's first
        // expose may be handled before the layout requests this render
        // posted. Each pass lays out one level and may ask the next one up.
        for (int level = 0; level < layoutDepth; ++level)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
}

void AgentView::render()
{
    m_renderPending = false;
    ++m_renderCount;
    const WindowState w =
        ::windowState(windowInputs(m_model, QCoreApplication::applicationVersion()));

    setTextIfChanged(m_subtitle, w.subtitle);
    setTextIfChanged(m_versionLine, w.versionLine);
    m_capsule->setState(w.capsule);
    m_badge->setState(w.badge);

    m_errorCard->setVisible(w.errorCard.has_value());
    if (w.errorCard)
        m_errorCard->setText(*w.errorCard);
    m_noticeCard->setVisible(w.noticeCard.has_value());
    if (w.noticeCard)
        m_noticeCard->setText(*w.noticeCard);

    m_connectBox->setVisible(w.connectionBox == ConnectionBox::Connect);
    m_restoringBox->setVisible(w.connectionBox == ConnectionBox::Restoring);
    if (m_connectBox->title() != w.connectTitle)
        m_connectBox->setTitle(w.connectTitle);
    setTextIfChanged(m_connectText, w.connectText);
    syncText(m_invitation, m_model.invitation());
    if (m_enroll->text() != w.enrollLabel) {
        m_enroll->setText(w.enrollLabel);
        m_enroll->setAccessibleName(w.enrollLabel);
    }
    setEnabledIfChanged(m_enroll, w.enrollEnabled);
    setTextIfChanged(m_restoringText, w.restoringText);

    m_noFolders->setVisible(w.showNoFolders);
    renderFolders(w.folders);
    m_fullDiskAccess->setVisible(w.fullDiskAccessVisible);

    syncChecked(m_scheduleEnabled, m_model.scheduleEnabled());
    syncIndex(m_interval, int(m_intervals.indexOf(m_model.intervalMinutes())));
    setEnabledIfChanged(m_save, w.saveEnabled);
    setEnabledIfChanged(m_backUpNow, w.backUpNowEnabled);

    syncText(m_exclusions, m_model.exclusionText());

    syncChecked(m_paused, m_model.transfersPaused());
    int bandwidthIndex = -1;
    for (qsizetype i = 0; i < bandwidthChoices().size(); ++i)
        if (bandwidthChoices().at(i).kibPerSecond == m_model.bandwidthLimitKibPerSecond())
            bandwidthIndex = int(i);
    syncIndex(m_bandwidth, bandwidthIndex);
    syncChecked(m_metered, m_model.currentNetworkMetered());
    // Greyed out while the network is not metered; its value is kept.
    syncChecked(m_allowMetered, m_model.allowMeteredNetwork());
    setEnabledIfChanged(m_allowMetered, w.allowMeteredEnabled);

    m_connection->setState(w.connection);

    if (m_colorsDirty)
        applyColors();
    m_shown = w;
}

void AgentView::renderFolders(const QStringList &folders)
{
    if (m_foldersBuilt && folders == m_shownFolders)
        return;
    const bool hadFocus = m_folderRows->isAncestorOf(QApplication::focusWidget());
    m_foldersBuilt = true;
    m_shownFolders = folders;
    while (QLayoutItem *item = m_folderRowsLayout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_removeButtons.clear();
    m_folderIcons.clear();

    const QColor blue = colorForRole(ColorRole::Blue, palette());
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    for (const QString &path : folders) {
        auto *row = new QWidget;
        row->setObjectName(QStringLiteral("folderRow"));
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(8);
        auto *icon = new QLabel;
        icon->setFixedSize(16, 16);
        icon->setPixmap(Symbols::pixmap(Symbol::Folder, blue, QSize(16, 16), devicePixelRatioF()));
        layout->addWidget(icon);
        m_folderIcons << icon;
        auto *label = new ElidedLabel;
        label->setObjectName(QStringLiteral("folderPath"));
        label->setFullText(path);
        layout->addWidget(label, 1);
        auto *remove = new QToolButton;
        remove->setObjectName(QStringLiteral("removeFolderButton"));
        remove->setAutoRaise(true);
        remove->setIcon(Symbols::icon(Symbol::MinusCircle, secondary, QSize(16, 16)));
        remove->setIconSize(QSize(16, 16));
        remove->setToolTip(QStringLiteral("Remove folder"));
        remove->setAccessibleName(QStringLiteral("Remove folder"));
        remove->setAccessibleDescription(path);
        remove->setFocusPolicy(Qt::StrongFocus);
        connect(remove, &QToolButton::clicked, &m_model,
                [model = &m_model, path] { model->removeFolder(path); });
        layout->addWidget(remove);
        m_removeButtons << remove;
        m_folderRowsLayout->addWidget(row);
    }
    m_folderRows->setVisible(!folders.isEmpty());
    updateTabOrder();
    if (hadFocus)
        m_addFolders->setFocus(Qt::OtherFocusReason);
}

void AgentView::applyColors()
{
    m_colorsDirty = false;
    const QColor secondary = colorForRole(ColorRole::Secondary, palette());
    for (QLabel *label : std::as_const(m_secondaryLabels))
        WidgetStyle::setTextColor(label, secondary);
    m_appIcon->setPixmap(Symbols::appPixmap(QSize(56, 56), devicePixelRatioF()));
    WidgetStyle::makeProminent(m_enroll);
    WidgetStyle::makeProminent(m_backUpNow);
    const QColor blue = colorForRole(ColorRole::Blue, palette());
    for (QLabel *icon : std::as_const(m_folderIcons))
        icon->setPixmap(Symbols::pixmap(Symbol::Folder, blue, QSize(16, 16), devicePixelRatioF()));
    for (QWidget *remove : std::as_const(m_removeButtons))
        static_cast<QToolButton *>(remove)->setIcon(
            Symbols::icon(Symbol::MinusCircle, secondary, QSize(16, 16)));
}

void AgentView::updateTabOrder()
{
    // Keyboard focus follows the column from top to bottom.
    QList<QWidget *> chain = {m_errorCard->dismissButton(), m_noticeCard->dismissButton(),
                              m_invitation, m_enroll};
    chain += m_removeButtons;
    chain += {m_addFolders,
              m_fullDiskAccess,
              m_scheduleEnabled,
              m_interval,
              m_save,
              m_backUpNow,
              m_exclusions,
              m_paused,
              m_bandwidth,
              m_metered,
              m_allowMetered,
              m_connection->installButton(),
              m_connection->checkButton()};
    for (qsizetype i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain[i - 1], chain[i]);
}
