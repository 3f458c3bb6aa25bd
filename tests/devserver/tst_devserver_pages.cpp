#include "ApiKeys.h"
#include "DashboardPage.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "ManualServerClock.h"
#include "model/RoyaltySummary.h"
#include "service/AccountsResponse.h"
#include "service/BookStatsFold.h"
#include "service/BookStatsResponse.h"
#include "service/MacAuthExchangeResponse.h"

#include <QTemporaryFile>
#include <QTest>
#include <QUrlQuery>

class TestPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = ManualServerClock(QDateTime(QDate(2024, 5, 15), QTime(16, 30), QTimeZone::systemTimeZone()));
        start({});
    }

    void cleanup() { m_server.reset(); }

    void downloadServesThePlaceholderAsTheLatestDeb()
    {
        const HttpResult result = m_client.get(m_server->url(QStringLiteral("/download_for_linux/")));
        QCOMPARE(result.status, 200);
        QCOMPARE(result.header("Content-Type"), QByteArray("application/vnd.debian.binary-package"));
        QCOMPARE(result.header("Content-Disposition"), QByteArray("attachment; filename=\"Inkwarden-0.2.0.deb\""));
        QVERIFY(result.body.contains("Inkwarden-0.2.0.deb"));
        QCOMPARE(result.body, InstallerDownload(m_server->config()).placeholderBytes());
    }

    void downloadNamesTheConfiguredVersion()
    {
        DevServerConfig config;
        config.latestAppVersion = QStringLiteral("1.4.0");
        start(config);
        QCOMPARE(m_client.get(m_server->url(QStringLiteral("/download_for_linux/"))).header("Content-Disposition"),
                 QByteArray("attachment; filename=\"Inkwarden-1.4.0.deb\""));
    }

    void downloadServesTheInstallerFile()
    {
        QTemporaryFile installer;
        QVERIFY(installer.open());
        QByteArray bytes;
        for (int i = 0; i < 200000; ++i) {
            bytes.append(char(i * 7));
        }
        installer.write(bytes);
        installer.flush();
        DevServerConfig config;
        config.installerFile = installer.fileName();
        start(config);
        const HttpResult result = m_client.get(m_server->url(QStringLiteral("/download_for_linux/")));
        QCOMPARE(result.status, 200);
        QCOMPARE(result.body, bytes);
    }

    void downloadOfAMissingInstallerFileIs404()
    {
        DevServerConfig config;
        config.installerFile = QStringLiteral("/nonexistent/Inkwarden.deb");
        start(config);
        QCOMPARE(m_client.get(m_server->url(QStringLiteral("/download_for_linux/"))).status, 404);
    }

    void dashboardShowsTodaysFiguresOfEachAccount()
    {
        const HttpResult page = m_client.get(m_server->url(QStringLiteral("/dashboard_lite/")));
        QCOMPARE(page.status, 200);
        QVERIFY(page.header("Content-Type").startsWith("text/html"));
        const QString html = QString::fromUtf8(page.body);
        QVERIFY(html.contains(QStringLiteral("Today's royalties")));
        QVERIFY(html.contains(QStringLiteral("Penrose Press")));
        QVERIFY(html.contains(QStringLiteral("acct-lindqvist")));
        QVERIFY(html.contains(QStringLiteral("2024-05-15 16:30")));
        // The page's gross agrees with what the API reports for today.
        for (const QString &account : {QStringLiteral("acct-penrose-press"), QStringLiteral("acct-lindqvist")}) {
            const RoyaltySummary today = todayFromApi(account);
            QVERIFY(today.gross > 0);
            QVERIFY2(html.contains(DashboardPage::formatMoney(today.gross, today.currency)),
                     qPrintable(DashboardPage::formatMoney(today.gross, today.currency)));
        }
    }

    void dashboardNarrowsToOneAccount()
    {
        QUrl url = m_server->url(QStringLiteral("/dashboard_lite/"));
        url.setQuery(QStringLiteral("account_id=acct-lindqvist"));
        const QString html = QString::fromUtf8(m_client.get(url).body);
        QVERIFY(html.contains(QStringLiteral("acct-lindqvist")));
        QVERIFY(!html.contains(QStringLiteral("Penrose Press")));
        url.setQuery(QStringLiteral("account_id=nobody"));
        QCOMPARE(m_client.get(url).status, 404);
    }

    void moneyIsWrittenWithTheCurrencySymbol()
    {
        QCOMPARE(DashboardPage::formatMoney(1234.5, QStringLiteral("USD")), QStringLiteral("$1,234.50"));
        QCOMPARE(DashboardPage::formatMoney(9.99, QStringLiteral("EUR")), QStringLiteral("\u20ac9.99"));
    }

    void everythingLivesUnderTheBasePath_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("status");
        QTest::newRow("stats") << QByteArray("GET")
                               << QStringLiteral("/api/v1/mac/bookStatsAPI/?start_date=2024-05-14&end_date=2024-05-14")
                               << 200;
        QTest::newRow("accounts") << QByteArray("GET") << QStringLiteral("/api/v1/mac/listAccountsAPI/") << 200;
        QTest::newRow("exchange") << QByteArray("POST") << QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/") << 400;
        QTest::newRow("connect") << QByteArray("GET")
                                 << QStringLiteral("/mac-app/connect/?code_challenge="
                                                   "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM&state=S")
                                 << 200;
        QTest::newRow("download") << QByteArray("GET") << QStringLiteral("/download_for_linux/") << 200;
        QTest::newRow("dashboard") << QByteArray("GET") << QStringLiteral("/dashboard_lite/") << 200;
        QTest::newRow("admin") << QByteArray("GET") << QStringLiteral("/__admin/faults") << 200;
    }

    void everythingLivesUnderTheBasePath()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        QFETCH(int, status);
        DevServerConfig config;
        config.basePath = QStringLiteral("/inkwarden/");
        start(config);
        QCOMPARE(m_server->baseUrl().path(), QStringLiteral("/inkwarden"));
        const HeaderList key{{"Authorization", "Bearer " + ApiKeys::demoKey().toUtf8()}};
        QUrl root = m_server->baseUrl();
        root.setPath(QString());
        QCOMPARE(m_client.send(verb, QUrl(root.toString() + QStringLiteral("/inkwarden") + path), {}, key).status,
                 status);
        const int atRoot = m_client.send(verb, QUrl(root.toString() + path), {}, key).status;
        QCOMPARE(atRoot, path.startsWith(QStringLiteral("/__admin/")) ? 200 : 404);
    }

    void signInUnderTheBasePathPostsToTheBasePath()
    {
        DevServerConfig config;
        config.basePath = QStringLiteral("/tools/inkwarden");
        start(config);
        QUrl url = m_server->url(QStringLiteral("/mac-app/connect/"));
        url.setQuery(QStringLiteral("code_challenge=E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM&state=S"));
        const QByteArray html = m_client.get(url).body;
        QVERIFY(html.contains("action=\"/tools/inkwarden/mac-app/connect/authorize/\""));
        const HttpResult redirect =
            m_client.post(m_server->url(QStringLiteral("/mac-app/connect/authorize/")),
                          "code_challenge=E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM&state=S&decision=authorize",
                          "application/x-www-form-urlencoded");
        QCOMPARE(redirect.status, 302);
        const QString code =
            QUrlQuery(QUrl::fromEncoded(redirect.header("Location"))).queryItemValue(QStringLiteral("code"));
        const HttpResult exchanged = m_client.post(
            m_server->url(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/")),
            R"({"code":")" + code.toUtf8() + R"(","code_verifier":"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"})",
            "application/json");
        QCOMPARE(exchanged.status, 200);
        QVERIFY(MacAuthExchangeResponse::decode(exchanged.body));
    }

private:
    void start(const DevServerConfig &config)
    {
        m_server = std::make_unique<DevServer>(config);
        m_server->clock().setSource(m_clock.source());
        QVERIFY(m_server->listen() != 0);
    }

    RoyaltySummary todayFromApi(const QString &account)
    {
        m_server->rateLimiter().reset();
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(QStringLiteral("start_date=2024-05-15&end_date=2024-05-15&account_id=") + account);
        const std::optional<BookStatsResponse> response =
            BookStatsResponse::decode(m_client.getWithKey(url, ApiKeys::demoKey()).body);
        return response ? BookStatsFold::folding(response->tableData).value_or(RoyaltySummary{}) : RoyaltySummary{};
    }

    ManualServerClock m_clock;
    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestPages)
#include "tst_devserver_pages.moc"
