#pragma once

#include <QString>
#include <QStringList>

// The app's command line, read before any GUI exists, so that --help,
// --version and a mistyped option work without a display and claim nothing.
class LaunchOptions
{
public:
    enum class Action {
        Run,       // start the app (in the background with --background)
        PrintHelp, // print text() on standard output and exit 0
        PrintVersion,
        Fail, // print text() on standard error and exit non-zero
    };

    // No options: Run, with the window.
    LaunchOptions() = default;
    // `arguments` as the process received them, the program first.
    static LaunchOptions parse(const QStringList &arguments, const QString &version);

    Action action() const { return m_action; }
    bool background() const { return m_background; }
    // What to print, ending in a newline; empty for Run.
    QString text() const { return m_text; }
    // The exit status for everything but Run.
    int exitCode() const { return m_action == Action::Fail ? 2 : 0; }

private:
    Action m_action = Action::Run;
    bool m_background = false;
    QString m_text;
};
