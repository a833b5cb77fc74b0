#pragma once

#include <QByteArray>
#include <QString>

// One-time invitations that enroll this computer with an authorized target.
//
// Form: "zqb-invite-v1." + payload + "." + checksum, where payload is the
// unpadded base64url form of a compact JSON object
// {"v":1,"target":NAME,"device":ID,"secret":RANDOM} and checksum is the first
// 8 bytes of SHA-256 over everything before the last ".", as 16 lowercase hex
// digits. Nothing but the letters, digits and "-_." of that form may appear.
namespace Invitation {

inline constexpr char prefix[] = "zqb-invite-v1.";
inline constexpr qsizetype minimumLength = 40;
inline constexpr qsizetype maximumLength = 2048;

struct Target
{
    QString name;
    QString deviceId;
};

struct Verdict
{
    bool valid = false;
    QString problem; // why it is refused, fit to follow "The invitation is not valid: "
    Target target;
    QByteArray digest; // SHA-256 of the invitation (hex), to refuse a second use
};

// A fresh invitation for a target of the given name.
QByteArray make(const QString &targetName);

// Checks `text` (surrounding whitespace and line breaks are ignored). The
// verdict never contains the invitation or its secret.
Verdict verify(QByteArrayView text);

// Overwrites the bytes of `secret` with zeros in place.
void wipe(QByteArray &secret);
void wipe(std::string &secret);

} // namespace Invitation
