#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// The skip patterns of the folder settings. A pattern is compared with the
// NAME of each file or folder (never with its path): either the exact name or
// a shell-style glob ("*.tmp", "cache-?", "[Tt]humbs.db"), case-sensitive.
// A skipped folder is skipped with everything inside it.
class SkipPatterns
{
public:
    SkipPatterns() = default;
    explicit SkipPatterns(const QStringList &patterns);

    bool matches(const QString &name) const;
    bool matches(const QByteArray &encodedName) const;

private:
    QList<QByteArray> m_patterns; // file-system encoding, as names are read
};
