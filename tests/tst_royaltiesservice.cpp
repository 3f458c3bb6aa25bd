#include "DevServer.h"
#include "HttpTestClient.h"
#include "service/RoyaltiesService.h"
#include "support/Await.h"
#include "support/VirtualClock.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QTest>
#include <QUrlQuery>
#include <qcoro/qcorotask.h>

namespace {

QString challengeOf(const QString &verifier)
{
    return QString::fromLatin1(QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256)
                                   .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

QString errorText(const ServiceError &error)
{
    return error.localizedDescription();
}

} // namespace

class TestRoyaltiesService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    // Addresses and requests
    void blanksAndTrailingSlashesGiveOneSlashBeforeThePath();
    void addressWithoutSchemeFailsBeforeAnyTraffic();
    void addressWithOtherSchemeFailsBeforeAnyTraffic();
    void emptyAccountLeavesAccountIdOutOfTheQuery();
    void accountIdFollowsTheDates();
    void periodsAskForTheirDays_data();
    void periodsAskForTheirDays();
    void daysAreCountedInTheClocksTimeZone();
    void statisticsRequestCarriesAcceptAndBearerKey();
    void accountListRequestHasAnEmptyQuery();
    void exchangeIsAJsonPostWithoutAuthorization();
    void requestsTimeOutAfterThirtySeconds();
    void basePathIsKeptBeforeTheEndpoint();

    // Successful replies
    void summaryFoldsTheServersRows();
    void secondAccountIsInEuros();
    void accountListDecodes();
    void keyWithoutAccountsGetsAnEmptyList();
    void exchangeGivesAWorkingKey();

    // Rate limits
    void rateLimitWithRetryAfter120();
    void rateLimitWithFractionalRetryAfterRoundsUp();
    void rateLimitWithZeroRetryAfterSaysOneSecond();
    void rateLimitWithoutRetryAfterWaitsThreeSeconds();
    void rateLimitWithHttpDateWaitsThreeSeconds();
    void rateLimitWithNonFiniteRetryAfterWaitsThreeSeconds();
    void realRateLimitOfTheServer();

    // Failures
    void unauthorizedShowsTheServersErrorText();
    void serverErrorWithoutErrorBodySaysTheStatus();
    void serverErrorWithErrorBodyShowsIt();
    void everyErrorStatusReachesTheClassifier_data();
    void everyErrorStatusReachesTheClassifier();
    void successWithUnexpectedJsonIsInvalidResponse();
    void successWithEmptyBodyIsInvalidResponse();
    void noContentIsInvalidResponse();
    void exchangeWithWrongVerifierShowsTheServersError();
    void resetConnectionIsATransportError();
    void requestsAreNotSentAgainAfterAReset_data();
    void requestsAreNotSentAgainAfterAReset();
    void refusedConnectionIsATransportError();
    void hangingServerTimesOut();

private:
    QString address() const { return m_server->baseUrl().toString(); }
    RecordedRequest onlyRequest() const;

    VirtualClock m_clock;
    std::unique_ptr<DevServer> m_server;
    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<RoyaltiesService> m_service;
};

void TestRoyaltiesService::init()
{
    m_clock.jumpTo(QDateTime(QDate(2026, 11, 21), QTime(9, 30), QTimeZone::utc()));
    m_server = std::make_unique<DevServer>();
    m_server->clock().setSource([this] { return m_clock.now(); });
    QVERIFY(m_server->listen() != 0);
    m_network = std::make_unique<QNetworkAccessManager>();
    m_service = std::make_unique<RoyaltiesService>(*m_network, m_clock);
}

void TestRoyaltiesService::cleanup()
{
    m_service.reset();
    m_network.reset();
    m_server.reset();
}

RecordedRequest TestRoyaltiesService::onlyRequest() const
{
    const QList<RecordedRequest> requests = m_server->requests();
    if (requests.size() != 1) {
        qWarning() << "expected one request, the server saw" << requests.size();
        return {};
    }
    return requests.first();
}

