#include "EngineOutput.h"
#include "TextRules.h"

#include <QtTest>

class TestEngineTextRules : public QObject
{
    Q_OBJECT

private slots:
    void whitespaceSet_data();
    void whitespaceSet();
    void qtSpaceIsExactlyTheTrimmedSet();
    void trimmedRemovesOnlyTheEnds();
    void trimmedKeepsNonBlankSurrogatePairs();
    void trimmedOfBlankTextIsEmpty();
    void graphemeCount();
    void leftGraphemesKeepsWholeClusters();
    void leftGraphemesOnLongText();
    void plainAsciiIsCutWhereTheAnalysisWouldCut_data();
    void plainAsciiIsCutWhereTheAnalysisWouldCut();
    void incompleteTailIsFound_data();
    void incompleteTailIsFound();
    void decodeAppliesCapBeforeTrim();
    void decodeRejectsInvalidUtf8();
    void decodeFindsClustersLongerThanItsFirstLook();
    void wholeTextIsTrimmedAndNotCapped();
    void wholeTextOfInvalidUtf8IsEmpty();
};

void TestEngineTextRules::whitespaceSet_data()
{
    QTest::addColumn<uint>("codePoint");
    QTest::addColumn<bool>("blank");
    QTest::newRow("space") << 0x20u << true;
    QTest::newRow("tab") << 0x09u << true;
    QTest::newRow("line feed") << 0x0Au << true;
    QTest::newRow("vertical tab") << 0x0Bu << true;
    QTest::newRow("form feed") << 0x0Cu << true;
    QTest::newRow("carriage return") << 0x0Du << true;
    QTest::newRow("next line") << 0x85u << true;
    QTest::newRow("no-break space") << 0xA0u << true;
    QTest::newRow("ogham space") << 0x1680u << true;
    QTest::newRow("em space") << 0x2003u << true;
    QTest::newRow("line separator") << 0x2028u << true;
    QTest::newRow("paragraph separator") << 0x2029u << true;
    QTest::newRow("ideographic space") << 0x3000u << true;
    QTest::newRow("letter") << uint('a') << false;
    QTest::newRow("nul") << 0x00u << false;
    QTest::newRow("information separator") << 0x1Fu << false;
    QTest::newRow("zero width space") << 0x200Bu << false;
    QTest::newRow("byte order mark") << 0xFEFFu << false;
    QTest::newRow("emoji") << 0x1F600u << false;
    QTest::newRow("beyond unicode") << 0x110000u << false;
}

void TestEngineTextRules::whitespaceSet()
{
    QFETCH(uint, codePoint);
    QFETCH(bool, blank);
    QCOMPARE(QChar::isSpace(char32_t(codePoint)), blank);
}

void TestEngineTextRules::qtSpaceIsExactlyTheTrimmedSet()
{
    // Every code point: the set the app trims is Unicode category Z, tab,
    // U+000A..U+000D and U+0085, and Qt's isSpace() is that set, no more and
    // no less, so Qt's trimming is used everywhere.
    for (char32_t c = 0; c <= QChar::LastValidCodePoint; ++c) {
        const QChar::Category category = QChar::category(c);
        const bool trimmed = category == QChar::Separator_Space ||
                             category == QChar::Separator_Line ||
                             category == QChar::Separator_Paragraph || c == U'\t' ||
                             (c >= 0x0A && c <= 0x0D) || c == 0x85;
        if (QChar::isSpace(c) != trimmed)
            QFAIL(qPrintable(QString::number(uint(c), 16)));
    }
}

void TestEngineTextRules::trimmedRemovesOnlyTheEnds()
{
    QCOMPARE(QStringView(u"\u3000\t\r\n  a \u2028 b\u0085\u00a0\u000b").trimmed().toString(),
             QStringLiteral("a \u2028 b"));
    QCOMPARE(QStringView(u"\ufeffx\u200b").trimmed().toString(), QStringLiteral("\ufeffx\u200b"));
    QCOMPARE(QStringView(u"plain").trimmed().toString(), QStringLiteral("plain"));
}

void TestEngineTextRules::trimmedKeepsNonBlankSurrogatePairs()
{
    const QString emoji = QStringLiteral("\U0001F600");
    QCOMPARE((QStringLiteral(" ") + emoji + QStringLiteral("\n")).trimmed(), emoji);
    // A lone surrogate is kept, not mistaken for a blank.
    const QString lone = QString(QChar(0xD800));
    QCOMPARE((QStringLiteral(" ") + lone + QStringLiteral(" ")).trimmed(), lone);
}

void TestEngineTextRules::trimmedOfBlankTextIsEmpty()
{
    QCOMPARE(QStringView(u" \t\r\n\u2029").trimmed().toString(), QString());
    QCOMPARE(QStringView(u"").trimmed().toString(), QString());
}

