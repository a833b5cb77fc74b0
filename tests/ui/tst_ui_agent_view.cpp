#include "AgentDocuments.h"
#include "AgentModel.h"
#include "AgentView.h"
#include "ConnectionSection.h"
#include "ElidedLabel.h"
#include "FakeEngine.h"
#include "FolderChooser.h"
#include "FolderRow.h"
#include "FoldersSection.h"
#include "Formatting.h"
#include "MessageCard.h"
#include "ScreenStates.h"
#include "UiTestSupport.h"
#include "ViewTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

using namespace ViewTest;

// Counts the paints the view receives.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget &view) { view.installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class TestUiAgentView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        UiTest::pinLocaleAndZone();
        QCoreApplication::setApplicationVersion(QStringLiteral("1.0.0"));
    }

    void minimumSizeAndSectionOrder()
    {
        Window w;
        QCOMPARE(w.view.minimumSize(), QSize(720, 680));
        auto *content = w.find<QWidget>("agentContent");
        QStringList order;
        for (int i = 0; i < content->layout()->count(); ++i)
            if (QWidget *section = content->layout()->itemAt(i)->widget())
                order << section->objectName();
        QCOMPARE(order, (QStringList{"header", "statusBadge", "errorCard", "noticeCard",
                                     "connectBox", "restoringBox", "foldersBox", "scheduleBox",
                                     "skipBox", "networkBox", "connectionSection", "betaWarning"}));
        const QStringList titled = {"foldersBox", "scheduleBox",       "skipBox",
                                    "networkBox", "connectionSection", "restoringBox"};
        const QStringList titles = {
            "Folders to protect", "Automatic protection",         "Skip patterns",
            "Network transfer",   "Connection and compatibility", "Restoring connection"};
        for (int i = 0; i < titled.size(); ++i)
            QCOMPARE(w.find<QGroupBox>(qPrintable(titled[i]))->title(), titles[i]);
    }

    void startsTheModelOnFirstShow()
    {
        Window w;
        QVERIFY(!w.model.started());
        QCOMPARE(w.count("ui-status"), 0);
        QVERIFY(w.show());
        QVERIFY(w.model.started());
        QTRY_COMPARE(w.count("ui-status"), 1);
        w.view.hide();
        QVERIFY(w.show());
        QTest::qWait(100);
        QCOMPARE(w.count("ui-status"), 1); // a second showing does not start again
    }

    void noStatusYet()
    {
        Window w;
        QVERIFY(w.show());
        QTRY_COMPARE(w.count("ui-status"), 1);
        QCoreApplication::processEvents();
        QVERIFY(!w.model.status());
        QCOMPARE(w.find<QLabel>("versionLine")->text(), QStringLiteral("ZQB Agent 1.0.0"));
        QVERIFY(w.shows("restoringBox"));
        QVERIFY(!w.shows("connectBox"));
#ifndef Q_OS_MACOS
        QCOMPARE(w.find<QLabel>("restoringText")->text(),
                 QStringLiteral("Reading this computer's existing ZQB enrollment\u2026"));
        QCOMPARE(w.find<QLabel>("subtitle")->text(),
                 QStringLiteral("Simple, encrypted protection for this computer"));
#endif
        QVERIFY(!w.find<QPushButton>("backUpNowButton")->isEnabled());
        QVERIFY(w.find<QPushButton>("saveButton")->isEnabled());
        QCOMPARE(w.find<QPushButton>("checkButton")->text(), QStringLiteral("Check service"));
        QVERIFY(!w.shows("errorCard"));
        QVERIFY(!w.shows("noticeCard"));
        QVERIFY(w.shows("noFolders"));
    }

    void saveDisabledOnlyWhileBusy()
    {
        Window w;
        QVERIFY(w.show());
        w.engine.answer("check-service", "ok", {}, 0, 0.5);
        auto *save = w.find<QPushButton>("saveButton");
        QTest::mouseClick(w.find<QPushButton>("checkButton"), Qt::LeftButton);
        QVERIFY(w.model.busy());
        QTRY_VERIFY(!save->isEnabled());
        QVERIFY(!w.find<QPushButton>("checkButton")->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        QTRY_VERIFY(save->isEnabled());
        QCOMPARE(w.engine.commands().count("check-service"), 1);
    }

    void connectBoxAndInvitationLength()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        QVERIFY(w.shows("connectBox"));
        QVERIFY(!w.shows("restoringBox"));
#ifndef Q_OS_MACOS
        QCOMPARE(w.find<QGroupBox>("connectBox")->title(), QStringLiteral("Connect this computer"));
#endif
        auto *field = w.find<QLineEdit>("invitationField");
        auto *enroll = w.find<QPushButton>("enrollButton");
        QCOMPARE(field->echoMode(), QLineEdit::Password);
        QCOMPARE(field->placeholderText(), QStringLiteral("One-time invitation"));
        QVERIFY(!enroll->isEnabled());
        const QString invitation = QStringLiteral("zqbinv1-ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
        QTest::keyClicks(field, invitation.left(39));
        QCoreApplication::processEvents();
        QCOMPARE(w.model.invitation(), invitation.left(39));
        QVERIFY(!enroll->isEnabled());
        QTest::keyClicks(field, invitation.mid(39, 1));
        QCoreApplication::processEvents();
        QVERIFY(enroll->isEnabled());

        // Enrolling hands the engine the invitation on standard input only.
        w.engine.answer("enroll", "", {}, 0, 0.3);
        QTest::mouseClick(enroll, Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(field->text(), QString()); // cleared while the command runs
        QVERIFY(!enroll->isEnabled());
        QTRY_VERIFY(w.engine.commands().contains("enroll"));
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        for (const FakeEngine::Invocation &call : w.engine.invocations())
            if (call.arguments.value(0) == QLatin1String("enroll")) {
                QCOMPARE(call.standardInput, invitation.left(40).toUtf8() + '\n');
                QVERIFY(!call.arguments.join(' ').contains(invitation.left(40)));
            }
    }

    void enrolledStatusReplacesTheConnectBox()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        QVERIFY(w.shows("connectBox"));
        QVERIFY(w.apply(ScreenStates::connectedIdle()));
        QVERIFY(!w.shows("connectBox"));
        QVERIFY(!w.shows("restoringBox"));
        QCOMPARE(w.find<QPushButton>("checkButton")->text(), QStringLiteral("Check connection"));
    }

    void typingKeepsTheCursor()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        auto *field = w.find<QLineEdit>("invitationField");
        field->setFocus();
        QTest::keyClicks(field, "abcdef");
        QCoreApplication::processEvents();
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClick(field, Qt::Key_Right);
        QTest::keyClick(field, Qt::Key_Right);
        const int before = w.view.renderCount();
        QTest::keyClicks(field, "XY");
        QCoreApplication::processEvents();
        QVERIFY(w.view.renderCount() > before);
        QCOMPARE(w.model.invitation(), QStringLiteral("abXYcdef"));
        QCOMPARE(field->text(), QStringLiteral("abXYcdef"));
        QCOMPARE(field->cursorPosition(), 4);

        auto *patterns = w.find<QLineEdit>("exclusionsField");
        patterns->setFocus();
        QTest::keyClick(patterns, Qt::Key_Home);
        QTest::keyClicks(patterns, "tmp, ");
        QCoreApplication::processEvents();
        QCOMPARE(patterns->cursorPosition(), 5);
        QVERIFY(w.model.exclusionText().startsWith(QStringLiteral("tmp, .DS_Store")));
        // A selection survives a render too.
        patterns->setSelection(0, 3);
        w.model.setBandwidthLimitKibPerSecond(640);
        QCoreApplication::processEvents();
        QCOMPARE(patterns->selectedText(), QStringLiteral("tmp"));
    }

    void oneRenderPerModelTransaction()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        QCoreApplication::processEvents();

        // Nine assignments in one turn of the event loop: one render.
        int before = w.view.renderCount();
        w.model.setSources({"/a"});
        w.model.setIntervalMinutes(60);
        w.model.setScheduleEnabled(true);
        w.model.setExclusionText("x");
        w.model.setTransfersPaused(true);
        w.model.setBandwidthLimitKibPerSecond(128);
        w.model.setCurrentNetworkMetered(true);
        w.model.setAllowMeteredNetwork(true);
        w.model.setNotice(QStringLiteral("Saved"));
        QCOMPARE(w.view.renderCount(), before); // nothing drawn synchronously
        QCoreApplication::processEvents();
        QCOMPARE(w.view.renderCount(), before + 1);
        QCOMPARE(w.find<QComboBox>("intervalPicker")->currentText(), QStringLiteral("1 hour"));

        // A real refresh: its status and eight field assignments arrive
        // together and cost one render.
        QSignalSpy changes(&w.model, &AgentModel::changed);
        w.engine.answer("ui-status", AgentDocuments::encode(ScreenStates::connectedIdle()));
        w.model.refresh(false, false);
        QCoreApplication::processEvents(); // the dispatch's own render (error cleared)
        before = w.view.renderCount();
        const int changesBefore = int(changes.count());
        QTRY_VERIFY(w.model.status() == ScreenStates::connectedIdle());
        QCoreApplication::processEvents();
        QCOMPARE(int(changes.count()) - changesBefore, 9);
        QCOMPARE(w.view.renderCount(), before + 1);
        QCOMPARE(w.find<QComboBox>("intervalPicker")->currentText(), QStringLiteral("4 hours"));
    }

    void engineResultIsShownTheMomentItIsApplied()
    {
        // Rendered as the command's result settles, in that same turn of the
        // event loop, so no paint in between can show half of it; and once.
        Window w;
        QVERIFY(w.show(ScreenStates::setupRequired()));
        const int before = w.view.renderCount();
        int rendersWhenSettled = -1;
        QString badgeWhenSettled;
        connect(&w.model, &AgentModel::settled, this, [&] {
            rendersWhenSettled = w.view.renderCount();
            badgeWhenSettled = w.find<QLabel>("badgeTitle")->text();
        });
        w.engine.answer("ui-status", AgentDocuments::encode(ScreenStates::connectedIdle()));
        w.model.refresh(false, false);
        QTRY_VERIFY(rendersWhenSettled >= 0);
        QCOMPARE(rendersWhenSettled, before + 2); // the dispatch's own render, then the result
        QCOMPARE(badgeWhenSettled, QStringLiteral("Connected"));
        QCoreApplication::processEvents();
        QCOMPARE(w.view.renderCount(), before + 2);
    }

    void firstStatusIsLaidOutBeforeTheFirstPaint_data()
    {
        QTest::addColumn<int>("windowHeight");
        QTest::addColumn<int>("folderCount");
        QTest::newRow("one folder") << 0 << 1;
        // The placeholder column fits this window; twenty folders do not, so
        // the status also brings the scroll bar, which narrows the column.
        QTest::newRow("outgrows the window") << 1300 << 20;
    }

    void firstStatusIsLaidOutBeforeTheFirstPaint()
    {
        // The engine answers before the window's first frame (held back here
        // by disabling updates): by the time the result has settled, the
        // column is already laid out for it, so that first frame is right.
        QFETCH(int, windowHeight);
        QFETCH(int, folderCount);
        Window w;
        if (windowHeight > 0)
            w.view.resize(w.view.width(), windowHeight);
        QStringList folders;
        for (int i = 0; i < folderCount; ++i)
            folders << QStringLiteral("/Users/me/Documents %1").arg(i);
        w.engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(enrolledWith(folders)));
        PaintWatch paints(w.view);
        w.view.setUpdatesEnabled(false);
        bool checked = false;
        int paintsBefore = -1;
        QString badge;
        QHash<QString, QRect> placedAtSettle;
        const auto sectionGeometries = [&w] {
            QHash<QString, QRect> placed;
            auto *content = w.find<QWidget>("agentContent");
            for (QWidget *child : content->findChildren<QWidget *>())
                if (!child->objectName().isEmpty() && child->isVisibleTo(&w.view))
                    placed.insert(child->objectName() + QString::number(quintptr(child)),
                                  QRect(child->mapTo(content, QPoint()), child->size()));
            return placed;
        };
        connect(&w.model, &AgentModel::settled, this, [&] {
            if (checked)
                return;
            checked = true;
            paintsBefore = paints.count;
            badge = w.find<QLabel>("badgeTitle")->text();
            placedAtSettle = sectionGeometries();
        });
        w.view.show();
        QTRY_VERIFY(checked);
        QCOMPARE(paintsBefore, 0);
        auto *scrollBar = w.find<QScrollArea>("agentScroll")->verticalScrollBar();
        const bool scrollsAtSettle = scrollBar->isVisibleTo(&w.view);
        QCOMPARE(badge, QStringLiteral("Connected"));
        QVERIFY(!w.shows("restoringBox"));
        QVERIFY(w.shows("folderRows"));
        // Nothing moves once the remaining events are handled: every widget
        // already had its final place when the result settled.
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(sectionGeometries(), placedAtSettle);
        QCOMPARE(scrollBar->isVisibleTo(&w.view), scrollsAtSettle);
        if (windowHeight > 0)
            QVERIFY(scrollsAtSettle);
        w.view.setUpdatesEnabled(true);
    }

    void renderingNeverWritesTheModel()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::connectedIdle()));
        QSignalSpy changes(&w.model, &AgentModel::changed);
        w.model.setAllowMeteredNetwork(true); // one change, one render
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 1);
        QVERIFY(w.find<QCheckBox>("allowMeteredToggle")->isChecked());
    }

    void backUpNowNeedsAFolder()
    {
        Window w;
        QVERIFY(w.show(enrolledWith({})));
        auto *backUp = w.find<QPushButton>("backUpNowButton");
        QVERIFY(!backUp->isEnabled());
        QVERIFY(w.shows("noFolders"));

        w.chooser.answer = QStringList{"/data/new"};
        QTest::mouseClick(w.find<QPushButton>("addFoldersButton"), Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(w.model.sources(), QStringList{"/data/new"});
        QVERIFY(backUp->isEnabled());
        QVERIFY(!w.shows("noFolders"));
        const auto rows = w.view.findChildren<ElidedLabel *>("folderPath");
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows.first()->fullText(), QStringLiteral("/data/new"));

        w.engine.answer("configure", "", {}, 0, 0.2);
        QTest::mouseClick(backUp, Qt::LeftButton);
        QVERIFY(w.model.busy());
        QCoreApplication::processEvents();
        QVERIFY(!backUp->isEnabled());
        QTRY_VERIFY(w.engine.commands().contains("configure"));
    }

    void removingAPathRemovesEveryCopy()
    {
        Window w;
        QVERIFY(w.show(enrolledWith({"/b", "/a", "/b"})));
        auto buttons = w.view.findChildren<QToolButton *>("removeFolderButton");
        QCOMPARE(buttons.size(), 3);
        QCOMPARE(buttons.first()->toolTip(), QStringLiteral("Remove folder"));
        QCOMPARE(buttons.first()->accessibleName(), QStringLiteral("Remove folder /b"));
        QTest::mouseClick(buttons.first(), Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(w.model.sources(), QStringList{"/a"});
        QCOMPARE(w.view.findChildren<QToolButton *>("removeFolderButton").size(), 1);
        QCOMPARE(w.count("configure"), 0); // nothing reaches the engine before a save
    }

    void thousandLongFoldersKeepTheirRows()
    {
        QStringList paths;
        for (int i = 0; i < 1000; ++i) {
            QString path = QStringLiteral("/home/ann/Projects/%1/").arg(i, 4, 10, QLatin1Char('0'));
            paths << path + QString(200 - path.size(), QLatin1Char('x'));
        }
        Window w;
        QVERIFY(w.show(enrolledWith(paths)));
        auto *section = w.find<FoldersSection>("foldersBox");
        // The first screenful comes with the first frame, the rest in slices after it.
        QTRY_VERIFY(section->rowsComplete());
        const QList<FolderRow *> rows = section->rows();
        QCOMPARE(w.view.findChildren<FolderRow *>("folderRow").size(), 1000);
        QStringList shown;
        for (ElidedLabel *label : w.view.findChildren<ElidedLabel *>("folderPath"))
            shown << label->fullText();
        QCOMPARE(shown, paths);
        QList<QPointer<FolderRow>> alive;
        for (FolderRow *row : rows)
            alive << row;

        // One below the other, once the list has been laid out.
        const auto stacked = [&] {
            for (qsizetype i = 1; i < rows.size(); ++i)
                if (rows.at(i)->y() < rows.at(i - 1)->y() + rows.at(i - 1)->height())
                    return false;
            return rows.first()->height() > 0;
        };
        QTRY_VERIFY(stacked());

        // The column scrolls down to the last folder.
        auto *scroll = w.find<QScrollArea>("agentScroll");
        QVERIFY(scroll->verticalScrollBar()->maximum() > 0);
        // (Again until the column's layout has taken in the last slice.)
        QTRY_VERIFY((scroll->ensureWidgetVisible(rows.last()->removeButton()),
                     !rows.last()->removeButton()->visibleRegion().isEmpty()));
        QVERIFY(rows.first()->removeButton()->visibleRegion().isEmpty());

        // Tab walks the rows in list order, then on to "Add folders…".
        QApplication::setActiveWindow(&w.view);
        rows.at(997)->removeButton()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), rows.at(998)->removeButton());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), rows.at(999)->removeButton());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("addFoldersButton"));

        // The periodic refresh reads the same document: no row is made again.
        QSignalSpy statuses(&w.model, &AgentModel::statusChanged);
        w.model.refresh(false, false); // what a tick of the periodic refresh does
        QTRY_COMPARE(statuses.count(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(section->rows(), rows);
        QCOMPARE(w.view.findChildren<FolderRow *>("folderRow").size(), 1000);

        // Typing a skip pattern leaves the rows alone too.
        QTest::keyClicks(w.find<QLineEdit>("exclusionsField"), ", build");
        QCoreApplication::processEvents();
        QVERIFY(w.model.exclusionText().endsWith(", build"));
        QCOMPARE(section->rows(), rows);

        // Removing one folder removes its row and only that one.
        QTest::mouseClick(rows.at(500)->removeButton(), Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(w.model.sources().size(), 999);
        QVERIFY(alive.at(500).isNull());
        QList<FolderRow *> expected = rows;
        expected.removeAt(500);
        QCOMPARE(section->rows(), expected);
        for (qsizetype i = 0; i < alive.size(); ++i)
            QCOMPARE(alive.at(i).isNull(), i == 500);
        QCOMPARE(w.view.findChildren<FolderRow *>("folderRow").size(), 999);
    }

    void aListChangedWhileItsRowsAreMadeEndsAsTheNewList()
    {
        QStringList paths;
        for (int i = 0; i < 3000; ++i)
            paths << QStringLiteral("/srv/share/%1").arg(i, 4, 10, QLatin1Char('0'));
        Window w;
        QVERIFY(w.show(enrolledWith({"/a"})));
        auto *section = w.find<FoldersSection>("foldersBox");
        w.model.setSources(paths);
        QCoreApplication::processEvents();     // the render and its first slice
        QVERIFY(section->rows().size() >= 32); // a screenful at once
        QVERIFY(!section->rowsComplete());

        // Half the list goes, and a folder is added, while rows are still being made.
        QStringList changed = paths.mid(1500);
        changed.prepend(QStringLiteral("/home/ann"));
        w.model.setSources(changed);
        QTRY_VERIFY(section->rowsComplete());
        QStringList shown;
        for (FolderRow *row : section->rows())
            shown << row->path();
        QCOMPARE(shown, changed);
        QCOMPARE(w.view.findChildren<FolderRow *>("folderRow").size(), 1501);
    }

    void longPathsAreShortenedInTheMiddle()
    {
        Window w;
        const QString path = "/home/ann/" + QString("very long folder name ").repeated(8) + "end";
        QVERIFY(w.show(enrolledWith({path})));
        auto *label = w.view.findChild<ElidedLabel *>("folderPath");
        QTRY_VERIFY(label->text() != path);
        QVERIFY(label->text().startsWith("/home/ann/"));
        QVERIFY(label->text().endsWith("end"));
        QVERIFY(label->text().contains(QChar(0x2026)));
        QCOMPARE(label->toolTip(), path);
    }

    void allowMeteredKeepsItsValueWhileDisabled()
    {
        Window w;
        AgentUIStatus s = ScreenStates::connectedIdle();
        s.transferPolicy.allowMeteredNetwork = true;
        s.transferPolicy.currentNetworkMetered = false;
        QVERIFY(w.show(s));
        auto *allow = w.find<QCheckBox>("allowMeteredToggle");
        auto *metered = w.find<QCheckBox>("meteredToggle");
        QVERIFY(!allow->isEnabled());
        QVERIFY(allow->isChecked());
        clickCheckBox(allow); // greyed out: a click does nothing
        QCoreApplication::processEvents();
        QVERIFY(w.model.allowMeteredNetwork());

        clickCheckBox(metered);
        QCoreApplication::processEvents();
        QVERIFY(w.model.currentNetworkMetered());
        QVERIFY(allow->isEnabled());
        QVERIFY(allow->isChecked());
        clickCheckBox(allow);
        QCoreApplication::processEvents();
        QVERIFY(!w.model.allowMeteredNetwork());
        clickCheckBox(metered);
        QCoreApplication::processEvents();
        QVERIFY(!allow->isEnabled());
        QVERIFY(!allow->isChecked());
    }

    void controlsWriteTheirFields()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::connectedIdle()));
        auto *schedule = w.find<QCheckBox>("scheduleToggle");
        QVERIFY(schedule->isChecked());
        clickCheckBox(schedule);
        QVERIFY(!w.model.scheduleEnabled());
        clickCheckBox(w.find<QCheckBox>("pausedToggle"));
        QVERIFY(w.model.transfersPaused());

        auto *interval = w.find<QComboBox>("intervalPicker");
        QCOMPARE(interval->count(), 5);
        QCOMPARE(interval->itemText(0), QStringLiteral("15 minutes"));
        QCOMPARE(interval->currentText(), QStringLiteral("4 hours"));
        QCOMPARE(interval->width(), 170);
        interval->setFocus();
        QTest::keyClick(interval, Qt::Key_Down);
        QCOMPARE(w.model.intervalMinutes(), 720);

        auto *bandwidth = w.find<QComboBox>("bandwidthPicker");
        QCOMPARE(bandwidth->currentText(), QStringLiteral("10 Mbps"));
        bandwidth->setFocus();
        QTest::keyClick(bandwidth, Qt::Key_Up);
        QCOMPARE(w.model.bandwidthLimitKibPerSecond(), 640);

        // A value the pickers do not offer leaves them without a selection.
        w.model.setIntervalMinutes(90);
        w.model.setBandwidthLimitKibPerSecond(999);
        QCoreApplication::processEvents();
        QCOMPARE(interval->currentIndex(), -1);
        QCOMPARE(bandwidth->currentIndex(), -1);
        QCOMPARE(w.model.intervalMinutes(), 90);
    }

    void busyDisablesConnectionButtonsWhileRowsUpdate()
    {
        Window w;
        AgentUIStatus s = ScreenStates::updateAvailable();
        QVERIFY(w.show(s));
        auto *section = w.find<ConnectionSection>("connectionSection");
        QVERIFY(section->updateCard()->isVisibleTo(&w.view));
        w.engine.answer("autonomous-update", "", {}, 0, 0.6);
        QTest::mouseClick(section->installButton(), Qt::LeftButton);
        QVERIFY(w.model.busy());
        s.runtime.authorizedTargets = 7;
        QVERIFY(w.apply(s));
        QVERIFY(w.model.busy());
        QVERIFY(!section->installButton()->isEnabled());
        QVERIFY(!section->checkButton()->isEnabled());
        QCOMPARE(section->shownRows().at(4).value, QStringLiteral("7"));
        QTRY_VERIFY_WITH_TIMEOUT(!w.model.busy(), 10000);
        QCOMPARE(w.model.notice(),
                 std::optional<QString>("The verified ZQB Agent update was installed."));
        QTRY_VERIFY(w.shows("noticeCard"));

        // An update for the running version is no update: the card goes.
        s.runtime.latestAgentVersion = s.agentVersion;
        QVERIFY(w.apply(s));
        QVERIFY(!section->updateCard()->isVisibleTo(&w.view));
    }

    void cardsShowAndDismiss()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::connectedIdle()));
        w.model.setError(QStringLiteral("Something failed"));
        w.model.setNotice(QStringLiteral("Saved"));
        QCoreApplication::processEvents();
        auto *error = w.find<MessageCard>("errorCard");
        auto *notice = w.find<MessageCard>("noticeCard");
        QVERIFY(error->isVisibleTo(&w.view));
        QVERIFY(notice->isVisibleTo(&w.view));
        QCOMPARE(error->shownText(), QStringLiteral("Something failed"));
        QVERIFY(error->y() < notice->y());
        QTest::mouseClick(error->dismissButton(), Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(!w.model.error());
        QVERIFY(!error->isVisibleTo(&w.view));
        QCOMPARE(w.model.notice(), std::optional<QString>("Saved"));
        QTest::mouseClick(notice->dismissButton(), Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(!w.model.notice());
        QVERIFY(!notice->isVisibleTo(&w.view));
    }

    void fullDiskAccessOnlyOnMacOS()
    {
        Window w;
        QVERIFY(w.show());
#ifdef Q_OS_MACOS
        QVERIFY(w.shows("fullDiskAccessButton"));
#else
        QVERIFY(!w.shows("fullDiskAccessButton"));
#endif
        QCOMPARE(w.find<QPushButton>("fullDiskAccessButton")->toolTip(),
                 QStringLiteral("Some protected folders require macOS Full Disk Access for the "
                                "ZQB Agent engine."));
    }

    void everyControlHasAnAccessibleName()
    {
        Window w;
        AgentUIStatus s = ScreenStates::updateAvailable();
        s.runtime.enrolled = false;
        QVERIFY(w.show(s));
        w.model.setError(QStringLiteral("e"));
        w.model.setNotice(QStringLiteral("n"));
        QCoreApplication::processEvents();
        QList<QWidget *> controls;
        for (auto *b : w.view.findChildren<QAbstractButton *>())
            controls << b;
        for (auto *e : w.view.findChildren<QLineEdit *>())
            controls << e;
        for (auto *c : w.view.findChildren<QComboBox *>())
            controls << c;
        QVERIFY(controls.size() >= 20);
        for (QWidget *control : controls)
            if (control->isVisibleTo(&w.view) && control->focusPolicy() != Qt::NoFocus)
                QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
    }

    void keyboardOnly()
    {
        Window w;
        QVERIFY(w.show(enrolledWith({"/a"})));
        QApplication::setActiveWindow(&w.view);
        w.model.setNotice(QStringLiteral("Saved"));
        QCoreApplication::processEvents();
        w.find<MessageCard>("noticeCard")->dismissButton()->setFocus();
        QStringList order;
        for (int i = 0; i < 12; ++i) {
            order << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order, (QStringList{"dismissButton", "removeFolderButton", "addFoldersButton",
                                     "scheduleToggle", "intervalPicker", "saveButton",
                                     "backUpNowButton", "exclusionsField", "pausedToggle",
                                     "bandwidthPicker", "meteredToggle", "checkButton"}));

        // Space toggles a switch; the model follows.
        auto *schedule = w.find<QCheckBox>("scheduleToggle");
        schedule->setFocus();
        const bool was = w.model.scheduleEnabled();
        QTest::keyClick(schedule, Qt::Key_Space);
        QCOMPARE(w.model.scheduleEnabled(), !was);

        // Dismissing from the keyboard.
        auto *dismiss = w.find<MessageCard>("noticeCard")->dismissButton();
        dismiss->setFocus();
        QTest::keyClick(dismiss, Qt::Key_Space);
        QCoreApplication::processEvents();
        QVERIFY(!w.model.notice());
    }

    void badgeAndCapsuleFollowTheStatus()
    {
        Window w;
        QVERIFY(w.show(ScreenStates::uploading()));
        QCOMPARE(w.find<QLabel>("badgeTitle")->text(), QStringLiteral("Backing Up"));
        QCOMPARE(w.find<QLabel>("badgePhase")->text(),
                 QStringLiteral("Folder 2/3 \u00b7 1873/4120 uploaded \u00b7 912 reused"));
        QCOMPARE(w.find<QLabel>("badgeLastProgress")->text(),
                 QStringLiteral("Last progress 4:05:09 PM"));
        QCOMPARE(w.find<QLabel>("versionLine")->text(), QStringLiteral("ZQB Agent 2.3.0"));
        QCOMPARE(w.view.shownState().header.capsule.label, QStringLiteral("Latest version"));
        auto *section = w.find<ConnectionSection>("connectionSection");
        QCOMPARE(section->shownRows().at(7),
                 (DetailRow{"Current backup elapsed", "23 min 14 sec"}));
    }
};

QTEST_MAIN(TestUiAgentView)
#include "tst_ui_agent_view.moc"
