#include "model/RoyaltySummary.h"
#include "model/SalesBreakdownMetric.h"

#include <QSet>
#include <QTest>

namespace {

// Stands in for the store's money text, so the tests see which amount each metric picks.
QString fakeMoney(double value)
{
    return QStringLiteral("money(") + QString::number(value) + u')';
}

RoyaltySummary summaryWithCounts(qint64 count)
{
    RoyaltySummary summary;
    summary.paidEbookUnits = count;
    summary.paperbackUnits = count;
    summary.hardcoverUnits = count;
    summary.audiobookUnits = count;
    summary.expandedDistributionUnits = count;
    summary.reads = count;
    summary.preOrderUnits = count;
    summary.freeEbookDownloads = count;
    return summary;
}

const QLocale english(QLocale::English, QLocale::UnitedStates);

} // namespace

class TestSalesBreakdownMetric : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void casesAreInBreakdownOrder();
    void rawValueIsCaseName();
    void unknownRawValueConstructsNothing();
    void metricsAreHashable();
    void presentation_data();
    void presentation();
    void unitsText_data();
    void unitsText();
    void unitsTextUsesLocaleGrouping_data();
    void unitsTextUsesLocaleGrouping();
    void royaltiesTextReadsEachMetricsAmount();
    void preOrdersAndFreeEbooksHaveNoRoyaltiesText();
};

void TestSalesBreakdownMetric::casesAreInBreakdownOrder()
{
    QStringList raw;
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        raw.append(metric.rawValue());
    }
    QCOMPARE(raw, (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("paperbacks"), QStringLiteral("hardcovers"),
                               QStringLiteral("audiobooks"), QStringLiteral("expandedDistribution"),
                               QStringLiteral("kenpReads"), QStringLiteral("currentPreOrders"),
                               QStringLiteral("freeEbooks")}));
}

void TestSalesBreakdownMetric::rawValueIsCaseName()
{
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        QCOMPARE(metric.id(), metric.rawValue());
        QVERIFY(SalesBreakdownMetric::fromRawValue(metric.rawValue()) == metric);
    }
}

void TestSalesBreakdownMetric::unknownRawValueConstructsNothing()
{
    QVERIFY(!SalesBreakdownMetric::fromRawValue(QStringLiteral("upcomingPreOrders")).has_value());
    QVERIFY(!SalesBreakdownMetric::fromRawValue(QStringLiteral("PaidEbooks")).has_value());
    QVERIFY(!SalesBreakdownMetric::fromRawValue(QStringLiteral("Paid ebooks")).has_value());
    QVERIFY(!SalesBreakdownMetric::fromRawValue(QString()).has_value());
}

void TestSalesBreakdownMetric::metricsAreHashable()
{
    QSet<SalesBreakdownMetric> set;
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        set.insert(metric);
        set.insert(metric);
    }
    QCOMPARE(set.size(), 8);
}

void TestSalesBreakdownMetric::presentation_data()
{
    QTest::addColumn<int>("metric");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("color");
    const auto row = [](SalesBreakdownMetric::Case metric, const char *title, const char *icon, const char *color) {
        QTest::newRow(title) << int(metric) << QString::fromUtf8(title) << QString::fromUtf8(icon)
                             << QString::fromUtf8(color);
    };
    row(SalesBreakdownMetric::paidEbooks, "Paid ebooks", "book.closed", "blue");
    row(SalesBreakdownMetric::paperbacks, "Paperbacks", "books.vertical", "orange");
    row(SalesBreakdownMetric::hardcovers, "Hardcovers", "book.closed.fill", "brown");
    row(SalesBreakdownMetric::audiobooks, "Audiobooks", "headphones", "purple");
    row(SalesBreakdownMetric::expandedDistribution, "Expanded distribution", "globe.europe.africa", "teal");
    row(SalesBreakdownMetric::kenpReads, "KENP reads", "text.book.closed", "indigo");
    row(SalesBreakdownMetric::currentPreOrders, "Upcoming pre-orders", "calendar.badge.clock", "green");
    row(SalesBreakdownMetric::freeEbooks, "Free ebooks", "arrow.down.circle", "cyan");
}

void TestSalesBreakdownMetric::presentation()
{
    QFETCH(int, metric);
    const SalesBreakdownMetric value = SalesBreakdownMetric::Case(metric);
    QTEST(value.title(), "title");
    QTEST(value.icon(), "icon");
    QTEST(systemColorName(value.color()), "color");
}

