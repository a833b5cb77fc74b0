// The real window under a pseudo-translation of every text (accented,
// 40 % longer, in brackets): every text of the app's own comes out translated,
// only the engine's texts (messages, versions, paths, dates, counts) stay as
// they are, and no label, button or heading is cut off at the window's
// default size.
#include "PseudoTranslation.h"
#include "TextRoom.h"
#include "ViewTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <algorithm>

using namespace ViewTest;

namespace {

struct Shown
{
    QString where; // object name and what the text is
    QString text;
};

QString describe(const QWidget *w, const char *what)
{
    return QStringLiteral("%1 (%2) %3")
        .arg(w->objectName(), QString::fromLatin1(w->metaObject()->className()),
             QString::fromLatin1(what));
}

// Every text the window shows or says: labels, buttons, headings, choices,
// placeholders, tooltips and accessible names of the visible widgets.
QList<Shown> shownTexts(const QWidget &view)
{
    QList<Shown> texts;
    const auto add = [&](const QWidget *w, const char *what, const QString &text) {
        if (!text.trimmed().isEmpty())
            texts.append({describe(w, what), text});
    };
    for (const QWidget *w : view.findChildren<QWidget *>()) {
        if (!w->isVisibleTo(&view))
            continue;
        add(w, "accessible name", w->accessibleName());
        add(w, "tooltip", w->toolTip());
        if (const auto *label = qobject_cast<const QLabel *>(w))
            add(w, "text", label->text());
        if (const auto *button = qobject_cast<const QAbstractButton *>(w))
            add(w, "text", button->text());
        if (const auto *box = qobject_cast<const QGroupBox *>(w))
            add(w, "title", box->title());
        if (const auto *combo = qobject_cast<const QComboBox *>(w))
            for (int i = 0; i < combo->count(); ++i)
                add(w, "choice", combo->itemText(i));
        if (const auto *edit = qobject_cast<const QLineEdit *>(w))
            add(w, "placeholder", edit->placeholderText());
    }
    return texts;
}

// What is left of `text` once the translated parts (in brackets) and the
// engine's own texts are taken out: it must hold no letter.
QString untranslatedRest(QString text, QStringList engineTexts)
{
    static const QRegularExpression marked(QStringLiteral("\\[[^\\[\\]]*\\]"));
    // Inside out: a translated text may hold others ("[Elapsed time [23 min]]").
    for (qsizetype before = -1; before != text.size();) {
        before = text.size();
        text.remove(marked);
    }
    std::sort(engineTexts.begin(), engineTexts.end(),
              [](const QString &a, const QString &b) { return a.size() > b.size(); });
    for (const QString &engine : engineTexts)
        if (!engine.isEmpty())
            text.remove(engine);
    for (const QChar c : text)
        if (c.isLetter())
            return text;
    return {};
}

QStringList engineTextsOf(const AgentUIStatus &s)
{
    QStringList texts = {QStringLiteral("ZQB Agent"), s.agentVersion, s.runtime.message};
    const RuntimeStatus &r = s.runtime;
    for (const std::optional<QString> &t : {r.serviceVersion, r.latestAgentVersion, r.lastError})
        if (t)
            texts << *t;
    for (const std::optional<QString> &t : {r.lastContactAt, r.lastBackupAt})
        texts << dateLabel(t);
    if (r.backupProgress && r.backupProgress->lastProgressAt)
        texts << compactDate(*r.backupProgress->lastProgressAt);
    texts << s.settings.sources;
    return texts;
}

} // namespace

