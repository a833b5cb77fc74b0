#include "LaunchOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFileInfo>

namespace {

// Options that Qt's GUI application object takes from the command line itself
// (with a value, then without). They are accepted here and left to it.
const char *const qtOptionsWithValue[] = {
    "platform",        "platformpluginpath", "platformtheme", "plugin",
    "qwindowgeometry", "qwindowicon",        "qwindowtitle",  "session",
    "display",         "geometry",           "title",         "name",
    "style",           "stylesheet",         "qmljsdebugger",
};
const char *const qtFlags[] = {"reverse", "widgetcount", "nograb", "dograb", "sync"};

} // namespace

LaunchOptions LaunchOptions::parse(const QStringList &arguments, const QString &version)
{
    QCommandLineParser parser;
    // "-platform xcb" is one option, as Qt itself reads it, not eight letters.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(
        QStringLiteral("ZQB Agent: protects this computer's folders with ZQB backups."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and exit."));
    const QCommandLineOption showVersion({QStringLiteral("v"), QStringLiteral("version")},
                                         QStringLiteral("Show the version and exit."));
    const QCommandLineOption background(
        QStringLiteral("background"),
        QStringLiteral("Start in the tray without showing the window; status refreshes and "
                       "backup notifications run as usual. Used when starting at login."));
    parser.addOption(help);
    parser.addOption(showVersion);
    parser.addOption(background);
    for (const char *name : qtOptionsWithValue) {
        QCommandLineOption option(QString::fromLatin1(name), QString(), QStringLiteral("value"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    for (const char *name : qtFlags) {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }

    LaunchOptions result;
    const QString program =
        arguments.isEmpty() ? QStringLiteral("zqb-agent-app") : QFileInfo(arguments[0]).fileName();
    if (!parser.parse(arguments)) {
        result.m_action = Action::Fail;
        result.m_text = QStringLiteral("%1: %2\nTry '%1 --help' for more information.\n")
                            .arg(program, parser.errorText());
        return result;
    }
    if (!parser.positionalArguments().isEmpty()) {
        result.m_action = Action::Fail;
        result.m_text = QStringLiteral("%1: unexpected argument '%2'\n"
                                       "Try '%1 --help' for more information.\n")
                            .arg(program, parser.positionalArguments().constFirst());
        return result;
    }
    if (parser.isSet(help)) {
        result.m_action = Action::PrintHelp;
        result.m_text = QStringLiteral("Usage: %1 [options]\n").arg(program) +
                        parser.applicationDescription() + QStringLiteral("\n\nOptions:\n");
        const QStringList lines = parser.helpText().split(QLatin1Char('\n'));
        // Only the options part of Qt's text: its usage line needs the application object.
        const qsizetype first = lines.indexOf(QStringLiteral("Options:"));
        result.m_text += lines.mid(first + 1).join(QLatin1Char('\n'));
        return result;
    }
    if (parser.isSet(showVersion)) {
        result.m_action = Action::PrintVersion;
        result.m_text = QStringLiteral("ZQB Agent %1\n").arg(version);
        return result;
    }
    result.m_background = parser.isSet(background);
    return result;
}
