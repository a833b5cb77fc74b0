#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

// The stand-in's command line: "<command> [options] --state DIR". The state
// option may stand anywhere; the app always appends it last.
struct CommandLine
{
    QString command;
    QStringList operands;          // words after the command that are not options
    QMap<QString, QString> values; // "--target" -> "Studio", flags map to ""
    QString stateDirectory;        // from --state, before ZQB_SIM_STATE is applied
    QString problem;               // non-empty when the line is not usable

    bool has(const QString &option) const { return values.contains(option); }

    // Parses and checks the words after the program name against the commands
    // the stand-in knows.
    static CommandLine parse(const QStringList &arguments);

    // The usage text printed for "help" and after a usage error.
    static QString usage();
};
