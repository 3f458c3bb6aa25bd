#include "RoyaltySummary.h"

#include "CheckedCount.h"
#include "service/BookStatsRow.h"

namespace {

void addMoney(double &total, const std::optional<double> &amount)
{
    total += amount.value_or(0.0);
}

bool addCount(qint64 &total, const std::optional<qint64> &count)
{
    return addCheckedCount(total, count.value_or(0));
}

} // namespace

bool RoyaltySummary::add(const BookStatsRow &row)
{
    bool countsFit = true;
    addMoney(gross, row.grossRoyalty);
    addMoney(spending, row.spending);
    addMoney(net, row.netRoyalty);
    addMoney(readRoyalties, row.totalReadRoyalty);
    countsFit = addCount(reads, row.totalReads) && countsFit;
    countsFit = addCount(paidEbookUnits, row.paidEbookUnits) && countsFit;
    addMoney(paidEbookRoyalties, row.paidEbookRoyalties);
    countsFit = addCount(freeEbookDownloads, row.freeEbookDownloads) && countsFit;
    countsFit = addCount(paperbackUnits, row.paperbackUnits) && countsFit;
    addMoney(paperbackRoyalties, row.paperbackRoyalties);
    countsFit = addCount(hardcoverUnits, row.hardcoverUnits) && countsFit;
    addMoney(hardcoverRoyalties, row.hardcoverRoyalties);
    countsFit = addCount(audiobookUnits, row.audiobookUnits) && countsFit;
    addMoney(audiobookRoyalties, row.audiobookRoyalties);
    countsFit = addCount(expandedDistributionUnits, row.expandedDistributionUnits) && countsFit;
    addMoney(expandedDistributionRoyalties, row.expandedDistributionRoyalties);
    countsFit = addCount(preOrderUnits, row.preOrderUnits) && countsFit;

    // A name may come in either map or in both; each adds its own half to one entry per name.
    if (row.customFormatUnits) {
        for (auto it = row.customFormatUnits->cbegin(); it != row.customFormatUnits->cend(); ++it) {
            FormatSalesSummary &format = customFormats[it.key()];
            countsFit = addCheckedCount(format.units, it.value()) && countsFit;
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
    return countsFit;
}

std::optional<RoyaltySummary> RoyaltySummary::folding(const QList<BookStatsRow> &rows)
{
    RoyaltySummary summary;
    for (const BookStatsRow &row : rows) {
        if (!summary.add(row)) {
            return std::nullopt;
        }
    }
    return summary;
}
