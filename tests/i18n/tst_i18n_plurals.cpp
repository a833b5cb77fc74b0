// Durations and counters as a person reads them in German (two forms),
// Japanese (one form) and Arabic (six forms), through the app's own
// translation loading, for the counts where the languages differ.
#include "AppTranslations.h"
#include "BadgeState.h"
#include "Formatting.h"

#include <QApplication>
#include <QTest>

namespace {

QString checkingFiles(quint64 n)
{
    BackupProgressStatus p;
    p.phase = QStringLiteral("preflight");
    p.filesScanned = n;
    return phaseLine(p);
}

QString validatingObjects(quint64 n)
{
    BackupProgressStatus p;
    p.phase = QStringLiteral("resuming");
    p.objectsPrepared = n;
    return phaseLine(p);
}

QString days(quint64 n)
{
    return backupDurationLabel(n * 86400);
}

} // namespace

class TestI18nPlurals : public QObject
{
    Q_OBJECT

private slots:
    void cLocaleStaysEnglish()
    {
        AppTranslations translations;
        translations.install(*QCoreApplication::instance(), QLocale::c());
        QCOMPARE(translations.language(), QString());
        QCOMPARE(backupDurationLabel(172800), QStringLiteral("2 days 0 hr 0 min 0 sec"));
        QCOMPARE(checkingFiles(1), QStringLiteral("Checking 1 files"));
        QCOMPARE(intervalLabel(60), QStringLiteral("1 hour"));
    }

    void cMessagesLocaleIgnoresLanguage()
    {
        // The test runs with LC_ALL=C.UTF-8 and LANGUAGE=de, which Qt's
        // system locale reports as German; as gettext programs do, the app
        // stays English in the C locale.
        QCOMPARE(QLocale::system().uiLanguages().value(0), QStringLiteral("de"));
        AppTranslations translations;
        translations.install(*QCoreApplication::instance());
        QCOMPARE(translations.language(), QString());
        QCOMPARE(intervalLabel(15), QStringLiteral("15 minutes"));
    }

    void englishSessionLoadsNothing()
    {
        AppTranslations translations;
        translations.install(*QCoreApplication::instance(), QLocale(QStringLiteral("en_GB")));
        QCOMPARE(translations.language(), QString());
        QCOMPARE(backupDurationLabel(86400), QStringLiteral("1 day 0 hr 0 min 0 sec"));
    }

    void shippedLanguages()
    {
        QStringList shipped = AppTranslations::shippedLanguages();
        shipped.sort();
        QCOMPARE(shipped, (QStringList{"ar", "de", "es", "fr", "it", "ja", "pt_BR", "zh_CN"}));
        // A region the app has no file for takes the language's file.
        AppTranslations austrian;
        austrian.install(*QCoreApplication::instance(), QLocale(QStringLiteral("de_AT")));
        QCOMPARE(austrian.language(), QStringLiteral("de"));
    }

    void forms_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("seconds"); // 0, 1, 2, 3, 11, 100 s
        QTest::addColumn<QStringList>("days");    // 1, 2, 3, 11, 100 days
        QTest::addColumn<QStringList>("files");   // "Checking n files", 0 1 2 3 11 100
        QTest::addColumn<QStringList>("objects"); // "Validating n prepared objects"

