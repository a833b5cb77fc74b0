// In-process broadcasts: by name, synchronous, observers bound to a context.

#include "NotificationCenter.h"

#include <QThread>
#include <QtTest>

#include <memory>

class NotificationCenterTest : public QObject
{
    Q_OBJECT

private slots:
    void deliversByNameSynchronouslyWithUserInfo();
    void observerEndsWithItsContext();
    void handlerMayDestroyAnotherContextDuringDelivery();
    void handlerMayObserveDuringDelivery();
    void postFromWorkerThreadArrivesOnMainThread();
    void defaultCenterIsOneObject();
};

void NotificationCenterTest::deliversByNameSynchronouslyWithUserInfo()
{
    NotificationCenter center;
    QObject context;
    QList<QVariantMap> first;
    QList<QVariantMap> second;
    center.observe(QStringLiteral("A"), &context, [&](const QVariantMap &info) { first << info; });
    center.observe(QStringLiteral("A"), &context, [&](const QVariantMap &info) { second << info; });
    center.observe(QStringLiteral("B"), &context,
                   [&](const QVariantMap &) { QFAIL("wrong name"); });
    center.post(QStringLiteral("A"), {{"state", "connected"}});
    QCOMPARE(first.size(), 1); // already delivered when post() returns
    QCOMPARE(second.size(), 1);
    QCOMPARE(first.first(), (QVariantMap{{"state", "connected"}}));
    center.post(QStringLiteral("a")); // names are exact
    QCOMPARE(first.size(), 1);
}

void NotificationCenterTest::observerEndsWithItsContext()
{
    NotificationCenter center;
    int calls = 0;
    auto context = std::make_unique<QObject>();
    center.observe(QStringLiteral("A"), context.get(), [&](const QVariantMap &) { ++calls; });
    center.post(QStringLiteral("A"));
    context.reset();
    center.post(QStringLiteral("A"));
    QCOMPARE(calls, 1);
    center.observe(QStringLiteral("A"), nullptr, [&](const QVariantMap &) { ++calls; });
    center.post(QStringLiteral("A"));
    QCOMPARE(calls, 1); // an observer needs a context
}

void NotificationCenterTest::handlerMayDestroyAnotherContextDuringDelivery()
{
    NotificationCenter center;
    QObject first;
    auto second = std::make_unique<QObject>();
    int secondCalls = 0;
    center.observe(QStringLiteral("A"), &first, [&](const QVariantMap &) { second.reset(); });
    center.observe(QStringLiteral("A"), second.get(), [&](const QVariantMap &) { ++secondCalls; });
    center.post(QStringLiteral("A"));
    QCOMPARE(secondCalls, 0);
}

void NotificationCenterTest::handlerMayObserveDuringDelivery()
{
    NotificationCenter center;
    QObject context;
    int inner = 0;
    center.observe(QStringLiteral("A"), &context, [&](const QVariantMap &) {
        center.observe(QStringLiteral("A"), &context, [&](const QVariantMap &) { ++inner; });
    });
    center.post(QStringLiteral("A"));
    QCOMPARE(inner, 0); // joined after this delivery began
    center.post(QStringLiteral("A"));
    QCOMPARE(inner, 1);
}

void NotificationCenterTest::postFromWorkerThreadArrivesOnMainThread()
{
    NotificationCenter center;
    QObject context;
    QThread *deliveredOn = nullptr;
    center.observe(QStringLiteral("A"), &context,
                   [&](const QVariantMap &) { deliveredOn = QThread::currentThread(); });
    std::unique_ptr<QThread> worker(QThread::create([&] { center.post(QStringLiteral("A")); }));
    worker->start();
    QVERIFY(worker->wait(5000));
    QTRY_VERIFY(deliveredOn != nullptr);
    QCOMPARE(deliveredOn, QThread::currentThread());
}

void NotificationCenterTest::defaultCenterIsOneObject()
{
    QCOMPARE(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

QTEST_GUILESS_MAIN(NotificationCenterTest)
#include "tst_notification_center.moc"
