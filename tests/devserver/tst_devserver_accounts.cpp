#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"

#include <QTest>

class TestAccountsEndpoint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<DevServer>();
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void demoKeySeesTwoAccountsOneWithoutDisplayName()
    {
        const HttpResult result = accounts(ApiKeys::demoKey());
        QCOMPARE(result.status, 200);
        const std::optional<AccountsResponse> response = AccountsResponse::decode(result.body);
        QVERIFY(response);
        QCOMPARE(response->accounts.size(), 2);
        const PublisherAccount &first = response->accounts.at(0);
        QCOMPARE(first.accountID, QStringLiteral("acct-penrose-press"));
        QCOMPARE(first.displayName, QStringLiteral("Penrose Press"));
        QCOMPARE(first.userEmail, QStringLiteral("author@example.com"));
        QCOMPARE(first.accessType, QStringLiteral("owner"));
        const PublisherAccount &second = response->accounts.at(1);
        QCOMPARE(second.accountID, QStringLiteral("acct-lindqvist"));
        QCOMPARE(second.displayName, std::nullopt);
        QCOMPARE(second.accessType, QStringLiteral("viewer"));
        QVERIFY(!result.body.contains("\"display_name\":null"));
    }

    void latestAppVersionRidesAlong()
    {
        QCOMPARE(AccountsResponse::decode(accounts(ApiKeys::demoKey()).body)->latestAppVersion,
                 QStringLiteral("0.2.0"));
    }

    void latestAppVersionIsConfigurable()
    {
        DevServerConfig config;
        config.latestAppVersion = QStringLiteral("1.10");
        m_server = std::make_unique<DevServer>(config);
        QVERIFY(m_server->listen() != 0);
        QCOMPARE(AccountsResponse::decode(accounts(ApiKeys::demoKey()).body)->latestAppVersion, QStringLiteral("1.10"));
    }

    void emptyLatestAppVersionLeavesTheKeyOut()
    {
        DevServerConfig config;
        config.latestAppVersion.clear();
        m_server = std::make_unique<DevServer>(config);
        QVERIFY(m_server->listen() != 0);
        const HttpResult result = accounts(ApiKeys::demoKey());
        QVERIFY(!result.body.contains("latest_app_version"));
        QCOMPARE(AccountsResponse::decode(result.body)->latestAppVersion, std::nullopt);
    }

    void keyWithoutAccountsGetsAnEmptyList()
    {
        const HttpResult result = accounts(ApiKeys::noAccountsKey());
        QCOMPARE(result.status, 200);
        const std::optional<AccountsResponse> response = AccountsResponse::decode(result.body);
        QVERIFY(response);
        QVERIFY(response->accounts.isEmpty());
    }

    void signInKeySeesWhatTheDemoKeySees()
    {
        const QString key = m_server->apiKeys().issueSignInKey().key;
        QCOMPARE(AccountsResponse::decode(accounts(key).body),
                 AccountsResponse::decode(accounts(ApiKeys::demoKey()).body));
    }

    void missingOrWrongKeyGets401WithAnErrorBody()
    {
        const HttpResult missing = m_client.get(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")));
        QCOMPARE(missing.status, 401);
        QVERIFY(APIErrorResponse::decode(missing.body)->error.startsWith(QStringLiteral("Missing API key")));
        const HttpResult wrong = accounts(QStringLiteral("inkwarden-demo-key-but-wrong"));
        QCOMPARE(wrong.status, 401);
        QCOMPARE(APIErrorResponse::decode(wrong.body)->error, QStringLiteral("Invalid API key."));
    }

    void bearerSchemeIsCaseInsensitive()
    {
        const HttpResult result = m_client.get(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")),
                                               {{"Authorization", "bearer " + ApiKeys::demoKey().toUtf8()}});
        QCOMPARE(result.status, 200);
    }

private:
    HttpResult accounts(const QString &key)
    {
        return m_client.getWithKey(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")), key);
    }

    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestAccountsEndpoint)
#include "tst_devserver_accounts.moc"
