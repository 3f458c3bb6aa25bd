#include "BookStatsFold.h"

#include "model/CheckedCount.h"

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

bool BookStatsFold::add(RoyaltySummary &summary, const BookStatsRow &row)
{
    bool countsFit = true;
    addMoney(summary.gross, row.grossRoyalty);
    addMoney(summary.spending, row.spending);
    addMoney(summary.net, row.netRoyalty);
    addMoney(summary.readRoyalties, row.totalReadRoyalty);
    countsFit = addCount(summary.reads, row.totalReads) && countsFit;
    countsFit = addCount(summary.paidEbookUnits, row.paidEbookUnits) && countsFit;
    addMoney(summary.paidEbookRoyalties, row.paidEbookRoyalties);
    countsFit = addCount(summary.freeEbookDownloads, row.freeEbookDownloads) && countsFit;
    countsFit = addCount(summary.paperbackUnits, row.paperbackUnits) && countsFit;
    addMoney(summary.paperbackRoyalties, row.paperbackRoyalties);
    countsFit = addCount(summary.hardcoverUnits, row.hardcoverUnits) && countsFit;
    addMoney(summary.hardcoverRoyalties, row.hardcoverRoyalties);
    countsFit = addCount(summary.audiobookUnits, row.audiobookUnits) && countsFit;
    addMoney(summary.audiobookRoyalties, row.audiobookRoyalties);
    countsFit = addCount(summary.expandedDistributionUnits, row.expandedDistributionUnits) && countsFit;
    addMoney(summary.expandedDistributionRoyalties, row.expandedDistributionRoyalties);
    countsFit = addCount(summary.preOrderUnits, row.preOrderUnits) && countsFit;

    // A name may come in either map or in both; each adds its own half to one entry per name.
    if (row.customFormatUnits) {
        for (auto it = row.customFormatUnits->cbegin(); it != row.customFormatUnits->cend(); ++it) {
            FormatSalesSummary &format = summary.customFormats[it.key()];
            countsFit = addCheckedCount(format.units, it.value()) && countsFit;
        }
    }
    if (row.customFormatRoyalties) {
        for (auto it = row.customFormatRoyalties->cbegin(); it != row.customFormatRoyalties->cend(); ++it) {
            summary.customFormats[it.key()].royalties += it.value();
        }
    }

    if (row.currency && !row.currency->isEmpty()) {
        summary.currency = *row.currency;
    }
    return countsFit;
}

std::optional<RoyaltySummary> BookStatsFold::folding(const QList<BookStatsRow> &rows)
{
    RoyaltySummary summary;
    for (const BookStatsRow &row : rows) {
        if (!add(summary, row)) {
            return std::nullopt;
        }
    }
    return summary;
}
