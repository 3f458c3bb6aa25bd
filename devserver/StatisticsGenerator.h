#pragma once

#include "DemoData.h"

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

// What one book earned over some days, before rounding to cents.
struct BookFigures {
    qint64 paidEbookUnits = 0;
    qint64 freeEbookDownloads = 0;
    qint64 paperbackUnits = 0;
    qint64 hardcoverUnits = 0;
    qint64 audiobookUnits = 0;
    qint64 expandedDistributionUnits = 0;
    qint64 preOrderUnits = 0;
    qint64 largePrintUnits = 0;
    qint64 boxSetUnits = 0;
    qint64 pagesRead = 0;
    double paidEbookRoyalties = 0;
    double paperbackRoyalties = 0;
    double hardcoverRoyalties = 0;
    double audiobookRoyalties = 0;
    double expandedDistributionRoyalties = 0;
    double largePrintRoyalties = 0;
    double boxSetRoyalties = 0;
    double readRoyalties = 0;
    double spending = 0;

    BookFigures &operator+=(const BookFigures &other);
};

// Makes an account's statistics from nothing but the dates: every figure of a book on a day comes
// from a hash of the account, the book, the day and the figure, so the same question always gets
// the same answer. Today only counts the part of the day that has passed.
class StatisticsGenerator
{
public:
    explicit StatisticsGenerator(const DemoAccount &account);

    // One book on one day; `dayFraction` is 1 for a finished day.
    BookFigures figuresFor(const DemoBook &book, QDate date, double dayFraction) const;

    // The "table_data" rows, one per book, for start to end inclusive; days after the date of
    // `now` are not counted, and today is scaled by how much of it has passed.
    QJsonArray rows(QDate start, QDate end, const QDateTime &now) const;

    QJsonObject rowJson(const DemoBook &book, const BookFigures &figures) const;

    static double fractionOfDayPassed(const QDateTime &now);

private:
    double unitNoise(const DemoBook &book, QDate date, QStringView figure) const;
    qint64 units(const DemoBook &book, QDate date, QStringView figure, double perDay, double scale) const;

    const DemoAccount &m_account;
};