void TestRoyaltiesService::blanksAndTrailingSlashesGiveOneSlashBeforeThePath()
{
    const QString messy = QStringLiteral("  \n") + address() + QStringLiteral("///  \t");
    const auto result =
        awaitResult(m_service->fetchSummary(messy, ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(result.hasValue());
    QCOMPARE(onlyRequest().request.path, QStringLiteral("/api/v1/mac/bookStatsAPI/"));
}

void TestRoyaltiesService::addressWithoutSchemeFailsBeforeAnyTraffic()
{
    const QString schemeless = QStringLiteral("127.0.0.1:%1").arg(m_server->port());
    const auto result =
        awaitResult(m_service->fetchSummary(schemeless, ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!result.hasValue());
    QCOMPARE(errorText(result.error()), QStringLiteral("Enter a valid server URL, including http:// or https://."));
    QVERIFY(m_server->requests().isEmpty());
}

void TestRoyaltiesService::addressWithOtherSchemeFailsBeforeAnyTraffic()
{
    const QString ftp = QStringLiteral("ftp://127.0.0.1:%1").arg(m_server->port());
    const auto accounts = awaitResult(m_service->fetchAccounts(ftp, ApiKeys::demoKey()));
    QVERIFY(!accounts.hasValue());
    QCOMPARE(accounts.error().royaltiesError()->kind(), RoyaltiesError::Kind::invalidServerURL);
    const auto exchange = awaitResult(
        m_service->exchangeAuthenticationCode(QStringLiteral("ws://x"), QStringLiteral("c"), QStringLiteral("v")));
    QCOMPARE(exchange.error().royaltiesError()->kind(), RoyaltiesError::Kind::invalidServerURL);
    QVERIFY(m_server->requests().isEmpty());
}

void TestRoyaltiesService::emptyAccountLeavesAccountIdOutOfTheQuery()
{
    QVERIFY(awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today))
                .hasValue());
    const RecordedRequest request = onlyRequest();
    QVERIFY(!request.request.query.hasQueryItem(QStringLiteral("account_id")));
    QCOMPARE(request.request.query.queryItems().size(), 2);
}

void TestRoyaltiesService::accountIdFollowsTheDates()
{
    const auto accounts = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QVERIFY(accounts.hasValue());
    const QString account = accounts.value().accounts.first().accountID;
    m_server->clearRequests();
    QVERIFY(awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), account, RoyaltyPeriod::yesterday))
                .hasValue());
    const QList<QPair<QString, QString>> items = onlyRequest().request.query.queryItems();
    QCOMPARE(items.size(), 3);
    QCOMPARE(items.at(0).first, QStringLiteral("start_date"));
    QCOMPARE(items.at(1).first, QStringLiteral("end_date"));
    QCOMPARE(items.at(2), (QPair<QString, QString>{QStringLiteral("account_id"), account}));
}

void TestRoyaltiesService::periodsAskForTheirDays_data()
{
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::newRow("today") << int(RoyaltyPeriod::today) << QStringLiteral("2026-11-21") << QStringLiteral("2026-11-21");
    QTest::newRow("yesterday") << int(RoyaltyPeriod::yesterday) << QStringLiteral("2026-11-20")
                               << QStringLiteral("2026-11-20");
    QTest::newRow("this month") << int(RoyaltyPeriod::thisMonth) << QStringLiteral("2026-11-01")
                                << QStringLiteral("2026-11-22");
}

void TestRoyaltiesService::periodsAskForTheirDays()
{
    QFETCH(int, period);
    QVERIFY(awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(),
                                                RoyaltyPeriod(RoyaltyPeriod::Case(period))))
                .hasValue());
    const QUrlQuery query = onlyRequest().request.query;
    QTEST(query.queryItemValue(QStringLiteral("start_date")), "start");
    QTEST(query.queryItemValue(QStringLiteral("end_date")), "end");
}

