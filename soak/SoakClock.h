#pragma once

#include "model/Clock.h"
#include "support/VirtualClock.h"

#include <QList>

#include <functional>
#include <memory>

// The store's clock during a soak, on top of the virtual clock that the development server also
// reads. Two things set it apart:
// - a hook runs after every timer callback, so whatever a timer sent reaches the server at the
//   instant the timer fired, before virtual time moves on;
// - a repeating timer fires once per period and is then set again from that moment, as a Qt timer
//   does, so it never fires in a burst to catch up after a jump.
// A machine's sleep comes in two kinds: Linux timers run on the monotonic clock, which stands still
// while the machine sleeps, so they are pushed back by the time slept; other timers are simply
// overdue at the wake and fire at once.
class SoakClock final : public Clock
{
public:
    explicit SoakClock(VirtualClock &clock);
    ~SoakClock() override;

    QDateTime now() const override { return m_clock.now(); }
    QTimeZone timeZone() const override { return m_clock.timeZone(); }
    std::unique_ptr<ClockTimer> startTimer(std::chrono::milliseconds interval, bool repeating,
                                           std::function<void()> callback) override;

    void setAfterEveryTimer(std::function<void()> hook) { m_afterEveryTimer = std::move(hook); }

    // Moves time forward by `step`, firing what falls due.
    void advance(std::chrono::milliseconds step) { m_clock.advance(step); }
    // The machine sleeps for `duration` and wakes; see above for `timersPause`.
    void sleep(std::chrono::milliseconds duration, bool timersPause);

private:
    struct Timer;
    class Handle;

    void arm(const std::shared_ptr<Timer> &timer, std::chrono::milliseconds delay);
    void fire(const std::weak_ptr<Timer> &weak);

    VirtualClock &m_clock;
    std::function<void()> m_afterEveryTimer;
    QList<std::weak_ptr<Timer>> m_timers;
};
