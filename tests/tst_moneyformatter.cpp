#include "model/MoneyFormatter.h"
#include "model/RoyaltySummary.h"

#include <QTest>

namespace {

MoneyFormatter formatterFor(const char *locale)
{
    return MoneyFormatter(QLocale(QString::fromLatin1(locale)));
}

RoyaltySummary summaryOf(double gross, double net, const char *currency)
{
    RoyaltySummary summary;
    summary.gross = gross;
    summary.net = net;
    summary.currency = QString::fromLatin1(currency);
    return summary;
}

} // namespace

class TestMoneyFormatter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerCaseDollarCodeIsTreatedAsDollars();
    void compactKeepsCentsBelowOneThousand();
    void compactDropsCentsFromOneThousandInAbsoluteValue();
    void nonCompactAlwaysShowsTwoFractionDigits();
    void moneyInLocales_data();
    void moneyInLocales();
    void dollarSymbolsArePinnedInEveryLocale_data();
    void dollarSymbolsArePinnedInEveryLocale();
    void unusableCurrencyCodeFallsBackToCodeAndPlainNumber_data();
    void unusableCurrencyCodeFallsBackToCodeAndPlainNumber();
    void unknownThreeLetterCodeIsShownAsItsCode();
    void menuBarPartsAbsentBeforeFirstRefresh();
    void menuBarPartsOfZeroAfterRefresh();
    void menuBarPartsSplitSymbolAndAmount_data();
    void menuBarPartsSplitSymbolAndAmount();
    void menuBarPartsFollowDisplayedRoyalty();
    void menuBarSymbolFallsBackToCode();
    void highlightedRoyaltyFollowsDisplayedRoyalty();
    void cLocaleReadsAsAmericanEnglish();
};

void TestMoneyFormatter::lowerCaseDollarCodeIsTreatedAsDollars()
{
    const MoneyFormatter formatter = formatterFor("en_GB");
    QCOMPARE(formatter.money(12.5, QStringLiteral("usd"), false), QStringLiteral("$12.50"));
    QCOMPARE(formatter.currencySymbol(QStringLiteral("usd")), QStringLiteral("$"));
    QCOMPARE(formatter.money(12.5, QStringLiteral("cad"), false), QStringLiteral("CA$12.50"));
}

void TestMoneyFormatter::compactKeepsCentsBelowOneThousand()
{
    const MoneyFormatter formatter = formatterFor("en_US");
    QCOMPARE(formatter.money(999.994, QStringLiteral("USD"), true), QStringLiteral("$999.99"));
    QCOMPARE(formatter.money(-999.994, QStringLiteral("USD"), true), QStringLiteral("-$999.99"));
    QCOMPARE(formatter.money(5, QStringLiteral("USD"), true), QStringLiteral("$5.00"));
    QCOMPARE(formatter.money(0, QStringLiteral("USD"), true), QStringLiteral("$0.00"));
}

void TestMoneyFormatter::compactDropsCentsFromOneThousandInAbsoluteValue()
{
    const MoneyFormatter formatter = formatterFor("en_US");
    QCOMPARE(formatter.money(1000, QStringLiteral("USD"), true), QStringLiteral("$1,000"));
    QCOMPARE(formatter.money(-1000, QStringLiteral("USD"), true), QStringLiteral("-$1,000"));
    QCOMPARE(formatter.money(1234.56, QStringLiteral("USD"), true), QStringLiteral("$1,235"));
    QCOMPARE(formatter.money(-25431.2, QStringLiteral("USD"), true), QStringLiteral("-$25,431"));
}

void TestMoneyFormatter::nonCompactAlwaysShowsTwoFractionDigits()
{
    const MoneyFormatter formatter = formatterFor("en_US");
    QCOMPARE(formatter.money(5, QStringLiteral("USD"), false), QStringLiteral("$5.00"));
    QCOMPARE(formatter.money(1000, QStringLiteral("USD"), false), QStringLiteral("$1,000.00"));
    QCOMPARE(formatter.money(100000, QStringLiteral("USD"), false), QStringLiteral("$100,000.00"));
    QCOMPARE(formatter.money(1234567.891, QStringLiteral("USD"), false), QStringLiteral("$1,234,567.89"));
    QCOMPARE(formatter.money(-1000, QStringLiteral("USD"), false), QStringLiteral("-$1,000.00"));
    // Two digits also for a currency that usually has none.
    QCOMPARE(formatter.money(1500, QStringLiteral("JPY"), false), QStringLiteral(u"\u00A51,500.00"));
}

