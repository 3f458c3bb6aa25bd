#include "SystemClock.h"

#include <QTimer>

namespace {

class QtClockTimer final : public ClockTimer
{
public:
    QtClockTimer(std::chrono::milliseconds interval, bool repeating, std::function<void()> callback)
    {
        m_timer.setSingleShot(!repeating);
        // Inkwarden's timers count seconds and minutes: coarse timers let the system batch wake-ups.
        m_timer.setTimerType(Qt::CoarseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(callback));
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

QTimeZone SystemClock::timeZone() const
{
    return QTimeZone::systemTimeZone();
}

std::unique_ptr<ClockTimer> SystemClock::startTimer(std::chrono::milliseconds interval, bool repeating,
                                                    std::function<void()> callback)
{
    return std::make_unique<QtClockTimer>(interval, repeating, std::move(callback));
}
