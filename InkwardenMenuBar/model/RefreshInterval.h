#pragma once

#include <QtGlobal>

#include <algorithm>
#include <array>

// The refresh intervals Inkwarden offers, in minutes, shortest first; the first is the default.
namespace RefreshInterval {

inline constexpr std::array<qint64, 4> offeredMinutes{30, 60, 120, 180};
inline constexpr qint64 defaultMinutes = offeredMinutes.front();

constexpr bool isOffered(qint64 minutes)
{
    return std::find(offeredMinutes.cbegin(), offeredMinutes.cend(), minutes) != offeredMinutes.cend();
}

} // namespace RefreshInterval
