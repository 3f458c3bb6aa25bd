#include "model/RoyaltyPeriod.h"

#include <QSet>
#include <QTest>

namespace {

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), QTimeZone::utc());
}

QDateTime local(const QTimeZone &zone, int year, int month, int day, int hour = 0, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), zone);
}

} // namespace

class TestRoyaltyPeriod : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rawValuesAreTheTitles();
    void allCasesAreInPickerOrder();
    void rawValueRoundTrips();
    void unknownRawValueConstructsNothing_data();
    void unknownRawValueConstructsNothing();
    void periodsAreHashable();
    void todayStartsAndEndsAtStartOfToday();
    void yesterdayIsTheDayBefore();
    void yesterdayOnFirstOfMonthIsLastDayOfPreviousMonth();
    void yesterdayOnNewYearsDayIsLastDayOfPreviousYear();
    void thisMonthEndsAtStartOfTomorrow();
    void thisMonthOnLastDayEndsAtStartOfToday();
    void thisMonthOnFirstDayStartsAtStartOfToday();
    void thisMonthOnLastDayOfFebruaryInLeapYear();
    void daysFollowTheCalendarTimeZone();
    void startOfDayAcrossSpringForward();
    void startOfDayAcrossFallBack();
    void dayThatBeginsAtOneInTheMorning();
    void monthAndYesterdayAroundMidnightTransition();
};

void TestRoyaltyPeriod::rawValuesAreTheTitles()
{
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::today).rawValue(), QStringLiteral("Today"));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::yesterday).rawValue(), QStringLiteral("Yesterday"));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::thisMonth).rawValue(), QStringLiteral("This Month"));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::thisMonth).id(), QStringLiteral("This Month"));
}

void TestRoyaltyPeriod::allCasesAreInPickerOrder()
{
    constexpr auto cases = RoyaltyPeriod::allCases();
    QCOMPARE(cases.size(), std::size_t(3));
    QVERIFY(cases[0] == RoyaltyPeriod::today);
    QVERIFY(cases[1] == RoyaltyPeriod::yesterday);
    QVERIFY(cases[2] == RoyaltyPeriod::thisMonth);
}

void TestRoyaltyPeriod::rawValueRoundTrips()
{
    for (const RoyaltyPeriod period : RoyaltyPeriod::allCases()) {
        const auto parsed = RoyaltyPeriod::fromRawValue(period.rawValue());
        QVERIFY(parsed.has_value());
        QVERIFY(*parsed == period);
    }
}

void TestRoyaltyPeriod::unknownRawValueConstructsNothing_data()
{
    QTest::addColumn<QString>("raw");
    QTest::newRow("lower case") << QStringLiteral("today");
    QTest::newRow("case name") << QStringLiteral("thisMonth");
    QTest::newRow("trailing space") << QStringLiteral("Today ");
    QTest::newRow("other version") << QStringLiteral("Last Week");
    QTest::newRow("empty") << QString();
}

void TestRoyaltyPeriod::unknownRawValueConstructsNothing()
{
    QFETCH(QString, raw);
    QVERIFY(!RoyaltyPeriod::fromRawValue(raw).has_value());
}

void TestRoyaltyPeriod::periodsAreHashable()
{
    const QSet<RoyaltyPeriod> periods{RoyaltyPeriod::today, RoyaltyPeriod::today, RoyaltyPeriod::thisMonth};
    QCOMPARE(periods.size(), 2);
    QVERIFY(periods.contains(RoyaltyPeriod::thisMonth));
    QVERIFY(!periods.contains(RoyaltyPeriod::yesterday));
}

void TestRoyaltyPeriod::todayStartsAndEndsAtStartOfToday()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::today).dates(QTimeZone::utc(), utc(2026, 11, 21, 15, 42));
    QCOMPARE(start, utc(2026, 11, 21));
    QCOMPARE(end, start);
}

void TestRoyaltyPeriod::yesterdayIsTheDayBefore()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(QTimeZone::utc(), utc(2026, 11, 21, 0, 5));
    QCOMPARE(start, utc(2026, 11, 20));
    QCOMPARE(end, start);
}

void TestRoyaltyPeriod::yesterdayOnFirstOfMonthIsLastDayOfPreviousMonth()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(QTimeZone::utc(), utc(2026, 3, 1, 9));
    QCOMPARE(start, utc(2026, 2, 28));
    QCOMPARE(end, utc(2026, 2, 28));
}

void TestRoyaltyPeriod::yesterdayOnNewYearsDayIsLastDayOfPreviousYear()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(QTimeZone::utc(), utc(2027, 1, 1, 23, 59));
    QCOMPARE(start, utc(2026, 12, 31));
    QCOMPARE(end, utc(2026, 12, 31));
}

void TestRoyaltyPeriod::thisMonthEndsAtStartOfTomorrow()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(QTimeZone::utc(), utc(2026, 11, 21, 18));
    QCOMPARE(start, utc(2026, 11, 1));
    QCOMPARE(end, utc(2026, 11, 22));
}

void TestRoyaltyPeriod::thisMonthOnLastDayEndsAtStartOfToday()
{
    const auto [start, end] =
        RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(QTimeZone::utc(), utc(2026, 11, 30, 23, 59));
    QCOMPARE(start, utc(2026, 11, 1));
    QCOMPARE(end, utc(2026, 11, 30));

    const auto [decemberStart, decemberEnd] =
        RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(QTimeZone::utc(), utc(2026, 12, 31, 12));
    QCOMPARE(decemberStart, utc(2026, 12, 1));
    QCOMPARE(decemberEnd, utc(2026, 12, 31));
}

