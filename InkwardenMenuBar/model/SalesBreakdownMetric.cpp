#include "SalesBreakdownMetric.h"

#include "CountedText.h"
#include "RawValueLookup.h"
#include "RoyaltySummary.h"

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
        //: A row of the sales breakdown: ebooks sold for money
        return tr("Paid ebooks");
    case paperbacks:
        //: A row of the sales breakdown: paperback copies sold
        return tr("Paperbacks");
    case hardcovers:
        //: A row of the sales breakdown: hardcover copies sold
        return tr("Hardcovers");
    case audiobooks:
        //: A row of the sales breakdown: audiobooks sold
        return tr("Audiobooks");
    case expandedDistribution:
        //: A row of the sales breakdown: print copies sold through other stores and libraries
        return tr("Expanded distribution");
    case kenpReads:
        //: A row of the sales breakdown: pages read through the subscription lending programme; KENP is a
        //: unit name that normally stays as it is
        return tr("KENP reads");
    case currentPreOrders:
        // The case says current, the title says upcoming: both are kept as they are.
        //: A row of the sales breakdown: pre-orders of books not yet released
        return tr("Upcoming pre-orders");
    case freeEbooks:
        //: A row of the sales breakdown: ebooks downloaded for free
        return tr("Free ebooks");
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
        return countedUnits(summary.paidEbookUnits, locale);
    case paperbacks:
        return countedUnits(summary.paperbackUnits, locale);
    case hardcovers:
        return countedUnits(summary.hardcoverUnits, locale);
    case audiobooks:
        return countedUnits(summary.audiobookUnits, locale);
    case expandedDistribution:
        return countedUnits(summary.expandedDistributionUnits, locale);
    case kenpReads:
        // Pages and downloads stay plural even for one in English.
        //: Pages read through the subscription lending programme, %1 being the count. English keeps
        //: "pages" even for 1; other languages use their plural forms
        return countedText("SalesBreakdownMetric", QT_TRANSLATE_N_NOOP("SalesBreakdownMetric", "%1 pages"),
                           summary.reads, locale);
    case currentPreOrders:
        //: %1 is a count of pre-ordered copies, such as "2 units"; the pre-orders do not depend on the
        //: period chosen
        return tr("%1 \u00B7 same for all periods").arg(countedUnits(summary.preOrderUnits, locale));
    case freeEbooks:
        //: Free ebook downloads, %1 being the count. English keeps "downloads" even for 1; other
        //: languages use their plural forms
        return countedText("SalesBreakdownMetric", QT_TRANSLATE_N_NOOP("SalesBreakdownMetric", "%1 downloads"),
                           summary.freeEbookDownloads, locale);
    }
    Q_UNREACHABLE();
}

QString SalesBreakdownMetric::countedUnits(qint64 count, const QLocale &locale)
{
    //: Copies sold, %1 being the count: "1 unit", "1,234 units"
    return countedText("SalesBreakdownMetric", QT_TRANSLATE_N_NOOP("SalesBreakdownMetric", "%1 unit(s)"), count,
                       locale);
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
