#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"
#include "service/BookStatsResponse.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTest>

using namespace std::chrono_literals;

namespace {

Fault faultFromText(const QString &text)
{
    return Fault::fromText(text, nullptr).value();
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        DevServerConfig config;
        config.rateLimitWindow = 0ms;
        m_server = std::make_unique<DevServer>(config);
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void forcedStatusComesWithAnErrorBody()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:500")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 500);
        QCOMPARE(APIErrorResponse::decode(result.body)->error, QStringLiteral("Injected failure: HTTP 500."));
    }

    void forcedStatusWithMalformedBodyHasNoErrorBody()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:500,malformed")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 500);
        QCOMPARE(APIErrorResponse::decode(result.body), std::nullopt);
    }

    void malformedBodyFailsTheStrictDecoder()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("malformed")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 200);
        QVERIFY(!result.body.isEmpty());
        QCOMPARE(BookStatsResponse::decode(result.body), std::nullopt);
    }

    void emptyBodyFailsTheStrictDecoder()
    {
        m_server->faults().set(Route::Accounts, faultFromText(QStringLiteral("empty")));
        const HttpResult result = accounts();
        QCOMPARE(result.status, 200);
        QVERIFY(result.body.isEmpty());
        QCOMPARE(AccountsResponse::decode(result.body), std::nullopt);
    }

    void noContentStatusHasNoBody()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:204")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 204);
        QVERIFY(result.body.isEmpty());
    }

    void retryAfterValueIsSentAsGiven_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("whole seconds") << QStringLiteral("120");
        QTest::newRow("fraction") << QStringLiteral("2.2");
        QTest::newRow("zero") << QStringLiteral("0");
        QTest::newRow("http date") << QStringLiteral("Wed, 21 Oct 2015 07:28:00 GMT");
        QTest::newRow("infinity") << QStringLiteral("inf");
    }

    void retryAfterValueIsSentAsGiven()
    {
        QFETCH(QString, value);
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("retry-after:") + value));
        const HttpResult result = stats();
        QCOMPARE(result.status, 429);
        QCOMPARE(result.header("Retry-After"), value.toLatin1());
    }

    void status429WithoutRetryAfterHasNoHeader()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:429")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 429);
        QVERIFY(!result.hasHeader("Retry-After"));
    }

    void delayHoldsBackTheRealAnswer()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("delay:300")));
        QElapsedTimer timer;
        timer.start();
        const HttpResult result = stats();
        QVERIFY(timer.elapsed() >= 290);
        QCOMPARE(result.status, 200);
        QVERIFY(BookStatsResponse::decode(result.body));
        QCOMPARE(m_server->heldReplies(), 0);
    }

    void delayCombinesWithAForcedStatus()
    {
        m_server->faults().set(Route::Accounts, faultFromText(QStringLiteral("delay:150,status:503")));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(accounts().status, 503);
        QVERIFY(timer.elapsed() >= 140);
    }

    void hangNeverAnswers()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("hang")));
        const HttpResult result = stats(400);
        QCOMPARE(result.status, 0);
        QCOMPARE(result.error, QNetworkReply::OperationCanceledError);
        QCOMPARE(m_server->requests().size(), 1);
        // The client gave up; the server lets go of the held answer when the connection closes.
        QTRY_COMPARE(m_server->heldReplies(), 0);
    }

    void hangingConnectionIsClosedByReset()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("hang")));
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, m_server->port());
        QVERIFY(socket.waitForConnected(5000));
        socket.write("GET /api/v1/mac/bookStatsAPI/?start_date=2024-05-14&end_date=2024-05-14 HTTP/1.1\r\n"
                     "Host: 127.0.0.1\r\nAuthorization: Bearer inkwarden-demo-key\r\n\r\n");
        QTRY_COMPARE(m_server->heldReplies(), 1);
        QCOMPARE(socket.bytesAvailable(), 0);
        m_server->reset();
        QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(socket.readAll(), QByteArray());
    }

    void resetCutsTheConnectionWithoutAnAnswer()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("reset")));
        const HttpResult result = stats();
        QCOMPARE(result.status, 0);
        QVERIFY(result.error == QNetworkReply::RemoteHostClosedError
                || result.error == QNetworkReply::UnknownNetworkError);
        QVERIFY(result.body.isEmpty());
    }

    void resetIsATcpResetNotAnOrderlyClose()
    {
        m_server->faults().set(Route::Accounts, faultFromText(QStringLiteral("reset")));
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, m_server->port());
        QVERIFY(socket.waitForConnected(5000));
        socket.write("GET /api/v1/mac/listAccountsAPI/ HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
        QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(socket.error(), QAbstractSocket::RemoteHostClosedError);
        QCOMPARE(socket.readAll(), QByteArray());
    }

    void delayedResetWaitsFirst()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("reset,delay:200")));
        QElapsedTimer timer;
        timer.start();
        const HttpResult result = stats();
        QVERIFY(timer.elapsed() >= 190);
        QCOMPARE(result.status, 0);
        QVERIFY(result.error != QNetworkReply::NoError);
    }

    void limitedFaultAppliesOnlySoManyTimes()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:503,times:2")));
        QCOMPARE(stats().status, 503);
        QCOMPARE(stats().status, 503);
        QCOMPARE(stats().status, 200);
    }

    void faultStaysOnItsRoute()
    {
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:500")));
        QCOMPARE(accounts().status, 200);
        QCOMPARE(stats().status, 500);
    }

    void eachRouteCanBeMadeToFail_data()
    {
        QTest::addColumn<QString>("route");
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QString>("path");
        QTest::newRow("stats") << QStringLiteral("stats") << QByteArray("GET")
                               << QStringLiteral("/api/v1/mac/bookStatsAPI/?start_date=2024-05-14&end_date=2024-05-14");
        QTest::newRow("accounts") << QStringLiteral("accounts") << QByteArray("GET")
                                  << QStringLiteral("/api/v1/mac/listAccountsAPI/");
        QTest::newRow("exchange") << QStringLiteral("exchange") << QByteArray("POST")
                                  << QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/");
        QTest::newRow("download") << QStringLiteral("download") << QByteArray("GET")
                                  << QStringLiteral("/download_for_linux/");
        QTest::newRow("dashboard") << QStringLiteral("dashboard") << QByteArray("GET")
                                   << QStringLiteral("/dashboard_lite/");
        QTest::newRow("connect page") << QStringLiteral("connect") << QByteArray("GET")
                                      << QStringLiteral("/mac-app/connect/?code_challenge=x");
        QTest::newRow("connect form") << QStringLiteral("connect") << QByteArray("POST")
                                      << QStringLiteral("/mac-app/connect/authorize/");
    }

    void eachRouteCanBeMadeToFail()
    {
        QFETCH(QString, route);
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        QVERIFY(m_server->faults().applySpec(route + QStringLiteral("=status:418"), nullptr));
        const QUrl url = m_server->baseUrl().resolved(QUrl(path));
        const HeaderList key{{"Authorization", "Bearer " + ApiKeys::demoKey().toUtf8()}};
        QCOMPARE(m_client.send(verb, url, {}, key).status, 418);
        m_server->faults().clearAll();
        QVERIFY(m_client.send(verb, url, {}, key).status != 418);
    }

    void faultedRequestsSpendNothing()
    {
        DevServerConfig config;
        m_server = std::make_unique<DevServer>(config);
        QVERIFY(m_server->listen() != 0);
        m_server->faults().set(Route::Stats, faultFromText(QStringLiteral("status:500,times:1")));
        QCOMPARE(stats().status, 500);
        // The rate limit saw no request, so this one is not refused.
        QCOMPARE(stats().status, 200);
    }

    void adminEndpointSetsAndClearsFaults()
    {
        const QUrl faults = m_server->url(QStringLiteral("/__admin/faults"));
        HttpResult set =
            m_client.post(faults, R"({"stats": {"status": 502}, "spec": "accounts=malformed"})", "application/json");
        QCOMPARE(set.status, 200);
        QCOMPARE(QJsonDocument::fromJson(set.body).object(),
                 QJsonDocument::fromJson(R"({"stats": {"status": 502}, "accounts": {"malformed": true}})").object());
        QCOMPARE(stats().status, 502);
        QCOMPARE(AccountsResponse::decode(accounts().body), std::nullopt);

        QCOMPARE(m_client.get(faults).body, set.body);
        QCOMPARE(m_client.send("DELETE", faults).status, 200);
        QCOMPARE(stats().status, 200);
        QCOMPARE(accounts().status, 200);
    }

    void adminEndpointRefusesBadFaultsAndChangesNothing()
    {
        const QUrl faults = m_server->url(QStringLiteral("/__admin/faults"));
        QCOMPARE(m_client.post(faults, "not json", "application/json").status, 400);
        const HttpResult bad =
            m_client.post(faults, R"({"stats": {"status": 500}, "accounts": {"delay_ms": -4}})", "application/json");
        QCOMPARE(bad.status, 400);
        QVERIFY(APIErrorResponse::decode(bad.body));
        QCOMPARE(m_client.post(faults, R"({"spec": "stats=explode"})", "application/json").status, 400);
        QCOMPARE(stats().status, 200);
    }

    void commandLineSpecsWork()
    {
        QVERIFY(m_server->faults().applySpec(QStringLiteral("stats=retry-after:2.2"), nullptr));
        QVERIFY(m_server->faults().applySpec(QStringLiteral("accounts=malformed"), nullptr));
        const HttpResult limited = stats();
        QCOMPARE(limited.status, 429);
        QCOMPARE(limited.header("Retry-After"), QByteArray("2.2"));
        QCOMPARE(AccountsResponse::decode(accounts().body), std::nullopt);
    }

private:
    HttpResult stats(int timeoutMs = 10000)
    {
        return m_client.getWithKey(m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"))
                                       .resolved(QUrl(QStringLiteral("?start_date=2024-05-14&end_date=2024-05-14"))),
                                   ApiKeys::demoKey(), timeoutMs);
    }

    HttpResult accounts()
    {
        return m_client.getWithKey(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")), ApiKeys::demoKey());
    }

    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_devserver_faults.moc"
