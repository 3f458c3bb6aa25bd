#include "PanelStatus.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<PanelState, const char16_t *>, 5> rawValues{{
    {PanelState::signedOut, u"signedOut"},
    {PanelState::loading, u"loading"},
    {PanelState::ok, u"ok"},
    {PanelState::error, u"error"},
    {PanelState::offline, u"offline"},
}};

} // namespace

QString rawValue(PanelState state)
{
    for (const auto &[candidate, name] : rawValues) {
        if (candidate == state) {
            return QString::fromUtf16(name);
        }
    }
    return {};
}

std::optional<PanelState> panelStateFromRawValue(const QString &raw)
{
    for (const auto &[state, name] : rawValues) {
        if (raw == QString::fromUtf16(name)) {
            return state;
        }
    }
    return std::nullopt;
}

QString PanelStatus::toolTip() const
{
    if (toolTipBody.isEmpty()) {
        return toolTipTitle;
    }
    return toolTipTitle + u'\n' + toolTipBody;
}
