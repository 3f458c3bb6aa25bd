#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"
#include "service/BookStatsResponse.h"
#include "service/MacAuthExchangeRequest.h"
#include "service/MacAuthExchangeResponse.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

namespace {

QByteArray testData(const char *name)
{
    QFile file(QStringLiteral(INKWARDEN_TEST_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("missing test data %s", name);
    }
    return file.readAll();
}

std::optional<BookStatsRow> decodeSingleRow(const QByteArray &rowJson)
{
    const std::optional<BookStatsResponse> response = BookStatsResponse::decode("{\"table_data\":[" + rowJson + "]}");
    if (!response || response->tableData.size() != 1) {
        return std::nullopt;
    }
    return response->tableData.first();
}

QByteArray accountsBody(const QByteArray &accountJson)
{
    return "{\"accounts\":[" + accountJson + "]}";
}

} // namespace

class TestWireFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Statistics body
    void statisticsWithEmptyTableDecodesToNoRows();
    void statisticsEmptyObjectFails();
    void statisticsTableDataNullFails();
    void statisticsTableDataOfWrongTypeFails();
    void statisticsRowThatIsNotAnObjectFails();
    void rowEmptyObjectHasEveryMemberAbsent();
    void rowNullGrossRoyaltyIsAbsent();
    void rowStringTotalReadsFailsWholeBody();
    void rowNumberForCurrencyFailsWholeBody();
    void rowBooleanForMoneyFailsWholeBody();
    void rowFractionalIntegerFails_data();
    void rowFractionalIntegerFails();
    void rowIntegralNumberFormsAreAccepted_data();
    void rowIntegralNumberFormsAreAccepted();
    void rowIntegerBeyondDoublePrecisionIsExact();
    void rowIntegerOutsideSixtyFourBitsFails();
    void rowMoneyAcceptsIntegerJson();
    void rowReadsEveryMember();
    void customFormatMapsAcceptAnyKeyAndEmptyObjects();
    void customFormatUnitsOfWrongTypeFail_data();
    void customFormatUnitsOfWrongTypeFail();
    void customFormatRoyaltiesOfWrongTypeFail();
    void customFormatMapNullIsAbsent();
    void formatNameOpeningWithByteOrderMarkStaysDistinct();
    void unknownKeysAreIgnoredEverywhere();
    void malformedJsonFails_data();
    void malformedJsonFails();
    void realisticStatisticsBodyDecodes();

    // Account list
    void accountWithoutDisplayNameDecodesWithItAbsent();
    void accountWithoutAccessTypeFailsWholeList();
    void accountRequiredMembersNullOrMistypedFail_data();
    void accountRequiredMembersNullOrMistypedFail();
    void accountListWithoutLatestVersionHasItAbsent();
    void accountListWithoutAccountsFails();
    void accountListLatestVersionOfWrongTypeFails();
    void accountsCompareAndHashByAllFourMembers();
    void realisticAccountListDecodes();

    // Code exchange and error bodies
    void exchangeRequestEncodesBothKeys();
    void exchangeRequestEscapesItsStrings();
    void exchangeResponseDecodes();
    void exchangeResponseMissingMemberFails();
    void errorBodyWithStringDecodesToThatText();
    void errorBodyWithoutErrorFails();
    void errorBodyWithNonStringErrorFails();
};

void TestWireFormat::statisticsWithEmptyTableDecodesToNoRows()
{
    const auto response = BookStatsResponse::decode(R"({"table_data": []})");
    QVERIFY(response.has_value());
    QVERIFY(response->tableData.isEmpty());
}

void TestWireFormat::statisticsEmptyObjectFails()
{
    QVERIFY(!BookStatsResponse::decode("{}").has_value());
}

void TestWireFormat::statisticsTableDataNullFails()
{
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": null})").has_value());
}

void TestWireFormat::statisticsTableDataOfWrongTypeFails()
{
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": {}})").has_value());
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": "rows"})").has_value());
    QVERIFY(!BookStatsResponse::decode(R"([{"table_data": []}])").has_value());
}

void TestWireFormat::statisticsRowThatIsNotAnObjectFails()
{
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": [{}, 3]})").has_value());
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": [null]})").has_value());
}

