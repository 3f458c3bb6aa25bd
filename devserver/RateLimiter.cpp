#include "RateLimiter.h"

#include <algorithm>

RateLimiter::RateLimiter(std::chrono::milliseconds window)
    : m_window(window)
{}

std::optional<std::chrono::milliseconds> RateLimiter::admit(const QString &key, const QDateTime &now)
{
    if (m_window.count() > 0) {
        const auto last = m_lastAdmitted.constFind(key);
        if (last != m_lastAdmitted.cend()) {
            const qint64 elapsed = last->msecsTo(now);
            // A clock that went backwards admits rather than locking the key out.
            if (elapsed >= 0 && elapsed < m_window.count()) {
                return std::chrono::milliseconds(m_window.count() - elapsed);
            }
        }
    }
    m_lastAdmitted.insert(key, now);
    return std::nullopt;
}

QByteArray RateLimiter::retryAfterSeconds(std::chrono::milliseconds wait)
{
    const qint64 seconds = (wait.count() + 999) / 1000;
    return QByteArray::number(std::max<qint64>(seconds, 1));
}
