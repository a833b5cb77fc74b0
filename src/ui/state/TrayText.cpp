#include "TrayText.h"

#include <QTextDocument>

namespace TrayText {

QString literal(const QString &text, Reader reader)
{
    switch (reader) {
    case Reader::PlainTitle:
        return text;
    case Reader::MarkupBody:
        return text.toHtmlEscaped();
    case Reader::QtRichLabel:
        // Qt guesses from the first line whether a text is markup. Only text
        // it would take for markup is turned into markup that shows it as
        // written, line breaks and spaces kept; other text stays as it is.
        return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpacePre) : text;
    }
    return text;
}

} // namespace TrayText
