#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// Turns the bytes of one engine output stream into the text of a CommandResult.
namespace EngineOutput {

// If `wasCut` (the stream went on beyond what was kept), an incomplete UTF-8
// sequence at the end is dropped first. Then: bytes that are not valid UTF-8
// give an empty text; otherwise the first `characterCap` user-perceived
// characters are kept and the result is trimmed. A byte order mark is kept as
// a character. Only as much of the bytes is converted as the cap needs, so a
// megabyte of output with a cap of a few thousand characters stays cheap.
QString decode(const QByteArray &bytes, bool wasCut, qsizetype characterCap);

// Length of `bytes` without an incomplete UTF-8 sequence at its end.
qsizetype lengthWithoutIncompleteTail(QByteArrayView bytes);

// All of `bytes` as one text, without a cap: a view into `bytes` with leading
// and trailing whitespace and line breaks left out (the same set as the
// capped texts), or an empty view when `bytes` is not valid UTF-8. Nothing is
// copied, so a document of a megabyte is read where it was received.
QByteArrayView wholeText(QByteArrayView bytes);

} // namespace EngineOutput
