#include "DashboardPage.h"

#include "DemoData.h"
#include "HtmlPage.h"
#include "ServerClock.h"
#include "StatisticsGenerator.h"

#include <QLocale>

namespace {

QString count(qint64 value)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(value);
}

QString figureTile(const QString &label, const QString &value, const QString &valueClass = {})
{
    return QStringLiteral("<div class=\"figure\"><div class=\"label\">%1</div><div class=\"value %2\">%3</div></div>")
        .arg(label, valueClass, value);
}

QString formatRow(const QString &name, qint64 units, const QString &royalties)
{
    return QStringLiteral("<tr><td>%1</td><td class=\"num\">%2</td><td class=\"num\">%3</td></tr>")
        .arg(name, count(units), royalties);
}

QString accountSection(const DemoAccount &account, const QDateTime &now)
{
    const StatisticsGenerator generator(account);
    const double fraction = StatisticsGenerator::fractionOfDayPassed(now);
    BookFigures total;
    for (const DemoBook &book : account.books) {
        total += generator.figuresFor(book, now.date(), fraction);
    }
    const auto money = [&](double amount) { return DashboardPage::formatMoney(amount, account.currency); };
    const double gross = total.paidEbookRoyalties + total.paperbackRoyalties + total.hardcoverRoyalties
                         + total.audiobookRoyalties + total.expandedDistributionRoyalties + total.largePrintRoyalties
                         + total.boxSetRoyalties + total.readRoyalties;
    const QString none = QStringLiteral("&mdash;");

    QString rows;
    rows += formatRow(QStringLiteral("Paid ebooks"), total.paidEbookUnits, money(total.paidEbookRoyalties));
    rows += formatRow(QStringLiteral("Paperbacks"), total.paperbackUnits, money(total.paperbackRoyalties));
    rows += formatRow(QStringLiteral("Hardcovers"), total.hardcoverUnits, money(total.hardcoverRoyalties));
    rows += formatRow(QStringLiteral("Audiobooks"), total.audiobookUnits, money(total.audiobookRoyalties));
    rows += formatRow(QStringLiteral("Expanded distribution"), total.expandedDistributionUnits,
                      money(total.expandedDistributionRoyalties));
    rows += formatRow(QStringLiteral("KENP pages read"), total.pagesRead, money(total.readRoyalties));
    rows += formatRow(QStringLiteral("Pre-orders"), total.preOrderUnits, none);
    rows += formatRow(QStringLiteral("Free ebooks"), total.freeEbookDownloads, none);
    rows += formatRow(DemoData::largePrintFormat(), total.largePrintUnits, money(total.largePrintRoyalties));
    rows += formatRow(DemoData::boxSetFormat(), total.boxSetUnits, money(total.boxSetRoyalties));

    return QStringLiteral("<section class=\"card\" id=\"%1\"><h2>%2</h2><div class=\"figures\">%3%4%5</div>"
                          "<table><thead><tr><th>Format</th><th class=\"num\">Units</th>"
                          "<th class=\"num\">Royalties</th></tr></thead><tbody>%6</tbody></table></section>")
        .arg(HtmlPage::escape(account.id), HtmlPage::escape(account.displayName.value_or(account.id)),
             figureTile(QStringLiteral("Gross royalties"), money(gross)),
             figureTile(QStringLiteral("Ad spend"), money(total.spending)),
             figureTile(QStringLiteral("Net royalties"), money(gross - total.spending), QStringLiteral("net")), rows);
}

} // namespace

DashboardPage::DashboardPage(const ServerClock &clock)
    : m_clock(clock)
{}

QString DashboardPage::formatMoney(double amount, const QString &currency)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QString symbol = currency == QLatin1String("USD")   ? QStringLiteral("$")
                           : currency == QLatin1String("EUR") ? QStringLiteral("\u20ac")
                                                              : currency + u' ';
    return english.toCurrencyString(amount, symbol, 2);
}

HttpReply DashboardPage::render(const IncomingRequest &request) const
{
    if (request.method != QLatin1String("GET")) {
        return HttpReply::html(HtmlPage::render(QStringLiteral("Inkwarden"), QStringLiteral("<p>Use GET.</p>")), 405);
    }
    const QString only = request.queryValue(QStringLiteral("account_id"));
    if (!only.isEmpty() && !DemoData::account(only)) {
        const QString body = QStringLiteral("<section class=\"card\"><h1>Unknown account</h1>"
                                            "<p class=\"error\">There is no account \"%1\".</p></section>")
                                 .arg(HtmlPage::escape(only));
        return HttpReply::html(HtmlPage::render(QStringLiteral("Inkwarden dashboard"), body), 404);
    }

    const QDateTime now = m_clock.now();
    QString sections;
    for (const DemoAccount &account : DemoData::accounts()) {
        if (only.isEmpty() || account.id == only) {
            sections += accountSection(account, now);
        }
    }
    const QString header = QStringLiteral("<section class=\"card\"><div class=\"brand\"><span class=\"mark\">&#9673;"
                                          "</span>Inkwarden</div><h1>Today's royalties</h1>"
                                          "<p class=\"muted\">%1 &middot; as of %2 &middot; %3</p></section>")
                               .arg(HtmlPage::escape(DemoData::userEmail()),
                                    HtmlPage::escape(now.toString(QStringLiteral("yyyy-MM-dd HH:mm"))),
                                    QStringLiteral("refreshes every minute"));
    QString page = HtmlPage::render(QStringLiteral("Inkwarden dashboard"), header + sections);
    page.replace(QStringLiteral("<head>"), QStringLiteral("<head><meta http-equiv=\"refresh\" content=\"60\">"));
    return HttpReply::html(page);
}
