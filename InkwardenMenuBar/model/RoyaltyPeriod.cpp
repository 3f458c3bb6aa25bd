#include "RoyaltyPeriod.h"

#include "RawValueLookup.h"

std::optional<RoyaltyPeriod> RoyaltyPeriod::fromRawValue(QStringView raw)
{
    return caseWithRawValue(allCases(), raw);
}

QString RoyaltyPeriod::rawValue() const
{
    switch (m_case) {
    case today:
        return QStringLiteral("Today");
    case yesterday:
        return QStringLiteral("Yesterday");
    case thisMonth:
        return QStringLiteral("This Month");
    }
    Q_UNREACHABLE();
}

QString RoyaltyPeriod::title() const
{
    // The same words as the stored value in English; the settings keep the raw value whatever the
    // language.
    switch (m_case) {
    case today:
        //: The period of royalty figures shown: the current day
        return tr("Today");
    case yesterday:
        //: The period of royalty figures shown: the day before today
        return tr("Yesterday");
    case thisMonth:
        //: The period of royalty figures shown: the current calendar month so far
        return tr("This Month");
    }
    Q_UNREACHABLE();
}

PeriodDates RoyaltyPeriod::dates(const QTimeZone &calendar, const QDateTime &now) const
{
    // Days are counted as dates and turned into instants last, so a day that starts at 01:00
    // because of a daylight-saving change still starts where the zone says it does.
    const QDate day = now.toTimeZone(calendar).date();
    const QDateTime dayStart = day.startOfDay(calendar);

    switch (m_case) {
    case today:
        return {dayStart, dayStart};
    case yesterday: {
        const QDateTime previous = day.addDays(-1).startOfDay(calendar);
        const QDateTime start = previous.isValid() ? previous : dayStart;
        return {start, start};
    }
    case thisMonth: {
        const QDateTime monthStart = QDate(day.year(), day.month(), 1).startOfDay(calendar);
        const QDate tomorrow = day.addDays(1);
        const bool tomorrowInSameMonth =
            tomorrow.isValid() && tomorrow.year() == day.year() && tomorrow.month() == day.month();
        const QDateTime tomorrowStart = tomorrowInSameMonth ? tomorrow.startOfDay(calendar) : QDateTime();
        return {monthStart.isValid() ? monthStart : dayStart, tomorrowStart.isValid() ? tomorrowStart : dayStart};
    }
    }
    Q_UNREACHABLE();
}
