// The modal hint for GNOME Shell under Wayland, where there is no Wayland
// display: Qt's offscreen and minimal platforms (the test runs on each). The
// folder panel must open and close there exactly as before, with no hint.
#include "DialogFolderChooser.h"
#include "WaylandModalHint.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QTest>
#include <QWidget>

class WaylandModalHintTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutWaylandTheCompositorIsNotAsked()
    {
        QVERIFY2(!QGuiApplication::platformName().startsWith(QLatin1String("wayland")),
                 "this test runs on a platform without a Wayland display");
        QVERIFY(!WaylandModalHint::isAvailable());
    }

    void thePanelOpensAndClosesWithoutAHint()
    {
        QWidget window;
        window.resize(700, 600);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        int prepared = 0;
        DialogFolderChooser chooser([&] { return &window; },
                                    [&](QWidget *dialog) {
                                        ++prepared;
                                        WaylandModalHint::attach(dialog);
                                    });
        std::unique_ptr<QFileDialog> dialog = chooser.createDialog();
        QCOMPARE(prepared, 1);
        QCOMPARE(dialog->findChildren<WaylandModalHint *>().size(), 0);

        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        dialog->reject();
        QVERIFY(!dialog->isVisible());
    }
};

QTEST_MAIN(WaylandModalHintTest)
#include "tst_wayland_modal_hint.moc"
