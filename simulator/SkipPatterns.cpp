#include "SkipPatterns.h"

#include <QFile>

#include <fnmatch.h>

SkipPatterns::SkipPatterns(const QStringList &patterns)
{
    for (const QString &pattern : patterns) {
        if (!pattern.isEmpty())
            m_patterns.append(QFile::encodeName(pattern));
    }
}

bool SkipPatterns::matches(const QString &name) const
{
    return matches(QFile::encodeName(name));
}

bool SkipPatterns::matches(const QByteArray &encodedName) const
{
    for (const QByteArray &pattern : m_patterns) {
        if (pattern == encodedName ||
            ::fnmatch(pattern.constData(), encodedName.constData(), 0) == 0)
            return true;
    }
    return false;
}
