#pragma once

#include "model/RoyaltySummary.h"

// A month of a busy author's figures, in every format, as the screenshots and the rendered
// translations show them.
inline RoyaltySummary sampleFigures(const QString &currency = QStringLiteral("USD"))
{
    RoyaltySummary summary;
    summary.currency = currency;
    summary.gross = 1842.37;
    summary.spending = 312.9;
    summary.net = 1529.47;
    summary.paidEbookUnits = 214;
    summary.paidEbookRoyalties = 642.18;
    summary.paperbackUnits = 87;
    summary.paperbackRoyalties = 391.5;
    summary.hardcoverUnits = 12;
    summary.hardcoverRoyalties = 96.24;
    summary.audiobookUnits = 31;
    summary.audiobookRoyalties = 188.6;
    summary.expandedDistributionUnits = 1;
    summary.expandedDistributionRoyalties = 2.45;
    summary.reads = 48210;
    summary.readRoyalties = 521.4;
    summary.preOrderUnits = 56;
    summary.freeEbookDownloads = 1204;
    return summary;
}
