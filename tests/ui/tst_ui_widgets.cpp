#include "BetaWarning.h"
#include "ConnectionSection.h"
#include "DialogFolderChooser.h"
#include "DotWidget.h"
#include "LineLabel.h"
#include "MessageCard.h"
#include "SectionBox.h"
#include "StatusBadge.h"
#include "Symbols.h"
#include "UiTestSupport.h"
#include "VersionCapsule.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <memory>

class TestUiWidgets : public QObject
{
    Q_OBJECT

    template <typename T> static T *child(const QWidget &parent, const char *name)
    {
        T *found = parent.findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no child %s", name);
        return found;
    }

    static RuntimeStatus runningUpload()
    {
        RuntimeStatus r = UiTest::status("backing-up").runtime;
        r.active = true;
        BackupProgressStatus p = UiTest::progress("uploading");
        p.sourceIndex = 2;
        p.sourceCount = 3;
        p.totalObjects = 10;
        p.objectsUploaded = 7;
        p.objectsReused = 6;
        p.lastProgressAt = "2025-03-01T14:05:09.250Z";
        p.elapsedSeconds = 61;
        r.backupProgress = p;
        return r;
    }

    // A group box of either kind with one line of content, drawn under `style`.
    template <typename Box>
    static QImage drawnGroup(QStyle *style, const QString &title, bool checkable, bool dark)
    {
        Box box(title);
        box.setStyle(style);
        box.setCheckable(checkable);
        if (dark) {
            QPalette palette = style->standardPalette();
            palette.setColor(QPalette::Window, QColor(0x2d, 0x2d, 0x2d));
            palette.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
            box.setPalette(palette);
        }
        auto *column = new QVBoxLayout(&box);
        column->addWidget(new QLabel(QStringLiteral("Contents")));
        box.resize(320, 120);
        return box.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    }

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void badgeWithoutRecord()
    {
        StatusBadge badge;
        QCOMPARE(badge.dot()->color(), colorForRole(ColorRole::Red, badge.palette()));
        QCOMPARE(child<QLabel>(badge, "badgeTitle")->text(), QStringLiteral("Checking status"));
        QCOMPARE(child<QLabel>(badge, "badgeMessage")->text(),
                 QStringLiteral("Reading the local ZQB Agent state\u2026"));
        QVERIFY(child<QLabel>(badge, "badgeError")->isHidden());
        QVERIFY(child<QWidget>(badge, "badgeProgress")->isHidden());
    }

    void badgeShowsProgress()
    {
        StatusBadge badge;
        badge.setState(badgeState(runningUpload()));
        QCOMPARE(badge.dot()->color(), colorForRole(ColorRole::Blue, badge.palette()));
        QCOMPARE(child<QLabel>(badge, "badgeTitle")->text(), QStringLiteral("Backing Up"));
        QVERIFY(!child<QWidget>(badge, "badgeProgress")->isHidden());
        auto *bar = child<QProgressBar>(badge, "badgeBar");
        QVERIFY(!bar->isHidden());
        QCOMPARE(bar->value(), bar->maximum()); // 13 of 10 is capped: full
        QVERIFY(bar->maximumWidth() <= 240);
        QVERIFY(child<QWidget>(badge, "badgeSpinner")->isHidden());
        QCOMPARE(child<QLabel>(badge, "badgePhase")->text(),
                 QStringLiteral("Folder 2/3 \u00b7 7/10 uploaded \u00b7 6 reused"));
        QCOMPARE(child<QLabel>(badge, "badgeLastProgress")->text(),
                 QStringLiteral("Last progress recently"));
        QCOMPARE(child<QLabel>(badge, "badgeElapsed")->text(),
                 QStringLiteral("Elapsed time 1 min 1 sec"));
    }

