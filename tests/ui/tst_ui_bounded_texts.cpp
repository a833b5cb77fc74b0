// An engine that floods its status document: every engine text the person
// sees (badge, progress line, error card, connection rows, version capsule,
// tray tooltip, accessible names) is cut to 8,192 user-perceived characters,
// errors to 2,048, while the document itself is kept whole.

#include "BadgeState.h"
#include "ShownText.h"
#include "StatusItemToolTip.h"
#include "TextRules.h"
#include "ViewTestSupport.h"
#include "WindowState.h"

#include <QLabel>
#include <QtTest>

namespace {

constexpr int flood = 20000;

// `count` user-perceived characters, each a letter and a combining accent,
// so a cut by UTF-16 units would show in the result.
QString accented(QChar letter, int count)
{
    QString text;
    text.reserve(count * 2);
    for (int i = 0; i < count; ++i)
        text += QString(letter) + QChar(0x0301);
    return text;
}

AgentUIStatus floodedStatus()
{
    AgentUIStatus status = ScreenStates::connectedIdle();
    status.agentVersion = accented(QLatin1Char('a'), flood);
    status.runtime.state = QStringLiteral("backing-up");
    status.runtime.message = accented(QLatin1Char('m'), flood);
    status.runtime.lastError = accented(QLatin1Char('x'), flood);
    status.runtime.serviceVersion = accented(QLatin1Char('s'), flood);
    status.runtime.latestAgentVersion = accented(QLatin1Char('l'), flood);
    status.runtime.agentUpdateAvailable = true;
    status.runtime.active = true;
    BackupProgressStatus progress;
    progress.phase = QStringLiteral("uploading");
    progress.sourceIndex = 1;
    progress.sourceCount = 2;
    progress.totalObjects = 10;
    progress.objectsUploaded = 3;
    status.runtime.backupProgress = progress;
    return status;
}

// User-perceived characters of `text`.
qsizetype characters(const QString &text)
{
    return TextRules::graphemeCount(text);
}

} // namespace

class BoundedTextsTest : public QObject
{
    Q_OBJECT

private slots:
    void boundedCutsAsTheRunnerCutsOutput()
    {
        const QString text = accented(QLatin1Char('m'), flood);
        QCOMPARE(ShownText::bounded(text), text.left(2 * 8192));
        QCOMPARE(ShownText::bounded(text, ShownText::errorCap), text.left(2 * 2048));
        QCOMPARE(ShownText::bounded(QStringLiteral("short")), QStringLiteral("short"));
        // A CR LF pair is one character, as in the runner.
        const QString lines = QString(QStringLiteral("\r\n")).repeated(9000);
        QCOMPARE(ShownText::bounded(lines), lines.left(2 * 8192));
    }

    void documentKeepsWhatIsSentBack()
    {
        AgentUIStatus status = floodedStatus();
        status.settings.sources = {QString(flood, QLatin1Char('p'))};
        status.settings.exclusions = {QString(flood, QLatin1Char('e'))};
        const AgentUIStatus shown = ShownText::bounded(status);
        QCOMPARE(shown.settings, status.settings);
        QCOMPARE(shown.transferPolicy, status.transferPolicy);
        QCOMPARE(characters(shown.runtime.message), 8192);
        QCOMPARE(characters(*shown.runtime.lastError), 2048);
        QCOMPARE(characters(shown.agentVersion), 8192);
    }

    void badgeAndTrayTooltipAreBounded()
    {
        AgentUIStatus status = floodedStatus();
        status.runtime.state = QString(flood, QLatin1Char('w'));
        const BadgeState badge = badgeState(status.runtime);
        QCOMPARE(characters(badge.title), 8192);
        QCOMPARE(badge.message, status.runtime.message.left(2 * 8192));
        QCOMPARE(badge.errorLine, std::optional<QString>(status.runtime.lastError->left(2 * 2048)));

        const QString toolTip = statusItemToolTip(status.runtime);
        QVERIFY(toolTip.startsWith(badge.title));
        QVERIFY2(toolTip.size() <= 8192 + 200, qPrintable(QString::number(toolTip.size())));
    }

    void windowShowsEveryEngineTextBounded()
    {
        ViewTest::Window window;
        const AgentUIStatus status = floodedStatus();
        QVERIFY(window.show(status));
        window.model.setNotice(accented(QLatin1Char('n'), flood));
        window.model.setError(accented(QLatin1Char('e'), flood));
        QCoreApplication::processEvents();
        QVERIFY(window.view.isVisible());

        const WindowState state = windowState(windowInputs(window.model, QString()));
        QCOMPARE(state.badge.message, status.runtime.message.left(2 * 8192));
        QCOMPARE(state.noticeCard, std::optional<QString>(window.model.notice()->left(2 * 8192)));
        QCOMPARE(state.errorCard, std::optional<QString>(window.model.error()->left(2 * 2048)));
        for (const auto &row : state.connection.rows)
            QVERIFY2(characters(row.value) <= 8192, qPrintable(row.label));

        // What the widgets hold: each label's text, each accessible name and
        // description, each tooltip: never more than a cut text and its caption.
        int flooded = 0;
        for (QWidget *widget : window.view.findChildren<QWidget *>()) {
            QStringList texts{widget->accessibleName(), widget->accessibleDescription(),
                              widget->toolTip()};
            if (auto *label = qobject_cast<QLabel *>(widget))
                texts << label->text();
            for (const QString &text : texts) {
                QVERIFY2(characters(text) <= 8192 + 100,
                         qPrintable(widget->objectName() + QLatin1Char(' ') +
                                    QString::number(characters(text))));
                flooded += characters(text) >= 2048;
            }
        }
        QVERIFY(flooded >= 5); // the cut texts are really shown, not dropped
        auto *badge = window.view.findChild<QWidget *>(QStringLiteral("statusBadge"));
        QVERIFY(badge);
        QCOMPARE(badge->accessibleDescription(), status.runtime.message.left(2 * 8192));
    }
};

QTEST_MAIN(BoundedTextsTest)
#include "tst_ui_bounded_texts.moc"