void TestEngineTextRules::graphemeCount()
{
    QCOMPARE(TextRules::graphemeCount(u""), 0);
    QCOMPARE(TextRules::graphemeCount(u"\r\n"), 1);
    QCOMPARE(TextRules::graphemeCount(u"\n\r"), 2);
    QCOMPARE(TextRules::graphemeCount(u"e\u0301"), 1);
    QCOMPARE(TextRules::graphemeCount(u"\U0001F1E9\U0001F1EA"), 1); // a flag
    QCOMPARE(TextRules::graphemeCount(u"abc"), 3);
}

void TestEngineTextRules::leftGraphemesKeepsWholeClusters()
{
    QCOMPARE(TextRules::leftGraphemes(u"a\r\nb", 2), QStringLiteral("a\r\n"));
    QCOMPARE(TextRules::leftGraphemes(u"e\u0301e\u0301e\u0301", 2),
             QStringLiteral("e\u0301e\u0301"));
    QCOMPARE(TextRules::leftGraphemes(u"ab", 5), QStringLiteral("ab"));
    QCOMPARE(TextRules::leftGraphemes(u"ab", 0), QString());
    QCOMPARE(TextRules::leftGraphemes(u"\U0001F600\U0001F600", 1), QStringLiteral("\U0001F600"));
}

void TestEngineTextRules::leftGraphemesOnLongText()
{
    // Longer than the first look-ahead window: clusters of many code units.
    QString text;
    for (int i = 0; i < 3000; ++i)
        text += QStringLiteral("a\u0301\u0302\u0303\u0304\u0305\u0306");
    const QString left = TextRules::leftGraphemes(text, 2048);
    QCOMPARE(left.size(), 2048 * 7);
    QCOMPARE(TextRules::graphemeCount(left), 2048);

    // A single cluster that goes on and on is kept whole.
    QString endless = QStringLiteral("b") + QString(50000, QChar(0x0301));
    QCOMPARE(TextRules::leftGraphemes(endless + QStringLiteral("c"), 1), endless);

    // The look-ahead window for 10 characters is 104 code units. Nine clusters
    // of 11 units and one of 4 end at unit 103, where a combining mark outside
    // the basic plane begins: the window splits its surrogate pair, and the
    // mark still belongs to the tenth character.
    QString split;
    for (int i = 0; i < 9; ++i)
        split += QStringLiteral("a") + QString(10, QChar(0x0301));
    split += QStringLiteral("b\u0301\u0301\u0301");
    QCOMPARE(split.size(), 103);
    split += QStringLiteral("\U0001D165") + QString(20, QLatin1Char('z'));
    QCOMPARE(TextRules::leftGraphemes(split, 10), split.left(105));
}

void TestEngineTextRules::plainAsciiIsCutWhereTheAnalysisWouldCut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("left");
    const QString ascii = QString(20, QLatin1Char('a'));
    QTest::newRow("longer") << ascii << 8 << ascii.left(8);
    QTest::newRow("exactly as long") << ascii << 20 << ascii;
    QTest::newRow("shorter") << ascii << 30 << ascii;
    QTest::newRow("tabs and newlines")
        << QStringLiteral("a\tb\nc\nd") << 5 << QStringLiteral("a\tb\nc");
    // A mark beyond ASCII right after the cut extends the last character kept.
    QTest::newRow("mark after the cut")
        << QStringLiteral("abcde\u0301f") << 5 << QStringLiteral("abcde\u0301");
    // CR LF is one character.
    QTest::newRow("CR LF across the cut")
        << QStringLiteral("abc\r\ndef") << 4 << QStringLiteral("abc\r\n");
    QTest::newRow("CR LF after the cut")
        << QStringLiteral("abcd\r\nef") << 4 << QStringLiteral("abcd");
    QTest::newRow("lone CR") << QStringLiteral("ab\rcd") << 3 << QStringLiteral("ab\r");
}

void TestEngineTextRules::plainAsciiIsCutWhereTheAnalysisWouldCut()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(QString, left);
    QCOMPARE(TextRules::leftGraphemes(text, count), left);
    // The same answer as a cluster-by-cluster count.
    QCOMPARE(TextRules::graphemeCount(TextRules::leftGraphemes(text, count)),
             qMin<qsizetype>(count, TextRules::graphemeCount(text)));
    // And through the engine output path, byte by byte.
    QCOMPARE(EngineOutput::decode(text.toUtf8(), false, count), left.trimmed());
}

void TestEngineTextRules::incompleteTailIsFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("length");
    QTest::newRow("ascii") << QByteArray("abc") << 3;
    QTest::newRow("complete euro") << QByteArray("a\xe2\x82\xac") << 4;
    QTest::newRow("euro cut after 2") << QByteArray("a\xe2\x82") << 1;
    QTest::newRow("euro cut after 1") << QByteArray("a\xe2") << 1;
    QTest::newRow("four-byte cut after 3") << QByteArray("a\xf0\x9f\x98") << 1;
    QTest::newRow("complete four-byte") << QByteArray("a\xf0\x9f\x98\x80") << 5;
    QTest::newRow("stray continuation bytes") << QByteArray("a\x80\x80\x80\x80") << 5;
    QTest::newRow("empty") << QByteArray() << 0;
}

