#pragma once

#include "platform/Clock.h"
#include "support/VirtualClock.h"

#include <functional>

// The store's clock during a soak: the virtual clock, with a hook that runs after every timer
// callback. The soak uses the hook to let whatever a timer sent reach the development server at
// the very instant the timer fired, before virtual time moves on.
class SoakClock final : public Clock
{
public:
    explicit SoakClock(VirtualClock &clock)
        : m_clock(clock)
    {}

    QDateTime now() const override { return m_clock.now(); }
    QTimeZone timeZone() const override { return m_clock.timeZone(); }
    std::unique_ptr<ClockTimer> startTimer(std::chrono::milliseconds interval, bool repeating,
                                           std::function<void()> callback) override;

    void setAfterEveryTimer(std::function<void()> hook) { m_afterEveryTimer = std::move(hook); }

private:
    VirtualClock &m_clock;
    std::function<void()> m_afterEveryTimer;
};
