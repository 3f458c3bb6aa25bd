#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QHashFunctions>
#include <QString>
#include <QTimeZone>

#include <array>
#include <optional>

// The two instants of a period's span, both at a start of day in the calendar's time zone.
struct PeriodDates {
    QDateTime start;
    QDateTime end;
};

// Which span of days the figures cover. The raw value is what the settings keep, so it must never
// change; the title is what the views show, and may.
class RoyaltyPeriod
{
    Q_DECLARE_TR_FUNCTIONS(RoyaltyPeriod)

public:
    enum Case : quint8 { today, yesterday, thisMonth };

    constexpr RoyaltyPeriod(Case value) // NOLINT(google-explicit-constructor): reads like a Swift case
        : m_case(value)
    {}

    static constexpr std::array<RoyaltyPeriod, 3> allCases() { return {today, yesterday, thisMonth}; }
    static std::optional<RoyaltyPeriod> fromRawValue(QStringView raw);

    constexpr Case value() const { return m_case; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString title() const;

    // `calendar` is the time zone whose days count; `now` the current instant.
    PeriodDates dates(const QTimeZone &calendar, const QDateTime &now) const;

    friend constexpr bool operator==(RoyaltyPeriod, RoyaltyPeriod) = default;
    friend size_t qHash(RoyaltyPeriod period, size_t seed = 0) noexcept { return ::qHash(int(period.m_case), seed); }

private:
    Case m_case;
};
