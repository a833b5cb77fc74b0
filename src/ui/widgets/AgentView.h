#pragma once

#include "WindowState.h"

#include <QList>
#include <QWidget>

class AgentModel;
class BetaWarning;
class ConnectBox;
class ConnectionSection;
class FoldersSection;
class HeaderSection;
class MessageCard;
class NetworkSection;
class RestoringBox;
class ScheduleSection;
class SkipPatternsSection;
class StatusBadge;

// The app's one window content: a scrolling column of the window's sections,
// each a widget that shows its slice of the window's view state. The view
// assembles them, binds their requests to the model, refreshes the model
// periodically, and turns every model change into one render for the
// current event-loop turn.
class AgentView : public QWidget
{
    Q_OBJECT
public:
    AgentView(AgentModel &model, QList<qint64> intervals, QWidget *parent = nullptr);
    ~AgentView() override;

    // Number of renders so far; a model transaction costs one.
    int renderCount() const { return m_renderCount; }
    // The view state the widgets currently show.
    const WindowState &shownState() const { return m_shown; }

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void build(QList<qint64> intervals);
    void bindSections();

    void scheduleRender();
    void renderPending();
    void layOutNow();
    void render();
    void updateTabOrder();

    AgentModel &m_model;
    bool m_renderPending = false;
    int m_renderCount = 0;
    bool m_painted = false;
    WindowState m_shown;

    HeaderSection *m_header = nullptr;
    StatusBadge *m_badge = nullptr;
    MessageCard *m_errorCard = nullptr;
    MessageCard *m_noticeCard = nullptr;
    ConnectBox *m_connect = nullptr;
    RestoringBox *m_restoring = nullptr;
    FoldersSection *m_folders = nullptr;
    ScheduleSection *m_schedule = nullptr;
    SkipPatternsSection *m_skipPatterns = nullptr;
    NetworkSection *m_network = nullptr;
    ConnectionSection *m_connection = nullptr;
    BetaWarning *m_beta = nullptr;
};
