#include "model/RoyaltySummary.h"
#include "service/BookStatsFold.h"
#include "service/BookStatsResponse.h"

#include <QFile>
#include <QTest>

#include <limits>

namespace {

BookStatsRow rowWithCurrency(const QString &currency, double gross)
{
    BookStatsRow row;
    row.currency = currency;
    row.grossRoyalty = gross;
    return row;
}

// The fold of rows that fit: a summary that is there.
RoyaltySummary folded(const QList<BookStatsRow> &rows)
{
    const std::optional<RoyaltySummary> summary = BookStatsFold::folding(rows);
    if (!summary) {
        qFatal("rows that fit folded to nothing");
    }
    return *summary;
}

} // namespace

class TestRoyaltySummary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptySummaryIsAllZeroInDollars();
    void emptyTableFoldsToEmptySummary();
    void rowWithEveryMemberAbsentChangesNothing();
    void emptyCurrencyDoesNotOverwriteEarlierCurrency();
    void lastNonEmptyCurrencyWins();
    void tableWithoutCurrencyKeepsDollars();
    void eachRowFieldAddsToItsSummaryField();
    void moneyIsSummedInRowOrder();
    void countsAddAcrossRows();
    void countsUpToTheLimitDoNotStop();
    void countOverflowMakesTheTableInvalid();
    void customFormatOverflowMakesTheTableInvalid();
    void aRowWhoseCountOverflowsSaysSo();
    void customFormatOnlyInRoyaltiesGetsZeroUnits();
    void customFormatOnlyInUnitsGetsZeroRoyalties();
    void sameCustomFormatAccumulatesAcrossRows();
    void customFormatNamesAreComparedExactly();
    void customFormatWithZeroValuesIsStillCreated();
    void realisticTableFolds();
};

void TestRoyaltySummary::emptySummaryIsAllZeroInDollars()
{
    const RoyaltySummary summary;
    QCOMPARE(summary.gross, 0.0);
    QCOMPARE(summary.spending, 0.0);
    QCOMPARE(summary.net, 0.0);
    QCOMPARE(summary.reads, qint64(0));
    QCOMPARE(summary.preOrderUnits, qint64(0));
    QVERIFY(summary.customFormats.isEmpty());
    QCOMPARE(summary.currency, QStringLiteral("USD"));
}

void TestRoyaltySummary::emptyTableFoldsToEmptySummary()
{
    QCOMPARE(BookStatsFold::folding({}).value(), RoyaltySummary());
}

void TestRoyaltySummary::rowWithEveryMemberAbsentChangesNothing()
{
    RoyaltySummary summary = folded({rowWithCurrency(QStringLiteral("EUR"), 4.5)});
    const RoyaltySummary before = summary;
    QVERIFY(BookStatsFold::add(summary, BookStatsRow()));
    QCOMPARE(summary, before);
}

void TestRoyaltySummary::emptyCurrencyDoesNotOverwriteEarlierCurrency()
{
    const RoyaltySummary summary = folded({rowWithCurrency(QStringLiteral("EUR"), 1), rowWithCurrency(QString(), 2)});
    QCOMPARE(summary.currency, QStringLiteral("EUR"));
    QCOMPARE(summary.gross, 3.0);
}

void TestRoyaltySummary::lastNonEmptyCurrencyWins()
{
    const RoyaltySummary summary =
        folded({rowWithCurrency(QStringLiteral("EUR"), 10.25), rowWithCurrency(QStringLiteral("GBP"), 5.5)});
    QCOMPARE(summary.currency, QStringLiteral("GBP"));
    // No conversion: the euros are added to the pounds as they stand.
    QCOMPARE(summary.gross, 15.75);
}

void TestRoyaltySummary::tableWithoutCurrencyKeepsDollars()
{
    BookStatsRow row;
    row.netRoyalty = 3;
    QCOMPARE(folded({row, row}).currency, QStringLiteral("USD"));
}

