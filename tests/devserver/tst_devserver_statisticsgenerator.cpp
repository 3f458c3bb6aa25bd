#include "DemoData.h"
#include "StatisticsGenerator.h"
#include "model/RoyaltySummary.h"
#include "service/BookStatsFold.h"
#include "service/BookStatsResponse.h"

#include <QJsonDocument>
#include <QTest>
#include <QTimeZone>

namespace {

const QStringList wireKeys{
    QStringLiteral("currency"),
    QStringLiteral("gross_royalty"),
    QStringLiteral("spending"),
    QStringLiteral("net_royalty"),
    QStringLiteral("total_read_royalty"),
    QStringLiteral("total_reads"),
    QStringLiteral("ebooks_paid_sold"),
    QStringLiteral("ebooks_paid_royalties"),
    QStringLiteral("ebooks_free_sold"),
    QStringLiteral("paperbacks_sold"),
    QStringLiteral("paperbacks_royalties"),
    QStringLiteral("hardcovers_sold"),
    QStringLiteral("hardcovers_royalties"),
    QStringLiteral("audiobooks_sold"),
    QStringLiteral("audiobooks_royalties"),
    QStringLiteral("expanded_distribution_sold"),
    QStringLiteral("expanded_distribution_royalties"),
    QStringLiteral("pre_orders_sold"),
    QStringLiteral("custom_format_units"),
    QStringLiteral("custom_format_royalties"),
};

QDateTime at(QDate date, QTime time)
{
    return QDateTime(date, time, QTimeZone::systemTimeZone());
}

RoyaltySummary summarise(const QJsonArray &rows)
{
    const auto decoded = BookStatsResponse::decode(
        QJsonDocument(QJsonObject{{QStringLiteral("table_data"), rows}}).toJson(QJsonDocument::Compact));
    if (!decoded) {
        qFatal("rows do not decode");
    }
    return BookStatsFold::folding(decoded->tableData).value();
}

const QDate today(2024, 5, 15);

} // namespace

