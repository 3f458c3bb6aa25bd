#pragma once

#include "Popover.h"

#include <QElapsedTimer>
#include <QTimer>

#include <chrono>
#include <memory>

class QQuickView;
class RoyaltiesStore;

// The popover as a frameless Qt Quick window of 360 by 560. On X11 it is placed against the panel
// and closes on a click elsewhere; on Wayland the compositor places it and it closes when Inkwarden
// loses the focus. The window and its QML engine are made on the first opening, so an Inkwarden
// that nobody has opened stays small, and are given up again once the popover has stayed closed
// for `releaseDelay`: Inkwarden goes back to its idle size between glances. It draws with Qt
// Quick's software renderer unless QT_QUICK_BACKEND names another.
class PopoverWindow final : public Popover
{
    Q_OBJECT

public:
    static constexpr int width = 360;
    static constexpr int height = 560;
    // A click on the item this soon after a close is the click that closed it.
    static constexpr int reopenGuardMilliseconds = 300;

    // Reopening within this is instant; after it, opening costs a first opening again (about a
    // tenth of a second) and saves the views' memory meanwhile.
    static constexpr std::chrono::milliseconds defaultReleaseDelay{20000};

    explicit PopoverWindow(RoyaltiesStore &store, QObject *parent = nullptr,
                           std::chrono::milliseconds releaseDelay = defaultReleaseDelay);
    ~PopoverWindow() override;

    bool isShown() const override;
    void show(std::optional<QPoint> anchor) override;
    void close() override;
    bool closedJustNow() const override;

    // Null until the popover is opened, and again once it has been closed for the release delay.
    QQuickView *view() const { return m_view.get(); }

Q_SIGNALS:
    void viewReleased();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createView();
    void releaseView();
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
    QTimer m_release;
};