void TestRoyaltySummary::eachRowFieldAddsToItsSummaryField()
{
    BookStatsRow row;
    row.grossRoyalty = 1;
    row.spending = 2;
    row.netRoyalty = 3;
    row.totalReadRoyalty = 4;
    row.totalReads = 5;
    row.paidEbookUnits = 6;
    row.paidEbookRoyalties = 7;
    row.freeEbookDownloads = 8;
    row.paperbackUnits = 9;
    row.paperbackRoyalties = 10;
    row.hardcoverUnits = 11;
    row.hardcoverRoyalties = 12;
    row.audiobookUnits = 13;
    row.audiobookRoyalties = 14;
    row.expandedDistributionUnits = 15;
    row.expandedDistributionRoyalties = 16;
    row.preOrderUnits = 17;

    const RoyaltySummary summary = folded({row, row});
    QCOMPARE(summary.gross, 2.0);
    QCOMPARE(summary.spending, 4.0);
    QCOMPARE(summary.net, 6.0);
    QCOMPARE(summary.readRoyalties, 8.0);
    QCOMPARE(summary.reads, qint64(10));
    QCOMPARE(summary.paidEbookUnits, qint64(12));
    QCOMPARE(summary.paidEbookRoyalties, 14.0);
    QCOMPARE(summary.freeEbookDownloads, qint64(16));
    QCOMPARE(summary.paperbackUnits, qint64(18));
    QCOMPARE(summary.paperbackRoyalties, 20.0);
    QCOMPARE(summary.hardcoverUnits, qint64(22));
    QCOMPARE(summary.hardcoverRoyalties, 24.0);
    QCOMPARE(summary.audiobookUnits, qint64(26));
    QCOMPARE(summary.audiobookRoyalties, 28.0);
    QCOMPARE(summary.expandedDistributionUnits, qint64(30));
    QCOMPARE(summary.expandedDistributionRoyalties, 32.0);
    QCOMPARE(summary.preOrderUnits, qint64(34));
    QVERIFY(summary.customFormats.isEmpty());
}

void TestRoyaltySummary::moneyIsSummedInRowOrder()
{
    // Floating-point addition is not associative: the fold must add row by row, nothing cleverer.
    const auto fold = [](std::initializer_list<double> amounts) {
        QList<BookStatsRow> rows;
        for (double amount : amounts) {
            BookStatsRow row;
            row.netRoyalty = amount;
            rows.append(row);
        }
        return folded(rows).net;
    };
    const volatile double a = 0.1;
    const volatile double b = 0.2;
    const volatile double c = 0.3;
    QCOMPARE(fold({0.1, 0.2, 0.3}), (a + b) + c);
    QCOMPARE(fold({0.3, 0.2, 0.1}), (c + b) + a);
    QVERIFY(fold({0.1, 0.2, 0.3}) != fold({0.3, 0.2, 0.1}));
}

void TestRoyaltySummary::countsAddAcrossRows()
{
    BookStatsRow big;
    big.totalReads = 9007199254740993; // beyond double precision: still exact
    BookStatsRow one;
    one.totalReads = 1;
    QCOMPARE(folded({big, one, BookStatsRow()}).reads, qint64(9007199254740994));
}

void TestRoyaltySummary::countsUpToTheLimitDoNotStop()
{
    BookStatsRow nearMax;
    nearMax.paperbackUnits = std::numeric_limits<qint64>::max() - 1;
    BookStatsRow one;
    one.paperbackUnits = 1;
    QCOMPARE(folded({nearMax, one}).paperbackUnits, std::numeric_limits<qint64>::max());

    BookStatsRow nearMin;
    nearMin.paperbackUnits = std::numeric_limits<qint64>::min() + 1;
    BookStatsRow minusOne;
    minusOne.paperbackUnits = -1;
    QCOMPARE(folded({nearMin, minusOne}).paperbackUnits, std::numeric_limits<qint64>::min());
}

void TestRoyaltySummary::countOverflowMakesTheTableInvalid()
{
    BookStatsRow max;
    max.hardcoverUnits = std::numeric_limits<qint64>::max();
    BookStatsRow one;
    one.hardcoverUnits = 1;
    QCOMPARE(BookStatsFold::folding({max, one}), std::nullopt);

    BookStatsRow min;
    min.hardcoverUnits = std::numeric_limits<qint64>::min();
    BookStatsRow minusOne;
    minusOne.hardcoverUnits = -1;
    QCOMPARE(BookStatsFold::folding({min, minusOne}), std::nullopt);

    // The same rows without the overflow fold, so the nothing above is the overflow's doing.
    QCOMPARE(folded({max, minusOne}).hardcoverUnits, std::numeric_limits<qint64>::max() - 1);
}

void TestRoyaltySummary::customFormatOverflowMakesTheTableInvalid()
{
    BookStatsRow max;
    max.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Box set"), std::numeric_limits<qint64>::max()}};
    BookStatsRow one;
    one.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Box set"), 1}};
    QCOMPARE(BookStatsFold::folding({max, one}), std::nullopt);
    // Another name is another count.
    one.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Boxed set"), 1}};
    QCOMPARE(folded({max, one}).customFormats.size(), 2);
}

