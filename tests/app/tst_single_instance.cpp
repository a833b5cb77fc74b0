// One app per session: the second launch asks the first to reopen its window.
#include "SingleInstance.h"
#include "WindowActivation.h"
#include "X11Launch.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class SingleInstanceTest : public QObject
{
    Q_OBJECT

    static QDBusConnection connection(const QString &name)
    {
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    }

private slots:
    void firstOwnsTheNameSecondAsksItToReopen()
    {
        QDBusConnection firstBus = connection(QStringLiteral("first"));
        QDBusConnection secondBus = connection(QStringLiteral("second"));
        QVERIFY(firstBus.isConnected() && secondBus.isConnected());

        auto first = std::make_unique<SingleInstance>(firstBus);
        QSignalSpy reopens(first.get(), &SingleInstance::reopenRequested);
        QCOMPARE(first->claim(), SingleInstance::Role::Primary);
        QCOMPARE(firstBus.interface()->serviceOwner(QStringLiteral("local.zqb.agent")).value(),
                 firstBus.baseService());

        SingleInstance second(secondBus);
        QCOMPARE(second.claim(), SingleInstance::Role::Secondary);
        QCOMPARE(reopens.size(), 1);

        SingleInstance third(secondBus);
        QCOMPARE(third.claim(), SingleInstance::Role::Secondary);
        QCOMPARE(reopens.size(), 2);

        // Once the first app ends, the next launch becomes the running app.
        first.reset();
        SingleInstance fourth(secondBus);
        QCOMPARE(fourth.claim(), SingleInstance::Role::Primary);
        QCOMPARE(reopens.size(), 2);

        QDBusConnection::disconnectFromBus(QStringLiteral("first"));
        QDBusConnection::disconnectFromBus(QStringLiteral("second"));
    }

    void aBackgroundLaunchLeavesTheRunningAppAlone()
    {
        QDBusConnection firstBus = connection(QStringLiteral("first"));
        QDBusConnection secondBus = connection(QStringLiteral("second"));
        auto first = std::make_unique<SingleInstance>(firstBus);
        QSignalSpy reopens(first.get(), &SingleInstance::reopenRequested);
        QCOMPARE(first->claim(), SingleInstance::Role::Primary);

        SingleInstance quiet(secondBus);
        QCOMPARE(quiet.claim(SingleInstance::ReopenRequest::Skip), SingleInstance::Role::Secondary);
        QTest::qWait(50);
        QCOMPARE(reopens.size(), 0);
        // The name stays with the running app.
        QCOMPARE(firstBus.interface()->serviceOwner(QStringLiteral("local.zqb.agent")).value(),
                 firstBus.baseService());

        first.reset();
        SingleInstance next(secondBus);
        QCOMPARE(next.claim(SingleInstance::ReopenRequest::Skip), SingleInstance::Role::Primary);

        QDBusConnection::disconnectFromBus(QStringLiteral("first"));
        QDBusConnection::disconnectFromBus(QStringLiteral("second"));
    }

    // A later launch hands the running app the activation token its launcher
    // gave it, so the running app's window may take the focus with it.
    void aLaterLaunchHandsItsActivationTokenOn()
    {
        QDBusConnection firstBus = connection(QStringLiteral("first"));
        QDBusConnection secondBus = connection(QStringLiteral("second"));
        auto first = std::make_unique<SingleInstance>(firstBus);
        QSignalSpy reopens(first.get(), &SingleInstance::reopenRequested);
        QCOMPARE(first->claim(SingleInstance::ReopenRequest::Send, QStringLiteral("not-for-a-primary")), SingleInstance::Role::Primary);
        QCOMPARE(reopens.size(), 0);

        SingleInstance second(secondBus);
        QCOMPARE(second.claim(SingleInstance::ReopenRequest::Send, QStringLiteral("sway-token_7f3a.b")),
                 SingleInstance::Role::Secondary);
        QCOMPARE(reopens.size(), 1);
        QCOMPARE(reopens.at(0).at(0).toString(), QStringLiteral("sway-token_7f3a.b"));

        SingleInstance third(secondBus);
        QCOMPARE(third.claim(), SingleInstance::Role::Secondary);
        QCOMPARE(reopens.size(), 2);
        QCOMPARE(reopens.at(1).at(0).toString(), QString());

        // A caller that knows only the call without a token is still answered.
        // (Events flow while waiting: the answer comes from this same process.)
        const QDBusMessage reply = secondBus.call(
            QDBusMessage::createMethodCall(SingleInstance::serviceName, SingleInstance::objectPath,
                                           SingleInstance::interfaceName, QStringLiteral("Reopen")),
            QDBus::BlockWithGui, 5000);
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reopens.size(), 3);
        QCOMPARE(reopens.at(2).at(0).toString(), QString());

        first.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("first"));
        QDBusConnection::disconnectFromBus(QStringLiteral("second"));
    }

    // The token is taken out of the environment before anything can inherit it.
    void theLaunchTokenIsTakenOutOfTheEnvironment()
    {
        qputenv("XDG_ACTIVATION_TOKEN", "launcher-token-42");
        QCOMPARE(WindowActivation::takeLaunchToken(), QStringLiteral("launcher-token-42"));
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        QCOMPARE(WindowActivation::takeLaunchToken(), QString());
    }

    // GNOME 43's launcher, and X11 launchers, hand the token on as a startup id.
    void aStartupIdIsTheTokenWhenThereIsNoOther()
    {
        qputenv("DESKTOP_STARTUP_ID", "gnome-shell/ZQB Agent/1234-5-host_TIME98765");
        QCOMPARE(WindowActivation::takeLaunchToken(),
                 QStringLiteral("gnome-shell/ZQB Agent/1234-5-host_TIME98765"));
        QVERIFY(!qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));

        // Both given: the activation token wins, and neither stays behind.
        qputenv("XDG_ACTIVATION_TOKEN", "wayland-token");
        qputenv("DESKTOP_STARTUP_ID", "startup-id_TIME1");
        QCOMPARE(WindowActivation::takeLaunchToken(), QStringLiteral("wayland-token"));
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        QVERIFY(!qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
        QCOMPARE(WindowActivation::takeLaunchToken(), QString());
    }

    void aStartupIdCarriesTheLaunchTime()
    {
        QCOMPARE(X11Launch::launchTime(QStringLiteral("xfce4-panel-1234-host-0_TIME4242")),
                 4242u);
        QCOMPARE(X11Launch::launchTime(QStringLiteral("kde/app/42_TIME4294967295")), 4294967295u);
        QCOMPARE(X11Launch::launchTime(QStringLiteral("no-time-here")), 0u);
        QCOMPARE(X11Launch::launchTime(QStringLiteral("x_TIME4294967296")), 0u); // too large
        QCOMPARE(X11Launch::launchTime(QStringLiteral("x_TIME12y")), 0u);
    }

    void theLauncherIsToldTheLaunchIsComplete()
    {
        QCOMPARE(X11Launch::removeMessage(QStringLiteral("panel-1_TIME5")),
                 QByteArray("remove: ID=panel-1_TIME5"));
        // GNOME's ids hold the app's name, blanks and all.
        QCOMPARE(X11Launch::removeMessage(QStringLiteral("gnome-shell/ZQB Agent/1-2_TIME3")),
                 QByteArray("remove: ID=\"gnome-shell/ZQB Agent/1-2_TIME3\""));
        QCOMPARE(X11Launch::removeMessage(QStringLiteral("a\"b\\c")),
                 QByteArray("remove: ID=\"a\\\"b\\\\c\""));
    }

    void withoutABusTheAppRunsAlone()
    {
        QDBusConnection none = QDBusConnection::connectToBus(
            QStringLiteral("unix:path=/nonexistent/zqb-no-bus"), QStringLiteral("none"));
        QVERIFY(!none.isConnected());
        SingleInstance instance(none);
        QCOMPARE(instance.claim(), SingleInstance::Role::Standalone);
        QDBusConnection::disconnectFromBus(QStringLiteral("none"));
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "tst_single_instance.moc"
