#pragma once

#include "AgentSettings.h"
#include "RuntimeStatus.h"
#include "TransferPolicy.h"

#include <QMetaType>
#include <QString>

// The whole status document printed by the engine's "ui-status" command.
struct AgentUIStatus
{
    QString schema;
    QString agentVersion;
    AgentSettings settings;
    TransferPolicy transferPolicy;
    RuntimeStatus runtime;

    friend bool operator==(const AgentUIStatus &, const AgentUIStatus &) = default;
};

Q_DECLARE_METATYPE(AgentUIStatus)
