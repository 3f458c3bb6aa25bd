#pragma once

#include <QDateTime>
#include <QTimeZone>

#include <chrono>
#include <functional>
#include <memory>

// A running timer; destroying the handle stops it.
class ClockTimer
{
public:
    virtual ~ClockTimer() = default;
};

// Where Inkwarden reads the time and sets its timers. The app uses the system clock; tests hand in
// a virtual one, so that days, cooldowns and refresh intervals are stepped through without waiting.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual QDateTime now() const = 0;
    // The zone whose days the periods count.
    virtual QTimeZone timeZone() const = 0;

    // Calls `callback` on the main thread after `interval`, and again every `interval` when
    // `repeating`, until the returned handle is destroyed.
    [[nodiscard]] virtual std::unique_ptr<ClockTimer> startTimer(std::chrono::milliseconds interval, bool repeating,
                                                                 std::function<void()> callback) = 0;
};
