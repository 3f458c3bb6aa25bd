#include "SalesBreakdownMetric.h"

#include "RawValueLookup.h"
#include "RoyaltySummary.h"

namespace {

QString unitsPhrase(qint64 count, const QLocale &locale)
{
    return locale.toString(count) + (count == 1 ? QStringLiteral(" unit") : QStringLiteral(" units"));
}

} // namespace

std::optional<SalesBreakdownMetric> SalesBreakdownMetric::fromRawValue(QStringView raw)
{
    return caseWithRawValue(allCases(), raw);
}

QString SalesBreakdownMetric::rawValue() const
{
    switch (m_case) {
    case paidEbooks:
        return QStringLiteral("paidEbooks");
    case paperbacks:
        return QStringLiteral("paperbacks");
    case hardcovers:
        return QStringLiteral("hardcovers");
    case audiobooks:
        return QStringLiteral("audiobooks");
    case expandedDistribution:
        return QStringLiteral("expandedDistribution");
    case kenpReads:
        return QStringLiteral("kenpReads");
    case currentPreOrders:
        return QStringLiteral("currentPreOrders");
    case freeEbooks:
        return QStringLiteral("freeEbooks");
    }
    Q_UNREACHABLE();
}

QString SalesBreakdownMetric::title() const
{
    switch (m_case) {
    case paidEbooks:
        return QStringLiteral("Paid ebooks");
    case paperbacks:
        return QStringLiteral("Paperbacks");
    case hardcovers:
        return QStringLiteral("Hardcovers");
    case audiobooks:
        return QStringLiteral("Audiobooks");
    case expandedDistribution:
        return QStringLiteral("Expanded distribution");
    case kenpReads:
        return QStringLiteral("KENP reads");
    case currentPreOrders:
        // The case says current, the title says upcoming: both are kept as they are.
        return QStringLiteral("Upcoming pre-orders");
    case freeEbooks:
        return QStringLiteral("Free ebooks");
    }
    Q_UNREACHABLE();
}

QString SalesBreakdownMetric::icon() const
{
    switch (m_case) {
    case paidEbooks:
        return QStringLiteral("book.closed");
    case paperbacks:
        return QStringLiteral("books.vertical");
    case hardcovers:
        return QStringLiteral("book.closed.fill");
    case audiobooks:
        return QStringLiteral("headphones");
    case expandedDistribution:
        return QStringLiteral("globe.europe.africa");
    case kenpReads:
        return QStringLiteral("text.book.closed");
    case currentPreOrders:
        return QStringLiteral("calendar.badge.clock");
    case freeEbooks:
        return QStringLiteral("arrow.down.circle");
    }
    Q_UNREACHABLE();
}

SystemColor SalesBreakdownMetric::color() const
{
    switch (m_case) {
    case paidEbooks:
        return SystemColor::blue;
    case paperbacks:
        return SystemColor::orange;
    case hardcovers:
        return SystemColor::brown;
    case audiobooks:
        return SystemColor::purple;
    case expandedDistribution:
        return SystemColor::teal;
    case kenpReads:
        return SystemColor::indigo;
    case currentPreOrders:
        return SystemColor::green;
    case freeEbooks:
        return SystemColor::cyan;
    }
    Q_UNREACHABLE();
}

QString SalesBreakdownMetric::unitsText(const RoyaltySummary &summary, const QLocale &locale) const
{
    switch (m_case) {
    case paidEbooks:
        return unitsPhrase(summary.paidEbookUnits, locale);
    case paperbacks:
        return unitsPhrase(summary.paperbackUnits, locale);
    case hardcovers:
        return unitsPhrase(summary.hardcoverUnits, locale);
    case audiobooks:
        return unitsPhrase(summary.audiobookUnits, locale);
    case expandedDistribution:
        return unitsPhrase(summary.expandedDistributionUnits, locale);
    case kenpReads:
        // Pages and downloads stay plural even for one.
        return locale.toString(summary.reads) + QStringLiteral(" pages");
    case currentPreOrders:
        return unitsPhrase(summary.preOrderUnits, locale) + QStringLiteral(" \u00B7 same for all periods");
    case freeEbooks:
        return locale.toString(summary.freeEbookDownloads) + QStringLiteral(" downloads");
    }
    Q_UNREACHABLE();
}

std::optional<QString> SalesBreakdownMetric::royaltiesText(const RoyaltySummary &summary, const MoneyText &money) const
{
    switch (m_case) {
    case paidEbooks:
        return money(summary.paidEbookRoyalties);
    case paperbacks:
        return money(summary.paperbackRoyalties);
    case hardcovers:
        return money(summary.hardcoverRoyalties);
    case audiobooks:
        return money(summary.audiobookRoyalties);
    case expandedDistribution:
        return money(summary.expandedDistributionRoyalties);
    case kenpReads:
        return money(summary.readRoyalties);
    case currentPreOrders:
    case freeEbooks:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}