void TestWireFormat::rowEmptyObjectHasEveryMemberAbsent()
{
    const auto row = decodeSingleRow("{}");
    QVERIFY(row.has_value());
    QCOMPARE(*row, BookStatsRow());
    QVERIFY(!row->currency && !row->grossRoyalty && !row->totalReads && !row->customFormatUnits);
}

void TestWireFormat::rowNullGrossRoyaltyIsAbsent()
{
    const auto row = decodeSingleRow(R"({"gross_royalty": null, "net_royalty": 4.5})");
    QVERIFY(row.has_value());
    QVERIFY(!row->grossRoyalty.has_value());
    QCOMPARE(row->netRoyalty, std::optional<double>(4.5));
}

void TestWireFormat::rowStringTotalReadsFailsWholeBody()
{
    QVERIFY(!BookStatsResponse::decode(R"({"table_data": [{"gross_royalty": 1.0}, {"total_reads": "12"}]})"));
}

void TestWireFormat::rowNumberForCurrencyFailsWholeBody()
{
    QVERIFY(!decodeSingleRow(R"({"currency": 840})").has_value());
}

void TestWireFormat::rowBooleanForMoneyFailsWholeBody()
{
    QVERIFY(!decodeSingleRow(R"({"gross_royalty": true})").has_value());
    QVERIFY(!decodeSingleRow(R"({"spending": "3.50"})").has_value());
}

void TestWireFormat::rowFractionalIntegerFails_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::newRow("total_reads 1.5") << QByteArray(R"({"total_reads": 1.5})");
    QTest::newRow("ebooks_paid_sold 0.1") << QByteArray(R"({"ebooks_paid_sold": 0.1})");
    QTest::newRow("pre_orders_sold -2.25") << QByteArray(R"({"pre_orders_sold": -2.25})");
    QTest::newRow("exponent with fraction") << QByteArray(R"({"paperbacks_sold": 1.5e0})");
}

void TestWireFormat::rowFractionalIntegerFails()
{
    QFETCH(QByteArray, row);
    QVERIFY(!decodeSingleRow(row).has_value());
}

void TestWireFormat::rowIntegralNumberFormsAreAccepted_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("plain") << QByteArray(R"({"total_reads": 42})") << qint64(42);
    QTest::newRow("negative") << QByteArray(R"({"total_reads": -7})") << qint64(-7);
    QTest::newRow("zero fraction") << QByteArray(R"({"total_reads": 2.0})") << qint64(2);
    QTest::newRow("exponent 1e15") << QByteArray(R"({"total_reads": 1e15})") << qint64(1'000'000'000'000'000);
    QTest::newRow("1e15 scale digits") << QByteArray(R"({"total_reads": 1234567890123456})")
                                       << qint64(1'234'567'890'123'456);
    QTest::newRow("largest") << QByteArray(R"({"total_reads": 9223372036854775807})")
                             << std::numeric_limits<qint64>::max();
    QTest::newRow("smallest") << QByteArray(R"({"total_reads": -9223372036854775808})")
                              << std::numeric_limits<qint64>::min();
}

void TestWireFormat::rowIntegralNumberFormsAreAccepted()
{
    QFETCH(QByteArray, row);
    QFETCH(qint64, expected);
    const auto decoded = decodeSingleRow(row);
    QVERIFY(decoded.has_value());
    QCOMPARE(decoded->totalReads, std::optional<qint64>(expected));
}

void TestWireFormat::rowIntegerBeyondDoublePrecisionIsExact()
{
    // 2^53 + 1 has no double of its own; it must come through digit for digit.
    const auto row = decodeSingleRow(R"({"ebooks_paid_sold": 9007199254740993,
                                          "custom_format_units": {"Box set": 9007199254740995}})");
    QVERIFY(row.has_value());
    QCOMPARE(*row->paidEbookUnits, qint64(9007199254740993));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral("Box set")), qint64(9007199254740995));
}

void TestWireFormat::rowIntegerOutsideSixtyFourBitsFails()
{
    QVERIFY(!decodeSingleRow(R"({"total_reads": 9223372036854775808})").has_value());
    QVERIFY(!decodeSingleRow(R"({"total_reads": 1e19})").has_value());
}

