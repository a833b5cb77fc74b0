#include "TextFit.h"

#include <QFontMetrics>
#include <QList>
#include <QStringList>
#include <QTextLayout>
#include <QTextOption>

QString fitToLines(const QString &text, const QFont &font, int width, int maxLines)
{
    if (width <= 0 || maxLines <= 0 || text.isEmpty())
        return text;
    QString flat = text;
    flat.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(flat, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);

    QList<std::pair<qsizetype, qsizetype>> spans; // start, length of each line
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        spans.append({line.textStart(), line.textLength()});
    }
    layout.endLayout();

    QStringList lines;
    const qsizetype kept = qMin<qsizetype>(spans.size(), maxLines - 1);
    for (qsizetype i = 0; i < kept; ++i)
        lines << flat.mid(spans[i].first, spans[i].second).trimmed();
    if (spans.size() <= maxLines) {
        if (spans.size() == maxLines)
            lines << flat.mid(spans.last().first).trimmed();
        return lines.join(QLatin1Char('\n'));
    }
    // Everything from the last allowed line on, shortened to one line.
    const QString rest = flat.mid(spans[maxLines - 1].first).simplified();
    lines << QFontMetrics(font).elidedText(rest, Qt::ElideRight, width);
    return lines.join(QLatin1Char('\n'));
}
