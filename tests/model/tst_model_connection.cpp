// Connection check, enrollment with its secret invitation, and update.

#include "ModelTestSupport.h"
#include "SecretWipe.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

const QString tooShortMessage =
    QStringLiteral("Paste the complete one-time invitation from the target Mac.");
const QString enrolledMessage =
    QStringLiteral("Enrollment completed. ZQB is contacting the authorized target.");

// 40 user-perceived characters; distinctive enough to search for.
const QString invitation40 = QStringLiteral("ZQBINV-7f3a9c2e51d84b06a1e2f3c4d5e6f7a8b9");

QStringList capturedMessages;
QtMessageHandler previousHandler = nullptr;
void captureMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    capturedMessages << text;
    if (previousHandler)
        previousHandler(type, context, text);
}

} // namespace

class ModelConnectionTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void checkBeforeAnyStatusUsesCheckService();
    void checkWhenEnrolledUsesRunOnce();
    void checkWhenNotEnrolledUsesCheckService();
    void checkSuccessSetsNoticeToOutputThenRefreshes();
    void checkSuccessWithEmptyOutputSetsEmptyNotice();
    void checkFailureSetsErrorWhichRefreshClears();
    void invitationOf39CharactersIsRefused();
    void invitationCountsUserPerceivedCharacters();
    void invitationOf40CharactersIsSentTrimmedWithLineFeed();
    void enrollmentInputBufferIsZeroedAfterwards();
    void enrollmentInputIsZeroedEvenWhenModelIsGone();
    void invitationNeverInArgumentsEnvironmentOrLog();
    void failedEnrollmentRestoresTrimmedInvitation();
    void successfulEnrollmentNoticeUntilCheckReplacesIt();
    void installUpdate_data();
    void installUpdate();
    void installUpdateFailureStaysWithoutRefresh();
    void wipeHelpersZeroInPlace();

private:
    std::unique_ptr<FakeEngine> m_engine;
    std::unique_ptr<TestModel> m_model;
};

void ModelConnectionTest::init()
{
    QVERIFY(waitForCommands());
    m_engine = std::make_unique<FakeEngine>();
    m_engine->answer(QStringLiteral("default"), QByteArray());
    m_engine->answer(QStringLiteral("ui-status"), statusJson(sampleStatus()));
    m_model = std::make_unique<TestModel>(servicesFor(*m_engine));
}

void ModelConnectionTest::cleanup()
{
    m_model.reset();
    QVERIFY(waitForCommands());
}

void ModelConnectionTest::checkBeforeAnyStatusUsesCheckService()
{
    m_model->checkConnection();
    QVERIFY(m_model->busy());
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"check-service", "ui-status"}));
    QVERIFY(!m_engine->invocations().first().hadInput);
}

void ModelConnectionTest::checkWhenEnrolledUsesRunOnce()
{
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"run-once", "ui-status"}));
}

void ModelConnectionTest::checkWhenNotEnrolledUsesCheckService()
{
    AgentUIStatus status = sampleStatus();
    status.runtime.enrolled = false;
    m_engine->answer(QStringLiteral("ui-status"), statusJson(status));
    m_model->refresh(false, false);
    QVERIFY(waitForCommands());
    m_engine->forgetInvocations();
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands(), (QStringList{"check-service", "ui-status"}));
}

void ModelConnectionTest::checkSuccessSetsNoticeToOutputThenRefreshes()
{
    m_engine->answer(QStringLiteral("check-service"), "  Service reachable, version 2.1.\n");
    FeedbackTrace trace(m_model.get());
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(trace.entries, (QStringList{"busy=1", "error=-", "busy=0",
                                         "notice=Service reachable, version 2.1.", "error=-"}));
    QVERIFY(m_model->status()); // the refresh ran
}

void ModelConnectionTest::checkSuccessWithEmptyOutputSetsEmptyNotice()
{
    m_model->setNotice(QStringLiteral("earlier"));
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->notice(), std::optional<QString>(QString())); // present and empty
}

void ModelConnectionTest::checkFailureSetsErrorWhichRefreshClears()
{
    m_engine->answer(QStringLiteral("check-service"), QByteArray(), "service unreachable", 1);
    FeedbackTrace trace(m_model.get());
    m_model->checkConnection();
    QVERIFY(waitForCommands());
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "error=service unreachable", "error=-"}));
    QVERIFY(!m_model->error());
    QCOMPARE(m_engine->commands(), (QStringList{"check-service", "ui-status"}));
}

