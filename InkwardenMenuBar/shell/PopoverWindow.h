#pragma once

#include "Popover.h"

#include <QElapsedTimer>

#include <memory>

class QQuickView;
class RoyaltiesStore;

// The popover as a frameless Qt Quick window of 360 by 560. On X11 it is placed against the panel
// and closes on a click elsewhere; on Wayland the compositor places it and it closes when Inkwarden
// loses the focus. The QML engine is made on the first opening, so an Inkwarden that nobody has
// opened stays small.
class PopoverWindow final : public Popover
{
    Q_OBJECT

public:
    static constexpr int width = 360;
    static constexpr int height = 560;
    // A click on the item this soon after a close is the click that closed it.
    static constexpr int reopenGuardMilliseconds = 300;

    explicit PopoverWindow(RoyaltiesStore &store, QObject *parent = nullptr);
    ~PopoverWindow() override;

    bool isShown() const override;
    void show(std::optional<QPoint> anchor) override;
    void close() override;
    bool closedJustNow() const override;

    // Null until the popover has been opened once.
    QQuickView *view() const { return m_view.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createView();
    void placeNear(std::optional<QPoint> anchor);
    void holdPointer();

    RoyaltiesStore &m_store;
    std::unique_ptr<QQuickView> m_view;
    QElapsedTimer m_sinceClosed;
    // On X11 the open popover holds the pointer, as a menu does, so that a click anywhere else
    // reaches it and closes it (and a click on the item does not reach the panel to open it again).
    bool m_holdsPointer = false;
    // Times left to take the pointer and the focus again after the popover showed.
    int m_holdTimesLeft = 0;
    bool m_pressedInside = false;
};
