#include "AppTranslations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>

namespace {

// gettext's rule, which Qt does not apply: LANGUAGE counts only when the
// locale for messages (LC_ALL, else LC_MESSAGES, else LANG) is not C.
bool messagesLocaleIsC()
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty())
            return value == QLatin1String("C") || value.startsWith(QLatin1String("C.")) ||
                   value == QLatin1String("POSIX");
    }
    return true;
}

} // namespace

void AppTranslations::install(QCoreApplication &application)
{
    if (messagesLocaleIsC())
        return;
    install(application, QLocale::system());
}

void AppTranslations::install(QCoreApplication &application, const QLocale &locale)
{
    if (locale.language() == QLocale::C)
        return;
    // QTranslator::load tries each of the locale's UI languages in order
    // ("pt-BR" as "pt_BR", then "pt"); an English one ends the search, as
    // English is what the texts already are.
    for (const QString &name : locale.uiLanguages()) {
        const QLocale candidate(name);
        if (candidate.language() == QLocale::English || candidate.language() == QLocale::C)
            return;
        auto app = std::make_unique<QTranslator>();
        if (!app->load(candidate, fileStem, QStringLiteral("_"), resourceFolder))
            continue;
        m_language = QFileInfo(app->filePath()).completeBaseName().mid(fileStem.size() + 1);
        // Qt's own texts (file dialog, context menus) from Debian's Qt
        // translations, when installed; the app's texts do not need them.
        auto qt = std::make_unique<QTranslator>();
        if (qt->load(candidate, QStringLiteral("qtbase"), QStringLiteral("_"),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            application.installTranslator(qt.get());
            m_qt = std::move(qt);
        }
        application.installTranslator(app.get());
        m_app = std::move(app);
        return;
    }
}

QStringList AppTranslations::shippedLanguages()
{
    QStringList languages;
    const QStringList files =
        QDir(resourceFolder).entryList({fileStem + QStringLiteral("_*.qm")}, QDir::Files);
    for (const QString &file : files)
        languages << QFileInfo(file).completeBaseName().mid(fileStem.size() + 1);
    return languages;
}
