#include "Invitation.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QUuid>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr auto base64Url = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

QByteArray checksumOf(QByteArrayView signedPart)
{
    return QCryptographicHash::hash(signedPart, QCryptographicHash::Sha256).left(8).toHex();
}

bool isInvitationCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

QByteArrayView trimmedView(QByteArrayView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isSpace(text[begin]))
        ++begin;
    while (end > begin && isSpace(text[end - 1]))
        --end;
    return text.sliced(begin, end - begin);
}

Invitation::Verdict refuse(const char *problem)
{
    Invitation::Verdict verdict;
    verdict.problem = QString::fromUtf8(problem);
    return verdict;
}

// Returns the target described by the payload, or nothing if it is not one.
std::optional<Invitation::Target> readPayload(QByteArrayView encoded)
{
    QByteArray copy(encoded.data(), encoded.size());
    auto decoded = QByteArray::fromBase64Encoding(
        std::as_const(copy), base64Url | QByteArray::AbortOnBase64DecodingErrors);
    Invitation::wipe(copy);
    std::optional<Invitation::Target> target;
    if (decoded) {
        try {
            nlohmann::json object =
                nlohmann::json::parse(decoded.decoded.begin(), decoded.decoded.end());
            const auto textOf = [&](const char *key) -> std::string & {
                return object.at(key).get_ref<std::string &>();
            };
            const bool wellFormed = object.is_object() && object.at("v") == 1;
            std::string &secret = textOf("secret");
            const bool secretOk = secret.size() >= 16;
            Invitation::wipe(secret);
            const std::string &name = textOf("target");
            const std::string &device = textOf("device");
            if (wellFormed && secretOk && !name.empty() && name.size() <= 64 && !device.empty() &&
                device.size() <= 64)
                target = Invitation::Target{QString::fromStdString(name),
                                            QString::fromStdString(device)};
        } catch (const nlohmann::json::exception &) {
            target.reset();
        }
    }
    Invitation::wipe(decoded.decoded);
    return target;
}

} // namespace

namespace Invitation {

void wipe(QByteArray &secret)
{
    if (secret.isEmpty())
        return;
    // data() detaches, so a shared copy elsewhere would survive; callers keep
    // their secrets unshared.
    std::fill(secret.data(), secret.data() + secret.size(), '\0');
}

void wipe(std::string &secret)
{
    std::fill(secret.begin(), secret.end(), '\0');
}

QByteArray make(const QString &targetName)
{
    std::array<quint32, 8> random{};
    QRandomGenerator::system()->fillRange(random.data(), random.size());
    QByteArray secretBytes(reinterpret_cast<const char *>(random.data()), sizeof(random));
    std::fill(random.begin(), random.end(), 0u);

    nlohmann::ordered_json payload;
    payload["v"] = 1;
    payload["target"] = targetName.left(64).toStdString();
    payload["device"] = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
    payload["secret"] = secretBytes.toBase64(base64Url).toStdString();
    wipe(secretBytes);
    std::string json = payload.dump();
    wipe(payload["secret"].get_ref<std::string &>());

    QByteArray invitation =
        QByteArray(prefix) + QByteArray::fromStdString(json).toBase64(base64Url);
    wipe(json);
    invitation += '.' + checksumOf(invitation);
    return invitation;
}

Verdict verify(QByteArrayView text)
{
    const QByteArrayView invitation = trimmedView(text);
    if (invitation.isEmpty())
        return refuse("it is empty.");
    if (!std::all_of(invitation.begin(), invitation.end(), isInvitationCharacter))
        return refuse("it contains characters that an invitation never has.");
    if (invitation.size() < minimumLength)
        return refuse("it is shorter than 40 characters. Copy the complete invitation.");
    if (invitation.size() > maximumLength)
        return refuse("it is longer than any invitation.");
    if (!invitation.startsWith(QByteArrayView(prefix)))
        return refuse("it does not start with \"zqb-invite-v1.\".");

    const QByteArrayView rest = invitation.sliced(qsizetype(sizeof(prefix) - 1));
    const qsizetype dot = rest.indexOf('.');
    if (dot <= 0 || rest.indexOf('.', dot + 1) >= 0)
        return refuse("it does not have the parts of an invitation.");
    const QByteArrayView payload = rest.first(dot);
    const QByteArrayView checksum = rest.sliced(dot + 1);
    const qsizetype signedLength = qsizetype(sizeof(prefix) - 1) + dot;
    if (checksum != checksumOf(invitation.first(signedLength)))
        return refuse("its checksum does not match. Copy the complete invitation.");

    const auto target = readPayload(payload);
    if (!target)
        return refuse("its contents are not readable.");

    Verdict verdict;
    verdict.valid = true;
    verdict.target = *target;
    verdict.digest = QCryptographicHash::hash(invitation, QCryptographicHash::Sha256).toHex();
    return verdict;
}

} // namespace Invitation
