#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

// Text rules shared by the runner, the model and the presentation.
namespace TextRules {

// Whitespace and line breaks, wherever the app trims them, are Unicode
// category Z, tab, U+000A..U+000D and U+0085: exactly what QChar::isSpace()
// accepts, so QString::trimmed() and QStringView::trimmed() do the trimming.
// Number of user-perceived characters (extended grapheme clusters).
qsizetype graphemeCount(QStringView text);
// The first `count` user-perceived characters of `text` (all of it if shorter).
QString leftGraphemes(QStringView text, qsizetype count);
// Position after the first `count` grapheme boundaries of `text`, or -1 when
// `text` holds fewer than `count` clusters. The end of `text` counts as a
// boundary, so on a prefix of a longer text only a position before the
// prefix's end is certain to be a boundary of the whole.
qsizetype graphemePrefixEnd(QStringView text, qsizetype count);
// Whether the first `count` characters of `text` (all of it when shorter) are
// ASCII other than CR. Each of them is then a cluster of its own, the last
// one too when the character after it also passes: only CR LF joins two ASCII
// characters, and every mark that extends a cluster lies beyond ASCII. Engine
// text nearly always passes, and needs no cluster analysis.
bool startsWithPlainAscii(QStringView text, qsizetype count);
bool startsWithPlainAscii(QByteArrayView utf8, qsizetype count);

} // namespace TextRules