    void badgeProgressLinesElideWithoutMovingTheLayout()
    {
        StatusBadge badge;
        badge.setState(badgeState(runningUpload()));
        badge.resize(520, badge.heightForWidth(520));
        badge.show();
        QVERIFY(QTest::qWaitForWindowExposed(&badge));
        auto *phase = dynamic_cast<LineLabel *>(child<QLabel>(badge, "badgePhase"));
        QVERIFY(phase);
        QCOMPARE(phase->shownText(), phase->text()); // a short line is shown whole
        const int phaseHeight = phase->height();
        const int badgeHeight = badge.heightForWidth(520);

        BadgeState state = badgeState(runningUpload());
        const QString longLine = QStringLiteral("Folder 2/3 \u00b7 ") +
                                 QStringLiteral("a very long phase description ").repeated(8);
        state.progress->phaseLine = longLine;
        state.progress->elapsedLine = QStringLiteral("Elapsed time ") + longLine;
        badge.setState(state);
        QCoreApplication::processEvents();

        QCOMPARE(phase->text(), longLine); // the whole text stays readable to tools
        QVERIFY(phase->shownText().endsWith(QChar(0x2026)));
        QVERIFY(phase->shownText().startsWith(QStringLiteral("Folder 2/3")));
        QVERIFY(phase->fontMetrics().horizontalAdvance(phase->shownText()) <= phase->width());
        QCOMPARE(phase->height(), phaseHeight);
        QCOMPARE(badge.heightForWidth(520), badgeHeight);
        QVERIFY(badge.minimumSizeHint().width() < 520);
    }

    void wrappedLabelHeightFollowsTextAndFont()
    {
        WrappedLabel cached(QStringLiteral("Interrupted transfers resume from durable receipts."));
        QLabel plain(cached.text());
        plain.setTextFormat(Qt::PlainText);
        plain.setWordWrap(true);
        QVERIFY(cached.wordWrap());
        QCOMPARE(cached.heightForWidth(120), plain.heightForWidth(120));
        QCOMPARE(cached.heightForWidth(120), plain.heightForWidth(120)); // from the cache
        const int oneText = cached.heightForWidth(120);

        const QString longer = cached.text().repeated(3);
        cached.setText(longer);
        plain.setText(longer);
        QVERIFY(cached.heightForWidth(120) > oneText);
        QCOMPARE(cached.heightForWidth(120), plain.heightForWidth(120));
        QCOMPARE(cached.heightForWidth(400), plain.heightForWidth(400));

        QFont big = cached.font();
        big.setPointSizeF(big.pointSizeF() * 2);
        const int smallFont = cached.heightForWidth(120);
        cached.setFont(big);
        plain.setFont(big);
        QVERIFY(cached.heightForWidth(120) > smallFont);
        QCOMPARE(cached.heightForWidth(120), plain.heightForWidth(120));

        cached.setContentsMargins(0, 10, 0, 10);
        plain.setContentsMargins(0, 10, 0, 10);
        QCOMPARE(cached.heightForWidth(120), plain.heightForWidth(120));
    }

    void wrappedLabelHintsAskForTwoHeightsOnly()
    {
        const QString sentence =
            QStringLiteral("Interrupted transfers resume from durable receipts.");
        WrappedLabel label(sentence.repeated(4));
        QLabel plain(label.text());
        plain.setTextFormat(Qt::PlainText);
        plain.setWordWrap(true);

        // At least one line tall, as QLabel has it; the minimum width does not
        // grow with the text (the column gives the width).
        QCOMPARE(label.minimumSizeHint().height(), plain.heightForWidth(QWIDGETSIZE_MAX));
        const QSize preferred = label.sizeHint();
        QCOMPARE(preferred.width(),
                 label.fontMetrics().averageCharWidth() * WrappedLabel::preferredColumns);
        QCOMPARE(preferred.height(), plain.heightForWidth(preferred.width()));
        QVERIFY(preferred.height() > label.minimumSizeHint().height()); // it wraps there

        // A short text: one line at the preferred width too.
        label.setText(sentence.left(12));
        plain.setText(label.text());
        QCOMPARE(label.sizeHint().width(), preferred.width());
        QCOMPARE(label.sizeHint().height(), plain.heightForWidth(QWIDGETSIZE_MAX));

        // Unwrapped, it is an ordinary label.
        label.setText(sentence);
        label.setWordWrap(false);
        plain.setText(sentence);
        plain.setWordWrap(false);
        QCOMPARE(label.sizeHint(), plain.sizeHint());
        QCOMPARE(label.minimumSizeHint(), plain.minimumSizeHint());
    }

