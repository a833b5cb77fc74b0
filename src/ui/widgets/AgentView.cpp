#include "AgentView.h"

#include "AgentModel.h"
#include "BetaWarning.h"
#include "ConnectBox.h"
#include "ConnectionSection.h"
#include "FoldersSection.h"
#include "HeaderSection.h"
#include "MessageCard.h"
#include "NetworkSection.h"
#include "RestoringBox.h"
#include "ScheduleSection.h"
#include "SkipPatternsSection.h"
#include "StatusBadge.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

AgentView::AgentView(AgentModel &model, QList<qint64> intervals, QWidget *parent)
    : QWidget(parent), m_model(model)
{
    setObjectName(QStringLiteral("agentView"));
    setMinimumSize(720, 680);
    build(std::move(intervals));
    bindSections();

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

// ---- assembling ----------------------------------------------------------

void AgentView::build(QList<qint64> intervals)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("agentScroll"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Not a Tab stop of its own: a nameless stop that does nothing confuses
    // a screen reader's user, and tabbing to a control scrolls it into view.
    scroll->setFocusPolicy(Qt::NoFocus);
    outer->addWidget(scroll);

    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("agentContent"));
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);

    m_header = new HeaderSection;
    m_badge = new StatusBadge;
    m_errorCard = new MessageCard(ColorRole::Red);
    m_noticeCard = new MessageCard(ColorRole::Green);
    m_connect = new ConnectBox;
    m_restoring = new RestoringBox;
    m_folders = new FoldersSection;
    m_schedule = new ScheduleSection(std::move(intervals));
    m_skipPatterns = new SkipPatternsSection;
    m_network = new NetworkSection;
    m_connection = new ConnectionSection;
    m_beta = new BetaWarning;

    column->addWidget(m_header);     // 1
    column->addWidget(m_badge);      // 2
    column->addWidget(m_errorCard);  // 3
    column->addWidget(m_noticeCard); // 4
    column->addWidget(m_connect);    // 5, one of these two or neither
    column->addWidget(m_restoring);
    column->addWidget(m_folders);      // 6
    column->addWidget(m_schedule);     // 7
    column->addWidget(m_skipPatterns); // 8
    column->addWidget(m_network);      // 9
    column->addWidget(m_connection);   // 10
    column->addWidget(m_beta);         // 11
    column->addStretch(1);
    scroll->setWidget(content);
}

void AgentView::bindSections()
{
    AgentModel *model = &m_model;
    connect(m_errorCard, &MessageCard::dismissed, model,
            [model] { model->setError(std::nullopt); });
    connect(m_noticeCard, &MessageCard::dismissed, model,
            [model] { model->setNotice(std::nullopt); });

    connect(m_connect, &ConnectBox::invitationChanged, model, &AgentModel::setInvitation);
    connect(m_connect, &ConnectBox::enrollRequested, model, &AgentModel::enroll);

    connect(m_folders, &FoldersSection::addRequested, model, &AgentModel::addFolders);
    connect(m_folders, &FoldersSection::removeRequested, model, &AgentModel::removeFolder);
    connect(m_folders, &FoldersSection::fullDiskAccessRequested, model,
            &AgentModel::openFullDiskAccess);
    connect(m_folders, &FoldersSection::focusChainChanged, this, &AgentView::updateTabOrder);

    connect(m_schedule, &ScheduleSection::enabledChanged, model, &AgentModel::setScheduleEnabled);
    connect(m_schedule, &ScheduleSection::intervalChanged, model, &AgentModel::setIntervalMinutes);
    connect(m_schedule, &ScheduleSection::saveRequested, model, &AgentModel::save);
    connect(m_schedule, &ScheduleSection::backUpNowRequested, model, &AgentModel::backUpNow);

    connect(m_skipPatterns, &SkipPatternsSection::textChanged, model,
            &AgentModel::setExclusionText);

    connect(m_network, &NetworkSection::pausedChanged, model, &AgentModel::setTransfersPaused);
    connect(m_network, &NetworkSection::bandwidthChanged, model,
            &AgentModel::setBandwidthLimitKibPerSecond);
    connect(m_network, &NetworkSection::currentNetworkMeteredChanged, model,
            &AgentModel::setCurrentNetworkMetered);
    connect(m_network, &NetworkSection::allowMeteredNetworkChanged, model,
            &AgentModel::setAllowMeteredNetwork);

    connect(m_connection, &ConnectionSection::installRequested, model, &AgentModel::installUpdate);
    connect(m_connection, &ConnectionSection::checkRequested, model, &AgentModel::checkConnection);
}

void AgentView::updateTabOrder()
{
    // Keyboard focus follows the column from top to bottom.
    QList<QWidget *> chain = {m_errorCard->dismissButton(), m_noticeCard->dismissButton()};
    chain += m_connect->focusChain();
    chain += m_folders->focusChain();
    chain += m_schedule->focusChain();
    chain += m_skipPatterns->focusChain();
    chain += m_network->focusChain();
    chain += {m_connection->installButton(), m_connection->checkButton()};
    for (qsizetype i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain[i - 1], chain[i]);
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
    if (!m_painted)
        layOutNow();
}

void AgentView::layOutNow()
{
    // Before the first paint the column is laid out at once: the window's
    // first expose may otherwise overtake the layout requests the render
    // posted. A widget that has been laid out asks the one holding it (its
    // parent, or the scroll area) for another layout, with a request that
    // each pass leaves to the next; so pass after pass until none is left,
    // however deep the widgets nest.
    struct RequestCounter : QObject
    {
        int delivered = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            delivered += event->type() == QEvent::LayoutRequest ? 1 : 0;
            return false;
        }
    } requests;
    QCoreApplication::instance()->installEventFilter(&requests);
    do {
        requests.delivered = 0;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    } while (requests.delivered > 0);
    QCoreApplication::instance()->removeEventFilter(&requests);
}

void AgentView::render()
{
    m_renderPending = false;
    ++m_renderCount;
    const WindowState w =
        ::windowState(windowInputs(m_model, QCoreApplication::applicationVersion()));

    m_header->setState(w.header);
    m_badge->setState(w.badge);
    m_errorCard->showMessage(w.errorCard);
    m_noticeCard->showMessage(w.noticeCard);
    m_connect->setState(w.connect);
    m_connect->showInvitation(m_model.invitation());
    m_restoring->setState(w.restoring);
    m_folders->setState(w.folders);
    m_schedule->setState(w.schedule);
    m_skipPatterns->setState(w.skipPatterns);
    m_network->setState(w.network);
    m_connection->setState(w.connection);
    m_shown = w;
}