class TestI18nPseudo : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QTranslator m_translator;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        const QString qm = m_dir.filePath(QStringLiteral("pseudo.qm"));
        const QString failure = PseudoTranslation::build(QStringLiteral(ZQB_TS_TEMPLATE),
                                                         QStringLiteral(ZQB_LRELEASE), qm);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        QVERIFY(m_translator.load(qm));
        QVERIFY(QCoreApplication::installTranslator(&m_translator));
    }

    void pseudoTextIsMarked()
    {
        // The check below would pass vacuously if the translation were not loaded.
        QCOMPARE(QCoreApplication::translate("ScheduleSection", "Save settings"),
                 PseudoTranslation::pseudo(QStringLiteral("Save settings")));
        QCOMPARE(PseudoTranslation::pseudo(QStringLiteral("Last progress %1")),
                 QStringLiteral("[Ļàšţ þŕöĝŕéšš %1~~~~~~~]"));
    }

    void clippingIsSeen()
    {
        // The measure below finds a label too narrow for its text.
        QWidget column;
        column.resize(400, 100);
        QLabel label(PseudoTranslation::pseudo(QStringLiteral("Back up selected folders")),
                     &column);
        label.setGeometry(0, 0, 60, 20);
        QVERIFY(!clipping(&label, column).isEmpty());
        label.setGeometry(0, 0, label.sizeHint().width(), 20);
        QCOMPARE(clipping(&label, column), QString());
    }

    void everyTextTranslatedAndNothingCut_data()
    {
        QTest::addColumn<QString>("state");
        for (const char *state : {"no status yet", "setup required", "connected idle", "uploading",
                                  "update, error and notice"})
            QTest::newRow(state) << QString::fromLatin1(state);
    }

    void everyTextTranslatedAndNothingCut()
    {
        QFETCH(QString, state);
        std::optional<AgentUIStatus> status;
        if (state == QLatin1String("setup required"))
            status = ScreenStates::setupRequired();
        else if (state == QLatin1String("connected idle"))
            status = ScreenStates::connectedIdle();
        else if (state == QLatin1String("uploading"))
            status = ScreenStates::uploading();
        else if (state.startsWith(QLatin1String("update")))
            status = ScreenStates::updateAvailable();
        const bool withCards = state.startsWith(QLatin1String("update"));
        Window w;
        QVERIFY(w.show(status));
        QStringList engineTexts =
            status ? engineTextsOf(*status) : QStringList{QStringLiteral("ZQB Agent")};
        if (withCards) {
            // A notice of the app's own (settings saved), and an error from the engine.
            w.find<QPushButton>("saveButton")->click();
            QTRY_VERIFY(w.model.notice().has_value());
            QTRY_VERIFY(!w.model.busy());
            const QString engineError = QStringLiteral(
                "The engine could not read /srv/projects/IMG_0042.tif: permission denied.");
            w.model.setError(engineError);
            engineTexts << engineError;
            QCoreApplication::processEvents();
            QVERIFY(w.shows("noticeCard"));
            QVERIFY(w.shows("errorCard"));
        }
        // The window at its default size, laid out.
        w.view.resize(w.view.minimumSize());
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();

        const QList<Shown> texts = shownTexts(w.view);
        QVERIFY(texts.size() > 10);
        QStringList escaped;
        int marked = 0;
        for (const Shown &shown : texts) {
            const QString rest = untranslatedRest(shown.text, engineTexts);
            if (!rest.isEmpty())
                escaped << QStringLiteral("%1: \"%2\"").arg(shown.where, shown.text);
            else if (shown.text.contains(QLatin1Char('[')))
                ++marked;
        }
        QVERIFY2(escaped.isEmpty(), qPrintable(QStringLiteral("texts that escaped translation:\n") +
                                               escaped.join(QLatin1Char('\n'))));
        QVERIFY(marked > 10);
        qInfo("%s: %d texts shown, %d of them translated, the rest engine texts", qPrintable(state),
              int(texts.size()), marked);

        const QStringList cut = cutOffTexts(w.view);
        QVERIFY2(
            cut.isEmpty(),
            qPrintable(
                QStringLiteral("cut off at %1x%2:\n").arg(w.view.width()).arg(w.view.height()) +
                cut.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(TestI18nPseudo)
#include "tst_i18n_pseudo.moc"
