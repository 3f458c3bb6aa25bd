#include "RoyaltySummary.h"

#include "CheckedCount.h"
#include "service/BookStatsRow.h"

namespace {

void addMoney(double &total, const std::optional<double> &amount)
{
    total += amount.value_or(0.0);
}

void addCount(qint64 &total, const std::optional<qint64> &count)
{
    total = checkedCountSum(total, count.value_or(0));
}

} // namespace

void RoyaltySummary::add(const BookStatsRow &row)
{
    addMoney(gross, row.grossRoyalty);
    addMoney(spending, row.spending);
    addMoney(net, row.netRoyalty);
    addMoney(readRoyalties, row.totalReadRoyalty);
    addCount(reads, row.totalReads);
    addCount(paidEbookUnits, row.paidEbookUnits);
    addMoney(paidEbookRoyalties, row.paidEbookRoyalties);
    addCount(freeEbookDownloads, row.freeEbookDownloads);
    addCount(paperbackUnits, row.paperbackUnits);
    addMoney(paperbackRoyalties, row.paperbackRoyalties);
    addCount(hardcoverUnits, row.hardcoverUnits);
    addMoney(hardcoverRoyalties, row.hardcoverRoyalties);
    addCount(audiobookUnits, row.audiobookUnits);
    addMoney(audiobookRoyalties, row.audiobookRoyalties);
    addCount(expandedDistributionUnits, row.expandedDistributionUnits);
    addMoney(expandedDistributionRoyalties, row.expandedDistributionRoyalties);
    addCount(preOrderUnits, row.preOrderUnits);

    // A name may come in either map or in both; each adds its own half to one entry per name.
    if (row.customFormatUnits) {
        for (auto it = row.customFormatUnits->cbegin(); it != row.customFormatUnits->cend(); ++it) {
            FormatSalesSummary &format = customFormats[it.key()];
            format.units = checkedCountSum(format.units, it.value());
        }
    }
    if (row.customFormatRoyalties) {
        for (auto it = row.customFormatRoyalties->cbegin(); it != row.customFormatRoyalties->cend(); ++it) {
            customFormats[it.key()].royalties += it.value();
        }
    }

    if (row.currency && !row.currency->isEmpty()) {
        currency = *row.currency;
    }
}

RoyaltySummary RoyaltySummary::folding(const QList<BookStatsRow> &rows)
{
    RoyaltySummary summary;
    for (const BookStatsRow &row : rows) {
        summary.add(row);
    }
    return summary;
}
