#include "PlainText.h"

#include <QTextDocument>

namespace PlainText {

QString toolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

} // namespace PlainText
