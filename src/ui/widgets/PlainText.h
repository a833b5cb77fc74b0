#pragma once

#include <QString>

// Texts from the engine or the person (versions, messages, paths, patterns,
// names) are shown as they are, never read as markup. Labels take
// Qt::PlainText; tooltips have no such setting, and Qt renders one that looks
// like markup as rich text, so those texts go through here first.
namespace PlainText {

// `text` as a tooltip that shows it literally: unchanged when Qt would show it
// as plain text anyway, otherwise escaped into a paragraph of rich text.
QString toolTip(const QString &text);

} // namespace PlainText
