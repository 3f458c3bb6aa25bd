#pragma once

#include <QtGlobal>

// Units and royalties of one custom sales format.
struct FormatSalesSummary {
    qint64 units = 0;
    double royalties = 0;

    friend bool operator==(const FormatSalesSummary &, const FormatSalesSummary &) = default;
};
