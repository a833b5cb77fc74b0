#pragma once

#include "AgentUIStatus.h"

#include <QList>
#include <QString>

#include <optional>

// One fact of the "Connection and compatibility" section.
struct DetailRow
{
    QString label;
    QString value;

    friend bool operator==(const DetailRow &, const DetailRow &) = default;
};

struct ConnectionState
{
    QList<DetailRow> rows;
    bool showUpdateCard = false;
    bool installEnabled = false;
    QString checkLabel;
    bool checkEnabled = false;

    friend bool operator==(const ConnectionState &, const ConnectionState &) = default;
};

ConnectionState connectionState(const std::optional<AgentUIStatus> &status, bool busy);
