#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// Where the popover goes on X11: against the panel that holds the item, as close to the clicked
// point as the screen allows. The panel's edge is the one where the screen's work area is cut
// short; where no panel reserves space, a horizontal panel within reach of the click, else the
// edge nearest to it.
class PopoverPlacement
{
public:
    enum class Edge : quint8 { top, bottom, left, right };

    static Edge panelEdge(const QRect &screen, const QRect &workArea, const QPoint &anchor);
    // The top-left corner of a popover of `size` for a click at `anchor`.
    static QPoint topLeft(const QRect &screen, const QRect &workArea, const QPoint &anchor, const QSize &size);

    // Room left between the panel and the popover.
    static constexpr int gap = 4;
    // Distance kept from the clicked point when the screen does not say where the panel ends: about
    // the height of a panel.
    static constexpr int clearance = 24;
    // How far from a screen edge a click can be and still be on a panel along that edge.
    static constexpr int panelReach = 64;
};