void TestRoyaltiesService::daysAreCountedInTheClocksTimeZone()
{
    // 20:30 UTC on the last day of November is already 1 December in Tokyo.
    VirtualClock tokyoClock(QDateTime(QDate(2026, 11, 30), QTime(20, 30), QTimeZone::utc()), QTimeZone("Asia/Tokyo"));
    m_server->clock().setSource([&tokyoClock] { return tokyoClock.now(); });
    RoyaltiesService service(*m_network, tokyoClock);
    QVERIFY(awaitResult(service.fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::thisMonth))
                .hasValue());
    const QUrlQuery query = onlyRequest().request.query;
    QCOMPARE(query.queryItemValue(QStringLiteral("start_date")), QStringLiteral("2026-12-01"));
    QCOMPARE(query.queryItemValue(QStringLiteral("end_date")), QStringLiteral("2026-12-02"));
}

void TestRoyaltiesService::statisticsRequestCarriesAcceptAndBearerKey()
{
    QVERIFY(awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today))
                .hasValue());
    const RecordedRequest request = onlyRequest();
    QCOMPARE(request.request.method, QStringLiteral("GET"));
    QCOMPARE(request.header("Accept"), QByteArray("application/json"));
    QCOMPARE(request.header("Authorization"), QByteArray("Bearer ") + ApiKeys::demoKey().toUtf8());
}

void TestRoyaltiesService::accountListRequestHasAnEmptyQuery()
{
    QVERIFY(awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey())).hasValue());
    const RecordedRequest request = onlyRequest();
    QCOMPARE(request.request.path, QStringLiteral("/api/v1/mac/listAccountsAPI/"));
    QVERIFY(request.request.query.isEmpty());
    QCOMPARE(request.header("Authorization"), QByteArray("Bearer ") + ApiKeys::demoKey().toUtf8());
    QCOMPARE(request.header("Accept"), QByteArray("application/json"));
}

void TestRoyaltiesService::exchangeIsAJsonPostWithoutAuthorization()
{
    (void)awaitResult(
        m_service->exchangeAuthenticationCode(address(), QStringLiteral("code-1"), QStringLiteral("verifier-1")));
    const RecordedRequest request = onlyRequest();
    QCOMPARE(request.request.method, QStringLiteral("POST"));
    QCOMPARE(request.request.path, QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/"));
    QCOMPARE(request.header("Accept"), QByteArray("application/json"));
    QCOMPARE(request.header("Content-Type"), QByteArray("application/json"));
    QVERIFY(request.header("Authorization").isEmpty());
    const QJsonObject body = QJsonDocument::fromJson(request.request.body).object();
    QCOMPARE(body.value(QLatin1String("code")).toString(), QStringLiteral("code-1"));
    QCOMPARE(body.value(QLatin1String("code_verifier")).toString(), QStringLiteral("verifier-1"));
}

void TestRoyaltiesService::requestsTimeOutAfterThirtySeconds()
{
    QCOMPARE(RoyaltiesService::requestTimeoutMilliseconds, 30'000);
    const QNetworkRequest request = RoyaltiesService::prepareRequest(QUrl(QStringLiteral("http://h/")));
    QCOMPARE(request.transferTimeout(), 30'000);
    // The protocol's own cache rules: nothing forces or forbids the cache.
    QVERIFY(!request.attribute(QNetworkRequest::CacheLoadControlAttribute).isValid());
}

void TestRoyaltiesService::basePathIsKeptBeforeTheEndpoint()
{
    DevServerConfig config;
    config.basePath = QStringLiteral("/inkwarden");
    DevServer server(config);
    server.clock().setSource([this] { return m_clock.now(); });
    QVERIFY(server.listen() != 0);
    const QString base = QStringLiteral("http://127.0.0.1:%1/inkwarden/").arg(server.port());
    QVERIFY(awaitResult(m_service->fetchAccounts(base, ApiKeys::demoKey())).hasValue());
    QCOMPARE(server.requests().first().request.path, QStringLiteral("/inkwarden/api/v1/mac/listAccountsAPI/"));
}

void TestRoyaltiesService::summaryFoldsTheServersRows()
{
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::thisMonth));
    QVERIFY(result.hasValue());
    const RoyaltySummary &summary = result.value();
    QCOMPARE(summary.currency, QStringLiteral("USD"));
    QVERIFY(summary.gross > 0);
    QVERIFY(summary.paidEbookUnits > 0);
    QVERIFY(summary.reads > 0);
    QCOMPARE(summary.customFormats.size(), 2);
}

void TestRoyaltiesService::secondAccountIsInEuros()
{
    const auto accounts = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QVERIFY(accounts.hasValue());
    QCOMPARE(accounts.value().accounts.size(), 2);
    const QString second = accounts.value().accounts.at(1).accountID;
    m_clock.advance(std::chrono::seconds(5));
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), second, RoyaltyPeriod::yesterday));
    QVERIFY(result.hasValue());
    QCOMPARE(result.value().currency, QStringLiteral("EUR"));
}

