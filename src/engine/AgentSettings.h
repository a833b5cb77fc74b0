#pragma once

#include <QString>
#include <QStringList>

// Folders, schedule and skip patterns, as the engine stores them.
struct AgentSettings
{
    static inline const QString currentSchema = QStringLiteral("zqb.agent-settings.v1");

    QString schema = currentSchema;
    bool enabled = false;
    qint64 intervalMinutes = 0;
    QStringList sources;
    QStringList exclusions;

    friend bool operator==(const AgentSettings &, const AgentSettings &) = default;
};
