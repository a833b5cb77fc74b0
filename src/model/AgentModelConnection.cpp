#include "AgentModel.h"

#include "SecretWipe.h"
#include "TextRules.h"
#include "TranslatedText.h"

#include <cstring>

// Checking the connection, enrolling this computer with a one-time
// invitation, and installing an engine update.

namespace {

const TranslatedText invitationTooShortMessage = {
    "AgentModel",
    QT_TRANSLATE_NOOP("AgentModel", "Paste the complete one-time invitation from the target Mac.")};
const TranslatedText enrollmentFailedPrefix = {
    "AgentModel", QT_TRANSLATE_NOOP("AgentModel", "Enrollment failed. ")};
const TranslatedText enrollmentCompletedMessage = {
    "AgentModel",
    QT_TRANSLATE_NOOP("AgentModel",
                      "Enrollment completed. ZQB is contacting the authorized target.")};
const TranslatedText updateInstalledMessage = {
    "AgentModel", QT_TRANSLATE_NOOP("AgentModel", "The verified ZQB Agent update was installed.")};

constexpr qsizetype minimumInvitationLength = 40;

// The trimmed invitation kept for restoring the field after a failed
// enrollment; wiped when the last holder lets go, whatever happened.
struct WipedText
{
    QString text;
    ~WipedText() { SecretWipe::wipe(text); }
};

} // namespace

void AgentModel::checkConnection()
{
    const bool enrolled = m_status && m_status->runtime.enrolled;
    const QString command = enrolled ? QStringLiteral("run-once") : QStringLiteral("check-service");
    run({command}, nullptr, true, [this](const CommandResult &result) {
        if (result.succeeded)
            setNotice(result.output);
        else
            setError(presentableError(result));
        refresh(false, false);
    });
}

void AgentModel::enroll()
{
    auto trimmed = std::make_shared<WipedText>();
    trimmed->text = m_invitation.trimmed();
    if (TextRules::graphemeCount(trimmed->text) < minimumInvitationLength) {
        setError(invitationTooShortMessage);
        return;
    }

    // One unshared buffer holds the engine's input, so the wipe after the
    // command reaches the only copy there is.
    QByteArray encoded = trimmed->text.toUtf8();
    // Its deleter wipes too, for the case that the wrapper never runs (the
    // application quits while the engine still reads).
    std::shared_ptr<QByteArray> input(new QByteArray(encoded.size() + 1, Qt::Uninitialized),
                                      [](QByteArray *bytes) {
                                          SecretWipe::wipe(*bytes);
                                          delete bytes;
                                      });
    std::memcpy(input->data(), encoded.constData(), size_t(encoded.size()));
    (*input)[encoded.size()] = '\n';
    SecretWipe::wipe(encoded);
    m_enrollmentInput = input;

    setInvitation(QString());
    run({QStringLiteral("enroll"), QStringLiteral("--invitation-stdin")}, std::move(input), true,
        [this, trimmed](const CommandResult &result) {
            if (result.succeeded) {
                setNotice(enrollmentCompletedMessage);
                checkConnection();
                return;
            }
            setInvitation(trimmed->text);
            setError(enrollmentFailedPrefix.text() + presentableError(result));
            refresh(false, false);
        });
}

void AgentModel::installUpdate()
{
    run({QStringLiteral("autonomous-update")}, nullptr, true, [this](const CommandResult &result) {
        if (result.succeeded)
            setNotice(result.output.isEmpty() ? updateInstalledMessage.text() : result.output);
        else
            setError(presentableError(result));
    });
}