void TestRoyaltiesService::accountListDecodes()
{
    const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QVERIFY(result.hasValue());
    const QList<PublisherAccount> &accounts = result.value().accounts;
    QCOMPARE(accounts.size(), 2);
    QVERIFY(accounts.at(0).displayName.has_value());
    QVERIFY(!accounts.at(1).displayName.has_value());
    QVERIFY(result.value().latestAppVersion.has_value());
}

void TestRoyaltiesService::keyWithoutAccountsGetsAnEmptyList()
{
    const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::noAccountsKey()));
    QVERIFY(result.hasValue());
    QVERIFY(result.value().accounts.isEmpty());
}

void TestRoyaltiesService::exchangeGivesAWorkingKey()
{
    const QString verifier = QStringLiteral("8F14E45FCEEA167A5A36DEDD4BEA25438F14E45FCEEA167A5A36DEDD4BEA2543");
    HttpTestClient browser;
    QUrl authorize = m_server->url(QStringLiteral("/mac-app/connect/authorize/"));
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("code_challenge"), challengeOf(verifier));
    form.addQueryItem(QStringLiteral("state"), QStringLiteral("S1"));
    const HttpResult redirect =
        browser.post(authorize, form.query(QUrl::FullyEncoded).toUtf8(), "application/x-www-form-urlencoded");
    QCOMPARE(redirect.status, 302);
    const QString code =
        QUrlQuery(QUrl::fromEncoded(redirect.header("Location"))).queryItemValue(QStringLiteral("code"));
    QVERIFY(!code.isEmpty());

    const auto exchanged = awaitResult(m_service->exchangeAuthenticationCode(address(), code, verifier));
    QVERIFY(exchanged.hasValue());
    QVERIFY(!exchanged.value().apiKey.isEmpty());
    const auto accounts = awaitResult(m_service->fetchAccounts(address(), exchanged.value().apiKey));
    QVERIFY(accounts.hasValue());
    QCOMPARE(accounts.value().accounts.size(), 2);
}

void TestRoyaltiesService::rateLimitWithRetryAfter120()
{
    Fault fault;
    fault.retryAfter = QByteArray("120");
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!result.hasValue());
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::rateLimited);
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 120.0);
    QCOMPARE(errorText(result.error()), QStringLiteral("Please wait 120 seconds before requesting royalties again."));
}

void TestRoyaltiesService::rateLimitWithFractionalRetryAfterRoundsUp()
{
    Fault fault;
    fault.retryAfter = QByteArray("2.2");
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 2.2);
    QCOMPARE(errorText(result.error()), QStringLiteral("Please wait 3 seconds before requesting royalties again."));
}

void TestRoyaltiesService::rateLimitWithZeroRetryAfterSaysOneSecond()
{
    Fault fault;
    fault.retryAfter = QByteArray("0");
    m_server->faults().set(Route::Accounts, fault);
    const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 0.0);
    QCOMPARE(errorText(result.error()), QStringLiteral("Please wait 1 seconds before requesting royalties again."));
}

void TestRoyaltiesService::rateLimitWithoutRetryAfterWaitsThreeSeconds()
{
    Fault fault;
    fault.status = 429;
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::rateLimited);
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 3.0);
    QCOMPARE(errorText(result.error()), QStringLiteral("Please wait 3 seconds before requesting royalties again."));
}

void TestRoyaltiesService::rateLimitWithHttpDateWaitsThreeSeconds()
{
    Fault fault;
    fault.retryAfter = QByteArray("Wed, 21 Oct 2026 07:28:00 GMT");
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 3.0);
}