    void badgeSpinnerWhenIndeterminate()
    {
        StatusBadge badge;
        RuntimeStatus r = runningUpload();
        r.backupProgress->totalObjects = 0;
        r.backupProgress->lastProgressAt.reset();
        r.backupProgress->elapsedSeconds.reset();
        badge.setState(badgeState(r));
        QVERIFY(child<QProgressBar>(badge, "badgeBar")->isHidden());
        QVERIFY(!child<QWidget>(badge, "badgeSpinner")->isHidden());
        QVERIFY(child<QLabel>(badge, "badgeLastProgress")->isHidden());
        QVERIFY(child<QLabel>(badge, "badgeElapsed")->isHidden());
    }

    void badgeErrorLineAndBackToIdle()
    {
        StatusBadge badge;
        RuntimeStatus r = runningUpload();
        r.lastError = "Target went away";
        badge.setState(badgeState(r));
        QCOMPARE(child<QLabel>(badge, "badgeError")->text(), QStringLiteral("Target went away"));
        QVERIFY(!child<QLabel>(badge, "badgeError")->isHidden());
        r.lastError = "";
        r.active = false;
        badge.setState(badgeState(r));
        QVERIFY(child<QLabel>(badge, "badgeError")->isHidden());
        QVERIFY(child<QWidget>(badge, "badgeProgress")->isHidden());
    }

    void badgeRecoloursWithThePalette()
    {
        QWidget parent;
        auto *badge = new StatusBadge(&parent);
        badge->setState(badgeState(UiTest::status("connected").runtime));
        QPalette dark = parent.palette();
        dark.setColor(QPalette::Window, QColor(30, 30, 30));
        dark.setColor(QPalette::WindowText, QColor(230, 230, 230));
        parent.setPalette(dark);
        QCOMPARE(badge->dot()->color(), colorForRole(ColorRole::Green, dark));
        QVERIFY(colorForRole(ColorRole::Green, dark) !=
                colorForRole(ColorRole::Green, QApplication::style()->standardPalette()));
    }

    void messageCardFitsThreeLinesAndDismisses()
    {
        MessageCard card(ColorRole::Red);
        card.resize(420, 100);
        const QString longText = QString("A long message about a failed backup. ").repeated(12);
        card.setText(longText);
        card.show();
        QVERIFY(QTest::qWaitForWindowExposed(&card));
        const QString shown = card.shownText();
        QCOMPARE(shown.count(QLatin1Char('\n')), 2);
        QVERIFY(shown.endsWith(QChar(0x2026)));
        QCOMPARE(card.text(), longText);

        card.setText(QStringLiteral("Short"));
        QCOMPARE(card.shownText(), QStringLiteral("Short"));

        QToolButton *dismiss = card.dismissButton();
        QCOMPARE(dismiss->accessibleName(), QStringLiteral("Dismiss"));
        QVERIFY(!dismiss->icon().isNull());
        QSignalSpy dismissed(&card, &MessageCard::dismissed);
        QTest::mouseClick(dismiss, Qt::LeftButton);
        QCOMPARE(dismissed.count(), 1);
    }

    void capsuleShowsLabel()
    {
        VersionCapsule capsule;
        capsule.setState({"Latest version", ColorRole::Green, Symbol::CheckCircle});
        QCOMPARE(capsule.accessibleName(), QStringLiteral("Latest version"));
        QVERIFY(capsule.sizeHint().width() > capsule.fontMetrics().horizontalAdvance("Latest"));
        // The capsule is filled with its colour at 10 % opacity over the window.
        const QImage image = capsule.grab().toImage();
        const QColor fill = image.pixelColor(image.width() - 3, image.height() / 2);
        const QColor green = colorForRole(ColorRole::Green, capsule.palette());
        const QColor window = capsule.palette().color(QPalette::Window);
        const auto blend = [](int under, int over) { return under * 0.9 + over * 0.1; };
        QVERIFY(qAbs(fill.red() - blend(window.red(), green.red())) <= 3);
        QVERIFY(qAbs(fill.green() - blend(window.green(), green.green())) <= 3);
        QVERIFY(qAbs(fill.blue() - blend(window.blue(), green.blue())) <= 3);
    }