void TestRoyaltyPeriod::thisMonthOnFirstDayStartsAtStartOfToday()
{
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(QTimeZone::utc(), utc(2026, 12, 1, 7));
    QCOMPARE(start, utc(2026, 12, 1));
    QCOMPARE(end, utc(2026, 12, 2));
}

void TestRoyaltyPeriod::thisMonthOnLastDayOfFebruaryInLeapYear()
{
    const RoyaltyPeriod month = RoyaltyPeriod::thisMonth;
    QCOMPARE(month.dates(QTimeZone::utc(), utc(2028, 2, 28, 10)).end, utc(2028, 2, 29));
    QCOMPARE(month.dates(QTimeZone::utc(), utc(2028, 2, 29, 10)).end, utc(2028, 2, 29));
}

void TestRoyaltyPeriod::daysFollowTheCalendarTimeZone()
{
    // 16:00 UTC on the last of November is already 1 December in Tokyo.
    const QTimeZone tokyo("Asia/Tokyo");
    QVERIFY(tokyo.isValid());
    const QDateTime now = utc(2026, 11, 30, 16);
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::today).dates(tokyo, now).start, local(tokyo, 2026, 12, 1));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::today).dates(tokyo, now).start.toUTC(), utc(2026, 11, 30, 15));
    QCOMPARE(RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(tokyo, now).start, local(tokyo, 2026, 11, 30));
    const auto [monthStart, monthEnd] = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(tokyo, now);
    QCOMPARE(monthStart, local(tokyo, 2026, 12, 1));
    QCOMPARE(monthEnd, local(tokyo, 2026, 12, 2));
}

void TestRoyaltyPeriod::startOfDayAcrossSpringForward()
{
    // 29 March 2026 in Berlin has 23 hours; tomorrow still starts at local midnight.
    const QTimeZone berlin("Europe/Berlin");
    QVERIFY(berlin.isValid());
    const QDateTime now = local(berlin, 2026, 3, 29, 12);
    const auto [todayStart, todayEnd] = RoyaltyPeriod(RoyaltyPeriod::today).dates(berlin, now);
    QCOMPARE(todayStart.toUTC(), utc(2026, 3, 28, 23));
    QCOMPARE(todayEnd, todayStart);
    const auto [monthStart, monthEnd] = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(berlin, now);
    QCOMPARE(monthStart.toUTC(), utc(2026, 2, 28, 23));
    QCOMPARE(monthEnd.toUTC(), utc(2026, 3, 29, 22));
    QCOMPARE(monthEnd.toTimeZone(berlin).time(), QTime(0, 0));
    QCOMPARE(todayStart.secsTo(monthEnd), qint64(23 * 3600));
}

void TestRoyaltyPeriod::startOfDayAcrossFallBack()
{
    // 25 October 2026 in Berlin has 25 hours.
    const QTimeZone berlin("Europe/Berlin");
    const QDateTime now = local(berlin, 2026, 10, 25, 23, 30);
    const auto [todayStart, todayEnd] = RoyaltyPeriod(RoyaltyPeriod::today).dates(berlin, now);
    QCOMPARE(todayStart.toUTC(), utc(2026, 10, 24, 22));
    const auto monthEnd = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(berlin, now).end;
    QCOMPARE(monthEnd.toUTC(), utc(2026, 10, 25, 23));
    QCOMPARE(todayStart.secsTo(monthEnd), qint64(25 * 3600));
    const auto yesterdayStart = RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(berlin, now).start;
    QCOMPARE(yesterdayStart.toUTC(), utc(2026, 10, 23, 22));
}

void TestRoyaltyPeriod::dayThatBeginsAtOneInTheMorning()
{
    // Havana moves its clocks from midnight to 01:00 on 8 March 2026: that day has no 00:00.
    const QTimeZone havana("America/Havana");
    QVERIFY(havana.isValid());
    const QDateTime now = local(havana, 2026, 3, 8, 14);
    const auto [start, end] = RoyaltyPeriod(RoyaltyPeriod::today).dates(havana, now);
    QCOMPARE(start.toTimeZone(havana).time(), QTime(1, 0));
    QCOMPARE(start.toUTC(), utc(2026, 3, 8, 5));
    QCOMPARE(end, start);
}

void TestRoyaltyPeriod::monthAndYesterdayAroundMidnightTransition()
{
    // On 9 March the previous day (the short one) starts at its 01:00, and the month span still
    // ends at the start of tomorrow.
    const QTimeZone havana("America/Havana");
    const QDateTime now = local(havana, 2026, 3, 9, 8);
    const auto yesterdayStart = RoyaltyPeriod(RoyaltyPeriod::yesterday).dates(havana, now).start;
    QCOMPARE(yesterdayStart.toUTC(), utc(2026, 3, 8, 5));
    const auto [monthStart, monthEnd] = RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(havana, now);
    QCOMPARE(monthStart.toUTC(), utc(2026, 3, 1, 5));
    QCOMPARE(monthEnd.toUTC(), utc(2026, 3, 10, 4));

    // Asked on 7 March, tomorrow is the short day: the month span ends at its 01:00.
    const auto endBeforeShortDay =
        RoyaltyPeriod(RoyaltyPeriod::thisMonth).dates(havana, local(havana, 2026, 3, 7, 20)).end;
    QCOMPARE(endBeforeShortDay.toTimeZone(havana).time(), QTime(1, 0));
    QCOMPARE(endBeforeShortDay.toTimeZone(havana).date(), QDate(2026, 3, 8));
}

QTEST_GUILESS_MAIN(TestRoyaltyPeriod)
#include "tst_royaltyperiod.moc"