void TestMoneyFormatter::moneyInLocales_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("currency");
    QTest::addColumn<bool>("compact");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *locale, const char *currency, bool compact, double value,
                        const QString &expected) {
        QTest::newRow(name) << QString::fromLatin1(locale) << QString::fromLatin1(currency) << compact << value
                            << expected;
    };
    row("en_US USD", "en_US", "USD", false, 1234.567, QStringLiteral("$1,234.57"));
    row("en_US EUR", "en_US", "EUR", false, 1234.567, QStringLiteral(u"\u20AC1,234.57"));
    row("en_US GBP compact", "en_US", "GBP", true, 1234.567, QStringLiteral(u"\u00A31,235"));
    row("en_GB GBP", "en_GB", "GBP", false, 1234.567, QStringLiteral(u"\u00A31,234.57"));
    row("en_GB EUR negative", "en_GB", "EUR", false, -42.5, QStringLiteral(u"-\u20AC42.50"));
    row("de_DE EUR", "de_DE", "EUR", false, 1234.567, QStringLiteral(u"1.234,57\u00A0\u20AC"));
    row("de_DE GBP", "de_DE", "GBP", false, 1234.567, QStringLiteral(u"1.234,57\u00A0\u00A3"));
    row("de_DE USD compact", "de_DE", "USD", true, 25431.2, QStringLiteral(u"25.431\u00A0$"));
    row("de_DE EUR negative", "de_DE", "EUR", false, -3.5, QStringLiteral(u"-3,50\u00A0\u20AC"));
    row("fr_FR EUR", "fr_FR", "EUR", false, 1234.567, QStringLiteral(u"1\u202F234,57\u00A0\u20AC"));
    row("fr_FR USD compact", "fr_FR", "USD", true, 1234.567, QStringLiteral(u"1\u202F235\u00A0$"));
    row("ja_JP JPY", "ja_JP", "JPY", false, 1234.567, QStringLiteral(u"\uFFE51,234.57"));
    row("ja_JP EUR", "ja_JP", "EUR", false, 1234.567, QStringLiteral(u"\u20AC1,234.57"));
    row("ja_JP USD compact", "ja_JP", "USD", true, 1000, QStringLiteral("$1,000"));
}

void TestMoneyFormatter::moneyInLocales()
{
    QFETCH(QString, locale);
    QFETCH(QString, currency);
    QFETCH(bool, compact);
    QFETCH(double, value);
    QTEST(MoneyFormatter(QLocale(locale)).money(value, currency, compact), "expected");
}

void TestMoneyFormatter::dollarSymbolsArePinnedInEveryLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("usd");
    QTest::addColumn<QString>("cad");
    // Without the pins ICU would write US$ in Britain and Canada, and $ for Canadian dollars in Canada.
    QTest::newRow("en_US") << QStringLiteral("en_US") << QStringLiteral("$7.25") << QStringLiteral("CA$7.25");
    QTest::newRow("en_GB") << QStringLiteral("en_GB") << QStringLiteral("$7.25") << QStringLiteral("CA$7.25");
    QTest::newRow("en_CA") << QStringLiteral("en_CA") << QStringLiteral("$7.25") << QStringLiteral("CA$7.25");
    QTest::newRow("en_AU") << QStringLiteral("en_AU") << QStringLiteral("$7.25") << QStringLiteral("CA$7.25");
    QTest::newRow("de_DE") << QStringLiteral("de_DE") << QStringLiteral(u"7,25\u00A0$")
                           << QStringLiteral(u"7,25\u00A0CA$");
    QTest::newRow("fr_CA") << QStringLiteral("fr_CA") << QStringLiteral(u"7,25\u00A0$")
                           << QStringLiteral(u"7,25\u00A0CA$");
    QTest::newRow("ja_JP") << QStringLiteral("ja_JP") << QStringLiteral("$7.25") << QStringLiteral("CA$7.25");
}

