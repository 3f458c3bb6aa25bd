#pragma once

#include "model/Clock.h"

// The real time and the main thread's event loop.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    QTimeZone timeZone() const override;
    std::unique_ptr<ClockTimer> startTimer(std::chrono::milliseconds interval, bool repeating,
                                           std::function<void()> callback) override;
};
