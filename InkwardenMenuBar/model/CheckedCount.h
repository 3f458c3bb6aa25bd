#pragma once

#include <QtGlobal>

#include <cstdlib>

// Adds two counts. Royalty counts never wrap: a sum beyond the 64-bit range means the figures are
// nonsense, and showing nonsense as a royalty count is worse than stopping.
inline qint64 checkedCountSum(qint64 lhs, qint64 rhs)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(lhs, rhs, &sum)) {
        std::abort();
    }
    return sum;
}