void TestWireFormat::rowMoneyAcceptsIntegerJson()
{
    const auto row = decodeSingleRow(R"({"gross_royalty": 12, "spending": -3, "net_royalty": 9007199254740993})");
    QVERIFY(row.has_value());
    QCOMPARE(*row->grossRoyalty, 12.0);
    QCOMPARE(*row->spending, -3.0);
    QCOMPARE(*row->netRoyalty, 9007199254740992.0);
}

void TestWireFormat::rowReadsEveryMember()
{
    const auto row = decodeSingleRow(R"({
        "currency": "EUR", "gross_royalty": 1.5, "spending": 2.5, "net_royalty": 3.5,
        "total_read_royalty": 4.5, "total_reads": 5, "ebooks_paid_sold": 6, "ebooks_paid_royalties": 7.5,
        "ebooks_free_sold": 8, "paperbacks_sold": 9, "paperbacks_royalties": 10.5, "hardcovers_sold": 11,
        "hardcovers_royalties": 12.5, "audiobooks_sold": 13, "audiobooks_royalties": 14.5,
        "expanded_distribution_sold": 15, "expanded_distribution_royalties": 16.5, "pre_orders_sold": 17,
        "custom_format_units": {"Box set": 18}, "custom_format_royalties": {"Box set": 19.5}})");
    QVERIFY(row.has_value());
    QCOMPARE(*row->currency, QStringLiteral("EUR"));
    QCOMPARE(*row->grossRoyalty, 1.5);
    QCOMPARE(*row->spending, 2.5);
    QCOMPARE(*row->netRoyalty, 3.5);
    QCOMPARE(*row->totalReadRoyalty, 4.5);
    QCOMPARE(*row->totalReads, qint64(5));
    QCOMPARE(*row->paidEbookUnits, qint64(6));
    QCOMPARE(*row->paidEbookRoyalties, 7.5);
    QCOMPARE(*row->freeEbookDownloads, qint64(8));
    QCOMPARE(*row->paperbackUnits, qint64(9));
    QCOMPARE(*row->paperbackRoyalties, 10.5);
    QCOMPARE(*row->hardcoverUnits, qint64(11));
    QCOMPARE(*row->hardcoverRoyalties, 12.5);
    QCOMPARE(*row->audiobookUnits, qint64(13));
    QCOMPARE(*row->audiobookRoyalties, 14.5);
    QCOMPARE(*row->expandedDistributionUnits, qint64(15));
    QCOMPARE(*row->expandedDistributionRoyalties, 16.5);
    QCOMPARE(*row->preOrderUnits, qint64(17));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral("Box set")), qint64(18));
    QCOMPARE(row->customFormatRoyalties->value(QStringLiteral("Box set")), 19.5);
}

void TestWireFormat::customFormatMapsAcceptAnyKeyAndEmptyObjects()
{
    const auto row = decodeSingleRow(R"({"custom_format_units": {"": 1, "large print": 2, "Large Print": 3,
                                                                 "\u00e9dition \"sp\u00e9ciale\"": 4},
                                         "custom_format_royalties": {}})");
    QVERIFY(row.has_value());
    QCOMPARE(row->customFormatUnits->size(), 4);
    QCOMPARE(row->customFormatUnits->value(QString()), qint64(1));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral("large print")), qint64(2));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral("Large Print")), qint64(3));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral(u"\u00e9dition \"sp\u00e9ciale\"")), qint64(4));
    QVERIFY(row->customFormatRoyalties.has_value());
    QVERIFY(row->customFormatRoyalties->isEmpty());
}

void TestWireFormat::customFormatUnitsOfWrongTypeFail_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::newRow("array") << QByteArray(R"({"custom_format_units": [1, 2]})");
    QTest::newRow("number") << QByteArray(R"({"custom_format_units": 3})");
    QTest::newRow("string value") << QByteArray(R"({"custom_format_units": {"Box set": "3"}})");
    QTest::newRow("fractional value") << QByteArray(R"({"custom_format_units": {"Box set": 3.5}})");
    QTest::newRow("null value") << QByteArray(R"({"custom_format_units": {"Box set": null}})");
}

