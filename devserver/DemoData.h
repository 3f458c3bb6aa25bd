#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// How well one format of a book sells on an ordinary full day, and what one unit earns.
struct FormatRate {
    double unitsPerDay = 0;
    double royaltyPerUnit = 0;
};

// A book of a demo account. Daily figures wobble around these means (StatisticsGenerator).
struct DemoBook {
    QString id;
    QString title;
    FormatRate paidEbook;
    FormatRate freeEbook; // promotional downloads, no royalty
    FormatRate paperback;
    FormatRate hardcover;
    FormatRate audiobook;
    FormatRate expandedDistribution;
    FormatRate preOrder; // counted when ordered, paid on release
    FormatRate largePrint;
    FormatRate boxSet;
    double pagesReadPerDay = 0;
    double adSpendPerDay = 0;
};

struct DemoAccount {
    QString id;
    QString userEmail;
    std::optional<QString> displayName;
    QString accessType;
    QString currency;
    double readRoyaltyPerPage = 0;
    QList<DemoBook> books;
};

// The fixed catalogue the development server reports on: two accounts of one author, the first
// with a display name and in US dollars, the second without one and in euros.
class DemoData
{
public:
    static const QList<DemoAccount> &accounts();
    static const DemoAccount *account(const QString &accountId);
    static QStringList accountIds();

    static QString userEmail();
    static QString noAccountsEmail();

    static QString largePrintFormat() { return QStringLiteral("Large print"); }
    static QString boxSetFormat() { return QStringLiteral("Box set"); }
};