void TestMoneyFormatter::dollarSymbolsArePinnedInEveryLocale()
{
    QFETCH(QString, locale);
    const MoneyFormatter formatter{QLocale(locale)};
    QTEST(formatter.money(7.25, QStringLiteral("USD"), false), "usd");
    QTEST(formatter.money(7.25, QStringLiteral("CAD"), false), "cad");
    QCOMPARE(formatter.currencySymbol(QStringLiteral("USD")), QStringLiteral("$"));
    QCOMPARE(formatter.currencySymbol(QStringLiteral("CAD")), QStringLiteral("CA$"));
}

void TestMoneyFormatter::unusableCurrencyCodeFallsBackToCodeAndPlainNumber_data()
{
    QTest::addColumn<QString>("currency");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("four letters") << QStringLiteral("EURO") << 12.5 << QStringLiteral("EURO 12.5");
    QTest::newRow("lower case upper-cased") << QStringLiteral("euro") << 0.1 << QStringLiteral("EURO 0.1");
    QTest::newRow("digits") << QStringLiteral("978") << 1234.5 << QStringLiteral("978 1234.5");
    QTest::newRow("empty") << QString() << -3.0 << QStringLiteral(" -3");
    QTest::newRow("shortest round trip") << QStringLiteral("US$") << 1.0 / 3.0
                                         << QStringLiteral("US$ 0.3333333333333333");
}

void TestMoneyFormatter::unusableCurrencyCodeFallsBackToCodeAndPlainNumber()
{
    QFETCH(QString, currency);
    QFETCH(double, value);
    QTEST(formatterFor("en_US").money(value, currency, false), "expected");
    QTEST(formatterFor("de_DE").money(value, currency, true), "expected");
}

void TestMoneyFormatter::unknownThreeLetterCodeIsShownAsItsCode()
{
    QCOMPARE(formatterFor("en_US").money(12.5, QStringLiteral("XYZ"), false), QStringLiteral(u"XYZ\u00A012.50"));
    QCOMPARE(formatterFor("en_US").currencySymbol(QStringLiteral("xyz")), QStringLiteral("XYZ"));
}

void TestMoneyFormatter::menuBarPartsAbsentBeforeFirstRefresh()
{
    const RoyaltySummary summary = summaryOf(0, 0, "USD");
    QVERIFY(!formatterFor("en_US").menuBarMoneyParts(summary, DisplayedRoyalty::gross, false).has_value());
    const RoyaltySummary withFigures = summaryOf(15, 10, "EUR");
    QVERIFY(!formatterFor("en_US").menuBarMoneyParts(withFigures, DisplayedRoyalty::net, false).has_value());
}

void TestMoneyFormatter::menuBarPartsOfZeroAfterRefresh()
{
    const auto parts = formatterFor("en_US").menuBarMoneyParts(RoyaltySummary(), DisplayedRoyalty::gross, true);
    QCOMPARE(parts, (MenuBarMoneyParts{QStringLiteral("$"), QStringLiteral("0.00")}));
}

