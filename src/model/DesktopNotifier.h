#pragma once

#include <QString>

// Shows desktop notifications. The model is given one; tests give a recorder.
class DesktopNotifier
{
public:
    virtual ~DesktopNotifier() = default;
    // Asks for permission where the platform has such a thing; the answer is ignored.
    virtual void requestAuthorization() = 0;
    // Posts a new notification (never replacing an earlier one).
    virtual void post(const QString &title, const QString &body) = 0;
};
