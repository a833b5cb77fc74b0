#pragma once

// Helpers shared by the presentation tests: a pinned locale and time zone,
// and status records to start from.

#include "AgentUIStatus.h"

#include <QByteArray>
#include <QLocale>

#include <ctime>

namespace UiTest {

// English (United States) and a fixed zone two hours ahead of UTC with no
// daylight saving, so "14:05:09Z" reads as 4:05:09 PM everywhere.
inline void pinLocaleAndZone()
{
    qputenv("TZ", "XST-2");
    tzset();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

inline AgentUIStatus status(const QString &state = QStringLiteral("connected"),
                            bool enrolled = true)
{
    AgentUIStatus s;
    s.schema = QStringLiteral("zqb.agent-ui-status.v1");
    s.agentVersion = QStringLiteral("1.9.0");
    s.settings.intervalMinutes = 240;
    s.runtime.state = state;
    s.runtime.message = QStringLiteral("Engine message");
    s.runtime.enrolled = enrolled;
    s.runtime.serviceReachable = true;
    s.runtime.compatibility = QStringLiteral("compatible");
    return s;
}

inline BackupProgressStatus progress(const QString &phase)
{
    BackupProgressStatus p;
    p.phase = phase;
    p.sourceIndex = 1;
    p.sourceCount = 1;
    return p;
}

} // namespace UiTest