void TestEngineTextRules::incompleteTailIsFound()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, length);
    QCOMPARE(EngineOutput::lengthWithoutIncompleteTail(bytes), qsizetype(length));
}

void TestEngineTextRules::decodeAppliesCapBeforeTrim()
{
    QCOMPARE(EngineOutput::decode("   abcdef", false, 5), QStringLiteral("ab"));
    QCOMPARE(EngineOutput::decode("ab   cdef", false, 5), QStringLiteral("ab"));
    QCOMPARE(EngineOutput::decode("\xef\xbb\xbf"
                                  "ab",
                                  false, 5),
             QStringLiteral("\ufeffab"));
}

void TestEngineTextRules::decodeRejectsInvalidUtf8()
{
    QCOMPARE(EngineOutput::decode("ok\xe2\x82", false, 100), QString());
    QCOMPARE(EngineOutput::decode("ok\xe2\x82", true, 100), QStringLiteral("ok"));
    QCOMPARE(EngineOutput::decode("\xc0\x80", false, 100), QString());         // overlong
    QCOMPARE(EngineOutput::decode("\xf4\x90\x80\x80", false, 100), QString()); // above U+10FFFF
    QCOMPARE(EngineOutput::decode("bad\xff"
                                  "end",
                                  true, 100),
             QString());
}

void TestEngineTextRules::decodeFindsClustersLongerThanItsFirstLook()
{
    // One cluster longer than the prefix converted first: the cut falls after
    // the whole cluster, not where the prefix happened to end.
    QByteArray cluster = "e";
    for (int i = 0; i < 150; ++i)
        cluster += "\xcc\x81"; // COMBINING ACUTE ACCENT
    const QString expected = QString::fromUtf8(cluster);
    QCOMPARE(EngineOutput::decode(cluster + "tail", false, 1), expected);
    QCOMPARE(EngineOutput::decode(cluster + cluster + cluster, false, 2), expected + expected);

    // Much longer than the cap: the first characters, then trimmed.
    const QByteArray many = QByteArray(5000, 'a') + "  " + QByteArray(100000, 'b');
    QCOMPARE(EngineOutput::decode(many, false, 5002), QString(5000, QLatin1Char('a')));
    QCOMPARE(EngineOutput::decode(many, false, 5003),
             QString(5000, QLatin1Char('a')) + QStringLiteral("  b"));
    // The validity of what lies beyond the cap still counts.
    QCOMPARE(EngineOutput::decode(many + "\xff", false, 10), QString());
}

void TestEngineTextRules::wholeTextIsTrimmedAndNotCapped()
{
    const QByteArray body = QByteArray(20000, 'x') + " \xc2\xa0 " + QByteArray(20000, 'y');
    const QByteArray bytes = "\xe3\x80\x80\xc2\x85\t\n " + body + "\r\n\xe2\x80\xa9\v\f";
    const QByteArrayView whole = EngineOutput::wholeText(bytes);
    QCOMPARE(whole, QByteArrayView(body));
    QCOMPARE(whole.data(), bytes.constData() + 8); // a view into the bytes, not a copy
    // Why the bytes are not trimmed by Qt: it would leave the non-ASCII ends.
    QVERIFY(bytes.trimmed().startsWith("\xe3\x80\x80"));
    QVERIFY(bytes.trimmed().endsWith("\xe2\x80\xa9"));

    QCOMPARE(EngineOutput::wholeText("  {}\n"), QByteArrayView("{}"));
    QCOMPARE(EngineOutput::wholeText("\xef\xbb\xbf{}"), QByteArrayView("\xef\xbb\xbf{}"));
    QCOMPARE(EngineOutput::wholeText("{}\xe2\x82\xac"), QByteArrayView("{}\xe2\x82\xac"));
    QVERIFY(EngineOutput::wholeText(" \t\r\n ").isEmpty());
    QVERIFY(EngineOutput::wholeText("").isEmpty());
}

void TestEngineTextRules::wholeTextOfInvalidUtf8IsEmpty()
{
    QVERIFY(EngineOutput::wholeText("{} \xff").isEmpty());
    QVERIFY(EngineOutput::wholeText("{}\xe2\x82").isEmpty());         // incomplete
    QVERIFY(EngineOutput::wholeText("\xc0\x80").isEmpty());           // overlong
    QVERIFY(EngineOutput::wholeText("\xed\xa0\x80").isEmpty());       // surrogate
    QVERIFY(EngineOutput::wholeText("{}\xf4\x90\x80\x80").isEmpty()); // above U+10FFFF
}

QTEST_GUILESS_MAIN(TestEngineTextRules)
#include "tst_engine_text_rules.moc"