void ModelConnectionTest::invitationOf39CharactersIsRefused()
{
    const QString typed = QStringLiteral("\n\n  ") + invitation40.left(39) + QStringLiteral("\n\n");
    m_model->setInvitation(typed);
    m_model->setNotice(QStringLiteral("earlier"));
    QSignalSpy busySpy(m_model.get(), &AgentModel::busyChanged);
    m_model->enroll();
    QCOMPARE(m_model->error(), std::optional<QString>(tooShortMessage));
    QCOMPARE(m_model->invitation(), typed);
    QCOMPARE(m_model->notice(), std::optional<QString>(QStringLiteral("earlier")));
    QCOMPARE(busySpy.count(), 0);
    QTest::qWait(100);
    QVERIFY(waitForCommands());
    QVERIFY(m_engine->invocations().isEmpty());
}

void ModelConnectionTest::invitationCountsUserPerceivedCharacters()
{
    // 39 user-perceived characters in 40 UTF-16 units: refused.
    const QString combined = invitation40.left(38) + QStringLiteral("e\u0301");
    QCOMPARE(combined.size(), 40);
    m_model->setInvitation(combined);
    m_model->enroll();
    QCOMPARE(m_model->error(), std::optional<QString>(tooShortMessage));

    // 40 user-perceived characters with astral and combined ones: accepted.
    const QString wide = invitation40.left(37) + QStringLiteral("\U0001F511e\u0301\u00E9");
    m_model->setInvitation(wide);
    m_model->enroll();
    QVERIFY(waitForCommands());
    QCOMPARE(m_engine->commands().first(), QStringLiteral("enroll"));
    QCOMPARE(m_engine->invocations().first().standardInput, wide.toUtf8() + '\n');
}

void ModelConnectionTest::invitationOf40CharactersIsSentTrimmedWithLineFeed()
{
    m_engine->answer(QStringLiteral("enroll"), "enrolled", {}, 0, 0.4);
    m_model->setInvitation(QStringLiteral("\t ") + invitation40 + QStringLiteral(" \r\n\u2028"));
    m_model->enroll();
    QCOMPARE(m_model->invitation(), QString()); // cleared before the command starts
    QVERIFY(m_model->busy());
    QTRY_COMPARE(m_engine->startedCount(), 1);
    QCOMPARE(m_model->invitation(), QString()); // and empty while it runs
    QVERIFY(waitForCommands());

    const auto call = m_engine->invocations().first();
    QCOMPARE(call.arguments.mid(0, 2), (QStringList{"enroll", "--invitation-stdin"}));
    QVERIFY(call.hadInput);
    QCOMPARE(call.standardInput, invitation40.toUtf8() + '\n');
}

void ModelConnectionTest::enrollmentInputBufferIsZeroedAfterwards()
{
    m_engine->answer(QStringLiteral("enroll"), "enrolled", {}, 0, 0.3);
    m_model->setInvitation(invitation40 + QStringLiteral("\n"));
    m_model->enroll();
    // Hold the very buffer handed to the engine while the command runs.
    std::shared_ptr<QByteArray> buffer = m_model->lastEnrollmentInput().lock();
    QVERIFY(buffer);
    QCOMPARE(*buffer, invitation40.toUtf8() + '\n');
    const char *data = buffer->constData();
    QVERIFY(waitForCommands());
    QCOMPARE(buffer->size(), invitation40.size() + 1);
    QCOMPARE(buffer->constData(), data); // wiped in place, not replaced
    QVERIFY(SecretWipe::isWiped(*buffer));
    QVERIFY(!buffer->contains(invitation40.left(8).toUtf8()));

    // Also after a failed enrollment.
    m_engine->answer(QStringLiteral("enroll"), QByteArray(), "bad invitation", 2);
    m_model->setInvitation(invitation40);
    m_model->enroll();
    buffer = m_model->lastEnrollmentInput().lock();
    QVERIFY(buffer);
    QVERIFY(waitForCommands());
    QCOMPARE(buffer->size(), invitation40.size() + 1);
    QVERIFY(SecretWipe::isWiped(*buffer));
}

void ModelConnectionTest::enrollmentInputIsZeroedEvenWhenModelIsGone()
{
    m_engine->answer(QStringLiteral("enroll"), "enrolled", {}, 0, 0.3);
    m_model->setInvitation(invitation40);
    m_model->enroll();
    std::shared_ptr<QByteArray> buffer = m_model->lastEnrollmentInput().lock();
    QVERIFY(buffer);
    m_model.reset();
    QVERIFY(waitForCommands());
    QCOMPARE(buffer->size(), invitation40.size() + 1);
    QVERIFY(SecretWipe::isWiped(*buffer));
    QCOMPARE(m_engine->commands(), QStringList{"enroll"}); // nothing followed
}