    void connectionSectionRendersRows()
    {
        ConnectionSection section;
        QCOMPARE(section.title(), QStringLiteral("Connection and compatibility"));
        QCOMPARE(section.shownRows(), connectionState(std::nullopt, false).rows);
        QVERIFY(section.updateCard()->isHidden());
        QCOMPARE(section.checkButton()->text(), QStringLiteral("Check service"));

        AgentUIStatus s = UiTest::status();
        s.runtime.agentUpdateAvailable = true;
        s.runtime.latestAgentVersion = "2.4.1";
        section.setState(connectionState(s, true));
        QVERIFY(!section.updateCard()->isHidden());
        QVERIFY(!section.installButton()->isEnabled());
        QVERIFY(!section.checkButton()->isEnabled());
        QCOMPARE(section.checkButton()->text(), QStringLiteral("Check connection"));
        QCOMPARE(section.shownRows().at(3), (DetailRow{"Latest compatible agent", "2.4.1"}));

        section.setState(connectionState(s, false));
        QSignalSpy install(&section, &ConnectionSection::installRequested);
        QSignalSpy check(&section, &ConnectionSection::checkRequested);
        QTest::mouseClick(section.installButton(), Qt::LeftButton);
        QTest::mouseClick(section.checkButton(), Qt::LeftButton);
        QCOMPARE(install.count(), 1);
        QCOMPARE(check.count(), 1);
    }

    void betaWarning()
    {
        BetaWarning warning;
        QCOMPARE(warning.text(), QStringLiteral("Beta: keep an independent verified backup. Test "
                                                "restoring before relying on ZQB for important "
                                                "data."));
        const QPixmap icon = child<QLabel>(warning, "betaWarningIcon")->pixmap();
        QVERIFY(!icon.isNull());
    }