class TestStatisticsGenerator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowHasEveryWireKey()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const QJsonArray rows = generator.rows(today.addDays(-3), today.addDays(-1), at(today, QTime(12, 0)));
        QCOMPARE(rows.size(), DemoData::accounts().constFirst().books.size());
        for (const QJsonValue &row : rows) {
            for (const QString &key : wireKeys) {
                QVERIFY2(row.toObject().contains(key), qPrintable(key));
            }
        }
    }

    void sameQuestionGivesTheSameAnswer()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const QDate day(2023, 11, 2);
        QCOMPARE(generator.rows(day, day, at(today, QTime(9, 0))), generator.rows(day, day, at(today, QTime(21, 0))));
    }

    void differentDaysGiveDifferentFigures()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const QDateTime now = at(today, QTime(12, 0));
        QVERIFY(generator.rows(today.addDays(-1), today.addDays(-1), now)
                != generator.rows(today.addDays(-2), today.addDays(-2), now));
    }

    void everyFormatSellsOnEveryFullDay()
    {
        for (const DemoAccount &account : DemoData::accounts()) {
            const StatisticsGenerator generator(account);
            for (int back = 1; back <= 60; ++back) {
                const QDate day = today.addDays(-back);
                const RoyaltySummary summary = summarise(generator.rows(day, day, at(today, QTime(12, 0))));
                QVERIFY(summary.paidEbookUnits > 0 && summary.paidEbookRoyalties > 0);
                QVERIFY(summary.freeEbookDownloads > 0);
                QVERIFY(summary.paperbackUnits > 0 && summary.paperbackRoyalties > 0);
                QVERIFY(summary.hardcoverUnits > 0 && summary.hardcoverRoyalties > 0);
                QVERIFY(summary.audiobookUnits > 0 && summary.audiobookRoyalties > 0);
                QVERIFY(summary.expandedDistributionUnits > 0 && summary.expandedDistributionRoyalties > 0);
                QVERIFY(summary.reads > 0 && summary.readRoyalties > 0);
                QVERIFY(summary.preOrderUnits > 0);
                QCOMPARE(summary.customFormats.keys(),
                         (QStringList{DemoData::boxSetFormat(), DemoData::largePrintFormat()}));
                for (const FormatSalesSummary &format : summary.customFormats) {
                    QVERIFY(format.units > 0 && format.royalties > 0);
                }
                QCOMPARE(summary.currency, account.currency);
            }
        }
    }

    void rowsAddUpToTheCent()
    {
        const StatisticsGenerator generator(DemoData::accounts().constLast());
        const QJsonArray rows = generator.rows(QDate(2024, 4, 1), QDate(2024, 4, 30), at(today, QTime(12, 0)));
        for (const QJsonValue &value : rows) {
            const QJsonObject row = value.toObject();
            double parts = 0;
            for (const char *key : {"ebooks_paid_royalties", "paperbacks_royalties", "hardcovers_royalties",
                                    "audiobooks_royalties", "expanded_distribution_royalties", "total_read_royalty"}) {
                parts += row.value(QLatin1String(key)).toDouble();
            }
            for (const QJsonValue &custom : row.value(QStringLiteral("custom_format_royalties")).toObject()) {
                parts += custom.toDouble();
            }
            const double gross = row.value(QStringLiteral("gross_royalty")).toDouble();
            QVERIFY(qAbs(gross - parts) < 0.005);
            QVERIFY(qAbs(row.value(QStringLiteral("net_royalty")).toDouble()
                         - (gross - row.value(QStringLiteral("spending")).toDouble()))
                    < 0.005);
        }
    }

    void fractionOfDayFollowsTheClock()
    {
        QCOMPARE(StatisticsGenerator::fractionOfDayPassed(at(today, QTime(0, 0))), 0.0);
        QCOMPARE(StatisticsGenerator::fractionOfDayPassed(at(today, QTime(6, 0))), 0.25);
        QCOMPARE(StatisticsGenerator::fractionOfDayPassed(at(today, QTime(12, 0))), 0.5);
    }

    void todayGrowsThroughTheDayAndNeverShrinks()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        RoyaltySummary previous;
        for (int hour = 0; hour < 24; ++hour) {
            const RoyaltySummary now = summarise(generator.rows(today, today, at(today, QTime(hour, 30))));
            QVERIFY(now.gross >= previous.gross);
            QVERIFY(now.spending >= previous.spending);
            QVERIFY(now.paidEbookUnits >= previous.paidEbookUnits);
            QVERIFY(now.reads >= previous.reads);
            previous = now;
        }
        const RoyaltySummary morning = summarise(generator.rows(today, today, at(today, QTime(6, 0))));
        const RoyaltySummary evening = summarise(generator.rows(today, today, at(today, QTime(18, 0))));
        QVERIFY(evening.gross > morning.gross);
        const RoyaltySummary full = summarise(generator.rows(today, today, at(today.addDays(1), QTime(0, 0))));
        QVERIFY(full.gross >= evening.gross);
    }

    void todayAtMidnightHasNothingYet()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const RoyaltySummary summary = summarise(generator.rows(today, today, at(today, QTime(0, 0))));
        QCOMPARE(summary.gross, 0.0);
        QCOMPARE(summary.paidEbookUnits, 0);
    }

    void daysAfterTodayAreNotCounted()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const QDateTime now = at(today, QTime(15, 0));
        const QDate first(2024, 5, 1);
        QCOMPARE(generator.rows(first, today.addDays(1), now), generator.rows(first, today, now));
        const RoyaltySummary future = summarise(generator.rows(today.addDays(1), today.addDays(5), now));
        QCOMPARE(future.gross, 0.0);
        QCOMPARE(future.paidEbookUnits, 0);
    }

    void rangeIncludesBothEnds()
    {
        const StatisticsGenerator generator(DemoData::accounts().constFirst());
        const QDateTime now = at(today, QTime(15, 0));
        const QDate a = today.addDays(-2);
        const QDate b = today.addDays(-1);
        const RoyaltySummary both = summarise(generator.rows(a, b, now));
        const RoyaltySummary first = summarise(generator.rows(a, a, now));
        const RoyaltySummary second = summarise(generator.rows(b, b, now));
        QCOMPARE(both.paidEbookUnits, first.paidEbookUnits + second.paidEbookUnits);
        QCOMPARE(both.reads, first.reads + second.reads);
        QVERIFY(qAbs(both.gross - (first.gross + second.gross)) < 0.05);
    }
};

QTEST_GUILESS_MAIN(TestStatisticsGenerator)
#include "tst_devserver_statisticsgenerator.moc"
