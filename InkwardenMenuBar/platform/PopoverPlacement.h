#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

// Where the popover goes on X11: against the panel that holds the item, as close to the clicked
// point as the screen allows. The panel's edge is the one where the screen's work area is cut
// short; on a screen with no panel, the edge nearest to the click.
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
};