void TestWireFormat::customFormatUnitsOfWrongTypeFail()
{
    QFETCH(QByteArray, row);
    QVERIFY(!decodeSingleRow(row).has_value());
}

void TestWireFormat::customFormatRoyaltiesOfWrongTypeFail()
{
    QVERIFY(!decodeSingleRow(R"({"custom_format_royalties": "none"})").has_value());
    QVERIFY(!decodeSingleRow(R"({"custom_format_royalties": {"Box set": "1.20"}})").has_value());
    QVERIFY(!decodeSingleRow(R"({"custom_format_royalties": {"Box set": null}})").has_value());
}

void TestWireFormat::customFormatMapNullIsAbsent()
{
    const auto row = decodeSingleRow(R"({"custom_format_units": null, "custom_format_royalties": null})");
    QVERIFY(row.has_value());
    QVERIFY(!row->customFormatUnits.has_value());
    QVERIFY(!row->customFormatRoyalties.has_value());
}

void TestWireFormat::formatNameOpeningWithByteOrderMarkStaysDistinct()
{
    const auto row = decodeSingleRow("{\"currency\": \"\xEF\xBB\xBF\", \"custom_format_units\": {\"Box Set\": 3, "
                                     "\"\xEF\xBB\xBF"
                                     "Box Set\": 1}}");
    QVERIFY(row.has_value());
    QCOMPARE(row->customFormatUnits->size(), 2);
    QCOMPARE(row->customFormatUnits->value(QStringLiteral("Box Set")), qint64(3));
    QCOMPARE(row->customFormatUnits->value(QStringLiteral(u"\uFEFFBox Set")), qint64(1));
    QCOMPARE(*row->currency, QStringLiteral(u"\uFEFF"));
    // A mark in front of the whole document is no part of any value.
    QVERIFY(BookStatsResponse::decode("\xEF\xBB\xBF{\"table_data\": []}").has_value());
}

void TestWireFormat::unknownKeysAreIgnoredEverywhere()
{
    const auto stats = BookStatsResponse::decode(
        R"({"extra": [1, {"a": null}], "table_data": [{"isbn": 978, "gross_royalty": 2.5, "nested": {"x": []}}]})");
    QVERIFY(stats.has_value());
    QCOMPARE(*stats->tableData.first().grossRoyalty, 2.5);

    const auto accounts = AccountsResponse::decode(
        R"({"accounts": [{"account_id": "a", "user_email": "e", "access_type": "owner", "avatar": 7}], "x": true})");
    QVERIFY(accounts.has_value());
    QCOMPARE(accounts->accounts.size(), 1);

    QVERIFY(APIErrorResponse::decode(R"({"error": "Nope", "code": 17})").has_value());
    QVERIFY(MacAuthExchangeResponse::decode(R"({"api_key": "k", "user_email": "e", "expires": null})").has_value());
}

void TestWireFormat::malformedJsonFails_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("html") << QByteArray("<html><body>Bad gateway</body></html>");
    QTest::newRow("truncated") << QByteArray(R"({"table_data": [{"gross_royalty": 1.)");
    QTest::newRow("trailing comma") << QByteArray(R"({"table_data": [],})");
    QTest::newRow("top-level null") << QByteArray("null");
    QTest::newRow("top-level string") << QByteArray(R"("table_data")");
}

void TestWireFormat::malformedJsonFails()
{
    QFETCH(QByteArray, body);
    QVERIFY(!BookStatsResponse::decode(body).has_value());
    QVERIFY(!AccountsResponse::decode(body).has_value());
    QVERIFY(!MacAuthExchangeResponse::decode(body).has_value());
    QVERIFY(!APIErrorResponse::decode(body).has_value());
}

