#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "ManualServerClock.h"
#include "RateLimiter.h"
#include "service/APIErrorResponse.h"
#include "service/BookStatsResponse.h"

#include <QTest>
#include <QUrlQuery>

using namespace std::chrono_literals;

class TestRateLimit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = ManualServerClock();
        m_server = std::make_unique<DevServer>();
        m_server->clock().setSource(m_clock.source());
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void limiterAdmitsTheFirstRequest()
    {
        RateLimiter limiter;
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::nullopt);
    }

    void limiterRefusesWithinTheWindowWithTheRemainingWait()
    {
        RateLimiter limiter(3s);
        QVERIFY(!limiter.admit(QStringLiteral("k"), m_clock.now()));
        m_clock.advanceMs(1200);
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::optional(1800ms));
    }

    void limiterAdmitsAgainOnceTheWindowHasPassed()
    {
        RateLimiter limiter(3s);
        QVERIFY(!limiter.admit(QStringLiteral("k"), m_clock.now()));
        m_clock.advanceMs(3000);
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::nullopt);
    }

    void limiterRefusalDoesNotRestartTheWindow()
    {
        RateLimiter limiter(3s);
        QVERIFY(!limiter.admit(QStringLiteral("k"), m_clock.now()));
        m_clock.advanceMs(2000);
        QVERIFY(limiter.admit(QStringLiteral("k"), m_clock.now()));
        m_clock.advanceMs(1000);
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::nullopt);
    }

    void limiterCountsEachKeyOnItsOwn()
    {
        RateLimiter limiter(3s);
        QVERIFY(!limiter.admit(QStringLiteral("a"), m_clock.now()));
        QCOMPARE(limiter.admit(QStringLiteral("b"), m_clock.now()), std::nullopt);
    }

    void limiterAdmitsWhenTheClockGoesBackwards()
    {
        RateLimiter limiter(3s);
        QVERIFY(!limiter.admit(QStringLiteral("k"), m_clock.now()));
        m_clock.advanceMs(-60000);
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::nullopt);
    }

    void limiterWithZeroWindowAdmitsEverything()
    {
        RateLimiter limiter(0ms);
        QVERIFY(!limiter.admit(QStringLiteral("k"), m_clock.now()));
        QCOMPARE(limiter.admit(QStringLiteral("k"), m_clock.now()), std::nullopt);
    }

    void retryAfterIsWholeSecondsRoundedUpAndAtLeastOne()
    {
        QCOMPARE(RateLimiter::retryAfterSeconds(3000ms), QByteArray("3"));
        QCOMPARE(RateLimiter::retryAfterSeconds(2001ms), QByteArray("3"));
        QCOMPARE(RateLimiter::retryAfterSeconds(1800ms), QByteArray("2"));
        QCOMPARE(RateLimiter::retryAfterSeconds(1ms), QByteArray("1"));
        QCOMPARE(RateLimiter::retryAfterSeconds(0ms), QByteArray("1"));
    }

    void secondStatisticsRequestWithinThreeSecondsGets429WithRetryAfter()
    {
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
        const HttpResult limited = stats(ApiKeys::demoKey());
        QCOMPARE(limited.status, 429);
        QCOMPARE(limited.header("Retry-After"), QByteArray("3"));
        const std::optional<APIErrorResponse> error = APIErrorResponse::decode(limited.body);
        QVERIFY(error);
        QCOMPARE(error->error, QStringLiteral("Too many requests. Try again in 3 seconds."));
    }

    void retryAfterCountsDownWithTheClock()
    {
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
        m_clock.advanceMs(1200);
        QCOMPARE(stats(ApiKeys::demoKey()).header("Retry-After"), QByteArray("2"));
        m_clock.advanceMs(1000);
        QCOMPARE(stats(ApiKeys::demoKey()).header("Retry-After"), QByteArray("1"));
    }

    void statisticsAreServedAgainAfterThreeSeconds()
    {
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
        m_clock.advanceMs(2999);
        QCOMPARE(stats(ApiKeys::demoKey()).status, 429);
        m_clock.advanceMs(1);
        const HttpResult again = stats(ApiKeys::demoKey());
        QCOMPARE(again.status, 200);
        QVERIFY(BookStatsResponse::decode(again.body));
    }

    void anotherKeyIsNotLimitedByTheFirst()
    {
        const QString signInKey = m_server->apiKeys().issueSignInKey().key;
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
        QCOMPARE(stats(signInKey).status, 200);
    }

    void refusedRequestsAndOtherEndpointsUseNoSlot()
    {
        QCOMPARE(stats(QStringLiteral("wrong-key")).status, 401);
        QCOMPARE(statsFor(ApiKeys::demoKey(), QStringLiteral("not-a-date")).status, 400);
        const QUrl accounts = m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/"));
        QCOMPARE(m_client.getWithKey(accounts, ApiKeys::demoKey()).status, 200);
        QCOMPARE(m_client.getWithKey(accounts, ApiKeys::demoKey()).status, 200);
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
    }

    void windowFollowsTheConfiguration()
    {
        DevServerConfig config;
        config.rateLimitWindow = 0ms;
        m_server = std::make_unique<DevServer>(config);
        m_server->clock().setSource(m_clock.source());
        QVERIFY(m_server->listen() != 0);
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
        QCOMPARE(stats(ApiKeys::demoKey()).status, 200);
    }

private:
    HttpResult statsFor(const QString &key, const QString &date)
    {
        QUrl url = m_server->url(QStringLiteral("/api/v1/mac/bookStatsAPI/"));
        url.setQuery(QUrlQuery{{QStringLiteral("start_date"), date}, {QStringLiteral("end_date"), date}});
        return m_client.getWithKey(url, key);
    }

    HttpResult stats(const QString &key) { return statsFor(key, QStringLiteral("2024-05-14")); }

    ManualServerClock m_clock;
    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestRateLimit)
#include "tst_devserver_ratelimit.moc"
