#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "ManualServerClock.h"
#include "model/RoyaltySummary.h"
#include "service/APIErrorResponse.h"
#include "service/BookStatsFold.h"
#include "service/BookStatsResponse.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QUrlQuery>

using namespace std::chrono_literals;

class TestStatisticsEndpoint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = ManualServerClock(QDateTime(QDate(2024, 5, 15), QTime(14, 0), QTimeZone::systemTimeZone()));
        DevServerConfig config;
        // These tests ask many questions in a row; the limit itself is tst_devserver_ratelimit's.
        config.rateLimitWindow = 0ms;
        m_server = std::make_unique<DevServer>(config);
        m_server->clock().setSource(m_clock.source());
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void bodyDecodesWithTheAppsDecoder()
    {
        const HttpResult result = stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14"));
        QCOMPARE(result.status, 200);
        QCOMPARE(result.header("Content-Type"), QByteArray("application/json"));
        const std::optional<BookStatsResponse> response = BookStatsResponse::decode(result.body);
        QVERIFY(response);
        QVERIFY(response->tableData.size() >= 3);
        QVERIFY(BookStatsFold::folding(response->tableData).value().gross > 0);
    }

    void everyRowCarriesEveryWireKey()
    {
        const QJsonArray rows =
            QJsonDocument::fromJson(stats(QStringLiteral("2024-05-01"), QStringLiteral("2024-05-14")).body)
                .object()
                .value(QStringLiteral("table_data"))
                .toArray();
        QVERIFY(!rows.isEmpty());
        for (const QJsonValue &row : rows) {
            for (const char *key : {"currency",
                                    "gross_royalty",
                                    "spending",
                                    "net_royalty",
                                    "total_read_royalty",
                                    "total_reads",
                                    "ebooks_paid_sold",
                                    "ebooks_paid_royalties",
                                    "ebooks_free_sold",
                                    "paperbacks_sold",
                                    "paperbacks_royalties",
                                    "hardcovers_sold",
                                    "hardcovers_royalties",
                                    "audiobooks_sold",
                                    "audiobooks_royalties",
                                    "expanded_distribution_sold",
                                    "expanded_distribution_royalties",
                                    "pre_orders_sold",
                                    "custom_format_units",
                                    "custom_format_royalties"}) {
                QVERIFY2(row.toObject().contains(QLatin1String(key)), key);
            }
        }
    }

    void defaultAccountIsTheFirstAndReportsDollars()
    {
        const RoyaltySummary summary = summaryOf(stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14")));
        QCOMPARE(summary.currency, QStringLiteral("USD"));
        const RoyaltySummary named = summaryOf(
            stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14"), QStringLiteral("acct-penrose-press")));
        QCOMPARE(named, summary);
    }

    void accountWithoutDisplayNameReportsEuros()
    {
        const RoyaltySummary summary = summaryOf(
            stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14"), QStringLiteral("acct-lindqvist")));
        QCOMPARE(summary.currency, QStringLiteral("EUR"));
        QVERIFY(summary.gross > 0);
    }

    void allEightFormatsAndBothCustomFormatsSellInAMonth()
    {
        for (const QString &account : {QStringLiteral("acct-penrose-press"), QStringLiteral("acct-lindqvist")}) {
            const RoyaltySummary month =
                summaryOf(stats(QStringLiteral("2024-04-01"), QStringLiteral("2024-04-30"), account));
            QVERIFY(month.paidEbookUnits > 0);
            QVERIFY(month.paperbackUnits > 0);
            QVERIFY(month.hardcoverUnits > 0);
            QVERIFY(month.audiobookUnits > 0);
            QVERIFY(month.expandedDistributionUnits > 0);
            QVERIFY(month.reads > 0);
            QVERIFY(month.preOrderUnits > 0);
            QVERIFY(month.freeEbookDownloads > 0);
            QVERIFY(month.customFormats.value(QStringLiteral("Large print")).units > 0);
            QVERIFY(month.customFormats.value(QStringLiteral("Box set")).units > 0);
            QVERIFY(month.spending > 0);
            QVERIFY(qAbs(month.net - (month.gross - month.spending)) < 0.05);
        }
    }

    void sameDatesGiveTheSameBody()
    {
        const QByteArray first = stats(QStringLiteral("2024-03-01"), QStringLiteral("2024-03-31")).body;
        DevServer other;
        QVERIFY(other.listen() != 0);
        QUrl url = other.url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(QStringLiteral("start_date=2024-03-01&end_date=2024-03-31"));
        QCOMPARE(m_client.getWithKey(url, ApiKeys::demoKey()).body, first);
    }

    void todayGrowsThroughTheDay()
    {
        const QString today = QStringLiteral("2024-05-15");
        m_clock.set(QDateTime(QDate(2024, 5, 15), QTime(0, 0), QTimeZone::systemTimeZone()));
        QCOMPARE(summaryOf(stats(today, today)).gross, 0.0);
        m_clock.set(QDateTime(QDate(2024, 5, 15), QTime(7, 0), QTimeZone::systemTimeZone()));
        const RoyaltySummary morning = summaryOf(stats(today, today));
        m_clock.set(QDateTime(QDate(2024, 5, 15), QTime(19, 0), QTimeZone::systemTimeZone()));
        const RoyaltySummary evening = summaryOf(stats(today, today));
        QVERIFY(morning.gross > 0);
        QVERIFY(evening.gross > morning.gross);
        QVERIFY(evening.paidEbookUnits >= morning.paidEbookUnits);
    }

    void yesterdayDoesNotChangeDuringToday()
    {
        const QString yesterday = QStringLiteral("2024-05-14");
        m_clock.set(QDateTime(QDate(2024, 5, 15), QTime(1, 0), QTimeZone::systemTimeZone()));
        const QByteArray early = stats(yesterday, yesterday).body;
        m_clock.set(QDateTime(QDate(2024, 5, 15), QTime(23, 0), QTimeZone::systemTimeZone()));
        QCOMPARE(stats(yesterday, yesterday).body, early);
    }

    void thisMonthEndingTomorrowCountsUpToToday()
    {
        const RoyaltySummary toTomorrow = summaryOf(stats(QStringLiteral("2024-05-01"), QStringLiteral("2024-05-16")));
        const RoyaltySummary toToday = summaryOf(stats(QStringLiteral("2024-05-01"), QStringLiteral("2024-05-15")));
        QCOMPARE(toTomorrow, toToday);
        const RoyaltySummary toYesterday = summaryOf(stats(QStringLiteral("2024-05-01"), QStringLiteral("2024-05-14")));
        QVERIFY(toToday.gross > toYesterday.gross);
    }

    void rangeInTheFutureHasNoSales()
    {
        const RoyaltySummary future = summaryOf(stats(QStringLiteral("2024-06-01"), QStringLiteral("2024-06-30")));
        QCOMPARE(future.gross, 0.0);
        QCOMPARE(future.paidEbookUnits, 0);
    }

    void badDatesAreRefusedWithAnErrorBody_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("no dates") << QString();
        QTest::newRow("no end") << QStringLiteral("start_date=2024-05-01");
        QTest::newRow("no start") << QStringLiteral("end_date=2024-05-01");
        QTest::newRow("short month") << QStringLiteral("start_date=2024-5-01&end_date=2024-05-01");
        QTest::newRow("impossible day") << QStringLiteral("start_date=2024-02-30&end_date=2024-03-01");
        QTest::newRow("words") << QStringLiteral("start_date=yesterday&end_date=today");
        QTest::newRow("time included") << QStringLiteral("start_date=2024-05-01T00:00&end_date=2024-05-02");
        QTest::newRow("start after end") << QStringLiteral("start_date=2024-05-02&end_date=2024-05-01");
        QTest::newRow("range too long") << QStringLiteral("start_date=2020-01-01&end_date=2024-01-01");
    }

    void badDatesAreRefusedWithAnErrorBody()
    {
        QFETCH(QString, query);
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(query);
        const HttpResult result = m_client.getWithKey(url, ApiKeys::demoKey());
        QCOMPARE(result.status, 400);
        QVERIFY(APIErrorResponse::decode(result.body));
    }

    void unknownAccountIsRefused()
    {
        const HttpResult result =
            stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14"), QStringLiteral("acct-someone-else"));
        QCOMPARE(result.status, 403);
        QCOMPARE(APIErrorResponse::decode(result.body)->error,
                 QStringLiteral("This API key cannot read the account \"acct-someone-else\"."));
    }

    void keyWithoutAccountsIsRefused()
    {
        const HttpResult result =
            stats(QStringLiteral("2024-05-14"), QStringLiteral("2024-05-14"), QString(), ApiKeys::noAccountsKey());
        QCOMPARE(result.status, 403);
        QCOMPARE(APIErrorResponse::decode(result.body)->error,
                 QStringLiteral("This API key does not have access to any accounts."));
    }

    void missingOrWrongKeyGets401WithAnErrorBody()
    {
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(QStringLiteral("start_date=2024-05-14&end_date=2024-05-14"));
        const HttpResult missing = m_client.get(url);
        QCOMPARE(missing.status, 401);
        QVERIFY(APIErrorResponse::decode(missing.body));
        QCOMPARE(missing.header("WWW-Authenticate"), QByteArray("Bearer"));
        const HttpResult wrong = m_client.getWithKey(url, QStringLiteral("not-a-key"));
        QCOMPARE(wrong.status, 401);
        QCOMPARE(APIErrorResponse::decode(wrong.body)->error, QStringLiteral("Invalid API key."));
        const HttpResult basic = m_client.get(url, {{"Authorization", "Basic Zm9vOmJhcg=="}});
        QCOMPARE(basic.status, 401);
    }

    void postIsNotAllowed()
    {
        const HttpResult result =
            m_client.post(m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/")), "{}", "application/json",
                          {{"Authorization", "Bearer " + ApiKeys::demoKey().toUtf8()}});
        QCOMPARE(result.status, 405);
        QCOMPARE(result.header("Allow"), QByteArray("GET"));
    }

private:
    HttpResult stats(const QString &start, const QString &end, const QString &account = {},
                     const QString &key = ApiKeys::demoKey())
    {
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        QUrlQuery query{{QStringLiteral("start_date"), start}, {QStringLiteral("end_date"), end}};
        if (!account.isEmpty()) {
            query.addQueryItem(QStringLiteral("account_id"), account);
        }
        url.setQuery(query);
        return m_client.getWithKey(url, key);
    }

    static RoyaltySummary summaryOf(const HttpResult &result)
    {
        const std::optional<BookStatsResponse> response = BookStatsResponse::decode(result.body);
        if (result.status != 200 || !response) {
            qWarning("unexpected reply %d: %s", result.status, result.body.constData());
            return {};
        }
        return BookStatsFold::folding(response->tableData).value_or(RoyaltySummary{});
    }

    ManualServerClock m_clock;
    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestStatisticsEndpoint)
#include "tst_devserver_statistics.moc"