void TestWireFormat::realisticStatisticsBodyDecodes()
{
    const auto response = BookStatsResponse::decode(testData("book-stats-realistic.json"));
    QVERIFY(response.has_value());
    QCOMPARE(response->tableData.size(), 3);
    const BookStatsRow &first = response->tableData.at(0);
    QCOMPARE(*first.currency, QStringLiteral("USD"));
    QCOMPARE(*first.grossRoyalty, 182.47);
    QCOMPARE(*first.totalReads, qint64(5372));
    QCOMPARE(first.customFormatRoyalties->value(QStringLiteral("Box set")), 8.99);
    const BookStatsRow &second = response->tableData.at(1);
    QVERIFY(!second.spending.has_value());
    QVERIFY(!second.hardcoverUnits.has_value());
    QVERIFY(!second.expandedDistributionUnits.has_value());
    QCOMPARE(*second.preOrderUnits, qint64(7));
    QVERIFY(second.customFormatRoyalties->isEmpty());
    const BookStatsRow &third = response->tableData.at(2);
    QCOMPARE(*third.currency, QString());
    QCOMPARE(*third.netRoyalty, -12.5);
    QVERIFY(!third.grossRoyalty.has_value());

    // The same body, re-serialised with other spacing and key order, decodes to the same value.
    const QByteArray compact =
        QJsonDocument::fromJson(testData("book-stats-realistic.json")).toJson(QJsonDocument::Compact);
    QCOMPARE(BookStatsResponse::decode(compact), response);
}

void TestWireFormat::accountWithoutDisplayNameDecodesWithItAbsent()
{
    const auto response = AccountsResponse::decode(
        accountsBody(R"({"account_id": "a1", "user_email": "a@b.c", "access_type": "owner"})"));
    QVERIFY(response.has_value());
    const PublisherAccount &account = response->accounts.first();
    QCOMPARE(account.accountID, QStringLiteral("a1"));
    QCOMPARE(account.id(), QStringLiteral("a1"));
    QCOMPARE(account.userEmail, QStringLiteral("a@b.c"));
    QCOMPARE(account.accessType, QStringLiteral("owner"));
    QVERIFY(!account.displayName.has_value());
}

void TestWireFormat::accountWithoutAccessTypeFailsWholeList()
{
    QVERIFY(!AccountsResponse::decode(R"({"accounts": [
        {"account_id": "a1", "user_email": "a@b.c", "access_type": "owner"},
        {"account_id": "a2", "user_email": "d@e.f", "display_name": "Second"}]})"));
}

void TestWireFormat::accountRequiredMembersNullOrMistypedFail_data()
{
    QTest::addColumn<QByteArray>("account");
    QTest::newRow("account_id missing") << QByteArray(R"({"user_email": "e", "access_type": "owner"})");
    QTest::newRow("account_id null") << QByteArray(R"({"account_id": null, "user_email": "e", "access_type": "o"})");
    QTest::newRow("account_id number") << QByteArray(R"({"account_id": 12, "user_email": "e", "access_type": "o"})");
    QTest::newRow("user_email null") << QByteArray(R"({"account_id": "a", "user_email": null, "access_type": "o"})");
    QTest::newRow("access_type null") << QByteArray(R"({"account_id": "a", "user_email": "e", "access_type": null})");
    QTest::newRow("display_name number") << QByteArray(
        R"({"account_id": "a", "user_email": "e", "access_type": "o", "display_name": 3})");
}

void TestWireFormat::accountRequiredMembersNullOrMistypedFail()
{
    QFETCH(QByteArray, account);
    QVERIFY(!AccountsResponse::decode(accountsBody(account)).has_value());
}

void TestWireFormat::accountListWithoutLatestVersionHasItAbsent()
{
    const auto response = AccountsResponse::decode(R"({"accounts": []})");
    QVERIFY(response.has_value());
    QVERIFY(response->accounts.isEmpty());
    QVERIFY(!response->latestAppVersion.has_value());

    const auto withNull = AccountsResponse::decode(R"({"accounts": [], "latest_app_version": null})");
    QVERIFY(withNull.has_value());
    QVERIFY(!withNull->latestAppVersion.has_value());
}

void TestWireFormat::accountListWithoutAccountsFails()
{
    QVERIFY(!AccountsResponse::decode(R"({"latest_app_version": "1.2"})").has_value());
    QVERIFY(!AccountsResponse::decode(R"({"accounts": null})").has_value());
}

void TestWireFormat::accountListLatestVersionOfWrongTypeFails()
{
    QVERIFY(!AccountsResponse::decode(R"({"accounts": [], "latest_app_version": 1.2})").has_value());
}

