// Each shipped language as a person in that session sees it: the window
// during a backup, the tray menu and the notification of a completed backup,
// through the app's own translation loading. Arabic mirrors the window and
// fills the progress bar from the right. With ZQB_I18N_SCREENSHOTS set, the
// pictures are written there as i18n-<language>-window.png, -tray-menu.png
// and -notification.png.
#include "AgentDocuments.h"
#include "AgentModel.h"
#include "AgentView.h"
#include "AppDelegate.h"
#include "AppTranslations.h"
#include "DesktopNotifier.h"
#include "FakeEngine.h"
#include "Formatting.h"
#include "ScreenStates.h"
#include "TestTrayHost.h"
#include "TextRoom.h"

#include <QApplication>
#include <QDir>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

class RecordingNotifier : public DesktopNotifier
{
public:
    void requestAuthorization() override {}
    void post(const QString &title, const QString &body) override { posts.append({title, body}); }
    QList<std::pair<QString, QString>> posts;
};

QString translated(const char *context, const char *text)
{
    return QCoreApplication::translate(context, text);
}

bool save(QWidget &widget, const QString &language, const char *what)
{
    const QString dir = qEnvironmentVariable("ZQB_I18N_SCREENSHOTS");
    if (dir.isEmpty())
        return true;
    QDir().mkpath(dir);
    return widget.grab().save(
        QDir(dir).filePath(QStringLiteral("i18n-%1-%2.png").arg(language, QLatin1String(what))));
}

// How far a pixel is from the palette's highlight colour, which fills the bar.
int distanceFromHighlight(const QImage &image, int x, const QColor &highlight)
{
    const QColor c = image.pixelColor(x, image.height() / 2);
    return qAbs(c.red() - highlight.red()) + qAbs(c.green() - highlight.green()) +
           qAbs(c.blue() - highlight.blue());
}

} // namespace

class TestI18nLanguages : public QObject
{
    Q_OBJECT

    TestTrayHost m_tray;

private slots:
    void initTestCase() { QVERIFY(m_tray.start()); }

