#pragma once

#include <QByteArray>
#include <QString>

// Overwrites secrets in place, over their whole length, so that no readable
// copy of an invitation stays in freed memory. Only the caller's own buffer is
// reached: an implicitly shared copy elsewhere would detach and stay intact,
// which is why secret buffers are never shared in the first place.
namespace SecretWipe {

void wipe(QByteArray &bytes);
void wipe(QString &text);

// True when every byte is zero (also for an empty buffer).
bool isWiped(const QByteArray &bytes);

} // namespace SecretWipe
