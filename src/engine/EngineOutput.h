#pragma once

#include <QByteArray>
#include <QString>

// Turns the bytes of one engine output stream into the text of a CommandResult.
namespace EngineOutput {

// If `wasCut` (the stream went on beyond what was kept), an incomplete UTF-8
// sequence at the end is dropped first. Then: bytes that are not valid UTF-8
// give an empty text; otherwise the first `characterCap` user-perceived
// characters are kept and the result is trimmed. A byte order mark is kept as
// a character.
QString decode(const QByteArray &bytes, bool wasCut, qsizetype characterCap);

// Length of `bytes` without an incomplete UTF-8 sequence at its end.
qsizetype lengthWithoutIncompleteTail(const QByteArray &bytes);

} // namespace EngineOutput