    void symbolsAreBundledAndTinted_data()
    {
        QTest::addColumn<Symbol>("symbol");
        QTest::newRow("drive") << Symbol::DriveCheck;
        QTest::newRow("folder") << Symbol::Folder;
        QTest::newRow("minus") << Symbol::MinusCircle;
        QTest::newRow("xmark") << Symbol::XMark;
        QTest::newRow("arrow") << Symbol::ArrowDownCircle;
        QTest::newRow("check") << Symbol::CheckCircle;
        QTest::newRow("warning") << Symbol::WarningTriangle;
        QTest::newRow("clock") << Symbol::Clock;
    }
    void symbolsAreBundledAndTinted()
    {
        QFETCH(Symbol, symbol);
        const QColor tint(200, 40, 10);
        const QImage image = Symbols::pixmap(symbol, tint, QSize(32, 32)).toImage();
        QCOMPARE(image.size(), QSize(32, 32));
        int opaque = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (c.alpha() == 255) {
                    ++opaque;
                    QCOMPARE(c.rgb(), tint.rgb());
                }
            }
        QVERIFY2(opaque > 20, "the symbol draws something");
        QVERIFY(opaque < 32 * 32);
    }

    void scalableSymbolIsTintedAtAnySize()
    {
        const QColor tint(10, 160, 60);
        const QList<QSize> advertised{QSize(16, 16), QSize(22, 22)};
        const QIcon icon = Symbols::scalableIcon(Symbol::DriveCheck, tint, advertised);
        QCOMPARE(icon.availableSizes(), advertised);
        for (int side : {16, 22, 37}) {
            const QImage image = icon.pixmap(side, side).toImage();
            QCOMPARE(image.size(), QSize(side, side));
            bool tinted = false;
            for (int y = 0; y < side && !tinted; ++y)
                for (int x = 0; x < side && !tinted; ++x)
                    tinted = image.pixelColor(x, y).alpha() == 255 &&
                             image.pixelColor(x, y).rgb() == tint.rgb();
            QVERIFY2(tinted, qPrintable(QStringLiteral("tinted at %1 px").arg(side)));
        }
    }

    void appIconRendersAtDesktopSizes()
    {
        const QIcon icon = Symbols::appIcon();
        for (int side : {16, 32, 256}) {
            const QImage image = icon.pixmap(side, side).toImage();
            QCOMPARE(image.width(), side);
            QVERIFY(image.pixelColor(side / 2, side / 2).alpha() > 0);
        }
        // A window icon goes out in the advertised sizes only: small ones.
        const QList<QSize> sent = icon.availableSizes();
        QCOMPARE(sent.size(), 5);
        QCOMPARE(sent.first(), QSize(16, 16));
        QCOMPARE(sent.last(), QSize(64, 64));
        // Any other size is drawn exactly, when asked for.
        QCOMPARE(icon.pixmap(40, 40).size(), QSize(40, 40));
        // Drawn once per size, then kept.
        QCOMPARE(icon.pixmap(48, 48).cacheKey(), icon.pixmap(48, 48).cacheKey());
        QVERIFY(!icon.pixmap(QSize(48, 48), QIcon::Disabled).isNull());
    }

    void sectionFrameLooksLikeTheDefaultStyles_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("dark");
        QTest::newRow("titled") << QStringLiteral("Folders to protect") << false << false;
        QTest::newRow("titled, dark") << QStringLiteral("Network transfer") << false << true;
        QTest::newRow("untitled") << QString() << false << false;
        QTest::newRow("checkable") << QStringLiteral("Skip patterns") << true << false;
    }

    void sectionFrameLooksLikeTheDefaultStyles()
    {
        QFETCH(QString, title);
        QFETCH(bool, checkable);
        QFETCH(bool, dark);
        const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
        QVERIFY(fusion);
        const QImage own = drawnGroup<QGroupBox>(fusion.get(), title, checkable, dark);
        const QImage section = drawnGroup<SectionBox>(fusion.get(), title, checkable, dark);
        QCOMPARE(section.size(), own.size());
        // Same place, same title, same pixels.
        QCOMPARE(section, own);
    }

    void sectionIsAPlainGroupBoxUnderOtherStyles()
    {
        const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
        QVERIFY(windows);
        const QString title = QStringLiteral("Automatic protection");
        QCOMPARE(drawnGroup<SectionBox>(windows.get(), title, false, false),
                 drawnGroup<QGroupBox>(windows.get(), title, false, false));
    }

    void folderChooserSettings()
    {
        DialogFolderChooser chooser;
        const std::unique_ptr<QFileDialog> dialog = chooser.createDialog();
        // Asked from no window, the panel is modal to the whole app.
        QCOMPARE(dialog->parentWidget(), nullptr);
        QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Choose folders ZQB should protect"));
        QCOMPARE(dialog->labelText(QFileDialog::Accept), QStringLiteral("Protect folders"));
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
        QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
        QVERIFY(dialog->testOption(QFileDialog::ReadOnly));
        auto *list = dialog->findChild<QListView *>(QStringLiteral("listView"));
        auto *tree = dialog->findChild<QTreeView *>(QStringLiteral("treeView"));
        QVERIFY(list && tree);
        QCOMPARE(list->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(tree->selectionMode(), QAbstractItemView::ExtendedSelection);
        // ReadOnly hides the "new folder" button.
        auto *newFolder = dialog->findChild<QToolButton *>(QStringLiteral("newFolderButton"));
        QVERIFY(!newFolder || !newFolder->isVisibleTo(dialog.get()) || !newFolder->isEnabled());
    }

    void folderChooserBelongsToItsWindow()
    {
        QWidget window;
        auto *inner = new QPushButton(QStringLiteral("Add folders\u2026"), &window);
        int asked = 0;
        DialogFolderChooser chooser([&] {
            ++asked;
            return static_cast<QWidget *>(inner);
        });
        const std::unique_ptr<QFileDialog> dialog = chooser.createDialog();
        QCOMPARE(asked, 1);
        QCOMPARE(dialog->parentWidget(), &window); // the window, not the button in it
        QVERIFY(dialog->isWindow());
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
    }
};

QTEST_MAIN(TestUiWidgets)
#include "tst_ui_widgets.moc"