    void language_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"de", "fr", "es", "pt_BR", "it", "ja", "zh_CN", "ar"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }

    void language()
    {
        QFETCH(QString, language);
        AppTranslations translations;
        translations.install(*qApp, QLocale(language));
        QCOMPARE(translations.language(), language);
        const bool rightToLeft = language == QLatin1String("ar");
        QCOMPARE(QGuiApplication::layoutDirection(),
                 rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);

        // The window during a backup.
        FakeEngine engine;
        RecordingNotifier notifier;
        AgentModel model{AgentModel::Services{AgentRunner(engine.path()), &notifier, nullptr}};
        const AgentUIStatus uploading = ScreenStates::uploading();
        engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(uploading));
        AgentView view{model, scheduleIntervals()};
        view.resize(view.minimumSize());
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QTRY_VERIFY(model.status() == uploading);
        QCoreApplication::processEvents();

        const auto *backUpNow = view.findChild<QPushButton *>(QStringLiteral("backUpNowButton"));
        QVERIFY(backUpNow);
        QVERIFY(backUpNow->text() != QLatin1String("Back up now"));
        QCOMPARE(backUpNow->text(), translated("ScheduleSection", "Back up now"));
        const auto *title = view.findChild<QLabel *>(QStringLiteral("badgeTitle"));
        QCOMPARE(title->text(), translated("BadgeState", "Backing Up"));
        QVERIFY(title->text() != QLatin1String("Backing Up"));
        QCOMPARE(view.isRightToLeft(), rightToLeft);

        // The bar fills from the reading side: 68 % done, so the last tenth
        // on the side the text starts from is filled and the far tenth is not.
        auto *bar = view.findChild<QProgressBar *>(QStringLiteral("badgeBar"));
        QVERIFY(bar && bar->isVisible());
        const QImage image = bar->grab().toImage();
        const QColor highlight = bar->palette().color(QPalette::Highlight);
        const int nearStart = rightToLeft ? image.width() * 9 / 10 : image.width() / 10;
        const int nearEnd = rightToLeft ? image.width() / 10 : image.width() * 9 / 10;
        QVERIFY2(distanceFromHighlight(image, nearStart, highlight) <
                     distanceFromHighlight(image, nearEnd, highlight),
                 "the progress bar does not fill from the reading side");

        // Paths and versions keep their left-to-right order inside Arabic.
        const auto *path = view.findChild<QLabel *>(QStringLiteral("folderPath"));
        QVERIFY(path);
        QCOMPARE(path->text().contains(QChar(0x200E)), rightToLeft);
        // and they, like every line, start on the reading side.
        QCOMPARE(path->text().isRightToLeft(), rightToLeft);
        const auto *message = view.findChild<QLabel *>(QStringLiteral("badgeMessage"));
        QCOMPARE(message->text().isRightToLeft(), rightToLeft);
        // At the window's default size every text fits or wraps.
        const QStringList cut = cutOffTexts(view);
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1Char('\n'))));

        // Tall enough for the picture to show the whole window.
        view.resize(view.width(), 1250);
        QCoreApplication::processEvents();
        QVERIFY(save(view, language, "window"));

        // A completed backup the target verified: the notification's texts.
        AgentUIStatus done = ScreenStates::connectedIdle();
        done.runtime.lastBackupAt = QStringLiteral("2025-03-01T15:10:00Z");
        engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(done));
        model.refresh(false, false);
        QTRY_COMPARE(notifier.posts.size(), 1);
        QCOMPARE(notifier.posts[0].first, translated("AgentModel", "ZQB backup Recovery Ready"));
        QVERIFY(notifier.posts[0].first != QLatin1String("ZQB backup Recovery Ready"));
        QCOMPARE(notifier.posts[0].second,
                 translated("AgentModel", "The authorized target returned signed zero-error "
                                          "verification for non-empty data."));
        // As a notification server lays it out: summary over body.
        QFrame bubble;
        bubble.setFrameShape(QFrame::StyledPanel);
        bubble.setFixedWidth(360);
        auto *column = new QVBoxLayout(&bubble);
        auto *summary = new QLabel(notifier.posts[0].first);
        QFont bold = summary->font();
        bold.setBold(true);
        summary->setFont(bold);
        auto *body = new QLabel(notifier.posts[0].second);
        body->setWordWrap(true);
        column->addWidget(new QLabel(QStringLiteral("ZQB Agent")));
        column->addWidget(summary);
        column->addWidget(body);
        bubble.adjustSize();
        QVERIFY(save(bubble, language, "notification"));

        // The engine missing: the app's own words for it, translated.
        AgentModel missing{AgentModel::Services{
            AgentRunner(QStringLiteral("/nonexistent/zqb-engine")), nullptr, nullptr}};
        missing.installUpdate();
        QTRY_VERIFY(missing.error().has_value());
        QCOMPARE(*missing.error(),
                 translated("AgentRunner", "The ZQB Agent background engine is not installed."));
        QVERIFY(*missing.error() !=
                QLatin1String("The ZQB Agent background engine is not installed."));

        // The tray menu.
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
        QTRY_VERIFY(delegate.statusMenu());
        QMenu *menu = delegate.statusMenu();
        QStringList entries;
        for (const QAction *action : menu->actions())
            if (!action->isSeparator())
                entries << action->text();
        QCOMPARE(entries, (QStringList{translated("AppDelegate", "Open ZQB Agent"),
                                       translated("AppDelegate", "Check Connection"),
                                       translated("AppDelegate", "Quit ZQB Agent")}));
        QVERIFY(entries[1] != QLatin1String("Check Connection"));
        QCOMPARE(menu->isRightToLeft(), rightToLeft);
        menu->adjustSize();
        QVERIFY(save(*menu, language, "tray-menu"));
    }
};

QTEST_MAIN(TestI18nLanguages)
#include "tst_i18n_languages.moc"
