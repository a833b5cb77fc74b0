#pragma once

#include <QFont>
#include <QString>

// `text` wrapped at word boundaries into lines of at most `width` pixels; when
// it needs more than `maxLines` lines, the last one ends in an ellipsis. Lines
// are joined with line breaks, so a label shows them exactly as fitted.
QString fitToLines(const QString &text, const QFont &font, int width, int maxLines);
