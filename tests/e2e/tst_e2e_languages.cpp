// The shipped app in a session of another language, end to end: the window,
// the tray menu read over D-Bus, and the notification of a completed backup
// as the notification server received it, in ZQB_E2E_LANGUAGE. The test reads
// the expected texts from the same compiled translation the app carries.
// With ZQB_E2E_SCREENSHOTS set, the whole screen (window and notification) is
// saved as i18n-<language>-desktop.png.
#include "E2eSession.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTranslator>

namespace {

constexpr int startupMs = 30000;
constexpr int actionMs = 30000;

QString translated(const char *context, const char *text)
{
    return QCoreApplication::translate(context, text);
}

} // namespace

class LanguagesEndToEnd : public QObject
{
    Q_OBJECT

    QString m_language;
    QTranslator m_translator;

private slots:
    void initTestCase()
    {
        E2eSession::becomeSubreaper();
        m_language = qEnvironmentVariable("ZQB_E2E_LANGUAGE");
        QVERIFY(!m_language.isEmpty());
        QVERIFY(m_translator.load(QStringLiteral(ZQB_E2E_QM_DIR "/zqb-agent_") + m_language +
                                  QStringLiteral(".qm")));
        QCoreApplication::installTranslator(&m_translator);
    }

    void sessionLanguage()
    {
        E2eSession session;
        QString why;
        QVERIFY2(session.startDesktop(&why), qPrintable(why));
        session.setLanguage(m_language);

        int code = -1;
        const QByteArray invitation = session.runEngine({QStringLiteral("make-invitation")});
        session.runEngine({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")},
                          invitation.trimmed() + '\n', &code);
        QCOMPARE(code, 0);
        const QString folder = session.prepareFolderToProtect();
        QVERIFY(!folder.isEmpty());

        QVERIFY2(session.startApp(&why), qPrintable(why));
        const QString lastBackup = translated("ConnectionState", "Last successful backup");
        QVERIFY(lastBackup != QLatin1String("Last successful backup"));
        QTRY_VERIFY2_WITH_TIMEOUT(session.showsText(lastBackup),
                                  qPrintable(session.describeWidgets()), startupMs);

        // The tray menu, as the tray host reads it.
        QList<E2eSession::MenuEntry> menu;
        QTRY_VERIFY_WITH_TIMEOUT((menu = session.trayMenu(&why)).size() == 4, startupMs);
        QCOMPARE(menu[0].label, translated("AppDelegate", "Open ZQB Agent"));
        QCOMPARE(menu[1].label, translated("AppDelegate", "Check Connection"));
        QCOMPARE(menu[3].label, translated("AppDelegate", "Quit ZQB Agent"));

        // A backup, and its notification.
        const QString addFolders = translated("FoldersSection", "Add folders…");
        const QString backUpNow = translated("ScheduleSection", "Back up now");
        bool pressed = false;
        for (int attempt = 0; attempt < 5 && !pressed; ++attempt) {
            QTRY_VERIFY_WITH_TIMEOUT(session.canClick(addFolders), startupMs);
            QVERIFY(session.click(addFolders));
            const bool ready = QTest::qWaitFor(
                [&] { return session.showsText(folder) || session.canClick(backUpNow); }, actionMs);
            pressed = ready && session.canClick(backUpNow) && session.click(backUpNow);
        }
        QVERIFY2(pressed, qPrintable(session.describeWidgets()));
        QTRY_VERIFY_WITH_TIMEOUT(!session.notifications().isEmpty(), actionMs);
        const QStringList parts = session.notifications().constFirst().split(QLatin1Char('\t'));
        QCOMPARE(parts.value(0), QStringLiteral("ZQB Agent"));
        QCOMPARE(parts.value(1), translated("AgentModel", "ZQB backup Recovery Ready"));
        QCOMPARE(parts.value(2),
                 translated("AgentModel", "The authorized target returned signed zero-error "
                                          "verification for non-empty data."));
        QTRY_VERIFY_WITH_TIMEOUT(session.showsText(translated("ConnectionState", "Recovery Ready")),
                                 actionMs);
        const QString dir = qEnvironmentVariable("ZQB_E2E_SCREENSHOTS");
        if (!dir.isEmpty())
            QVERIFY(session.screenshot(
                QDir(dir).filePath(QStringLiteral("i18n-%1-desktop.png").arg(m_language))));
    }
};

QTEST_GUILESS_MAIN(LanguagesEndToEnd)
#include "tst_e2e_languages.moc"
