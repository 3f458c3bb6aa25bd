#include "PopoverPlacement.h"

#include <algorithm>

PopoverPlacement::Edge PopoverPlacement::panelEdge(const QRect &screen, const QRect &workArea, const QPoint &anchor)
{
    // Panels cut into the work area; of those, the one nearest the click holds the item.
    struct Candidate {
        Edge edge;
        int cut;
        int distance;
    };
    const Candidate candidates[] = {
        {Edge::top, workArea.top() - screen.top(), anchor.y() - screen.top()},
        {Edge::bottom, screen.bottom() - workArea.bottom(), screen.bottom() - anchor.y()},
        {Edge::left, workArea.left() - screen.left(), anchor.x() - screen.left()},
        {Edge::right, screen.right() - workArea.right(), screen.right() - anchor.x()},
    };
    const Candidate *best = nullptr;
    for (const Candidate &candidate : candidates) {
        if (candidate.cut > 0 && (!best || candidate.distance < best->distance)) {
            best = &candidate;
        }
    }
    if (best) {
        return best->edge;
    }
    // Nothing tells where the panel is: a click within a panel's reach of the top or bottom edge
    // is taken to be on a horizontal panel, by far the usual kind, even where a corner puts the
    // side edge nearer (an item at the right end of a top panel); else the nearest edge.
    const Candidate &top = candidates[0];
    const Candidate &bottom = candidates[1];
    const Candidate &nearerOfTopAndBottom = top.distance <= bottom.distance ? top : bottom;
    if (nearerOfTopAndBottom.distance < panelReach) {
        return nearerOfTopAndBottom.edge;
    }
    return std::min_element(std::begin(candidates), std::end(candidates),
                            [](const Candidate &a, const Candidate &b) { return a.distance < b.distance; })
        ->edge;
}

QPoint PopoverPlacement::topLeft(const QRect &screen, const QRect &workArea, const QPoint &anchor, const QSize &size)
{
    const QRect area = workArea.isValid() ? workArea : screen;
    int x = anchor.x() - size.width() / 2;
    int y = anchor.y() - size.height() / 2;
    // Where the work area tells where the panel ends, the popover starts there; where it does not
    // (some panels reserve no space), it keeps clear of the clicked point instead.
    switch (panelEdge(screen, area, anchor)) {
    case Edge::top:
        y = area.top() > screen.top() ? area.top() + gap : anchor.y() + clearance;
        break;
    case Edge::bottom:
        y = (area.bottom() < screen.bottom() ? area.bottom() + 1 : anchor.y() - clearance) - size.height() - gap;
        break;
    case Edge::left:
        x = area.left() > screen.left() ? area.left() + gap : anchor.x() + clearance;
        break;
    case Edge::right:
        x = (area.right() < screen.right() ? area.right() + 1 : anchor.x() - clearance) - size.width() - gap;
        break;
    }
    // Kept whole on the screen, even where the click was near a corner.
    x = std::clamp(x, area.left(), std::max(area.left(), area.right() + 1 - size.width()));
    y = std::clamp(y, area.top(), std::max(area.top(), area.bottom() + 1 - size.height()));
    return {x, y};
}
