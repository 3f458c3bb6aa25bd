#pragma once

#include "model/Clock.h"

#include <QList>

#include <memory>

// A clock that stands still until the test moves it. Timers fire, in order of their due time, only
// inside `advance`, with `now()` set to each one's due time as it fires.
class VirtualClock final : public Clock
{
public:
    explicit VirtualClock(QDateTime start = QDateTime(QDate(2026, 11, 21), QTime(9, 30), QTimeZone::utc()),
                          QTimeZone zone = QTimeZone::utc());
    ~VirtualClock() override;

    QDateTime now() const override { return m_now; }
    QTimeZone timeZone() const override { return m_zone; }
    std::unique_ptr<ClockTimer> startTimer(std::chrono::milliseconds interval, bool repeating,
                                           std::function<void()> callback) override;

    // Moves time forward by `step`, firing every timer that falls due on the way.
    void advance(std::chrono::milliseconds step);
    // Sets the time without firing anything, as a machine waking from sleep sees it.
    void jumpTo(const QDateTime &instant) { m_now = instant; }

    int activeTimerCount() const;

private:
    struct Entry;
    class Handle;
    friend class Handle;

    QDateTime m_now;
    QTimeZone m_zone;
    QList<std::shared_ptr<Entry>> m_entries;
    quint64 m_nextSequence = 0;
};
