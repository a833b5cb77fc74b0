#pragma once

#include <QString>

// Engine text on its way to the tray, made to show literally (never as
// markup) by whatever reads it there.
namespace TrayText {

// Who reads a text given to the status item, which decides how it is read.
enum class Reader {
    PlainTitle,  // the StatusNotifierItem tooltip's title: plain text
    MarkupBody,  // a StatusNotifierItem tooltip's text or a notification's
                 // body: hosts and servers may read markup there
    QtRichLabel, // the XEmbed tray's own tooltip and message balloon: Qt
                 // reads a text that looks like markup as rich text
};

// `text` as `reader` must receive it to show exactly `text`.
QString literal(const QString &text, Reader reader);

} // namespace TrayText
