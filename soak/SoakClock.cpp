#include "SoakClock.h"

std::unique_ptr<ClockTimer> SoakClock::startTimer(std::chrono::milliseconds interval, bool repeating,
                                                  std::function<void()> callback)
{
    return m_clock.startTimer(interval, repeating, [this, callback = std::move(callback)] {
        callback();
        if (m_afterEveryTimer) {
            m_afterEveryTimer();
        }
    });
}
