// Scrolling the window with the mouse wheel over "Run every" or "Bandwidth
// limit" scrolls the window and changes no choice: the next save sends what
// the person chose, not what the wheel passed over.
#include "ViewTestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace {

// One notch of the wheel, down, over the middle of `widget`, handed on to
// each parent in turn while ignored, as the application does with a real
// wheel (an event sent from here is not handed on by itself). Returns the
// widget that took it.
QWidget *wheelDown(QWidget *widget)
{
    QPointF at(widget->width() / 2.0, widget->height() / 2.0);
    for (QWidget *w = widget; w; w = w->parentWidget()) {
        QWheelEvent wheel(at, w->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(w, &wheel);
        if (wheel.isAccepted() || w->isWindow())
            return wheel.isAccepted() ? w : nullptr;
        at = w->mapToParent(at);
    }
    return nullptr;
}

// The last document a command of that name received on standard input.
QJsonObject lastDocument(const FakeEngine &engine, const QString &command)
{
    QJsonObject found;
    for (const FakeEngine::Invocation &call : engine.invocations())
        if (call.arguments.value(0) == command)
            found = QJsonDocument::fromJson(call.standardInput).object();
    return found;
}

} // namespace

class WheelTest : public QObject
{
    Q_OBJECT

private slots:
    void wheelOverUnfocusedChoicesScrollsAndChangesNothing_data()
    {
        QTest::addColumn<QString>("picker");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("field");
        QTest::newRow("Run every") << "intervalPicker"
                                   << "configure"
                                   << "intervalMinutes";
        QTest::newRow("Bandwidth limit") << "bandwidthPicker"
                                         << "configure-transfer"
                                         << "bandwidthLimitKibPerSecond";
    }
    void wheelOverUnfocusedChoicesScrollsAndChangesNothing()
    {
        QFETCH(QString, picker);
        QFETCH(QString, command);
        QFETCH(QString, field);

        ViewTest::Window window;
        window.view.resize(window.view.minimumSize().width(), 300); // the window scrolls
        QVERIFY(window.show(ViewTest::enrolledWith({QStringLiteral("/home/alice/Documents")})));
        auto *combo = window.find<QComboBox>(picker.toLatin1().constData());
        auto *scroll = window.find<QScrollArea>("agentScroll");
        QCOMPARE(combo->focusPolicy(), Qt::StrongFocus);
        QVERIFY(!combo->hasFocus());

        const int index = combo->currentIndex();
        const qint64 interval = window.model.intervalMinutes();
        const qint64 bandwidth = window.model.bandwidthLimitKibPerSecond();
        scroll->ensureWidgetVisible(combo);
        QCoreApplication::processEvents();
        const int scrolledTo = scroll->verticalScrollBar()->value();
        for (int i = 0; i < 3; ++i)
            QVERIFY(wheelDown(combo) != combo);
        QCoreApplication::processEvents();
        QCOMPARE(combo->currentIndex(), index);
        QVERIFY(!combo->hasFocus());
        QCOMPARE(window.model.intervalMinutes(), interval);
        QCOMPARE(window.model.bandwidthLimitKibPerSecond(), bandwidth);
        // The wheel went on to the window, which scrolled (unless at its end).
        QVERIFY(scroll->verticalScrollBar()->value() > scrolledTo ||
                scrolledTo == scroll->verticalScrollBar()->maximum());

        // Saving sends the choice as it was.
        window.find<QPushButton>("saveButton")->click();
        QTRY_VERIFY_WITH_TIMEOUT(window.count(QStringLiteral("configure-transfer")) == 1, 10000);
        const QJsonObject sent = lastDocument(window.engine, command);
        QCOMPARE(qint64(sent.value(field).toDouble(-1)),
                 field == QLatin1String("intervalMinutes") ? interval : bandwidth);

        // Once the person has given it the focus, the wheel does change it.
        combo->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(combo->hasFocus());
        QCOMPARE(wheelDown(combo), combo);
        QVERIFY(combo->currentIndex() != index);
    }
};

QTEST_MAIN(WheelTest)
#include "tst_ui_wheel.moc"
