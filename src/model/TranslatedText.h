#pragma once

#include <QCoreApplication>
#include <QString>

// A fixed text of the app, marked for the translation tools with
// QT_TRANSLATE_NOOP and translated each time it is used, so a constant made
// before the translation is loaded still speaks the person's language.
struct TranslatedText
{
    const char *context;
    const char *source;

    QString text() const { return QCoreApplication::translate(context, source); }
    operator QString() const { return text(); }
};
