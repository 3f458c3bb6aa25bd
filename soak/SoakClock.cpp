#include "SoakClock.h"

struct SoakClock::Timer {
    std::chrono::milliseconds interval;
    bool repeating;
    std::function<void()> callback;
    QDateTime due;
    std::unique_ptr<ClockTimer> armed;
};

class SoakClock::Handle final : public ClockTimer
{
public:
    explicit Handle(std::shared_ptr<Timer> timer)
        : m_timer(std::move(timer))
    {}
    ~Handle() override { m_timer->armed.reset(); }

private:
    std::shared_ptr<Timer> m_timer;
};

SoakClock::SoakClock(VirtualClock &clock)
    : m_clock(clock)
{}

SoakClock::~SoakClock() = default;

std::unique_ptr<ClockTimer> SoakClock::startTimer(std::chrono::milliseconds interval, bool repeating,
                                                  std::function<void()> callback)
{
    auto timer = std::make_shared<Timer>(Timer{interval, repeating, std::move(callback), {}, {}});
    m_timers.removeIf([](const std::weak_ptr<Timer> &weak) { return weak.expired(); });
    m_timers.append(timer);
    arm(timer, interval);
    return std::make_unique<Handle>(timer);
}

void SoakClock::arm(const std::shared_ptr<Timer> &timer, std::chrono::milliseconds delay)
{
    timer->due = m_clock.now().addMSecs(delay.count());
    timer->armed = m_clock.startTimer(delay, false, [this, weak = std::weak_ptr<Timer>(timer)] { fire(weak); });
}

void SoakClock::fire(const std::weak_ptr<Timer> &weak)
{
    const std::shared_ptr<Timer> timer = weak.lock();
    if (!timer || !timer->armed) {
        return;
    }
    if (timer->repeating) {
        arm(timer, std::max(timer->interval, std::chrono::milliseconds(1)));
    } else {
        timer->armed.reset();
    }
    // A copy: the callback may stop its own timer.
    const std::function<void()> callback = timer->callback;
    callback();
    if (m_afterEveryTimer) {
        m_afterEveryTimer();
    }
}

void SoakClock::sleep(std::chrono::milliseconds duration, bool timersPause)
{
    const QDateTime wake = m_clock.now().addMSecs(duration.count());
    if (!timersPause) {
        m_clock.jumpTo(wake);
        return;
    }
    QList<std::pair<std::shared_ptr<Timer>, qint64>> paused;
    for (const std::weak_ptr<Timer> &weak : std::as_const(m_timers)) {
        if (const std::shared_ptr<Timer> timer = weak.lock(); timer && timer->armed) {
            paused.append({timer, std::max<qint64>(m_clock.now().msecsTo(timer->due), 0)});
            timer->armed.reset();
        }
    }
    m_clock.jumpTo(wake);
    for (const auto &[timer, remaining] : std::as_const(paused)) {
        arm(timer, std::chrono::milliseconds(remaining));
    }
}
