#pragma once

#include <QDateTime>

#include <functional>

// "Now" for the development server. Rate limits, sign-in code expiry and today's growing figures
// all read it, so tests swap in a clock they move by hand instead of sleeping.
class ServerClock
{
public:
    using Source = std::function<QDateTime()>;

    ServerClock() = default;
    explicit ServerClock(Source source) { setSource(std::move(source)); }

    QDateTime now() const { return m_source(); }

    // An empty source puts the system clock back.
    void setSource(Source source) { m_source = source ? std::move(source) : systemSource(); }

    static Source systemSource()
    {
        return [] { return QDateTime::currentDateTime(); };
    }

private:
    Source m_source = systemSource();
};
