#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTranslator>

#include <memory>

class QCoreApplication;

// The app's texts and Qt's own in the person's language, as the session
// names it (QLocale's uiLanguages: LANGUAGE, LC_ALL, LC_MESSAGES, LANG).
// English, the language the texts are written in, needs no translation; a
// session in the C or POSIX locale stays English whatever LANGUAGE says, as
// gettext programs do. Installing a right-to-left translation mirrors the
// layout (Qt reads the direction from the translation).
class AppTranslations
{
public:
    // The shipped translations live in the app's resources under this folder.
    static inline const QString resourceFolder = QStringLiteral(":/zqb/translations");
    static inline const QString fileStem = QStringLiteral("zqb-agent");

    // Loads the translations for the session's languages and installs them in
    // `application`; English, and a C or POSIX messages locale, load nothing.
    void install(QCoreApplication &application);
    // The same for the languages of `locale`.
    void install(QCoreApplication &application, const QLocale &locale);

    // The language of the app translation installed ("de", "pt_BR"), empty
    // for English.
    QString language() const { return m_language; }
    // The shipped languages, from the resources.
    static QStringList shippedLanguages();

private:
    std::unique_ptr<QTranslator> m_app;
    std::unique_ptr<QTranslator> m_qt;
    QString m_language;
};