void TestRoyaltiesService::rateLimitWithNonFiniteRetryAfterWaitsThreeSeconds()
{
    Fault fault;
    fault.retryAfter = QByteArray("1e999");
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(result.error().royaltiesError()->retryAfter(), 3.0);
}

void TestRoyaltiesService::realRateLimitOfTheServer()
{
    QVERIFY(awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today))
                .hasValue());
    m_clock.advance(std::chrono::seconds(1));
    const auto limited =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!limited.hasValue());
    QCOMPARE(limited.error().royaltiesError()->kind(), RoyaltiesError::Kind::rateLimited);
    QVERIFY(limited.error().royaltiesError()->retryAfter() > 0);
    QVERIFY(limited.error().royaltiesError()->retryAfter() <= 3);
}

void TestRoyaltiesService::unauthorizedShowsTheServersErrorText()
{
    const auto result = awaitResult(m_service->fetchAccounts(address(), QStringLiteral("not-a-key")));
    QVERIFY(!result.hasValue());
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::server);
    QCOMPARE(errorText(result.error()), QStringLiteral("Invalid API key."));
}

void TestRoyaltiesService::serverErrorWithoutErrorBodySaysTheStatus()
{
    Fault fault;
    fault.status = 500;
    fault.htmlBody = true; // an HTML page from a gateway, not the service's JSON
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(errorText(result.error()), QStringLiteral("Server returned HTTP 500."));
}

void TestRoyaltiesService::serverErrorWithErrorBodyShowsIt()
{
    Fault fault;
    fault.status = 503;
    m_server->faults().set(Route::Accounts, fault);
    const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QCOMPARE(errorText(result.error()), QStringLiteral("Injected failure: HTTP 503."));
}

void TestRoyaltiesService::everyErrorStatusReachesTheClassifier_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("withErrorBody");
    // Those that Qt maps to error codes of its own (401, 403, 404, 405, 407, 409, 410, 413, 416, 418
    // and the 5xx), and some it leaves alone. 429 is the rate limit, not a message.
    const QList<int> statuses{400, 401, 402, 403, 404, 405, 406, 407, 408, 409, 410, 411, 412, 413, 414, 415, 416,
                              417, 418, 422, 425, 426, 428, 431, 451, 500, 501, 502, 503, 504, 505, 507, 511};
    for (const int status : statuses) {
        if (!FaultSwitches::isWritableStatus(status)) {
            continue;
        }
        QTest::addRow("%d with the service's error", status) << status << true;
        QTest::addRow("%d with a gateway's page", status) << status << false;
    }
}

void TestRoyaltiesService::everyErrorStatusReachesTheClassifier()
{
    QFETCH(int, status);
    QFETCH(bool, withErrorBody);
    Fault fault;
    fault.status = status;
    if (withErrorBody) {
        fault.body = QByteArrayLiteral(R"({"error": "Told by the service."})");
    } else {
        fault.htmlBody = true;
    }
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!result.hasValue());
    QVERIFY2(result.error().royaltiesError(), qPrintable(errorText(result.error())));
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::server);
    QCOMPARE(errorText(result.error()), withErrorBody ? QStringLiteral("Told by the service.")
                                                      : QStringLiteral("Server returned HTTP %1.").arg(status));
}

void TestRoyaltiesService::successWithUnexpectedJsonIsInvalidResponse()
{
    Fault fault;
    fault.status = 200;
    fault.malformedBody = true;
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QCOMPARE(errorText(result.error()), QStringLiteral("Inkwarden returned an unexpected response."));
}

void TestRoyaltiesService::successWithEmptyBodyIsInvalidResponse()
{
    Fault fault;
    fault.status = 200;
    fault.emptyBody = true;
    m_server->faults().set(Route::Accounts, fault);
    const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::invalidResponse);
}

void TestRoyaltiesService::noContentIsInvalidResponse()
{
    Fault fault;
    fault.status = 204;
    m_server->faults().set(Route::Exchange, fault);
    const auto result =
        awaitResult(m_service->exchangeAuthenticationCode(address(), QStringLiteral("c"), QStringLiteral("v")));
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::invalidResponse);
}