void TestWireFormat::accountsCompareAndHashByAllFourMembers()
{
    const PublisherAccount base{QStringLiteral("a"), QStringLiteral("e"), QStringLiteral("Name"),
                                QStringLiteral("owner")};
    PublisherAccount otherEmail = base;
    otherEmail.userEmail = QStringLiteral("f");
    PublisherAccount noName = base;
    noName.displayName.reset();
    PublisherAccount emptyName = base;
    emptyName.displayName = QString();
    PublisherAccount otherAccess = base;
    otherAccess.accessType = QStringLiteral("viewer");

    QCOMPARE(base, PublisherAccount(base));
    QVERIFY(base != otherEmail);
    QVERIFY(base != noName);
    QVERIFY(noName != emptyName);
    QVERIFY(base != otherAccess);
    const QSet<PublisherAccount> set{base, base, otherEmail, noName, emptyName, otherAccess};
    QCOMPARE(set.size(), 5);
}

void TestWireFormat::realisticAccountListDecodes()
{
    const auto response = AccountsResponse::decode(testData("accounts-realistic.json"));
    QVERIFY(response.has_value());
    QCOMPARE(response->accounts.size(), 2);
    QCOMPARE(*response->accounts.at(0).displayName, QStringLiteral("Mara Lind Books"));
    QVERIFY(!response->accounts.at(1).displayName.has_value());
    QCOMPARE(response->accounts.at(1).accessType, QStringLiteral("viewer"));
    QCOMPARE(*response->latestAppVersion, QStringLiteral("1.4.2"));
}

void TestWireFormat::exchangeRequestEncodesBothKeys()
{
    const QByteArray body = MacAuthExchangeRequest{QStringLiteral("c0de"), QStringLiteral("ABC123")}.encode();
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    QCOMPARE(object.size(), 2);
    QCOMPARE(object.value(QLatin1String("code")).toString(), QStringLiteral("c0de"));
    QCOMPARE(object.value(QLatin1String("code_verifier")).toString(), QStringLiteral("ABC123"));
}

void TestWireFormat::exchangeRequestEscapesItsStrings()
{
    const QString code = QStringLiteral(u"a\"b\\c\n\u00e9");
    const QByteArray body = MacAuthExchangeRequest{code, QString()}.encode();
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    QCOMPARE(object.value(QLatin1String("code")).toString(), code);
    QCOMPARE(object.value(QLatin1String("code_verifier")).toString(), QString());
}

void TestWireFormat::exchangeResponseDecodes()
{
    const auto response = MacAuthExchangeResponse::decode(R"({"api_key": "ik_live_123", "user_email": "m@x.io"})");
    QVERIFY(response.has_value());
    QCOMPARE(response->apiKey, QStringLiteral("ik_live_123"));
    QCOMPARE(response->userEmail, QStringLiteral("m@x.io"));
}

void TestWireFormat::exchangeResponseMissingMemberFails()
{
    QVERIFY(!MacAuthExchangeResponse::decode(R"({"api_key": "k"})").has_value());
    QVERIFY(!MacAuthExchangeResponse::decode(R"({"user_email": "e"})").has_value());
    QVERIFY(!MacAuthExchangeResponse::decode(R"({"api_key": null, "user_email": "e"})").has_value());
    QVERIFY(!MacAuthExchangeResponse::decode(R"({"api_key": 5, "user_email": "e"})").has_value());
}

void TestWireFormat::errorBodyWithStringDecodesToThatText()
{
    const auto response = APIErrorResponse::decode(R"({"error": "Invalid API key."})");
    QVERIFY(response.has_value());
    QCOMPARE(response->error, QStringLiteral("Invalid API key."));
}

void TestWireFormat::errorBodyWithoutErrorFails()
{
    QVERIFY(!APIErrorResponse::decode(R"({"detail": "Invalid API key."})").has_value());
    QVERIFY(!APIErrorResponse::decode(R"({"error": null})").has_value());
}

void TestWireFormat::errorBodyWithNonStringErrorFails()
{
    QVERIFY(!APIErrorResponse::decode(R"({"error": {"message": "x"}})").has_value());
    QVERIFY(!APIErrorResponse::decode(R"({"error": 401})").has_value());
}

QTEST_GUILESS_MAIN(TestWireFormat)
#include "tst_wireformat.moc"
