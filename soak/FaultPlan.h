#pragma once

#include "FaultSwitches.h"
#include "Route.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <random>

// The faults a soak switches on at random: what the development server can do wrong, in the
// proportions a bad day on the real service might show.
class FaultPlan
{
public:
    // The families a run can leave out with --without.
    static QStringList families();

    struct Choice {
        Route route{};
        Fault fault;
        // How long it stays when it is not limited to a number of requests.
        std::optional<std::chrono::milliseconds> lasts;
    };

    FaultPlan(QSet<QString> without, int hangs)
        : m_without(std::move(without))
        , m_hangsLeft(hangs)
    {}

    Choice choose(std::mt19937_64 &random);

    // A short name for what a request met, as the report counts it: "status 503",
    // "429 Retry-After: 120", "delay", "reset", …
    static QString kindOf(const Fault &fault);

    // The wait a "Retry-After" value asks for, in seconds: the value when all of it is a finite
    // number, else none (the 3-second default applies).
    static std::optional<double> numericRetryAfter(const QByteArray &value);

private:
    bool allowed(const QString &family) const { return !m_without.contains(family); }

    QSet<QString> m_without;
    int m_hangsLeft;
};
