#pragma once

#include "FormatSalesSummary.h"

#include <QList>
#include <QMap>
#include <QString>

// The totals of one account for one period: the figure set the whole interface shows. Money is in
// `currency`; counts are 64-bit and never wrap.
struct RoyaltySummary {
    double gross = 0;
    double spending = 0;
    double net = 0;
    double readRoyalties = 0;
    qint64 reads = 0;
    qint64 paidEbookUnits = 0;
    double paidEbookRoyalties = 0;
    qint64 freeEbookDownloads = 0;
    qint64 paperbackUnits = 0;
    double paperbackRoyalties = 0;
    qint64 hardcoverUnits = 0;
    double hardcoverRoyalties = 0;
    qint64 audiobookUnits = 0;
    double audiobookRoyalties = 0;
    qint64 expandedDistributionUnits = 0;
    double expandedDistributionRoyalties = 0;
    qint64 preOrderUnits = 0;
    QMap<QString, FormatSalesSummary> customFormats;
    QString currency = QStringLiteral("USD");

    friend bool operator==(const RoyaltySummary &, const RoyaltySummary &) = default;
};
