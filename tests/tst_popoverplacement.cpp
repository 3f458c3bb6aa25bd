#include "platform/PopoverPlacement.h"

#include <QTest>

namespace {

const QRect screen(0, 0, 1920, 1080);
const QSize popover(360, 560);

} // namespace

class TestPopoverPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hangsBelowATopPanelUnderTheClick()
    {
        const QRect work(0, 28, 1920, 1052);
        QCOMPARE(PopoverPlacement::topLeft(screen, work, QPoint(1500, 14), popover), QPoint(1320, 32));
    }

    void standsAboveABottomPanel()
    {
        const QRect work(0, 0, 1920, 1040);
        QCOMPARE(PopoverPlacement::topLeft(screen, work, QPoint(900, 1060), popover), QPoint(720, 1040 - 560 - 4));
    }

    void besideALeftOrRightPanel()
    {
        QCOMPARE(PopoverPlacement::topLeft(screen, QRect(48, 0, 1872, 1080), QPoint(24, 700), popover),
                 QPoint(52, 420));
        QCOMPARE(PopoverPlacement::topLeft(screen, QRect(0, 0, 1872, 1080), QPoint(1896, 300), popover),
                 QPoint(1872 - 360 - 4, 20));
    }

    void clampedToTheScreenNearACorner()
    {
        const QRect work(0, 28, 1920, 1052);
        QCOMPARE(PopoverPlacement::topLeft(screen, work, QPoint(1910, 10), popover), QPoint(1920 - 360, 32));
        QCOMPARE(PopoverPlacement::topLeft(screen, work, QPoint(5, 10), popover), QPoint(0, 32));
    }

    void nearestPanelWinsWhenThereAreTwo()
    {
        // A top bar and a bottom dock: a click at the bottom belongs to the dock.
        const QRect work(0, 28, 1920, 1000);
        QCOMPARE(PopoverPlacement::panelEdge(screen, work, QPoint(900, 1050)), PopoverPlacement::Edge::bottom);
        QCOMPARE(PopoverPlacement::panelEdge(screen, work, QPoint(900, 10)), PopoverPlacement::Edge::top);
    }

    void screenWithoutPanelUsesTheNearestEdge()
    {
        QCOMPARE(PopoverPlacement::panelEdge(screen, screen, QPoint(1900, 540)), PopoverPlacement::Edge::right);
        QCOMPARE(PopoverPlacement::topLeft(screen, screen, QPoint(960, 3), popover), QPoint(780, 27));
    }

    void panelThatReservesNoSpaceIsNotCovered()
    {
        // An item at (1158, 13) in a 26-pixel top panel whose space the work area does not show.
        const QRect small(0, 0, 1280, 800);
        const QPoint topLeft = PopoverPlacement::topLeft(small, small, QPoint(1158, 13), popover);
        QVERIFY(topLeft.y() > 26);
        QCOMPARE(topLeft, QPoint(1280 - 360, 37));
        const QPoint aboveDock = PopoverPlacement::topLeft(small, small, QPoint(640, 790), popover);
        QCOMPARE(aboveDock, QPoint(460, 790 - 24 - 560 - 4));
    }

    void itemInTheCornerOfATopPanelThatReservesNoSpaceOpensBelowIt()
    {
        // The right edge is nearer (9 pixels) than the top (12), but the item is on the top panel.
        const QRect small(0, 0, 1280, 800);
        QCOMPARE(PopoverPlacement::panelEdge(small, small, QPoint(1270, 12)), PopoverPlacement::Edge::top);
        QCOMPARE(PopoverPlacement::topLeft(small, small, QPoint(1270, 12), popover), QPoint(1280 - 360, 36));
        QCOMPARE(PopoverPlacement::panelEdge(small, small, QPoint(3, 790)), PopoverPlacement::Edge::bottom);
        // Far from the top and bottom, a side panel is the nearest edge.
        QCOMPARE(PopoverPlacement::panelEdge(small, small, QPoint(1270, 300)), PopoverPlacement::Edge::right);
    }

    void secondScreenToTheRight()
    {
        const QRect right(1920, 0, 2560, 1440);
        const QRect work(1920, 32, 2560, 1408);
        QCOMPARE(PopoverPlacement::topLeft(right, work, QPoint(4400, 16), popover), QPoint(4480 - 360, 36));
    }

    void popoverTallerThanTheScreenStartsAtTheTop()
    {
        const QRect small(0, 0, 800, 480);
        const QRect work(0, 24, 800, 456);
        QCOMPARE(PopoverPlacement::topLeft(small, work, QPoint(400, 12), popover), QPoint(220, 24));
    }
};

QTEST_GUILESS_MAIN(TestPopoverPlacement)
#include "tst_popoverplacement.moc"
