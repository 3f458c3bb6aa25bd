#pragma once

#include <QtGlobal>

// Adds `value` to a royalty count. Counts never wrap: a sum beyond the 64-bit range means the
// figures are nonsense, so the addition is refused (false) and `total` is left as it was.
[[nodiscard]] inline bool addCheckedCount(qint64 &total, qint64 value)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(total, value, &sum)) {
        return false;
    }
    total = sum;
    return true;
}
