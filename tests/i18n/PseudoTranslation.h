#pragma once

// A pseudo-translation of every text of the app, made by the tests: each
// source text is accented letter by letter, lengthened by 40 % and wrapped in
// brackets ("Save settings" -> "[Šàṽé šéţţîñĝš~~~~~]"), placeholders (%1, %n)
// kept. Loaded into the real window it shows at a glance which text escaped
// translation (no brackets) and which one does not fit once longer.

#include <QFile>
#include <QProcess>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace PseudoTranslation {

inline QChar accented(QChar c)
{
    static const QString plain =
        QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    static const QString marked =
        QStringLiteral("àƀçðéƒĝĥîĵķļɱñöþǫŕšţûṽŵẋýžÅƁÇÐÉƑĜĤÎĴĶĻṀÑÖÞǪŔŠŢÛṼŴẊÝŽ");
    const qsizetype i = plain.indexOf(c);
    return i < 0 ? c : marked.at(i);
}

inline QString pseudo(const QString &source)
{
    QString out = QStringLiteral("[");
    for (qsizetype i = 0; i < source.size(); ++i) {
        const QChar c = source.at(i);
        // Placeholders stay as they are: %1 ... %9, %n, %L1.
        if (c == QLatin1Char('%') && i + 1 < source.size()) {
            qsizetype end = i + 1;
            if (source.at(end) == QLatin1Char('L'))
                ++end;
            if (end < source.size() &&
                (source.at(end).isDigit() || source.at(end) == QLatin1Char('n'))) {
                out += source.mid(i, end - i + 1);
                i = end;
                continue;
            }
        }
        out += accented(c);
    }
    out += QString((source.size() * 4 + 9) / 10, QLatin1Char('~'));
    return out + QLatin1Char(']');
}

inline bool isMarked(const QString &text)
{
    return text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']'));
}

// Writes the pseudo-translation of `tsTemplate` (any shipped .ts file: only
// its source texts are read) as a .ts file and compiles it with `lrelease`
// into `qmFile`. Returns an empty string on success, else what went wrong.
inline QString build(const QString &tsTemplate, const QString &lrelease, const QString &qmFile)
{
    QFile in(tsTemplate);
    if (!in.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read ") + tsTemplate;
    const QString tsFile = qmFile + QStringLiteral(".ts");
    QFile outFile(tsFile);
    if (!outFile.open(QIODevice::WriteOnly))
        return QStringLiteral("cannot write ") + tsFile;

    QXmlStreamReader reader(&in);
    QXmlStreamWriter writer(&outFile);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeDTD(QStringLiteral("<!DOCTYPE TS>"));
    writer.writeStartElement(QStringLiteral("TS"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("2.1"));
    // German plural rules: two forms, one for 1 and one for the rest.
    writer.writeAttribute(QStringLiteral("language"), QStringLiteral("de"));
    QString context, source, comment;
    bool numerus = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            const auto name = reader.name();
            if (name == QLatin1String("context")) {
                writer.writeStartElement(QStringLiteral("context"));
            } else if (name == QLatin1String("name")) {
                context = reader.readElementText();
                writer.writeTextElement(QStringLiteral("name"), context);
            } else if (name == QLatin1String("message")) {
                numerus =
                    reader.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
                comment.clear();
            } else if (name == QLatin1String("source")) {
                source = reader.readElementText();
            } else if (name == QLatin1String("comment")) {
                comment = reader.readElementText();
            } else if (name == QLatin1String("translation")) {
                reader.skipCurrentElement();
                writer.writeStartElement(QStringLiteral("message"));
                if (numerus)
                    writer.writeAttribute(QStringLiteral("numerus"), QStringLiteral("yes"));
                writer.writeTextElement(QStringLiteral("source"), source);
                if (!comment.isEmpty())
                    writer.writeTextElement(QStringLiteral("comment"), comment);
                writer.writeStartElement(QStringLiteral("translation"));
                // Qt's layout-direction entry keeps its meaning.
                const QString text = source == QLatin1String("QT_LAYOUT_DIRECTION")
                                         ? QStringLiteral("LTR")
                                         : pseudo(source);
                if (numerus) {
                    writer.writeTextElement(QStringLiteral("numerusform"), text);
                    writer.writeTextElement(QStringLiteral("numerusform"), text);
                } else {
                    writer.writeCharacters(text);
                }
                writer.writeEndElement(); // translation
                writer.writeEndElement(); // message
            }
        } else if (reader.isEndElement() && reader.name() == QLatin1String("context")) {
            writer.writeEndElement();
        }
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    outFile.close();
    if (reader.hasError())
        return QStringLiteral("cannot parse %1: %2").arg(tsTemplate, reader.errorString());

    QProcess release;
    release.start(lrelease, {QStringLiteral("-silent"), tsFile, QStringLiteral("-qm"), qmFile});
    if (!release.waitForFinished(60000) || release.exitCode() != 0)
        return QStringLiteral("lrelease failed: ") +
               QString::fromLocal8Bit(release.readAllStandardError());
    return {};
}

} // namespace PseudoTranslation
