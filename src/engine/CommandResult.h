#pragma once

#include "EngineOutput.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// The outcome of one engine run.
struct CommandResult
{
    QString output;         // standard output, UTF-8, capped and trimmed
    QString error;          // standard error, capped and trimmed, or a fixed runner message
    bool succeeded = false; // the engine ran and exited with status 0

    // Everything the runner kept of standard output (at most its byte cap, an
    // incomplete UTF-8 sequence at a cut dropped). The status document is read
    // from this, whole: `output` is capped for texts shown to the person.
    QByteArray outputBytes = {};

    // The whole standard output, UTF-8 checked and trimmed like `output` but
    // not capped: a view into outputBytes (empty when not valid UTF-8), so a
    // document of a megabyte is never copied to be read.
    QByteArrayView wholeOutput() const { return EngineOutput::wholeText(outputBytes); }

    friend bool operator==(const CommandResult &, const CommandResult &) = default;
};
