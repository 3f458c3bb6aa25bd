#pragma once

#include "BookStatsRow.h"
#include "model/RoyaltySummary.h"

#include <QList>

#include <optional>

// Folds the statistics table into the period's one summary: money as plain additions, counts
// checked, custom formats merged by their exact name.
namespace BookStatsFold {

// Adds one row: the row's currency takes over unless it is missing or empty. False when a count
// would leave the 64-bit range: that count stays as it was, and the summary is nonsense to be
// dropped.
[[nodiscard]] bool add(RoyaltySummary &summary, const BookStatsRow &row);

// Folds a whole table, in its order, starting from the empty summary; nothing when a count would
// leave the 64-bit range.
std::optional<RoyaltySummary> folding(const QList<BookStatsRow> &rows);

} // namespace BookStatsFold
