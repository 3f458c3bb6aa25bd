#pragma once

#include <QDateTime>
#include <QTimeZone>

// Where Inkwarden reads the time. The app uses the system clock; tests hand in their own, so that
// days, cooldowns and refresh intervals can be stepped through without waiting.
class Clock {
public:
    virtual ~Clock() = default;

    virtual QDateTime now() const = 0;
    // The zone whose days the periods count.
    virtual QTimeZone timeZone() const = 0;
};

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
    QTimeZone timeZone() const override { return QTimeZone::systemTimeZone(); }
};
