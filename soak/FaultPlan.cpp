#include "FaultPlan.h"

#include <cmath>

namespace {

template <typename T>
const T &pick(std::mt19937_64 &random, const QList<T> &items)
{
    return items.at(std::uniform_int_distribution<qsizetype>(0, items.size() - 1)(random));
}

bool chance(std::mt19937_64 &random, double probability)
{
    return std::bernoulli_distribution(probability)(random);
}

} // namespace

QStringList FaultPlan::families()
{
    return {QStringLiteral("status"), QStringLiteral("malformed"),   QStringLiteral("empty"),
            QStringLiteral("html"),   QStringLiteral("retry-after"), QStringLiteral("delay"),
            QStringLiteral("reset"),  QStringLiteral("hang")};
}

FaultPlan::Choice FaultPlan::choose(std::mt19937_64 &random)
{
    // Statistics carry most of the traffic, so most of the trouble.
    const Route route = chance(random, 0.7) ? Route::Stats : Route::Accounts;

    struct Family {
        QString name;
        int weight;
    };
    QList<Family> families{{QStringLiteral("status"), 24},      {QStringLiteral("malformed"), 6},
                           {QStringLiteral("empty"), 5},        {QStringLiteral("html"), 6},
                           {QStringLiteral("retry-after"), 24}, {QStringLiteral("delay"), 12},
                           {QStringLiteral("reset"), 8},        {QStringLiteral("hang"), 3}};
    families.removeIf([this](const Family &family) {
        return !allowed(family.name) || (family.name == QLatin1String("hang") && m_hangsLeft <= 0);
    });
    if (families.isEmpty()) {
        // Everything left out: a plain server error is the mildest fault there is.
        families.append({QStringLiteral("status"), 1});
    }
    int total = 0;
    for (const Family &family : std::as_const(families)) {
        total += family.weight;
    }
    int roll = std::uniform_int_distribution<int>(0, total - 1)(random);
    QString family;
    for (const Family &candidate : std::as_const(families)) {
        if (roll < candidate.weight) {
            family = candidate.name;
            break;
        }
        roll -= candidate.weight;
    }

    Fault fault;
    if (family == QLatin1String("status")) {
        fault.status = pick(random, QList<int>{500, 502, 503, 503, 500, 504, 401, 404});
    } else if (family == QLatin1String("malformed")) {
        fault.malformedBody = true;
    } else if (family == QLatin1String("empty")) {
        fault.emptyBody = true;
    } else if (family == QLatin1String("html")) {
        fault.htmlBody = true;
        if (chance(random, 0.5)) {
            fault.status = 502;
        }
    } else if (family == QLatin1String("retry-after")) {
        // Numeric waits, one of them fractional and one zero; then values that are not a number of
        // seconds at all, which mean the 3-second default; and a 429 without the header.
        const QList<QByteArray> values{"2.2",  "30",   "120", "0",   "7",   "600",
                                       "45.5", "soon", "nan", "inf", "-",   "Wed, 21 Oct 2026 07:28:00 GMT",
                                       "",     "120",  "30",  "2.2", " 12 "};
        const QByteArray value = pick(random, values);
        if (value.isEmpty()) {
            fault.status = 429;
        } else {
            fault.retryAfter = value;
        }
    } else if (family == QLatin1String("delay")) {
        fault.delayMs = std::uniform_int_distribution<int>(100, 1200)(random);
        if (chance(random, 0.35)) {
            fault.status = 503;
        }
    } else if (family == QLatin1String("reset")) {
        fault.reset = true;
        if (chance(random, 0.3)) {
            fault.delayMs = std::uniform_int_distribution<int>(50, 600)(random);
        }
    } else {
        fault.hang = true;
        --m_hangsLeft;
    }

    Choice choice{route, fault, std::nullopt};
    if (fault.hang) {
        // Each hang costs the service's whole time-out in real time: one request only.
        choice.fault.remainingUses = 1;
    } else if (chance(random, 0.6)) {
        choice.fault.remainingUses = std::uniform_int_distribution<int>(1, 4)(random);
    } else {
        choice.lasts = std::chrono::milliseconds(std::uniform_int_distribution<qint64>(30'000, 90LL * 60'000)(random));
    }
    return choice;
}

QString FaultPlan::kindOf(const Fault &fault)
{
    QStringList parts;
    if (fault.hang) {
        parts.append(QStringLiteral("hang"));
    }
    if (fault.reset) {
        parts.append(QStringLiteral("reset"));
    }
    if (fault.retryAfter) {
        parts.append(QStringLiteral("429 Retry-After: \"%1\"").arg(QString::fromLatin1(*fault.retryAfter)));
    } else if (fault.status) {
        parts.append(QStringLiteral("status %1").arg(*fault.status));
    }
    if (fault.malformedBody) {
        parts.append(QStringLiteral("malformed"));
    }
    if (fault.emptyBody) {
        parts.append(QStringLiteral("empty"));
    }
    if (fault.htmlBody) {
        parts.append(QStringLiteral("html"));
    }
    if (fault.delayMs > 0) {
        parts.append(QStringLiteral("delay"));
    }
    return parts.join(QStringLiteral(" + "));
}

std::optional<double> FaultPlan::numericRetryAfter(const QByteArray &value)
{
    bool ok = false;
    const double seconds = value.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(seconds)) {
        return std::nullopt;
    }
    return seconds;
}
