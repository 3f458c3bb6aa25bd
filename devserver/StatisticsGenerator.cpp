#include "StatisticsGenerator.h"

#include <QTimeZone>

#include <cmath>

namespace {

double cents(double amount)
{
    return std::round(amount * 100.0) / 100.0;
}

// FNV-1a: stable across runs and machines, unlike qHash.
quint64 stableHash(const QByteArray &bytes)
{
    quint64 hash = 14695981039346656037ULL;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 1099511628211ULL;
    }
    return hash;
}

} // namespace

BookFigures &BookFigures::operator+=(const BookFigures &other)
{
    paidEbookUnits += other.paidEbookUnits;
    freeEbookDownloads += other.freeEbookDownloads;
    paperbackUnits += other.paperbackUnits;
    hardcoverUnits += other.hardcoverUnits;
    audiobookUnits += other.audiobookUnits;
    expandedDistributionUnits += other.expandedDistributionUnits;
    preOrderUnits += other.preOrderUnits;
    largePrintUnits += other.largePrintUnits;
    boxSetUnits += other.boxSetUnits;
    pagesRead += other.pagesRead;
    paidEbookRoyalties += other.paidEbookRoyalties;
    paperbackRoyalties += other.paperbackRoyalties;
    hardcoverRoyalties += other.hardcoverRoyalties;
    audiobookRoyalties += other.audiobookRoyalties;
    expandedDistributionRoyalties += other.expandedDistributionRoyalties;
    largePrintRoyalties += other.largePrintRoyalties;
    boxSetRoyalties += other.boxSetRoyalties;
    readRoyalties += other.readRoyalties;
    spending += other.spending;
    return *this;
}

StatisticsGenerator::StatisticsGenerator(const DemoAccount &account)
    : m_account(account)
{}

double StatisticsGenerator::unitNoise(const DemoBook &book, QDate date, QStringView figure) const
{
    const QString seed = m_account.id + u'|' + book.id + u'|' + date.toString(Qt::ISODate) + u'|' + figure;
    // The top 53 bits as a fraction in [0, 1).
    return double(stableHash(seed.toUtf8()) >> 11) / double(1ULL << 53);
}

qint64 StatisticsGenerator::units(const DemoBook &book, QDate date, QStringView figure, double perDay,
                                  double scale) const
{
    if (perDay <= 0) {
        return 0;
    }
    // Between half and one and a half times the book's usual day, a little busier at weekends.
    const double weekend = date.dayOfWeek() >= 6 ? 1.25 : 1.0;
    const double fullDay = perDay * (0.5 + unitNoise(book, date, figure)) * weekend;
    return qint64(std::floor(fullDay * scale));
}

BookFigures StatisticsGenerator::figuresFor(const DemoBook &book, QDate date, double dayFraction) const
{
    BookFigures day;
    day.paidEbookUnits = units(book, date, u"ebook", book.paidEbook.unitsPerDay, dayFraction);
    day.freeEbookDownloads = units(book, date, u"free", book.freeEbook.unitsPerDay, dayFraction);
    day.paperbackUnits = units(book, date, u"paperback", book.paperback.unitsPerDay, dayFraction);
    day.hardcoverUnits = units(book, date, u"hardcover", book.hardcover.unitsPerDay, dayFraction);
    day.audiobookUnits = units(book, date, u"audiobook", book.audiobook.unitsPerDay, dayFraction);
    day.expandedDistributionUnits = units(book, date, u"expanded", book.expandedDistribution.unitsPerDay, dayFraction);
    day.preOrderUnits = units(book, date, u"preorder", book.preOrder.unitsPerDay, dayFraction);
    day.largePrintUnits = units(book, date, u"largeprint", book.largePrint.unitsPerDay, dayFraction);
    day.boxSetUnits = units(book, date, u"boxset", book.boxSet.unitsPerDay, dayFraction);
    day.pagesRead = units(book, date, u"pages", book.pagesReadPerDay, dayFraction);

    day.paidEbookRoyalties = double(day.paidEbookUnits) * book.paidEbook.royaltyPerUnit;
    day.paperbackRoyalties = double(day.paperbackUnits) * book.paperback.royaltyPerUnit;
    day.hardcoverRoyalties = double(day.hardcoverUnits) * book.hardcover.royaltyPerUnit;
    day.audiobookRoyalties = double(day.audiobookUnits) * book.audiobook.royaltyPerUnit;
    day.expandedDistributionRoyalties =
        double(day.expandedDistributionUnits) * book.expandedDistribution.royaltyPerUnit;
    day.largePrintRoyalties = double(day.largePrintUnits) * book.largePrint.royaltyPerUnit;
    day.boxSetRoyalties = double(day.boxSetUnits) * book.boxSet.royaltyPerUnit;
    day.readRoyalties = double(day.pagesRead) * m_account.readRoyaltyPerPage;
    // Ads run around the clock, so today's spend also grows with the hour.
    day.spending = book.adSpendPerDay * (0.6 + 0.8 * unitNoise(book, date, u"ads")) * dayFraction;
    return day;
}