void ModelConnectionTest::invitationNeverInArgumentsEnvironmentOrLog()
{
    capturedMessages.clear();
    previousHandler = qInstallMessageHandler(captureMessage);
    m_engine->answer(QStringLiteral("enroll"), QByteArray(), "rejected", 1);
    m_model->setInvitation(invitation40);
    m_model->enroll();
    QVERIFY(waitForCommands());
    m_model->setInvitation(invitation40);
    m_engine->answer(QStringLiteral("enroll"), "ok");
    m_model->enroll();
    QVERIFY(waitForCommands());
    qInstallMessageHandler(previousHandler);

    const QByteArray secret = invitation40.toUtf8();
    const auto calls = m_engine->invocations();
    QVERIFY(calls.size() >= 4);
    for (const auto &call : calls) {
        for (const QString &argument : call.arguments)
            QVERIFY2(!argument.contains(invitation40), qPrintable(argument));
        for (const QByteArray &variable : call.environment)
            QVERIFY(!variable.contains(secret));
        QVERIFY(!call.environment.isEmpty());
        if (call.arguments.first() != QStringLiteral("enroll"))
            QVERIFY(!call.standardInput.contains(secret));
    }
    for (const QString &message : std::as_const(capturedMessages))
        QVERIFY(!message.contains(invitation40));
}

void ModelConnectionTest::failedEnrollmentRestoresTrimmedInvitation()
{
    m_engine->answer(QStringLiteral("enroll"), QByteArray(), "The invitation has expired.", 1);
    m_model->setInvitation(QStringLiteral("  ") + invitation40 + QStringLiteral("\n"));
    FeedbackTrace trace(m_model.get());
    QStringList invitations;
    connect(m_model.get(), &AgentModel::invitationChanged, this,
            [&] { invitations << m_model->invitation(); });
    m_model->enroll();
    QVERIFY(waitForCommands());
    QCOMPARE(invitations, (QStringList{QString(), invitation40}));
    QCOMPARE(m_model->invitation(), invitation40);
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0",
                          "error=Enrollment failed. The invitation has expired.", "error=-"}));
    QCOMPARE(m_engine->commands(), (QStringList{"enroll", "ui-status"}));
}

void ModelConnectionTest::successfulEnrollmentNoticeUntilCheckReplacesIt()
{
    m_engine->answer(QStringLiteral("enroll"), "enrolled");
    m_engine->answer(QStringLiteral("check-service"), "Target reachable.", {}, 0, 0.3);
    m_model->setInvitation(invitation40);
    FeedbackTrace trace(m_model.get());
    m_model->enroll();
    QTRY_COMPARE(m_model->notice(), std::optional<QString>(enrolledMessage));
    QVERIFY(m_model->busy()); // the connection check runs now
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->notice(), std::optional<QString>(QStringLiteral("Target reachable.")));
    QCOMPARE(m_model->invitation(), QString());
    // No status was held before, so the check is "check-service".
    QCOMPARE(m_engine->commands(), (QStringList{"enroll", "check-service", "ui-status"}));
    QCOMPARE(trace.entries,
             (QStringList{"busy=1", "error=-", "busy=0", "notice=" + enrolledMessage, "busy=1",
                          "error=-", "busy=0", "notice=Target reachable.", "error=-"}));
}

void ModelConnectionTest::installUpdate_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("notice");
    QTest::newRow("empty output") << QByteArray()
                                  << QStringLiteral("The verified ZQB Agent update was installed.");
    QTest::newRow("engine text") << QByteArray("Updated to 1.5.0.\n")
                                 << QStringLiteral("Updated to 1.5.0.");
}

void ModelConnectionTest::installUpdate()
{
    QFETCH(QByteArray, output);
    QFETCH(QString, notice);
    m_engine->answer(QStringLiteral("autonomous-update"), output);
    FeedbackTrace trace(m_model.get());
    m_model->installUpdate();
    QVERIFY(waitForCommands());
    QCOMPARE(trace.entries, (QStringList{"busy=1", "error=-", "busy=0", "notice=" + notice}));
    QCOMPARE(m_engine->commands(), QStringList{"autonomous-update"});
}

void ModelConnectionTest::installUpdateFailureStaysWithoutRefresh()
{
    m_engine->answer(QStringLiteral("autonomous-update"), "signature mismatch", {}, 1);
    m_model->installUpdate();
    QVERIFY(waitForCommands());
    QCOMPARE(m_model->error(), std::optional<QString>(QStringLiteral("signature mismatch")));
    QCOMPARE(m_engine->commands(), QStringList{"autonomous-update"});
}

void ModelConnectionTest::wipeHelpersZeroInPlace()
{
    QByteArray bytes("secret bytes");
    const char *data = bytes.constData();
    SecretWipe::wipe(bytes);
    QCOMPARE(bytes.size(), 12);
    QCOMPARE(bytes.constData(), data);
    QVERIFY(SecretWipe::isWiped(bytes));

    QString text = QStringLiteral("secret text");
    text.detach();
    const QChar *chars = text.constData();
    SecretWipe::wipe(text);
    QCOMPARE(text.size(), 11);
    QCOMPARE(text.constData(), chars);
    QCOMPARE(text, QString(11, QChar(0)));
}

QTEST_GUILESS_MAIN(ModelConnectionTest)
#include "tst_model_connection.moc"