void TestRoyaltiesService::exchangeWithWrongVerifierShowsTheServersError()
{
    const auto result = awaitResult(
        m_service->exchangeAuthenticationCode(address(), QStringLiteral("no-such-code"), QStringLiteral("verifier")));
    QVERIFY(!result.hasValue());
    QCOMPARE(result.error().royaltiesError()->kind(), RoyaltiesError::Kind::server);
    QVERIFY(!errorText(result.error()).startsWith(QStringLiteral("Server returned HTTP")));
}

void TestRoyaltiesService::resetConnectionIsATransportError()
{
    Fault fault;
    fault.reset = true;
    m_server->faults().set(Route::Stats, fault);
    const auto result =
        awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!result.hasValue());
    QVERIFY(result.error().transportError() != nullptr);
    QCOMPARE(result.error().transportError()->code, QNetworkReply::RemoteHostClosedError);
    QCOMPARE(errorText(result.error()), QStringLiteral("Connection closed"));
}

// Qt's network layer on its own would send a request again, at once, when the server closes the
// connection before answering: the server must see each request exactly once.
void TestRoyaltiesService::requestsAreNotSentAgainAfterAReset_data()
{
    QTest::addColumn<int>("route");
    QTest::newRow("statistics") << int(Route::Stats);
    QTest::newRow("accounts") << int(Route::Accounts);
    QTest::newRow("code exchange") << int(Route::Exchange);
}

void TestRoyaltiesService::requestsAreNotSentAgainAfterAReset()
{
    QFETCH(int, route);
    Fault fault;
    fault.reset = true;
    m_server->faults().set(Route(route), fault);
    std::optional<ServiceError> outcome;
    switch (Route(route)) {
    case Route::Stats: {
        const auto result =
            awaitResult(m_service->fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
        QVERIFY(!result.hasValue());
        outcome = result.error();
        break;
    }
    case Route::Accounts: {
        const auto result = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
        QVERIFY(!result.hasValue());
        outcome = result.error();
        break;
    }
    default: {
        const auto result = awaitResult(
            m_service->exchangeAuthenticationCode(address(), QStringLiteral("code"), QStringLiteral("verifier")));
        QVERIFY(!result.hasValue());
        outcome = result.error();
        break;
    }
    }
    QVERIFY(outcome && outcome->transportError() != nullptr);
    QCOMPARE(outcome->transportError()->code, QNetworkReply::RemoteHostClosedError);
    QCOMPARE(m_server->requests().size(), 1);

    // The connection that follows is a fresh one, and works.
    m_server->faults().clearAll();
    const auto again = awaitResult(m_service->fetchAccounts(address(), ApiKeys::demoKey()));
    QVERIFY(again.hasValue());
    QCOMPARE(m_server->requests().size(), 2);
}

void TestRoyaltiesService::refusedConnectionIsATransportError()
{
    const quint16 port = m_server->port();
    m_server.reset();
    const auto result =
        awaitResult(m_service->fetchAccounts(QStringLiteral("http://127.0.0.1:%1").arg(port), ApiKeys::demoKey()));
    QVERIFY(!result.hasValue());
    QCOMPARE(result.error().transportError()->code, QNetworkReply::ConnectionRefusedError);
    QCOMPARE(errorText(result.error()), QStringLiteral("Connection refused"));
}

void TestRoyaltiesService::hangingServerTimesOut()
{
    Fault fault;
    fault.hang = true;
    m_server->faults().set(Route::Stats, fault);
    // The same service with a short time-out: the thirty seconds themselves are checked above.
    RoyaltiesService impatient(*m_network, m_clock, std::chrono::milliseconds(300));
    const auto result =
        awaitResult(impatient.fetchSummary(address(), ApiKeys::demoKey(), QString(), RoyaltyPeriod::today));
    QVERIFY(!result.hasValue());
    QCOMPARE(result.error().transportError()->code, QNetworkReply::TimeoutError);
    QCOMPARE(errorText(result.error()), QStringLiteral("The request timed out."));
}

QTEST_GUILESS_MAIN(TestRoyaltiesService)
#include "tst_royaltiesservice.moc"
