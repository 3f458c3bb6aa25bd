#pragma once

#include "ServerClock.h"

#include <QDateTime>
#include <QTimeZone>

// A clock the test moves by hand; install it with `server.clock().setSource(clock.source())`.
class ManualServerClock
{
public:
    explicit ManualServerClock(QDateTime start = QDateTime(QDate(2024, 5, 15), QTime(14, 0),
                                                           QTimeZone::systemTimeZone()))
        : m_now(std::move(start))
    {}

    QDateTime now() const { return m_now; }
    void set(const QDateTime &now) { m_now = now; }
    void advanceMs(qint64 milliseconds) { m_now = m_now.addMSecs(milliseconds); }

    ServerClock::Source source()
    {
        return [this] { return m_now; };
    }

private:
    QDateTime m_now;
};
