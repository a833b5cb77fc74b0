#include "ShownText.h"

#include "TextRules.h"

namespace ShownText {

namespace {

void cut(QString &text, qsizetype cap = textCap)
{
    if (text.size() > cap) // each character is one UTF-16 unit or more
        text = bounded(text, cap);
}

void cut(std::optional<QString> &text, qsizetype cap = textCap)
{
    if (text)
        cut(*text, cap);
}

} // namespace

QString bounded(QStringView text, qsizetype cap)
{
    return TextRules::leftGraphemes(text, cap);
}

RuntimeStatus bounded(RuntimeStatus runtime)
{
    cut(runtime.state);
    cut(runtime.message);
    cut(runtime.serviceVersion);
    cut(runtime.latestAgentVersion);
    cut(runtime.compatibility);
    cut(runtime.lastContactAt);
    cut(runtime.lastBackupAttemptAt);
    cut(runtime.lastBackupAt);
    cut(runtime.lastError, errorCap);
    if (runtime.backupProgress) {
        cut(runtime.backupProgress->phase);
        cut(runtime.backupProgress->lastProgressAt);
    }
    return runtime;
}

AgentUIStatus bounded(AgentUIStatus status)
{
    cut(status.agentVersion);
    status.runtime = bounded(std::move(status.runtime));
    return status;
}

} // namespace ShownText
