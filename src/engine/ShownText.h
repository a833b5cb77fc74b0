#pragma once

#include "AgentUIStatus.h"
#include "RuntimeStatus.h"

#include <QString>
#include <QStringView>

// The engine's texts as the person may see them. The status document is read
// whole (a thousand long folders must still read), so its texts arrive uncut;
// every one that is shown is cut here, with the same caps the runner puts on
// what an engine prints: a runaway message stays readable and never costs the
// layout more than a bounded text can.
namespace ShownText {

inline constexpr qsizetype textCap = 8192;  // user-perceived characters
inline constexpr qsizetype errorCap = 2048; // for error texts

// The first `cap` user-perceived characters of `text` (all of it when
// shorter), as the runner cuts output. The one place engine text is cut for
// showing.
QString bounded(QStringView text, qsizetype cap = textCap);

// The runtime record with each of its texts cut for showing (the last error
// at errorCap). Nothing else changes.
RuntimeStatus bounded(RuntimeStatus runtime);
// The document with its runtime texts and agent version cut for showing. The
// settings and transfer policy are kept whole: they are edited and sent back.
AgentUIStatus bounded(AgentUIStatus status);

} // namespace ShownText
