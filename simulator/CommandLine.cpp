#include "CommandLine.h"

#include <QSet>

namespace {

struct CommandShape
{
    const char *name;
    int operands;              // exact number of operands
    QStringList requiredFlags; // options that must be given
    QStringList optionalFlags; // options that may be given
    bool needsState = true;
};

const QStringList valueOptions = {QStringLiteral("--state"), QStringLiteral("--target"),
                                  QStringLiteral("--ready-fd"), QStringLiteral("--times"),
                                  QStringLiteral("--on")};

const QList<CommandShape> &shapes()
{
    static const QList<CommandShape> all = {
        {"ui-status", 0, {}, {}},
        {"check-service", 0, {}, {}},
        {"run-once", 0, {}, {}},
        {"enroll", 0, {QStringLiteral("--invitation-stdin")}, {}},
        {"configure", 0, {QStringLiteral("--json-stdin")}, {}},
        {"configure-transfer", 0, {QStringLiteral("--json-stdin")}, {}},
        {"backup-all", 0, {}, {QStringLiteral("--background"), QStringLiteral("--ready-fd")}},
        {"autonomous-update", 0, {}, {}},
        {"make-invitation", 0, {}, {QStringLiteral("--target")}, false},
        {"set-condition", 1, {}, {}},
        {"advertise-update", 1, {}, {}},
        {"set-compatibility", 1, {}, {}},
        {"inject-fault", 1, {}, {QStringLiteral("--times"), QStringLiteral("--on")}},
        {"help", 0, {}, {}, false},
    };
    return all;
}

const CommandShape *shapeOf(const QString &command)
{
    for (const CommandShape &shape : shapes()) {
        if (command == QLatin1String(shape.name))
            return &shape;
    }
    return nullptr;
}

} // namespace

CommandLine CommandLine::parse(const QStringList &arguments)
{
    CommandLine line;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &word = arguments.at(i);
        if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
            line.values.insert(QStringLiteral("--help"), QString());
            continue;
        }
        if (!word.startsWith(QLatin1String("--"))) {
            if (line.command.isEmpty())
                line.command = word;
            else
                line.operands.append(word);
            continue;
        }
        QString option = word;
        QString value;
        const qsizetype equals = word.indexOf(QLatin1Char('='));
        const bool inlineValue = equals > 0;
        if (inlineValue) {
            option = word.left(equals);
            value = word.mid(equals + 1);
        }
        if (line.values.contains(option)) {
            line.problem = QStringLiteral("%1 is given more than once.").arg(option);
            return line;
        }
        if (valueOptions.contains(option) && !inlineValue) {
            if (i + 1 >= arguments.size()) {
                line.problem = QStringLiteral("%1 needs a value.").arg(option);
                return line;
            }
            value = arguments.at(++i);
        } else if (!valueOptions.contains(option) && inlineValue) {
            line.problem = QStringLiteral("%1 takes no value.").arg(option);
            return line;
        }
        line.values.insert(option, value);
    }
    if (line.has(QStringLiteral("--help"))) {
        line.command = QStringLiteral("help");
        return line;
    }
    line.stateDirectory = line.values.take(QStringLiteral("--state"));

    if (line.command.isEmpty()) {
        line.problem = QStringLiteral("No command given.");
        return line;
    }
    const CommandShape *shape = shapeOf(line.command);
    if (!shape) {
        line.problem = QStringLiteral("Unknown command \"%1\".").arg(line.command);
        return line;
    }
    if (line.operands.size() != shape->operands) {
        line.problem = shape->operands == 0
                           ? QStringLiteral("%1 takes no operands.").arg(line.command)
                           : QStringLiteral("%1 needs exactly %2 operand.")
                                 .arg(line.command)
                                 .arg(shape->operands);
        return line;
    }
    for (const QString &required : shape->requiredFlags) {
        if (!line.has(required)) {
            line.problem = QStringLiteral("%1 needs %2.").arg(line.command, required);
            return line;
        }
    }
    for (auto it = line.values.cbegin(); it != line.values.cend(); ++it) {
        if (!shape->requiredFlags.contains(it.key()) && !shape->optionalFlags.contains(it.key())) {
            line.problem = QStringLiteral("%1 does not take %2.").arg(line.command, it.key());
            return line;
        }
    }
    return line;
}

QString CommandLine::usage()
{
    return QStringLiteral(
        "Usage: zqb-engine-sim <command> [options] --state DIR\n"
        "\n"
        "Commands the app issues:\n"
        "  ui-status                       print the status document\n"
        "  check-service                   check that the ZQB service is reachable\n"
        "  run-once                        contact the authorized target\n"
        "  enroll --invitation-stdin       enroll with the invitation on standard input\n"
        "  configure --json-stdin          store the folder settings on standard input\n"
        "  configure-transfer --json-stdin store the transfer policy on standard input\n"
        "  backup-all                      back up every configured folder\n"
        "  autonomous-update               install the advertised update\n"
        "\n"
        "Stand-in helpers:\n"
        "  make-invitation [--target NAME] print a valid one-time invitation\n"
        "  set-condition online|offline    make the service and target reachable or not\n"
        "  advertise-update VERSION        make the service advertise a newer version\n"
        "  set-compatibility WORD          report another compatibility word\n"
        "  inject-fault hang|crash|garbage [--times N] [--on COMMAND]\n"
        "                                  spoil the next N runs of COMMAND\n"
        "                                  (default: once, ui-status)\n"
        "  help                            print this text\n"
        "\n"
        "Environment: ZQB_SIM_STATE replaces the --state directory when set;\n"
        "ZQB_SIM_SPEED speeds backups up by that factor (default 1).\n");
}
