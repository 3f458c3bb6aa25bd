#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

#include <chrono>
#include <optional>

// One statistics request per key per window (3 seconds, as the app itself keeps to). A refused
// request does not restart the window.
class RateLimiter
{
public:
    explicit RateLimiter(std::chrono::milliseconds window = std::chrono::seconds(3));

    // Nothing when the request may go ahead (and it is counted), else how long to wait.
    std::optional<std::chrono::milliseconds> admit(const QString &key, const QDateTime &now);

    void setWindow(std::chrono::milliseconds window) { m_window = window; }
    std::chrono::milliseconds window() const { return m_window; }
    void reset() { m_lastAdmitted.clear(); }

    // The "Retry-After" value for a wait: whole seconds, rounded up, at least 1.
    static QByteArray retryAfterSeconds(std::chrono::milliseconds wait);

private:
    std::chrono::milliseconds m_window;
    QHash<QString, QDateTime> m_lastAdmitted;
};
