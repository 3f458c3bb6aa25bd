#pragma once

#include <QMap>
#include <QString>

#include <optional>

class JsonObjectReader;

// One row of the statistics table: one book or line of the server's report. Every member is
// optional; money is in the row's currency.
struct BookStatsRow {
    std::optional<QString> currency;
    std::optional<double> grossRoyalty;
    std::optional<double> spending;
    std::optional<double> netRoyalty;
    std::optional<double> totalReadRoyalty;
    std::optional<qint64> totalReads;
    std::optional<qint64> paidEbookUnits;
    std::optional<double> paidEbookRoyalties;
    std::optional<qint64> freeEbookDownloads;
    std::optional<qint64> paperbackUnits;
    std::optional<double> paperbackRoyalties;
    std::optional<qint64> hardcoverUnits;
    std::optional<double> hardcoverRoyalties;
    std::optional<qint64> audiobookUnits;
    std::optional<double> audiobookRoyalties;
    std::optional<qint64> expandedDistributionUnits;
    std::optional<double> expandedDistributionRoyalties;
    std::optional<qint64> preOrderUnits;
    std::optional<QMap<QString, qint64>> customFormatUnits;
    std::optional<QMap<QString, double>> customFormatRoyalties;

    static BookStatsRow read(JsonObjectReader &reader);

    friend bool operator==(const BookStatsRow &, const BookStatsRow &) = default;
};
