#include "DemoData.h"

namespace {

DemoBook book(const QString &id, const QString &title)
{
    DemoBook made;
    made.id = id;
    made.title = title;
    return made;
}

QList<DemoBook> penroseBooks()
{
    DemoBook ledger = book(QStringLiteral("B0PENROSE1"), QStringLiteral("The Lighthouse Ledger"));
    ledger.paidEbook = {14, 3.49};
    ledger.freeEbook = {2, 0};
    ledger.paperback = {6, 4.12};
    ledger.hardcover = {2, 7.85};
    ledger.audiobook = {3, 5.60};
    ledger.expandedDistribution = {2, 2.31};
    ledger.pagesReadPerDay = 5200;
    ledger.adSpendPerDay = 18.5;

    DemoBook cipher = book(QStringLiteral("B0PENROSE2"), QStringLiteral("Salt and Cipher"));
    cipher.paidEbook = {9, 2.79};
    cipher.freeEbook = {11, 0};
    cipher.paperback = {4, 3.65};
    cipher.audiobook = {2, 4.95};
    cipher.pagesReadPerDay = 3100;
    cipher.adSpendPerDay = 9.0;

    DemoBook northbound = book(QStringLiteral("B0PENROSE3"), QStringLiteral("Northbound (coming in spring)"));
    northbound.preOrder = {5, 0};
    northbound.adSpendPerDay = 4.0;

    DemoBook editions =
        book(QStringLiteral("B0PENROSE4"), QStringLiteral("The Lighthouse Ledger: Collector's Editions"));
    editions.largePrint = {2, 5.20};
    editions.boxSet = {2, 14.75};

    return {ledger, cipher, northbound, editions};
}

QList<DemoBook> lindqvistBooks()
{
    DemoBook visby = book(QStringLiteral("B0LINDQ001"), QStringLiteral("Winter in Visby"));
    visby.paidEbook = {8, 2.95};
    visby.freeEbook = {3, 0};
    visby.paperback = {3, 3.80};
    visby.hardcover = {2, 6.90};
    visby.audiobook = {2, 4.40};
    visby.expandedDistribution = {2, 1.95};
    visby.preOrder = {3, 0};
    visby.largePrint = {2, 4.70};
    visby.boxSet = {2, 12.50};
    visby.pagesReadPerDay = 2600;
    visby.adSpendPerDay = 7.5;

    DemoBook ferryman = book(QStringLiteral("B0LINDQ002"), QStringLiteral("The Ferryman's Daughter"));
    ferryman.paidEbook = {5, 2.45};
    ferryman.paperback = {2, 3.10};
    ferryman.pagesReadPerDay = 1400;
    ferryman.adSpendPerDay = 3.0;

    return {visby, ferryman};
}

QList<DemoAccount> makeAccounts()
{
    DemoAccount penrose;
    penrose.id = QStringLiteral("acct-penrose-press");
    penrose.userEmail = DemoData::userEmail();
    penrose.displayName = QStringLiteral("Penrose Press");
    penrose.accessType = QStringLiteral("owner");
    penrose.currency = QStringLiteral("USD");
    penrose.readRoyaltyPerPage = 0.0045;
    penrose.books = penroseBooks();

    DemoAccount lindqvist;
    lindqvist.id = QStringLiteral("acct-lindqvist");
    lindqvist.userEmail = DemoData::userEmail();
    lindqvist.accessType = QStringLiteral("viewer");
    lindqvist.currency = QStringLiteral("EUR");
    lindqvist.readRoyaltyPerPage = 0.0041;
    lindqvist.books = lindqvistBooks();

    return {penrose, lindqvist};
}

} // namespace

const QList<DemoAccount> &DemoData::accounts()
{
    static const QList<DemoAccount> all = makeAccounts();
    return all;
}

const DemoAccount *DemoData::account(const QString &accountId)
{
    for (const DemoAccount &candidate : accounts()) {
        if (candidate.id == accountId) {
            return &candidate;
        }
    }
    return nullptr;
}

QStringList DemoData::accountIds()
{
    QStringList ids;
    for (const DemoAccount &candidate : accounts()) {
        ids.append(candidate.id);
    }
    return ids;
}

QString DemoData::userEmail()
{
    return QStringLiteral("author@example.com");
}

QString DemoData::noAccountsEmail()
{
    return QStringLiteral("reader@example.com");
}
