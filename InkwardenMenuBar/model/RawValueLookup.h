#pragma once

#include <QStringView>

#include <array>
#include <optional>

// The small enumerations of the model are identified by their raw string, which is also what the
// settings keep. Looking one up walks the declaration order, so the first case wins.
template <typename Enum, std::size_t N>
std::optional<Enum> caseWithRawValue(const std::array<Enum, N> &cases, QStringView raw)
{
    for (const Enum candidate : cases) {
        if (candidate.rawValue() == raw) {
            return candidate;
        }
    }
    return std::nullopt;
}
