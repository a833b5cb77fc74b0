#include "SecretWipe.h"

#include <algorithm>

namespace SecretWipe {

namespace {

// Writes through a volatile pointer so the compiler cannot drop the stores as
// dead, even when the buffer is freed right afterwards.
void zero(void *data, qsizetype size)
{
    volatile unsigned char *p = static_cast<volatile unsigned char *>(data);
    for (qsizetype i = 0; i < size; ++i)
        p[i] = 0;
}

} // namespace

void wipe(QByteArray &bytes)
{
    if (bytes.isEmpty())
        return;
    zero(bytes.data(), bytes.size());
}

void wipe(QString &text)
{
    if (text.isEmpty())
        return;
    text.fill(QChar(0));
}

bool isWiped(const QByteArray &bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return c == '\0'; });
}

} // namespace SecretWipe
