#include "Formatting.h"
#include "PlatformText.h"
#include "UiTestSupport.h"
#include "VersionStatus.h"

#include <QTest>

class TestUiTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UiTest::pinLocaleAndZone(); }

    void durationLabel_data()
    {
        QTest::addColumn<std::optional<quint64>>("seconds");
        QTest::addColumn<QString>("expected");
        QTest::newRow("absent") << std::optional<quint64>() << "Duration not available";
        const QList<std::pair<quint64, QString>> rows = {
            {0, "0 sec"},
            {59, "59 sec"},
            {60, "1 min 0 sec"},
            {240, "4 min 0 sec"},
            {3599, "59 min 59 sec"},
            {3600, "1 hr 0 min 0 sec"},
            {3661, "1 hr 1 min 1 sec"},
            {7207, "2 hr 0 min 7 sec"},
            {86399, "23 hr 59 min 59 sec"},
            {86400, "1 day 0 hr 0 min 0 sec"},
            {86405, "1 day 0 hr 0 min 5 sec"},
            {90061, "1 day 1 hr 1 min 1 sec"},
            {172800, "2 days 0 hr 0 min 0 sec"},
            {864000, "10 days 0 hr 0 min 0 sec"},
            {std::numeric_limits<quint64>::max(), "213503982334601 days 7 hr 0 min 15 sec"},
        };
        for (const auto &[s, text] : rows)
            QTest::newRow(qPrintable(QString::number(s))) << std::optional<quint64>(s) << text;
    }
    void durationLabel()
    {
        QFETCH(std::optional<quint64>, seconds);
        QFETCH(QString, expected);
        QCOMPARE(backupDurationLabel(seconds), expected);
    }

    void parsesInternetDateTimes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("utcSeconds"); // -1: must not parse
        QTest::newRow("zulu") << "2025-03-01T14:05:09Z" << qint64(1740837909);
        QTest::newRow("plus offset") << "2025-03-01T15:05:09+01:00" << qint64(1740837909);
        QTest::newRow("minus offset") << "2025-03-01T08:35:09-05:30" << qint64(1740837909);
        QTest::newRow("leap day") << "2024-02-29T00:00:00Z" << qint64(1709164800);
        QTest::newRow("fraction") << "2025-03-01T14:05:09.250Z" << qint64(-1);
        QTest::newRow("fraction with offset") << "2025-03-01T14:05:09.5+01:00" << qint64(-1);
        QTest::newRow("empty") << "" << qint64(-1);
        QTest::newRow("no zone") << "2025-03-01T14:05:09" << qint64(-1);
        QTest::newRow("space separator") << "2025-03-01 14:05:09Z" << qint64(-1);
        QTest::newRow("date only") << "2025-03-01" << qint64(-1);
        QTest::newRow("offset without colon") << "2025-03-01T14:05:09+0100" << qint64(-1);
        QTest::newRow("month 13") << "2025-13-01T14:05:09Z" << qint64(-1);
        QTest::newRow("february 30") << "2025-02-30T14:05:09Z" << qint64(-1);
        QTest::newRow("hour 24") << "2025-03-01T24:00:00Z" << qint64(-1);
        QTest::newRow("second 60") << "2025-03-01T14:05:60Z" << qint64(-1);
        QTest::newRow("trailing text") << "2025-03-01T14:05:09Zx" << qint64(-1);
        QTest::newRow("leading blank") << " 2025-03-01T14:05:09Z" << qint64(-1);
        QTest::newRow("arabic digits") << "\u0662025-03-01T14:05:09Z" << qint64(-1);
        QTest::newRow("garbage") << "yesterday" << qint64(-1);
    }
    void parsesInternetDateTimes()
    {
        QFETCH(QString, text);
        QFETCH(qint64, utcSeconds);
        const std::optional<QDateTime> parsed = parseInternetDateTime(text);
        if (utcSeconds < 0) {
            QVERIFY(!parsed);
        } else {
            QVERIFY(parsed);
            QCOMPARE(parsed->toSecsSinceEpoch(), utcSeconds);
        }
    }

    void compactDateShowsLocalTimeWithSeconds()
    {
        QCOMPARE(compactDate("2025-03-01T14:05:09Z"), QStringLiteral("4:05:09 PM"));
        QCOMPARE(compactDate("2025-03-01T14:05:09+01:00"), QStringLiteral("3:05:09 PM"));
    }

    void compactDateFollowsTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(compactDate("2025-03-01T14:05:09Z"), QStringLiteral("16:05:09"));
        UiTest::pinLocaleAndZone();
    }

    void unparsableTimesReadRecentlyAndNotYet_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("fractional seconds") << "2025-03-01T14:05:09.250Z";
        QTest::newRow("empty") << "";
        QTest::newRow("nonsense") << "not a date";
    }
    void unparsableTimesReadRecentlyAndNotYet()
    {
        QFETCH(QString, text);
        QCOMPARE(compactDate(text), QStringLiteral("recently"));
        QCOMPARE(dateLabel(text), QStringLiteral("Not yet"));
    }

    void dateLabelShowsAbbreviatedDateAndShortTime()
    {
        QCOMPARE(dateLabel(std::nullopt), QStringLiteral("Not yet"));
        QCOMPARE(dateLabel(QStringLiteral("2025-03-01T12:05:09Z")),
                 QStringLiteral("Mar 1, 2025 at 2:05 PM"));
        // Crossing midnight in the local zone changes the date shown.
        QCOMPARE(dateLabel(QStringLiteral("2025-12-31T23:30:00Z")),
                 QStringLiteral("Jan 1, 2026 at 1:30 AM"));
    }

    void dateLabelFollowsTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(dateLabel(QStringLiteral("2025-03-01T12:05:09Z")),
                 QStringLiteral("1. M\u00e4rz 2025, 14:05"));
        UiTest::pinLocaleAndZone();
    }

    void localeStylesAreDerivedFromLocaleData()
    {
        const QLocale us(QLocale::English, QLocale::UnitedStates);
        QCOMPARE(standardTimeFormat(us), QStringLiteral("h:mm:ss AP"));
        QCOMPARE(abbreviatedDateFormat(us), QStringLiteral("MMM d, yyyy"));
        const QLocale fr(QLocale::French, QLocale::France);
        QCOMPARE(abbreviatedDateFormat(fr), QStringLiteral("d MMM yyyy"));
    }

    void intervalLabels_data()
    {
        QTest::addColumn<qint64>("minutes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("15") << qint64(15) << "15 minutes";
        QTest::newRow("59") << qint64(59) << "59 minutes";
        QTest::newRow("60") << qint64(60) << "1 hour";
        QTest::newRow("90") << qint64(90) << "1 hours";
        QTest::newRow("240") << qint64(240) << "4 hours";
        QTest::newRow("720") << qint64(720) << "12 hours";
        QTest::newRow("1439") << qint64(1439) << "23 hours";
        QTest::newRow("1440") << qint64(1440) << "1 day";
        QTest::newRow("2880") << qint64(2880) << "1 day";
        QTest::newRow("0") << qint64(0) << "0 minutes";
    }
    void intervalLabels()
    {
        QFETCH(qint64, minutes);
        QFETCH(QString, expected);
        QCOMPARE(intervalLabel(minutes), expected);
    }

    void scheduleChoicesAreFixed()
    {
        QCOMPARE(scheduleIntervals(), (QList<qint64>{15, 60, 240, 720, 1440}));
    }

    void bandwidthChoicesAreMbpsInKibPerSecond()
    {
        QStringList labels;
        QList<qint64> values;
        for (const BandwidthChoice &c : bandwidthChoices()) {
            labels << c.label;
            values << c.kibPerSecond;
        }
        QCOMPARE(labels,
                 (QStringList{"Unlimited", "1 Mbps", "5 Mbps", "10 Mbps", "25 Mbps", "50 Mbps"}));
        QCOMPARE(values, (QList<qint64>{0, 128, 640, 1280, 3200, 6400}));
    }

    void durationDetailWithoutStatusOrProgress()
    {
        const DurationDetail none{"Last backup duration", "Duration not available"};
        QCOMPARE(backupDurationDetail(std::nullopt), none);
        QCOMPARE(backupDurationDetail(UiTest::status()), none);
    }

    void durationDetailLabels_data()
    {
        QTest::addColumn<QString>("phase");
        QTest::addColumn<bool>("active");
        QTest::addColumn<QString>("label");
        QTest::newRow("completed") << "completed" << true << "Last backup duration";
        QTest::newRow("failed") << "failed" << true << "Last attempt duration";
        QTest::newRow("cancelled") << "cancelled" << false << "Cancelled attempt duration";
        QTest::newRow("Completed, active") << "Completed" << true << "Current backup elapsed";
        QTest::newRow("Completed, idle") << "Completed" << false << "Last backup duration";
        QTest::newRow("uploading, active") << "uploading" << true << "Current backup elapsed";
        QTest::newRow("uploading, idle") << "uploading" << false << "Last backup duration";
    }
    void durationDetailLabels()
    {
        QFETCH(QString, phase);
        QFETCH(bool, active);
        QFETCH(QString, label);
        AgentUIStatus s = UiTest::status();
        s.runtime.active = active;
        BackupProgressStatus p = UiTest::progress(phase);
        p.elapsedSeconds = 3723;
        s.runtime.backupProgress = p;
        QCOMPARE(backupDurationDetail(s), (DurationDetail{label, "1 hr 2 min 3 sec"}));
    }

    void completedWithoutElapsedHasNoDuration()
    {
        AgentUIStatus s = UiTest::status();
        s.runtime.backupProgress = UiTest::progress("completed");
        QCOMPARE(backupDurationDetail(s),
                 (DurationDetail{"Last backup duration", "Duration not available"}));
        s.runtime.backupProgress->elapsedSeconds = 0;
        QCOMPARE(backupDurationDetail(s).value, QStringLiteral("0 sec"));
    }

    void versionWithoutStatus()
    {
        QVERIFY(!updateIsActuallyAvailable(std::nullopt));
        QCOMPARE(versionStatusLabel(std::nullopt), QStringLiteral("Checking latest\u2026"));
        QCOMPARE(versionStatusColor(std::nullopt), ColorRole::Secondary);
        QCOMPARE(versionStatusSymbol(std::nullopt), Symbol::Clock);
    }

    void versionRow_data()
    {
        QTest::addColumn<bool>("announced");
        QTest::addColumn<std::optional<QString>>("latest");
        QTest::addColumn<bool>("reachable");
        QTest::addColumn<bool>("available");
        QTest::addColumn<QString>("label");
        QTest::addColumn<ColorRole>("color");
        QTest::addColumn<Symbol>("symbol");
        using S = std::optional<QString>;
        QTest::newRow("update to 2.4.1")
            << true << S("2.4.1") << true << true << "Update available: 2.4.1" << ColorRole::Blue
            << Symbol::ArrowDownCircle;
        QTest::newRow("update, version unknown")
            << true << S() << false << true << "Update available: new release" << ColorRole::Blue
            << Symbol::ArrowDownCircle;
        QTest::newRow("announced same version, reachable")
            << true << S("1.9.0") << true << false << "Latest version" << ColorRole::Green
            << Symbol::CheckCircle;
        QTest::newRow("announced same version, unreachable")
            << true << S("1.9.0") << false << false << "Could not verify latest"
            << ColorRole::Orange << Symbol::WarningTriangle;
        QTest::newRow("latest differs, none announced")
            << false << S("2.0") << true << false << "Checking latest\u2026" << ColorRole::Secondary
            << Symbol::Clock;
        QTest::newRow("latest unknown") << false << S() << true << false << "Checking latest\u2026"
                                        << ColorRole::Secondary << Symbol::Clock;
        QTest::newRow("unreachable") << false << S() << false << false << "Could not verify latest"
                                     << ColorRole::Orange << Symbol::WarningTriangle;
    }
    void versionRow()
    {
        QFETCH(bool, announced);
        QFETCH(std::optional<QString>, latest);
        QFETCH(bool, reachable);
        QFETCH(bool, available);
        QFETCH(QString, label);
        QFETCH(ColorRole, color);
        QFETCH(Symbol, symbol);
        AgentUIStatus s = UiTest::status();
        s.runtime.agentUpdateAvailable = announced;
        s.runtime.latestAgentVersion = latest;
        s.runtime.serviceReachable = reachable;
        QCOMPARE(updateIsActuallyAvailable(s), available);
        QCOMPARE(versionStatusLabel(s), label);
        QCOMPARE(versionStatusColor(s), color);
        QCOMPARE(versionStatusSymbol(s), symbol);
    }

    void localMachineWording()
    {
        QCOMPARE(localMachineText("Connect this Mac", false),
                 QStringLiteral("Connect this computer"));
        QCOMPARE(localMachineText("Reading this Mac's existing ZQB enrollment\u2026", false),
                 QStringLiteral("Reading this computer's existing ZQB enrollment\u2026"));
        QCOMPARE(localMachineText("On the target Mac, choose Settings", false),
                 QStringLiteral("On the target Mac, choose Settings"));
        QCOMPARE(localMachineText("Connect this Mac", true), QStringLiteral("Connect this Mac"));
#ifndef Q_OS_MACOS
        QCOMPARE(localMachineText("Enroll this Mac"), QStringLiteral("Enroll this computer"));
        QVERIFY(!platformOffersFullDiskAccess());
#endif
    }
};

QTEST_GUILESS_MAIN(TestUiTexts)
#include "tst_ui_texts.moc"
