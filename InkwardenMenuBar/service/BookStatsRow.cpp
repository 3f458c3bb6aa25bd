#include "BookStatsRow.h"

#include "JsonObjectReader.h"

BookStatsRow BookStatsRow::read(JsonObjectReader &reader)
{
    BookStatsRow row;
    row.currency = reader.optionalString(QLatin1String("currency"));
    row.grossRoyalty = reader.optionalDouble(QLatin1String("gross_royalty"));
    row.spending = reader.optionalDouble(QLatin1String("spending"));
    row.netRoyalty = reader.optionalDouble(QLatin1String("net_royalty"));
    row.totalReadRoyalty = reader.optionalDouble(QLatin1String("total_read_royalty"));
    row.totalReads = reader.optionalInteger(QLatin1String("total_reads"));
    row.paidEbookUnits = reader.optionalInteger(QLatin1String("ebooks_paid_sold"));
    row.paidEbookRoyalties = reader.optionalDouble(QLatin1String("ebooks_paid_royalties"));
    row.freeEbookDownloads = reader.optionalInteger(QLatin1String("ebooks_free_sold"));
    row.paperbackUnits = reader.optionalInteger(QLatin1String("paperbacks_sold"));
    row.paperbackRoyalties = reader.optionalDouble(QLatin1String("paperbacks_royalties"));
    row.hardcoverUnits = reader.optionalInteger(QLatin1String("hardcovers_sold"));
    row.hardcoverRoyalties = reader.optionalDouble(QLatin1String("hardcovers_royalties"));
    row.audiobookUnits = reader.optionalInteger(QLatin1String("audiobooks_sold"));
    row.audiobookRoyalties = reader.optionalDouble(QLatin1String("audiobooks_royalties"));
    row.expandedDistributionUnits = reader.optionalInteger(QLatin1String("expanded_distribution_sold"));
    row.expandedDistributionRoyalties = reader.optionalDouble(QLatin1String("expanded_distribution_royalties"));
    row.preOrderUnits = reader.optionalInteger(QLatin1String("pre_orders_sold"));
    row.customFormatUnits = reader.optionalIntegerMap(QLatin1String("custom_format_units"));
    row.customFormatRoyalties = reader.optionalDoubleMap(QLatin1String("custom_format_royalties"));
    return row;
}
