// The window driven as assistive technology drives it: accessibility actions
// and text edits reach the model exactly as clicks and typing do; every
// control has a role and a name a person understands and is reachable with
// Tab in visual order; engine and user text is never read as markup; and the
// window shows that an operation runs.

#include "BusySpinner.h"
#include "ConnectionSection.h"
#include "ElidedLabel.h"
#include "MessageCard.h"
#include "UiTestSupport.h"
#include "VersionCapsule.h"
#include "ViewTestSupport.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleEditableTextInterface>
#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextDocument>
#include <QToolButton>

#include <algorithm>

using namespace ViewTest;

namespace {

QAccessibleInterface *accessible(QWidget *widget)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(widget);
    if (!iface)
        qFatal("no accessible interface for %s", qPrintable(widget->objectName()));
    return iface;
}

void doAction(QWidget *widget, const QString &action)
{
    QAccessibleActionInterface *actions = accessible(widget)->actionInterface();
    // A check box lists only Toggle, but answers Press too, as AT-SPI's
    // "click" reaches it.
    if (!actions)
        qFatal("%s has no actions", qPrintable(widget->objectName()));
    actions->doAction(action);
}

// The JSON document the engine read on standard input for `command`.
QJsonObject documentSentWith(const FakeEngine &engine, const QString &command)
{
    QJsonObject found;
    for (const FakeEngine::Invocation &call : engine.invocations())
        if (call.arguments.value(0) == command)
            found = QJsonDocument::fromJson(call.standardInput).object();
    return found;
}

// The text a person sees for a label: markup is shown only when the label
// reads its text as rich text.
bool showsLiterally(const QLabel *label)
{
    return label->textFormat() == Qt::PlainText ||
           (label->textFormat() == Qt::AutoText && !Qt::mightBeRichText(label->text()));
}

// The text a tooltip shows: Qt reads it as rich text when it looks like it.
QString tooltipAsShown(const QString &tip)
{
    if (!Qt::mightBeRichText(tip))
        return tip;
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText();
}

QPoint placeIn(const QWidget *content, const QWidget *widget)
{
    return widget->mapTo(content, widget->rect().center());
}

} // namespace

class TestUiViewAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        UiTest::pinLocaleAndZone();
        QCoreApplication::setApplicationVersion(QStringLiteral("1.0.0"));
    }

    void accessibilityActionsAndEditsReachTheEngineOnSave()
    {
        Window w;
        AgentUIStatus s = ScreenStates::connectedIdle();
        s.transferPolicy.currentNetworkMetered = false;
        s.transferPolicy.allowMeteredNetwork = false;
        QVERIFY(w.show(s));
        auto *metered = w.find<QCheckBox>("meteredToggle");
        auto *allow = w.find<QCheckBox>("allowMeteredToggle");
        QVERIFY(!allow->isEnabled());

        // A screen reader's Toggle: the model follows and the rule applies.
        doAction(metered, QAccessibleActionInterface::toggleAction());
        QCoreApplication::processEvents();
        QVERIFY(metered->isChecked());
        QVERIFY(w.model.currentNetworkMetered());
        QVERIFY(allow->isEnabled());
        // Press, as switch access does.
        doAction(allow, QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(w.model.allowMeteredNetwork());
        QVERIFY(allow->isChecked());

        doAction(w.find<QCheckBox>("pausedToggle"), QAccessibleActionInterface::toggleAction());
        doAction(w.find<QCheckBox>("scheduleToggle"), QAccessibleActionInterface::toggleAction());
        QCoreApplication::processEvents();
        QVERIFY(w.model.transfersPaused());
        QVERIFY(!w.model.scheduleEnabled());

        // Text replaced through the accessible editable-text interface.
        auto *patterns = w.find<QLineEdit>("exclusionsField");
        QAccessibleEditableTextInterface *editable = accessible(patterns)->editableTextInterface();
        QVERIFY(editable);
        editable->replaceText(0, int(patterns->text().size()),
                              QStringLiteral("node_modules, *.iso"));
        QCoreApplication::processEvents();
        QCOMPARE(patterns->text(), QStringLiteral("node_modules, *.iso"));
        QCOMPARE(w.model.exclusionText(), QStringLiteral("node_modules, *.iso"));

        // A choice set on the list itself, as an accessibility selection
        // sets it, and one made from the keyboard.
        auto *interval = w.find<QComboBox>("intervalPicker");
        interval->setCurrentIndex(interval->findText(QStringLiteral("1 hour")));
        QCoreApplication::processEvents();
        QCOMPARE(w.model.intervalMinutes(), 60);
        auto *bandwidth = w.find<QComboBox>("bandwidthPicker");
        bandwidth->setFocus();
        QTest::keyClick(bandwidth, Qt::Key_Home);
        QCOMPARE(bandwidth->currentText(), QStringLiteral("Unlimited"));
        QCOMPARE(w.model.bandwidthLimitKibPerSecond(), 0);
        QCoreApplication::processEvents();

        // "Save settings" pressed through accessibility sends all of it.
        w.engine.forgetInvocations();
        doAction(w.find<QPushButton>("saveButton"), QAccessibleActionInterface::pressAction());
        QTRY_VERIFY_WITH_TIMEOUT(w.engine.commands().contains("configure-transfer"), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        const QJsonObject settings = documentSentWith(w.engine, QStringLiteral("configure"));
        QCOMPARE(settings.value("enabled").toBool(true), false);
        QCOMPARE(settings.value("intervalMinutes").toInteger(), 60);
        QCOMPARE(settings.value("exclusions").toVariant().toStringList(),
                 (QStringList{"*.iso", "node_modules"}));
        const QJsonObject policy = documentSentWith(w.engine, QStringLiteral("configure-transfer"));
        QCOMPARE(policy.value("paused").toBool(), true);
        QCOMPARE(policy.value("bandwidthLimitKibPerSecond").toInteger(-1), 0);
        QCOMPARE(policy.value("currentNetworkMetered").toBool(), true);
        QCOMPARE(policy.value("allowMeteredNetwork").toBool(), true);
    }

    void invitationSetThroughAccessibilityEnrolls()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        auto *field = w.find<QLineEdit>("invitationField");
        auto *enroll = w.find<QPushButton>("enrollButton");
        const QString invitation = QStringLiteral("zqbinv1-ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
        accessible(field)->setText(QAccessible::Value, invitation);
        QCoreApplication::processEvents();
        QCOMPARE(w.model.invitation(), invitation);
        QVERIFY(enroll->isEnabled());

        w.engine.answer("enroll", "", {}, 0, 0.2);
        doAction(enroll, QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(w.engine.commands().contains("enroll"));
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        bool sent = false;
        for (const FakeEngine::Invocation &call : w.engine.invocations())
            if (call.arguments.value(0) == QLatin1String("enroll")) {
                QCOMPARE(call.standardInput, invitation.toUtf8() + '\n');
                sent = true;
            }
        QVERIFY(sent);
    }

    void modelChangesNeverWriteBack()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::connectedIdle()));
        QSignalSpy changes(&w.model, &AgentModel::changed);
        w.model.setScheduleEnabled(false);
        w.model.setIntervalMinutes(60);
        w.model.setExclusionText(QStringLiteral("a, b"));
        w.model.setTransfersPaused(true);
        w.model.setBandwidthLimitKibPerSecond(0);
        w.model.setCurrentNetworkMetered(true);
        w.model.setAllowMeteredNetwork(true);
        w.model.setInvitation(QStringLiteral("secret"));
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 8); // the eight assignments, nothing written back
        QCOMPARE(w.find<QComboBox>("intervalPicker")->currentText(), QStringLiteral("1 hour"));
        QCOMPARE(w.find<QLineEdit>("exclusionsField")->text(), QStringLiteral("a, b"));
        QVERIFY(w.find<QCheckBox>("allowMeteredToggle")->isEnabled());
    }

    void engineAndUserTextIsNeverMarkup()
    {
        const QString markup = QStringLiteral("<b>2.0</b> &amp;");
        Window w;
        AgentUIStatus s = ScreenStates::updateAvailable();
        s.agentVersion = markup;
        s.runtime.latestAgentVersion = QStringLiteral("<i>9</i>");
        s.runtime.serviceVersion = QStringLiteral("<u>5</u>");
        s.runtime.message = QStringLiteral("<b>message</b> &lt;");
        s.runtime.lastError = QStringLiteral("<font color=red>error</font>");
        s.settings.sources = {QStringLiteral("/home/<b>x</b>")};
        s.settings.exclusions = {QStringLiteral("<b>*.tmp</b>")};
        QVERIFY(w.show(s));
        w.model.setError(QStringLiteral("<b>failed</b> &amp; more"));
        w.model.setNotice(QStringLiteral("<h1>engine output</h1>"));
        QCoreApplication::processEvents();

        const auto expectLabel = [&](const char *name, const QString &text) {
            auto *label = w.find<QLabel>(name);
            QCOMPARE(label->text(), text);
            QVERIFY2(showsLiterally(label), name);
        };
        expectLabel("versionLine", QStringLiteral("ZQB Agent ") + markup);
        expectLabel("badgeMessage", QStringLiteral("<b>message</b> &lt;"));
        QVERIFY(w.find<QLabel>("badgeError")->text().contains("<font color=red>error</font>"));
        QVERIFY(showsLiterally(w.find<QLabel>("badgeError")));

        auto *capsule = w.find<VersionCapsule>("versionCapsule");
        QCOMPARE(capsule->state().label, QStringLiteral("Update available: <i>9</i>"));
        QCOMPARE(tooltipAsShown(capsule->toolTip()), capsule->state().label);

        for (const char *name : {"errorCard", "noticeCard"}) {
            auto *card = w.find<MessageCard>(name);
            auto *text = card->findChild<QLabel *>(QStringLiteral("cardText"));
            QCOMPARE(text->text(), card->text());
            QVERIFY2(showsLiterally(text), name);
            QCOMPARE(tooltipAsShown(text->toolTip()), card->text());
        }
        QCOMPARE(w.find<MessageCard>("errorCard")->text(),
                 QStringLiteral("<b>failed</b> &amp; more"));

        auto *path = w.view.findChild<ElidedLabel *>(QStringLiteral("folderPath"));
        QCOMPARE(path->fullText(), QStringLiteral("/home/<b>x</b>"));
        QVERIFY(showsLiterally(path));
        QCOMPARE(tooltipAsShown(path->toolTip()), QStringLiteral("/home/<b>x</b>"));
        QCOMPARE(w.find<QLineEdit>("exclusionsField")->text(), QStringLiteral("<b>*.tmp</b>"));

        auto *section = w.find<ConnectionSection>("connectionSection");
        QCOMPARE(section->shownRows().at(0).value, markup);
        QCOMPARE(section->shownRows().at(1).value, QStringLiteral("<u>5</u>"));
        for (QLabel *label : section->findChildren<QLabel *>())
            QVERIFY2(showsLiterally(label), qPrintable(label->objectName()));
        // Every label of the window, whatever it shows.
        for (QLabel *label : w.view.findChildren<QLabel *>())
            QVERIFY2(showsLiterally(label), qPrintable(label->objectName()));
    }

    void connectionRowNameFollowsItsLabel()
    {
        ConnectionSection section;
        AgentUIStatus s = ScreenStates::uploading();
        s.runtime.backupProgress->elapsedSeconds = 161;
        ConnectionState state = connectionState(s, false);
        section.setState(state);
        auto *value = section.findChild<QLabel *>(QStringLiteral("detailValue7"));
        QCOMPARE(value->accessibleName(), QStringLiteral("Current backup elapsed: 2 min 41 sec"));
        // Only the label changes: the name must follow it.
        state.rows[7].label = QStringLiteral("Last backup duration");
        section.setState(state);
        QCOMPARE(value->text(), QStringLiteral("2 min 41 sec"));
        QCOMPARE(value->accessibleName(), QStringLiteral("Last backup duration: 2 min 41 sec"));
    }

    void everyControlIsNamedAndReachableWithTabInVisualOrder()
    {
        Window w;
        AgentUIStatus s = ScreenStates::updateAvailable();
        s.runtime.enrolled = false;
        s.settings.sources = {QStringLiteral("/home/x"), QStringLiteral("/srv/y")};
        QVERIFY(w.show(s));
        QApplication::setActiveWindow(&w.view);
        w.model.setError(QStringLiteral("e"));
        w.model.setNotice(QStringLiteral("n"));
        QCoreApplication::processEvents();
        auto *content = w.find<QWidget>("agentContent");

        // The controls a person can use, in the order they appear.
        QList<QWidget *> controls;
        for (QWidget *widget : content->findChildren<QWidget *>())
            if ((qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLineEdit *>(widget) ||
                 qobject_cast<QComboBox *>(widget)) &&
                widget->isVisibleTo(&w.view) && widget->isEnabled())
                controls << widget;
        std::sort(controls.begin(), controls.end(), [content](QWidget *a, QWidget *b) {
            const QPoint pa = placeIn(content, a), pb = placeIn(content, b);
            return pa.y() != pb.y() ? pa.y() < pb.y() : pa.x() < pb.x();
        });
        QVERIFY(controls.size() >= 15);

        // Tab from the first one around the whole window.
        controls.first()->setFocus(Qt::TabFocusReason);
        QList<QWidget *> walked;
        for (int i = 0; i < 100; ++i) {
            QWidget *focused = QApplication::focusWidget();
            QVERIFY(focused);
            if (!walked.isEmpty() && focused == walked.first())
                break;
            walked << focused;
            QTest::keyClick(focused, Qt::Key_Tab);
        }
        QStringList walkedNames, expectedNames;
        for (QWidget *widget : walked)
            walkedNames << widget->objectName() + QLatin1Char('/') + widget->accessibleName();
        for (QWidget *widget : controls)
            expectedNames << widget->objectName() + QLatin1Char('/') + widget->accessibleName();
        if (walkedNames != expectedNames)
            qWarning() << "walked" << walkedNames << "\nexpected" << expectedNames;
        QCOMPARE(walkedNames, expectedNames);

        const QList<QAccessible::Role> roles = {QAccessible::Button, QAccessible::CheckBox,
                                                QAccessible::ComboBox, QAccessible::EditableText};
        for (QWidget *widget : walked) {
            QAccessibleInterface *iface = accessible(widget);
            QVERIFY2(roles.contains(iface->role()), qPrintable(widget->objectName()));
            QVERIFY2(!iface->text(QAccessible::Name).trimmed().isEmpty(),
                     qPrintable(widget->objectName()));
        }
        QCOMPARE(w.view.findChildren<QToolButton *>("removeFolderButton").first()->accessibleName(),
                 QStringLiteral("Remove folder /home/x"));
        QCOMPARE(
            accessible(w.find<MessageCard>("errorCard")->dismissButton())->text(QAccessible::Name),
            QStringLiteral("Dismiss"));
    }

    void busyIndicatorShowsWhileAnOperationRuns()
    {
        Window w;
        QVERIFY(w.show(enrolledWith({"/a"})));
        auto *indicator = w.view.findChild<BusySpinner *>(QStringLiteral("busyIndicator"));
        QVERIFY(indicator);
        QVERIFY(!indicator->isVisibleTo(&w.view));
        QCOMPARE(indicator->accessibleName(), QStringLiteral("Working"));
        QCOMPARE(accessible(indicator)->text(QAccessible::Name), QStringLiteral("Working"));
        QCOMPARE(accessible(indicator)->role(), QAccessible::ProgressBar);
        QVERIFY(accessible(indicator)->state().busy);

        w.engine.answer("configure", "", {}, 0, 0.4);
        QTest::mouseClick(w.find<QPushButton>("backUpNowButton"), Qt::LeftButton);
        QVERIFY(w.model.busy());
        QCoreApplication::processEvents();
        QVERIFY(indicator->isVisibleTo(&w.view));
        QVERIFY(indicator->isAnimating());
        // Beside the two buttons, on their row.
        auto *content = w.find<QWidget>("agentContent");
        auto *backUp = w.find<QPushButton>("backUpNowButton");
        QCOMPARE(placeIn(content, indicator).y(), placeIn(content, backUp).y());
        QVERIFY(indicator->mapTo(content, QPoint()).x() >
                backUp->mapTo(content, QPoint(backUp->width(), 0)).x());
        // Shown for the whole chain, gone when it ends.
        QTRY_VERIFY_WITH_TIMEOUT(w.engine.commands().contains("configure"), 10000);
        QVERIFY(w.model.busy());
        QVERIFY(indicator->isVisibleTo(&w.view));
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        QCoreApplication::processEvents();
        QVERIFY(!indicator->isVisibleTo(&w.view));
        QVERIFY(!indicator->isAnimating());
    }
};

QTEST_MAIN(TestUiViewAccessibility)
#include "tst_ui_view_accessibility.moc"