        QTest::newRow("German")
            << "de"
            << QStringList{"0 Sek.", "1 Sek.", "2 Sek.", "3 Sek.", "11 Sek.", "1 Min. 40 Sek."}
            << QStringList{"1 Tag 0 Std. 0 Min. 0 Sek.", "2 Tage 0 Std. 0 Min. 0 Sek.",
                           "3 Tage 0 Std. 0 Min. 0 Sek.", "11 Tage 0 Std. 0 Min. 0 Sek.",
                           "100 Tage 0 Std. 0 Min. 0 Sek."}
            << QStringList{"0 Dateien werden geprüft",  "1 Datei wird geprüft",
                           "2 Dateien werden geprüft",  "3 Dateien werden geprüft",
                           "11 Dateien werden geprüft", "100 Dateien werden geprüft"}
            << QStringList{"0 vorbereitete Objekte werden validiert",
                           "1 vorbereitetes Objekt wird validiert",
                           "2 vorbereitete Objekte werden validiert",
                           "3 vorbereitete Objekte werden validiert",
                           "11 vorbereitete Objekte werden validiert",
                           "100 vorbereitete Objekte werden validiert"};
        QTest::newRow("Japanese")
            << "ja" << QStringList{"0秒", "1秒", "2秒", "3秒", "11秒", "1分 40秒"}
            << QStringList{"1日 0時間 0分 0秒", "2日 0時間 0分 0秒", "3日 0時間 0分 0秒",
                           "11日 0時間 0分 0秒", "100日 0時間 0分 0秒"}
            << QStringList{"0 個のファイルを確認中",  "1 個のファイルを確認中",
                           "2 個のファイルを確認中",  "3 個のファイルを確認中",
                           "11 個のファイルを確認中", "100 個のファイルを確認中"}
            << QStringList{"準備済みの 0 個のオブジェクトを検証中",
                           "準備済みの 1 個のオブジェクトを検証中",
                           "準備済みの 2 個のオブジェクトを検証中",
                           "準備済みの 3 個のオブジェクトを検証中",
                           "準備済みの 11 個のオブジェクトを検証中",
                           "準備済みの 100 個のオブジェクトを検証中"};
        // Zero, one, two, few (3-10), many (11-99), other (100, ...).
        QTest::newRow("Arabic")
            << "ar" << QStringList{"0 ثانية", "ثانية واحدة", "ثانيتان",
                                   "3 ثوانٍ",  "11 ثانية",    "دقيقة واحدة 40 ثانية"}
            << QStringList{"يوم واحد 0 ساعة 0 دقيقة 0 ثانية", "يومان 0 ساعة 0 دقيقة 0 ثانية",
                           "3 أيام 0 ساعة 0 دقيقة 0 ثانية", "11 يومًا 0 ساعة 0 دقيقة 0 ثانية",
                           "100 يوم 0 ساعة 0 دقيقة 0 ثانية"}
            << QStringList{"جارٍ فحص 0 ملف",   "جارٍ فحص ملف واحد", "جارٍ فحص ملفين",
                           "جارٍ فحص 3 ملفات", "جارٍ فحص 11 ملفًا",  "جارٍ فحص 100 ملف"}
            << QStringList{"جارٍ التحقق من 0 كائن مُجهّز",    "جارٍ التحقق من كائن مُجهّز واحد",
                           "جارٍ التحقق من كائنين مُجهّزين",  "جارٍ التحقق من 3 كائنات مُجهّزة",
                           "جارٍ التحقق من 11 كائنًا مُجهّزًا", "جارٍ التحقق من 100 كائن مُجهّز"};
    }

    void forms()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, seconds);
        QFETCH(QStringList, days);
        QFETCH(QStringList, files);
        QFETCH(QStringList, objects);

        AppTranslations translations;
        translations.install(*QCoreApplication::instance(), QLocale(language));
        QCOMPARE(translations.language(), language);

        const QList<quint64> counts = {0, 1, 2, 3, 11, 100};
        for (qsizetype i = 0; i < counts.size(); ++i) {
            QCOMPARE(backupDurationLabel(counts[i]), seconds[i]);
            QCOMPARE(checkingFiles(counts[i]), files[i]);
            QCOMPARE(validatingObjects(counts[i]), objects[i]);
            if (counts[i] > 0)
                QCOMPARE(::days(counts[i]), days[i - 1]);
        }
    }

    void countBeyondIntKeepsItsDigitsAndForm()
    {
        AppTranslations translations;
        translations.install(*QCoreApplication::instance(), QLocale(QStringLiteral("ar")));
        // 5,000,000,000,003 ends in 03: the "few" form, written in full.
        QCOMPARE(checkingFiles(5'000'000'000'003ULL),
                 QStringLiteral("جارٍ فحص 5000000000003 ملفات"));
    }
};

QTEST_MAIN(TestI18nPlurals)
#include "tst_i18n_plurals.moc"
