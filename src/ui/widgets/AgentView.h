#pragma once

#include "WindowState.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class AgentModel;
class BetaWarning;
class BusySpinner;
class ConnectionSection;
class MessageCard;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class StatusBadge;
class VersionCapsule;

// The app's one window content: a scrolling column of eleven sections bound
// to the model. Controls write model fields on user edits only; every model
// change schedules one render for the current event-loop turn.
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
    void changeEvent(QEvent *event) override;

private:
    void build();
    QWidget *buildHeader();
    QGroupBox *buildConnectBox();
    QGroupBox *buildRestoringBox();
    QGroupBox *buildFoldersBox();
    QGroupBox *buildScheduleBox();
    QGroupBox *buildSkipBox();
    QGroupBox *buildNetworkBox();
    void bindControls();

    void scheduleRender();
    void renderPending();
    void render();
    void renderFolders(const QStringList &folders);
    void applyColors();
    void updateTabOrder();

    AgentModel &m_model;
    QList<qint64> m_intervals;
    bool m_renderPending = false;
    int m_renderCount = 0;
    bool m_colorsDirty = true;
    WindowState m_shown;
    QStringList m_shownFolders;
    bool m_foldersBuilt = false;

    QScrollArea *m_scroll = nullptr;
    bool m_painted = false;
    QLabel *m_appIcon = nullptr;
    QLabel *m_subtitle = nullptr;
    QLabel *m_versionLine = nullptr;
    VersionCapsule *m_capsule = nullptr;
    StatusBadge *m_badge = nullptr;
    MessageCard *m_errorCard = nullptr;
    MessageCard *m_noticeCard = nullptr;

    QGroupBox *m_connectBox = nullptr;
    QLabel *m_connectText = nullptr;
    QLineEdit *m_invitation = nullptr;
    QPushButton *m_enroll = nullptr;
    QGroupBox *m_restoringBox = nullptr;
    QLabel *m_restoringText = nullptr;

    QGroupBox *m_foldersBox = nullptr;
    QLabel *m_noFolders = nullptr;
    QWidget *m_folderRows = nullptr;
    QVBoxLayout *m_folderRowsLayout = nullptr;
    QList<QWidget *> m_removeButtons;
    QList<QLabel *> m_folderIcons;
    QList<QLabel *> m_secondaryLabels;
    QPushButton *m_addFolders = nullptr;
    QPushButton *m_fullDiskAccess = nullptr;

    QCheckBox *m_scheduleEnabled = nullptr;
    QComboBox *m_interval = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_backUpNow = nullptr;

    QLineEdit *m_exclusions = nullptr;
    QLabel *m_exclusionsNote = nullptr;

    QCheckBox *m_paused = nullptr;
    QComboBox *m_bandwidth = nullptr;
    QCheckBox *m_metered = nullptr;
    QCheckBox *m_allowMetered = nullptr;
    QLabel *m_networkNote = nullptr;

    ConnectionSection *m_connection = nullptr;
    BetaWarning *m_beta = nullptr;
};
