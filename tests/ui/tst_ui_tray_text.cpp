// Engine text in the tray shows as written, whoever reads it: a state or
// message that looks like markup is never rendered as markup.
#include "StatusItemToolTip.h"
#include "TrayText.h"

#include <QTest>
#include <QTextDocument>

using TrayText::Reader;

namespace {

// What a reader that takes markup shows for `text`.
QString shownAsMarkup(const QString &text)
{
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

// What a Qt label or tooltip shows: markup when Qt takes the text for
// markup, the text itself otherwise.
QString shownByQt(const QString &text)
{
    QTextDocument document;
    if (Qt::mightBeRichText(text))
        document.setHtml(text);
    else
        document.setPlainText(text);
    return document.toPlainText();
}

} // namespace

class TestUiTrayText : public QObject
{
    Q_OBJECT

private slots:
    void qtTooltipShowsMarkupLiterally_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("bold") << QStringLiteral("<b>Connected</b>");
        QTest::newRow("image") << QStringLiteral("<img src=\"/etc/passwd\">Setup Required");
        QTest::newRow("with progress line")
            << QStringLiteral("<i>Backing Up</i>\nFolder 1/2 · 3/10 uploaded");
        QTest::newRow("entity") << QStringLiteral("a &lt; b & c");
        QTest::newRow("plain") << QStringLiteral("Connected");
        QTest::newRow("spaces kept") << QStringLiteral("<u>x</u>   two  spaces");
    }
    void qtTooltipShowsMarkupLiterally()
    {
        QFETCH(QString, text);
        QCOMPARE(shownByQt(TrayText::literal(text, Reader::QtRichLabel)), text);
        // Without it the same text would not show as written.
        if (text.startsWith(QLatin1Char('<')) || text.contains(QStringLiteral("&lt;")))
            QVERIFY(shownByQt(text) != text);
    }

    void plainTextIsLeftAlone()
    {
        for (const QString &text : {QStringLiteral("Connected"),
                                    QStringLiteral("Backing Up\nFolder 2/3 · 7/10 uploaded")}) {
            QCOMPARE(TrayText::literal(text, Reader::QtRichLabel), text);
            QCOMPARE(TrayText::literal(text, Reader::MarkupBody), text);
            QCOMPARE(TrayText::literal(text, Reader::PlainTitle), text);
        }
    }

    void markupReaderGetsEscapedText()
    {
        const QString text = QStringLiteral("<b>Paused</b> & \"quoted\" <a href=\"x\">link</a>");
        QCOMPARE(shownAsMarkup(TrayText::literal(text, Reader::MarkupBody)), text);
        QVERIFY(shownAsMarkup(text) != text);
        QCOMPARE(TrayText::literal(text, Reader::PlainTitle), text);
    }

    void tooltipOfAMarkupStateShowsAsWritten()
    {
        RuntimeStatus runtime;
        runtime.state = QStringLiteral("<b>weird</b>");
        const QString toolTip = statusItemToolTip(runtime);
        QCOMPARE(shownByQt(TrayText::literal(toolTip, Reader::QtRichLabel)), toolTip);
    }
};

QTEST_MAIN(TestUiTrayText)
#include "tst_ui_tray_text.moc"
