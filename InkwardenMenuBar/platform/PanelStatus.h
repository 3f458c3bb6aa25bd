#pragma once

#include <QString>

#include <optional>

// What the panel item says at a glance, for hosts that cannot show the item itself: bars and panel
// plugins read it through the status interface and `inkwarden --status`.
enum class PanelState { signedOut, loading, ok, error, offline };

// "signedOut", "loading", "ok", "error", "offline": the names bars use as CSS classes.
QString rawValue(PanelState state);
std::optional<PanelState> panelStateFromRawValue(const QString &rawValue);

struct PanelStatus {
    // The text next to the icon, exactly as the item shows it ("· $1,235", "◉ —").
    QString title;
    // The tool tip's heading and the lines below it; `toolTip()` joins them.
    QString toolTipTitle;
    QString toolTipBody;
    PanelState state = PanelState::signedOut;

    QString toolTip() const;

    friend bool operator==(const PanelStatus &, const PanelStatus &) = default;
};