void TestMoneyFormatter::menuBarPartsSplitSymbolAndAmount_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("currency");
    QTest::addColumn<double>("gross");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("amount");
    const auto row = [](const char *name, const char *locale, const char *currency, double gross, const QString &symbol,
                        const QString &amount) {
        QTest::newRow(name) << QString::fromLatin1(locale) << QString::fromLatin1(currency) << gross << symbol
                            << amount;
    };
    row("en_US small", "en_US", "USD", 42.5, QStringLiteral("$"), QStringLiteral("42.50"));
    row("en_US 999.994", "en_US", "usd", 999.994, QStringLiteral("$"), QStringLiteral("999.99"));
    row("en_US thousand", "en_US", "USD", 1000, QStringLiteral("$"), QStringLiteral("1,000"));
    row("en_US grouped", "en_US", "USD", 12345.678, QStringLiteral("$"), QStringLiteral("12,346"));
    row("en_US negative thousand", "en_US", "USD", -1500.75, QStringLiteral("$"), QStringLiteral("-1,501"));
    row("en_US negative small", "en_US", "USD", -12.5, QStringLiteral("$"), QStringLiteral("-12.50"));
    row("en_US EUR", "en_US", "EUR", 12.5, QStringLiteral(u"\u20AC"), QStringLiteral("12.50"));
    row("en_GB CAD", "en_GB", "CAD", 2500, QStringLiteral("CA$"), QStringLiteral("2,500"));
    row("de_DE GBP", "de_DE", "GBP", 1234.25, QStringLiteral(u"\u00A3"), QStringLiteral("1.234"));
    // Halves round to even, as everywhere else in the app's number formatting.
    row("half to even down", "en_US", "USD", 1234.5, QStringLiteral("$"), QStringLiteral("1,234"));
    row("half to even up", "en_US", "USD", 1235.5, QStringLiteral("$"), QStringLiteral("1,236"));
    row("de_DE EUR", "de_DE", "EUR", 12.5, QStringLiteral(u"\u20AC"), QStringLiteral("12,50"));
    row("fr_FR EUR", "fr_FR", "EUR", 12345.6, QStringLiteral(u"\u20AC"), QStringLiteral(u"12\u202F346"));
    row("ja_JP JPY", "ja_JP", "JPY", 98765, QStringLiteral(u"\uFFE5"), QStringLiteral("98,765"));
}

void TestMoneyFormatter::menuBarPartsSplitSymbolAndAmount()
{
    QFETCH(QString, locale);
    QFETCH(QString, currency);
    QFETCH(double, gross);
    RoyaltySummary summary;
    summary.gross = gross;
    summary.currency = currency;
    const auto parts = MoneyFormatter(QLocale(locale)).menuBarMoneyParts(summary, DisplayedRoyalty::gross, true);
    QVERIFY(parts.has_value());
    QTEST(parts->currency, "symbol");
    QTEST(parts->amount, "amount");
}

void TestMoneyFormatter::menuBarPartsFollowDisplayedRoyalty()
{
    const RoyaltySummary summary = summaryOf(1500, 87.25, "USD");
    const MoneyFormatter formatter = formatterFor("en_US");
    QCOMPARE(formatter.menuBarMoneyParts(summary, DisplayedRoyalty::gross, true)->amount, QStringLiteral("1,500"));
    QCOMPARE(formatter.menuBarMoneyParts(summary, DisplayedRoyalty::net, true)->amount, QStringLiteral("87.25"));
}

void TestMoneyFormatter::menuBarSymbolFallsBackToCode()
{
    const auto parts = formatterFor("en_US").menuBarMoneyParts(summaryOf(3, 3, "EURO"), DisplayedRoyalty::gross, true);
    QCOMPARE(parts, (MenuBarMoneyParts{QStringLiteral("EURO"), QStringLiteral("3.00")}));
}

void TestMoneyFormatter::highlightedRoyaltyFollowsDisplayedRoyalty()
{
    const RoyaltySummary summary = summaryOf(120.5, -4.25, "USD");
    QCOMPARE(MoneyFormatter::highlightedRoyalty(summary, DisplayedRoyalty::gross), 120.5);
    QCOMPARE(MoneyFormatter::highlightedRoyalty(summary, DisplayedRoyalty::net), -4.25);
}

void TestMoneyFormatter::cLocaleReadsAsAmericanEnglish()
{
    const MoneyFormatter formatter(QLocale::c());
    QCOMPARE(formatter.locale(), QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(formatter.money(1234.5, QStringLiteral("EUR"), false), QStringLiteral(u"\u20AC1,234.50"));
    QCOMPARE(formatter.menuBarMoneyParts(summaryOf(1234.25, 0, "USD"), DisplayedRoyalty::gross, true)->amount,
             QStringLiteral("1,234"));
}

QTEST_GUILESS_MAIN(TestMoneyFormatter)
#include "tst_moneyformatter.moc"