void TestRoyaltySummary::aRowWhoseCountOverflowsSaysSo()
{
    RoyaltySummary summary;
    BookStatsRow max;
    max.totalReads = std::numeric_limits<qint64>::max();
    QVERIFY(BookStatsFold::add(summary, max));
    BookStatsRow row;
    row.totalReads = 1;
    row.paperbackUnits = 2;
    QVERIFY(!BookStatsFold::add(summary, row));
    // The count that would have left the range stays; the rest of the row was still added.
    QCOMPARE(summary.reads, std::numeric_limits<qint64>::max());
    QCOMPARE(summary.paperbackUnits, qint64(2));
}

void TestRoyaltySummary::customFormatOnlyInRoyaltiesGetsZeroUnits()
{
    BookStatsRow row;
    row.customFormatRoyalties = QMap<QString, double>{{QStringLiteral("Box set"), 8.99}};
    const RoyaltySummary summary = folded({row});
    QCOMPARE(summary.customFormats.size(), 1);
    QCOMPARE(summary.customFormats.value(QStringLiteral("Box set")), (FormatSalesSummary{0, 8.99}));
}

void TestRoyaltySummary::customFormatOnlyInUnitsGetsZeroRoyalties()
{
    BookStatsRow row;
    row.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Large print"), 3}};
    row.customFormatRoyalties = QMap<QString, double>{};
    const RoyaltySummary summary = folded({row});
    QCOMPARE(summary.customFormats.size(), 1);
    QCOMPARE(summary.customFormats.value(QStringLiteral("Large print")), (FormatSalesSummary{3, 0}));
}

void TestRoyaltySummary::sameCustomFormatAccumulatesAcrossRows()
{
    BookStatsRow first;
    first.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Box set"), 2}};
    first.customFormatRoyalties = QMap<QString, double>{{QStringLiteral("Box set"), 10.5}};
    BookStatsRow second;
    second.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Box set"), 5}};
    BookStatsRow third;
    third.customFormatRoyalties = QMap<QString, double>{{QStringLiteral("Box set"), 1.25}};
    const RoyaltySummary summary = folded({first, second, third});
    QCOMPARE(summary.customFormats.size(), 1);
    QCOMPARE(summary.customFormats.value(QStringLiteral("Box set")), (FormatSalesSummary{7, 11.75}));
}

void TestRoyaltySummary::customFormatNamesAreComparedExactly()
{
    BookStatsRow row;
    row.customFormatUnits = QMap<QString, qint64>{
        {QStringLiteral("Box set"), 1}, {QStringLiteral("box set"), 2}, {QStringLiteral("Box set "), 3}};
    const RoyaltySummary summary = folded({row});
    QCOMPARE(summary.customFormats.size(), 3);
    QCOMPARE(summary.customFormats.value(QStringLiteral("box set")).units, qint64(2));
    QCOMPARE(summary.customFormats.value(QStringLiteral("Box set ")).units, qint64(3));
}

void TestRoyaltySummary::customFormatWithZeroValuesIsStillCreated()
{
    BookStatsRow row;
    row.customFormatUnits = QMap<QString, qint64>{{QStringLiteral("Zine"), 0}};
    row.customFormatRoyalties = QMap<QString, double>{{QStringLiteral("Zine"), 0.0}};
    const RoyaltySummary summary = folded({row, BookStatsRow()});
    QVERIFY(summary.customFormats.contains(QStringLiteral("Zine")));
    QCOMPARE(summary.customFormats.value(QStringLiteral("Zine")), FormatSalesSummary());
}

void TestRoyaltySummary::realisticTableFolds()
{
    QFile file(QStringLiteral(INKWARDEN_TEST_DATA "/book-stats-realistic.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto response = BookStatsResponse::decode(file.readAll());
    QVERIFY(response.has_value());
    const RoyaltySummary summary = folded(response->tableData);

    QCOMPARE(summary.currency, QStringLiteral("USD")); // the last row's empty currency changes nothing
    QCOMPARE(summary.gross, 182.47 + 58.3);
    QCOMPARE(summary.spending, 41.2 + 12.5);
    QCOMPARE(summary.net, (141.27 + 58.3) + -12.5);
    QCOMPARE(summary.reads, qint64(5372 + 907));
    QCOMPARE(summary.paidEbookUnits, qint64(45));
    QCOMPARE(summary.freeEbookDownloads, qint64(12));
    QCOMPARE(summary.hardcoverUnits, qint64(2));
    QCOMPARE(summary.preOrderUnits, qint64(7));
    QCOMPARE(summary.customFormats.size(), 2);
    QCOMPARE(summary.customFormats.value(QStringLiteral("Large print")), (FormatSalesSummary{3, 5.4}));
    QCOMPARE(summary.customFormats.value(QStringLiteral("Box set")), (FormatSalesSummary{1, 8.99}));
}

QTEST_GUILESS_MAIN(TestRoyaltySummary)
#include "tst_royaltysummary.moc"
