#include "PlatformText.h"

#include <QtGlobal>

namespace {
#ifdef Q_OS_MACOS
constexpr bool runningOnMacOS = true;
#else
constexpr bool runningOnMacOS = false;
#endif
} // namespace

QString localMachineText(const QString &macText, bool onMacOS)
{
    if (onMacOS)
        return macText;
    QString text = macText;
    text.replace(QStringLiteral("this Mac"), QStringLiteral("this computer"));
    return text;
}

QString localMachineText(const QString &macText)
{
    return localMachineText(macText, runningOnMacOS);
}

bool platformOffersFullDiskAccess()
{
    return runningOnMacOS;
}
