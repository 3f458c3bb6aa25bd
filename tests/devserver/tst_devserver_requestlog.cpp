#include "AdminApi.h"
#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkInterface>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

class TestRequestLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<DevServer>();
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void recordsMethodPathQueryAndHeaders()
    {
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(QStringLiteral("start_date=2024-05-14&end_date=2024-05-14&account_id=acct-lindqvist"));
        QCOMPARE(m_client.getWithKey(url, ApiKeys::demoKey()).status, 200);

        const QList<RecordedRequest> log = m_server->requests();
        QCOMPARE(log.size(), 1);
        const RecordedRequest &entry = log.constFirst();
        QCOMPARE(entry.route, QStringLiteral("stats"));
        QCOMPARE(entry.request.method, QStringLiteral("GET"));
        QCOMPARE(entry.request.path, QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        QCOMPARE(entry.request.queryValue(QStringLiteral("start_date")), QStringLiteral("2024-05-14"));
        QCOMPARE(entry.request.queryValue(QStringLiteral("account_id")), QStringLiteral("acct-lindqvist"));
        QCOMPARE(entry.header("authorization"), "Bearer " + ApiKeys::demoKey().toUtf8());
        QCOMPARE(entry.header("Accept"), QByteArray("application/json"));
        QVERIFY(entry.request.peer.isLoopback());
    }

    void recordsTheBodyOfAPost()
    {
        const QByteArray body = R"({"code":"abc","code_verifier":"def"})";
        m_client.post(m_server->url(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/")), body, "application/json");
        const RecordedRequest entry = m_server->requests().constLast();
        QCOMPARE(entry.route, QStringLiteral("exchange"));
        QCOMPARE(entry.request.method, QStringLiteral("POST"));
        QCOMPARE(entry.request.body, body);
        QCOMPARE(entry.header("Content-Type"), QByteArray("application/json"));
        QVERIFY(!entry.request.headers.isEmpty());
    }

    void recordsUnknownPathsAndFailedRequestsInOrder()
    {
        m_client.get(m_server->url(QStringLiteral("/nowhere/")));
        m_server->faults().applySpec(QStringLiteral("accounts=reset"), nullptr);
        m_client.get(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")));
        // QNetworkAccessManager sends a GET once more when a reused connection is reset, so the reset
        // request may be recorded twice.
        const QList<RecordedRequest> log = m_server->requests();
        QVERIFY(log.size() == 2 || log.size() == 3);
        QCOMPARE(log.at(0).route, QString());
        QCOMPARE(log.at(0).request.path, QStringLiteral("/nowhere/"));
        for (qsizetype i = 1; i < log.size(); ++i) {
            QCOMPARE(log.at(i).route, QStringLiteral("accounts"));
            QVERIFY(log.at(i - 1).sequence < log.at(i).sequence);
        }
    }

    void announcesEachRecordedRequest()
    {
        QSignalSpy spy(m_server.get(), &DevServer::requestRecorded);
        m_client.get(m_server->url(QStringLiteral("/dashboard_lite/")));
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).value<RecordedRequest>().route, QStringLiteral("dashboard"));
    }

    void clearEmptiesTheLog()
    {
        m_client.get(m_server->url(QStringLiteral("/dashboard_lite/")));
        m_server->clearRequests();
        QVERIFY(m_server->requests().isEmpty());
    }

    void logKeepsTheNewestEntries()
    {
        RequestLog log(3);
        for (int i = 0; i < 5; ++i) {
            IncomingRequest request;
            request.path = QString::number(i);
            log.record(request, QString(), QDateTime::currentDateTime());
        }
        QCOMPARE(log.entries().size(), 3);
        QCOMPARE(log.entries().constFirst().request.path, QStringLiteral("2"));
        QCOMPARE(log.entries().constFirst().sequence, 3);
    }

    void adminRequestsEndpointGivesTheLogAsJson()
    {
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/"));
        url.setQuery(QStringLiteral("x=1"));
        m_client.getWithKey(url, ApiKeys::demoKey());
        const HttpResult result = m_client.get(m_server->url(QStringLiteral("/__admin/requests")));
        QCOMPARE(result.status, 200);
        const QJsonArray log = QJsonDocument::fromJson(result.body).array();
        QCOMPARE(log.size(), 1);
        const QJsonObject entry = log.at(0).toObject();
        QCOMPARE(entry.value(QStringLiteral("method")).toString(), QStringLiteral("GET"));
        QCOMPARE(entry.value(QStringLiteral("path")).toString(), QStringLiteral("/api/v1/mac/listAccountsAPI/"));
        QCOMPARE(entry.value(QStringLiteral("query")).toString(), QStringLiteral("x=1"));
        QCOMPARE(entry.value(QStringLiteral("route")).toString(), QStringLiteral("accounts"));
        QVERIFY(entry.value(QStringLiteral("headers"))
                    .toArray()
                    .contains(QJsonArray{QStringLiteral("Authorization"),
                                         QString(QStringLiteral("Bearer ") + ApiKeys::demoKey())}));
    }

    void adminCallsAreNotRecordedAndDeleteClears()
    {
        m_client.get(m_server->url(QStringLiteral("/dashboard_lite/")));
        m_client.get(m_server->url(QStringLiteral("/__admin/faults")));
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_client.send("DELETE", m_server->url(QStringLiteral("/__admin/requests"))).status, 200);
        QVERIFY(m_server->requests().isEmpty());
    }

    void adminResetStartsAfresh()
    {
        m_server->faults().applySpec(QStringLiteral("stats=status:500"), nullptr);
        m_client.get(m_server->url(QStringLiteral("/dashboard_lite/")));
        const QString issued = m_server->apiKeys().issueSignInKey().key;
        QCOMPARE(m_client.send("GET", m_server->url(QStringLiteral("/__admin/reset"))).status, 405);
        QCOMPARE(m_client.post(m_server->url(QStringLiteral("/__admin/reset")), {}, "application/json").status, 200);
        QVERIFY(m_server->requests().isEmpty());
        QVERIFY(m_server->faults().toJson().isEmpty());
        QCOMPARE(m_server->apiKeys().find(issued), nullptr);
        QVERIFY(m_server->apiKeys().find(ApiKeys::demoKey()));
    }

    void loopbackPeersAreRecognised()
    {
        QVERIFY(AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("127.0.0.1"))));
        QVERIFY(AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("127.8.9.10"))));
        QVERIFY(AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("::1"))));
        QVERIFY(AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("::ffff:127.0.0.1"))));
        QVERIFY(!AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("192.168.1.20"))));
        QVERIFY(!AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("::ffff:10.0.0.1"))));
        QVERIFY(!AdminApi::isLoopbackPeer(QHostAddress(QStringLiteral("2001:db8::1"))));
    }

    void adminEndpointRefusesAPeerOffLoopback()
    {
        // Listen on every interface and come in through a non-loopback one of this machine, so the
        // server sees a real non-loopback peer address.
        QHostAddress outside;
        for (const QHostAddress &address : QNetworkInterface::allAddresses()) {
            if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback()) {
                outside = address;
                break;
            }
        }
        if (outside.isNull()) {
            QSKIP("This machine has no non-loopback IPv4 address.");
        }
        DevServer open;
        QVERIFY(open.listen(QHostAddress(QHostAddress::AnyIPv4), 0) != 0);
        QUrl url;
        url.setScheme(QStringLiteral("http"));
        url.setHost(outside.toString());
        url.setPort(open.port());
        for (const QString &endpoint :
             {QStringLiteral("faults"), QStringLiteral("requests"), QStringLiteral("reset")}) {
            url.setPath(QStringLiteral("/__admin/") + endpoint);
            const HttpResult refused = m_client.send("POST", url, R"({"stats": {"hang": true}})");
            QCOMPARE(refused.status, 403);
        }
        QVERIFY(open.faults().toJson().isEmpty());
        // The same server still answers its admin endpoint on loopback, and its API from outside.
        QCOMPARE(m_client.get(open.url(QStringLiteral("/__admin/requests"))).status, 200);
        url.setPath(QStringLiteral("/dashboard_lite/"));
        QCOMPARE(m_client.get(url).status, 200);
    }

private:
    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestRequestLog)
#include "tst_devserver_requestlog.moc"