QJsonArray StatisticsGenerator::rows(QDate start, QDate end, const QDateTime &now) const
{
    const QDate today = now.date();
    const QDate last = std::min(end, today);
    QJsonArray table;
    for (const DemoBook &book : m_account.books) {
        BookFigures total;
        for (QDate date = start; date <= last; date = date.addDays(1)) {
            total += figuresFor(book, date, date == today ? fractionOfDayPassed(now) : 1.0);
        }
        table.append(rowJson(book, total));
    }
    return table;
}

QJsonObject StatisticsGenerator::rowJson(const DemoBook &book, const BookFigures &figures) const
{
    const double paidEbookRoyalties = cents(figures.paidEbookRoyalties);
    const double paperbackRoyalties = cents(figures.paperbackRoyalties);
    const double hardcoverRoyalties = cents(figures.hardcoverRoyalties);
    const double audiobookRoyalties = cents(figures.audiobookRoyalties);
    const double expandedRoyalties = cents(figures.expandedDistributionRoyalties);
    const double largePrintRoyalties = cents(figures.largePrintRoyalties);
    const double boxSetRoyalties = cents(figures.boxSetRoyalties);
    const double readRoyalties = cents(figures.readRoyalties);
    const double spending = cents(figures.spending);
    // Gross is the sum of the rounded parts, so the row adds up to the cent.
    const double gross = cents(paidEbookRoyalties + paperbackRoyalties + hardcoverRoyalties + audiobookRoyalties
                               + expandedRoyalties + largePrintRoyalties + boxSetRoyalties + readRoyalties);

    QJsonObject customUnits;
    QJsonObject customRoyalties;
    if (book.largePrint.unitsPerDay > 0) {
        customUnits.insert(DemoData::largePrintFormat(), figures.largePrintUnits);
        customRoyalties.insert(DemoData::largePrintFormat(), largePrintRoyalties);
    }
    if (book.boxSet.unitsPerDay > 0) {
        customUnits.insert(DemoData::boxSetFormat(), figures.boxSetUnits);
        customRoyalties.insert(DemoData::boxSetFormat(), boxSetRoyalties);
    }

    return QJsonObject{
        {QStringLiteral("book_id"), book.id},
        {QStringLiteral("title"), book.title},
        {QStringLiteral("currency"), m_account.currency},
        {QStringLiteral("gross_royalty"), gross},
        {QStringLiteral("spending"), spending},
        {QStringLiteral("net_royalty"), cents(gross - spending)},
        {QStringLiteral("total_read_royalty"), readRoyalties},
        {QStringLiteral("total_reads"), figures.pagesRead},
        {QStringLiteral("ebooks_paid_sold"), figures.paidEbookUnits},
        {QStringLiteral("ebooks_paid_royalties"), paidEbookRoyalties},
        {QStringLiteral("ebooks_free_sold"), figures.freeEbookDownloads},
        {QStringLiteral("paperbacks_sold"), figures.paperbackUnits},
        {QStringLiteral("paperbacks_royalties"), paperbackRoyalties},
        {QStringLiteral("hardcovers_sold"), figures.hardcoverUnits},
        {QStringLiteral("hardcovers_royalties"), hardcoverRoyalties},
        {QStringLiteral("audiobooks_sold"), figures.audiobookUnits},
        {QStringLiteral("audiobooks_royalties"), audiobookRoyalties},
        {QStringLiteral("expanded_distribution_sold"), figures.expandedDistributionUnits},
        {QStringLiteral("expanded_distribution_royalties"), expandedRoyalties},
        {QStringLiteral("pre_orders_sold"), figures.preOrderUnits},
        {QStringLiteral("custom_format_units"), customUnits},
        {QStringLiteral("custom_format_royalties"), customRoyalties},
    };
}

double StatisticsGenerator::fractionOfDayPassed(const QDateTime &now)
{
    const QDateTime midnight = now.date().startOfDay(now.timeZone());
    const QDateTime nextMidnight = now.date().addDays(1).startOfDay(now.timeZone());
    const qint64 length = midnight.msecsTo(nextMidnight);
    if (length <= 0) {
        return 1.0;
    }
    return std::clamp(double(midnight.msecsTo(now)) / double(length), 0.0, 1.0);
}