void TestSalesBreakdownMetric::unitsText_data()
{
    QTest::addColumn<int>("metric");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<QString>("expected");
    const auto sold = {SalesBreakdownMetric::paidEbooks, SalesBreakdownMetric::paperbacks,
                       SalesBreakdownMetric::hardcovers, SalesBreakdownMetric::audiobooks,
                       SalesBreakdownMetric::expandedDistribution};
    for (const SalesBreakdownMetric::Case metric : sold) {
        const QByteArray name = SalesBreakdownMetric(metric).rawValue().toUtf8();
        QTest::addRow("%s 0", name.constData()) << int(metric) << qint64(0) << QStringLiteral("0 units");
        QTest::addRow("%s 1", name.constData()) << int(metric) << qint64(1) << QStringLiteral("1 unit");
        QTest::addRow("%s 2", name.constData()) << int(metric) << qint64(2) << QStringLiteral("2 units");
    }
    QTest::newRow("negative one is plural")
        << int(SalesBreakdownMetric::paperbacks) << qint64(-1) << QStringLiteral("-1 units");
    QTest::newRow("one KENP page stays plural")
        << int(SalesBreakdownMetric::kenpReads) << qint64(1) << QStringLiteral("1 pages");
    QTest::newRow("KENP pages") << int(SalesBreakdownMetric::kenpReads) << qint64(0) << QStringLiteral("0 pages");
    QTest::newRow("one free download stays plural")
        << int(SalesBreakdownMetric::freeEbooks) << qint64(1) << QStringLiteral("1 downloads");
    QTest::newRow("pre-orders singular") << int(SalesBreakdownMetric::currentPreOrders) << qint64(1)
                                         << QStringLiteral(u"1 unit \u00B7 same for all periods");
    QTest::newRow("pre-orders plural") << int(SalesBreakdownMetric::currentPreOrders) << qint64(0)
                                       << QStringLiteral(u"0 units \u00B7 same for all periods");
    QTest::newRow("grouped") << int(SalesBreakdownMetric::paidEbooks) << qint64(1234) << QStringLiteral("1,234 units");
    QTest::newRow("grouped pages") << int(SalesBreakdownMetric::kenpReads) << qint64(1234567)
                                   << QStringLiteral("1,234,567 pages");
    QTest::newRow("beyond double precision") << int(SalesBreakdownMetric::freeEbooks) << qint64(9007199254740993)
                                             << QStringLiteral("9,007,199,254,740,993 downloads");
}

void TestSalesBreakdownMetric::unitsText()
{
    QFETCH(int, metric);
    QFETCH(qint64, count);
    QTEST(SalesBreakdownMetric(SalesBreakdownMetric::Case(metric)).unitsText(summaryWithCounts(count), english),
          "expected");
}

void TestSalesBreakdownMetric::unitsTextUsesLocaleGrouping_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("expected");
    QTest::newRow("en_US") << QLocale(QStringLiteral("en_US")) << QStringLiteral("1,234 units");
    QTest::newRow("en_GB") << QLocale(QStringLiteral("en_GB")) << QStringLiteral("1,234 units");
    QTest::newRow("de_DE") << QLocale(QStringLiteral("de_DE")) << QStringLiteral("1.234 units");
    QTest::newRow("fr_FR") << QLocale(QStringLiteral("fr_FR")) << QStringLiteral(u"1\u202F234 units");
    QTest::newRow("ja_JP") << QLocale(QStringLiteral("ja_JP")) << QStringLiteral("1,234 units");
}

void TestSalesBreakdownMetric::unitsTextUsesLocaleGrouping()
{
    QFETCH(QLocale, locale);
    QTEST(SalesBreakdownMetric(SalesBreakdownMetric::paperbacks).unitsText(summaryWithCounts(1234), locale),
          "expected");
}

void TestSalesBreakdownMetric::royaltiesTextReadsEachMetricsAmount()
{
    RoyaltySummary summary;
    summary.paidEbookRoyalties = 1;
    summary.paperbackRoyalties = 2;
    summary.hardcoverRoyalties = 3;
    summary.audiobookRoyalties = 4;
    summary.expandedDistributionRoyalties = 5;
    summary.readRoyalties = 6;
    summary.gross = 99;
    const QList<std::pair<SalesBreakdownMetric, QString>> expected{
        {SalesBreakdownMetric::paidEbooks, QStringLiteral("money(1)")},
        {SalesBreakdownMetric::paperbacks, QStringLiteral("money(2)")},
        {SalesBreakdownMetric::hardcovers, QStringLiteral("money(3)")},
        {SalesBreakdownMetric::audiobooks, QStringLiteral("money(4)")},
        {SalesBreakdownMetric::expandedDistribution, QStringLiteral("money(5)")},
        {SalesBreakdownMetric::kenpReads, QStringLiteral("money(6)")},
    };
    for (const auto &[metric, text] : expected) {
        QCOMPARE(metric.royaltiesText(summary, fakeMoney), std::optional<QString>(text));
    }
}

void TestSalesBreakdownMetric::preOrdersAndFreeEbooksHaveNoRoyaltiesText()
{
    RoyaltySummary summary;
    summary.gross = 10;
    int calls = 0;
    const SalesBreakdownMetric::MoneyText counting = [&calls](double value) {
        ++calls;
        return fakeMoney(value);
    };
    QVERIFY(!SalesBreakdownMetric(SalesBreakdownMetric::currentPreOrders).royaltiesText(summary, counting));
    QVERIFY(!SalesBreakdownMetric(SalesBreakdownMetric::freeEbooks).royaltiesText(summary, counting));
    QCOMPARE(calls, 0);
}

QTEST_GUILESS_MAIN(TestSalesBreakdownMetric)
#include "tst_salesbreakdownmetric.moc"
