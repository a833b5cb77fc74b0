#pragma once

// Shared pieces of the model tests: a recording notifier, a scripted folder
// chooser, an AgentModel that opens its test hooks, status documents, and a
// trace of the feedback fields (busy, notice, error) in assignment order.

#include "AgentDocuments.h"
#include "AgentModel.h"
#include "DesktopNotifier.h"
#include "FakeEngine.h"
#include "FolderChooser.h"
#include "NotificationCenter.h"

#include <QObject>
#include <QStringList>
#include <QTest>

#include <optional>

class RecordingNotifier : public DesktopNotifier
{
public:
    struct Post
    {
        QString title;
        QString body;
    };
    void requestAuthorization() override { ++authorizationRequests; }
    void post(const QString &title, const QString &body) override { posts.append({title, body}); }

    int authorizationRequests = 0;
    QList<Post> posts;
};

class ScriptedChooser : public FolderChooser
{
public:
    std::optional<QStringList> chooseFolders() override
    {
        ++calls;
        return next;
    }
    std::optional<QStringList> next;
    int calls = 0;
};

class TestModel : public AgentModel
{
public:
    using AgentModel::AgentModel;
    using AgentModel::commandsInFlight;
    using AgentModel::lastEnrollmentInput;
    using AgentModel::notify;
    using AgentModel::run;

    bool settingsDoNotEncode = false;
    bool policyDoesNotEncode = false;

protected:
    std::optional<QByteArray> encodeSettingsDocument(const AgentSettings &settings) const override
    {
        if (settingsDoNotEncode)
            return std::nullopt;
        return AgentModel::encodeSettingsDocument(settings);
    }
    std::optional<QByteArray>
    encodeTransferPolicyDocument(const TransferPolicy &policy) const override
    {
        if (policyDoesNotEncode)
            return std::nullopt;
        return AgentModel::encodeTransferPolicyDocument(policy);
    }
};

// Waits until every dispatched command (of any model) has delivered.
inline bool waitForCommands(int timeoutMs = 15000)
{
    return QTest::qWaitFor([] { return TestModel::commandsInFlight() == 0; }, timeoutMs);
}

// A complete, readable status document.
inline AgentUIStatus sampleStatus()
{
    AgentUIStatus status;
    status.schema = QStringLiteral("zqb.agent-ui-status.v1");
    status.agentVersion = QStringLiteral("1.4.0");
    status.settings.enabled = true;
    status.settings.intervalMinutes = 60;
    status.settings.sources = {QStringLiteral("/Users/alice/Documents"),
                               QStringLiteral("/Users/alice/Desktop")};
    status.settings.exclusions = {QStringLiteral("*.tmp"), QStringLiteral("node_modules")};
    status.transferPolicy.paused = true;
    status.transferPolicy.bandwidthLimitKibPerSecond = 2048;
    status.transferPolicy.currentNetworkMetered = true;
    status.transferPolicy.allowMeteredNetwork = true;
    status.runtime.state = QStringLiteral("connected");
    status.runtime.message = QStringLiteral("Connected to the authorized target.");
    status.runtime.enrolled = true;
    status.runtime.repositoryReady = true;
    status.runtime.serviceReachable = true;
    status.runtime.authorizedTargets = 1;
    status.runtime.compatibility = QStringLiteral("compatible");
    return status;
}

// `count` distinct folder paths of 200 characters each.
inline QStringList longFolders(int count)
{
    QStringList paths;
    paths.reserve(count);
    for (int i = 0; i < count; ++i) {
        QString path = QStringLiteral("/Users/alice/Projects/%1/").arg(i, 5, 10, QLatin1Char('0'));
        path += QString(200 - path.size(), QLatin1Char('p'));
        paths << path;
    }
    return paths;
}

inline QByteArray statusJson(const AgentUIStatus &status)
{
    return AgentDocuments::encode(status);
}

inline AgentModel::Services servicesFor(const FakeEngine &engine,
                                        DesktopNotifier *notifier = nullptr,
                                        FolderChooser *chooser = nullptr)
{
    return AgentModel::Services{AgentRunner(engine.path()), notifier, chooser};
}

// Every assignment to busy, notice and error, in order, as "busy=1",
// "notice=<text>", "error=-" (absent).
class FeedbackTrace : public QObject
{
public:
    explicit FeedbackTrace(AgentModel *model) : m_model(model)
    {
        connect(model, &AgentModel::busyChanged, this,
                [this] { entries << QStringLiteral("busy=%1").arg(int(m_model->busy())); });
        connect(model, &AgentModel::noticeChanged, this,
                [this] { entries << QStringLiteral("notice=") + text(m_model->notice()); });
        connect(model, &AgentModel::errorChanged, this,
                [this] { entries << QStringLiteral("error=") + text(m_model->error()); });
    }
    QStringList entries;

private:
    static QString text(const std::optional<QString> &value)
    {
        return value ? *value : QStringLiteral("-");
    }
    AgentModel *m_model;
};

// Counts the status broadcasts and keeps their user info.
class StatusBroadcasts : public QObject
{
public:
    StatusBroadcasts()
    {
        NotificationCenter::defaultCenter().observe(
            QStringLiteral("ZQBAgentStatusDidChange"), this,
            [this](const QVariantMap &info) { received.append(info); });
    }
    QList<QVariantMap> received;
};
