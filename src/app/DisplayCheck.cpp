#include "DisplayCheck.h"

#include <QStringList>

QString DisplayCheck::missingDisplayMessage(const QProcessEnvironment &environment)
{
    const bool x11 = !environment.value(QStringLiteral("DISPLAY")).isEmpty();
    const bool wayland = !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();

    // QT_QPA_PLATFORM lists platforms to try in order ("wayland;xcb"), each
    // with options after a colon. Unset, Qt picks X11 or Wayland.
    QStringList platforms;
    for (const QString &entry :
         environment.value(QStringLiteral("QT_QPA_PLATFORM")).split(QLatin1Char(';'))) {
        const QString name = entry.section(QLatin1Char(':'), 0, 0).trimmed();
        if (!name.isEmpty())
            platforms << name;
    }
    if (platforms.isEmpty())
        platforms = {QStringLiteral("xcb"), QStringLiteral("wayland")};

    for (const QString &platform : platforms) {
        if (platform == QLatin1String("xcb")) {
            if (x11)
                return {};
        } else if (platform.startsWith(QLatin1String("wayland"))) {
            if (wayland)
                return {};
        } else {
            return {}; // a platform of its own (offscreen, vnc, ...): Qt judges
        }
    }
    return QStringLiteral("zqb-agent-app: no display to open the window on: neither DISPLAY "
                          "nor WAYLAND_DISPLAY is set; start the app from a desktop session\n");
}
