#pragma once

#include <QString>

// The outcome of one engine run.
struct CommandResult
{
    QString output;         // standard output, UTF-8, capped and trimmed
    QString error;          // standard error, capped and trimmed, or a fixed runner message
    bool succeeded = false; // the engine ran and exited with status 0

    friend bool operator==(const CommandResult &, const CommandResult &) = default;
};
