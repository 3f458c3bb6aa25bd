#include "DemoData.h"
#include "store/ConnectionSession.h"
#include "store/SettingsKeys.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

QString noInternet()
{
    return QStringLiteral("No internet connection. Inkwarden will refresh automatically when it returns.");
}

} // namespace

class TestStoreRefresh : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void startWithKeyLoadsAccountsAndRefreshes();
    void startWithoutKeyOpensBrowserSignInAfterHalfASecond();
    void startPicksUpARestoredCooldown();
    void refreshWhenNotConnectedDoesNothing();
    void refreshWhenOfflineSetsTheMessageAndSendsNothing();
    void successfulRefreshPublishesFiguresAndTitle();
    void failedRefreshKeepsLastFiguresAndShowsTheError();
    void countsThatOverflowFailTheRefreshAndKeepTheFigures();
    void twoManualRefreshesOneSecondApartSendExactlyOneMore();
    void refreshAskedWhileLoadingAfterCooldownEndedIsNotRepeated();
    void cooldownCountsDownThreeTwoOne();
    void laterShortCooldownNeverShortensALongerOne();
    void rateLimitOf120SecondsCountsDownAndSurvivesRestart();
    void periodSwitchIsRefusedDuringRateLimit();
    void resultForAnotherPeriodIsDiscardedAndAskedAgain();
    void connectingWhileFiguresLoadSendsNoSecondRequest();
    void reconnectingWithAnotherKeyAsksAgainAfterTheAnswer();
    void answerArrivingAfterSignOutIsDropped();
    void answerForAnotherAccountIsDroppedAndAskedAgain();
    void rateLimitArrivingAfterSignOutIsStillObeyed();
    void nextRefreshIsScheduledFromTheEndOfTheRequest();
    void timerFiresTheNextRefresh();
    void nextRefreshTextCountsDown_data();
    void nextRefreshTextCountsDown();
    void nextRefreshTextStates();
    void lastUpdatedText_data();
    void lastUpdatedText();
    void firstNetworkReportWhenOnlineTriggersNothing();
    void firstNetworkReportWhenOfflineSetsTheMessage();
    void goingOfflineAndBackSendsOneRequestAtOnce();
    void networkReportsWhileSignedOutOnlyRecordTheState();
    void recoveryTickRefreshesAfterSleepingThroughTheTimer();
    void recoveryTickLeavesAFutureRefreshAlone();
    void recoveryDoesNothingWhileLoadingOrOffline();
    void fallingNetFigureCountsDown();
    void unchangedFigureDoesNotCountDown();
    void neverTwoStatisticsRequestsWithinThreeSeconds();
    void friendlyMessagePassesDescriptionsThrough();

private:
    RoyaltiesStore &startedStore();
    int statisticsCount() const { return int(m_fixture->statisticsRequests().size()); }
    bool settle() { return m_fixture->waitUntilIdle(); }

    std::unique_ptr<StoreFixture> m_fixture;
};

RoyaltiesStore &TestStoreRefresh::startedStore()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.start();
    settle();
    // Loading the accounts chose the first one, which asks for its figures once the cooldown ends.
    m_fixture->clock.advance(3s);
    settle();
    m_fixture->server->clearRequests();
    return store;
}

void TestStoreRefresh::startWithKeyLoadsAccountsAndRefreshes()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.start();
    QCOMPARE(m_fixture->reachability.starts, 1);
    QVERIFY(store.isLoading());
    QVERIFY(store.isLoadingAccounts());
    QVERIFY(settle());
    QCOMPARE(store.accounts().size(), 2);
    // Loading the accounts chose the first one; its figures are asked for when the cooldown ends,
    // and an answer for all accounts that arrives after the choice is not shown.
    QCOMPARE(statisticsCount(), 1);
    m_fixture->clock.advance(3s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    QCOMPARE(m_fixture->statisticsRequests().last().request.queryValue(QStringLiteral("account_id")),
             store.accountID());
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
    QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
}

void TestStoreRefresh::startWithoutKeyOpensBrowserSignInAfterHalfASecond()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    RoyaltiesStore &store = m_fixture->makeStore();
    store.start();
    m_fixture->clock.advance(499ms);
    QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
    m_fixture->clock.advance(1ms);
    QCOMPARE(m_fixture->desktop.openedURLs.size(), 1);
    QCOMPARE(m_fixture->desktop.openedURLs.first().path(), QStringLiteral("/mac-app/connect/"));
    QVERIFY(store.isAuthenticating());
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreRefresh::startPicksUpARestoredCooldown()
{
    m_fixture->preferences().setDate(SettingsKeys::requestAvailableAt, m_fixture->clock.now().addMSecs(2500));
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    QCOMPARE(store.requestCooldownRemaining(), qint64(0));
    store.start();
    QCOMPARE(store.requestCooldownRemaining(), qint64(3));
    // The start-up refresh waits for the restored cooldown, then goes out by itself.
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
    QVERIFY(store.session().refreshWhenAvailable());
    m_fixture->clock.advance(2600ms);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
}

void TestStoreRefresh::refreshWhenNotConnectedDoesNothing()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QSignalSpy errors(&store, &RoyaltiesStore::errorMessageChanged);
    store.refresh();
    QVERIFY(!store.isLoading());
    QVERIFY(!store.session().requestAvailableAt().has_value());
    QCOMPARE(errors.count(), 0);
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreRefresh::refreshWhenOfflineSetsTheMessageAndSendsNothing()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.session().setIsNetworkAvailable(false);
    store.refresh();
    QCOMPARE(store.errorMessage(), std::optional<QString>(noInternet()));
    QVERIFY(!store.isLoading());
    QVERIFY(!store.session().refreshWhenAvailable());
    QVERIFY(!store.session().requestAvailableAt().has_value());
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
}

void TestStoreRefresh::successfulRefreshPublishesFiguresAndTitle()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.status().setErrorMessage(QStringLiteral("old problem"));
    store.refresh();
    QVERIFY(store.isLoading());
    QVERIFY(!store.errorMessage().has_value());
    QCOMPARE(store.requestCooldownRemaining(), qint64(3));
    QVERIFY(settle());
    QVERIFY(store.summary().gross > 0);
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
    QCOMPARE(store.menuBarTitle(), store.money(store.summary().gross, true));
    QVERIFY(store.menuBarTitle().startsWith(u'$'));
    QVERIFY(store.menuBarMoneyParts().has_value());
    QVERIFY(!store.royaltyChangeCountsDown());
}

void TestStoreRefresh::failedRefreshKeepsLastFiguresAndShowsTheError()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.refresh();
    QVERIFY(settle());
    const RoyaltySummary figures = store.summary();
    const std::optional<QDateTime> refreshedAt = store.lastUpdated();

    Fault fault;
    fault.status = 500;
    m_fixture->server->faults().set(Route::Stats, fault);
    m_fixture->clock.advance(5s);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Injected failure: HTTP 500.")));
    QCOMPARE(store.menuBarTitle(), QStringLiteral(u"\u25C9 !"));
    QCOMPARE(store.summary(), figures);
    QCOMPARE(store.lastUpdated(), refreshedAt);
    QCOMPARE(store.nextRefreshAt(), std::optional<QDateTime>(m_fixture->clock.now().addSecs(1800)));
}

void TestStoreRefresh::countsThatOverflowFailTheRefreshAndKeepTheFigures()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.refresh();
    QVERIFY(settle());
    const RoyaltySummary figures = store.summary();
    const std::optional<QDateTime> refreshedAt = store.lastUpdated();

    // Two rows whose paperbacks add up beyond the 64-bit range, each valid on its own.
    Fault fault;
    fault.status = 200;
    fault.body = QByteArrayLiteral(
        R"({"table_data":[{"paperbacks_sold":9223372036854775807,"currency":"USD"},{"paperbacks_sold":1,"currency":"USD"}]})");
    m_fixture->server->faults().set(Route::Stats, fault);
    m_fixture->clock.advance(5s);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("Inkwarden returned an unexpected response.")));
    QCOMPARE(store.menuBarTitle(), QStringLiteral(u"\u25C9 !"));
    QCOMPARE(store.summary(), figures);
    QCOMPARE(store.lastUpdated(), refreshedAt);
    QVERIFY(!store.isLoading());

    // The next good answer clears it.
    m_fixture->server->faults().clear(Route::Stats);
    m_fixture->clock.advance(5s);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.errorMessage(), std::nullopt);
}

void TestStoreRefresh::twoManualRefreshesOneSecondApartSendExactlyOneMore()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    m_fixture->clock.advance(1s);
    store.refresh();
    QVERIFY(store.session().refreshWhenAvailable());
    QVERIFY(!store.isLoading());
    QCOMPARE(statisticsCount(), 1);

    m_fixture->clock.advance(2s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    QVERIFY(!store.session().refreshWhenAvailable());

    m_fixture->clock.advance(20s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    const QList<RecordedRequest> requests = m_fixture->statisticsRequests();
    QCOMPARE(requests.at(0).receivedAt.msecsTo(requests.at(1).receivedAt), 3000);
}

void TestStoreRefresh::refreshAskedWhileLoadingAfterCooldownEndedIsNotRepeated()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 300;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    // The cooldown ends while the answer is still on its way.
    m_fixture->clock.advance(3500ms);
    QVERIFY(store.isLoading());
    QCOMPARE(store.requestCooldownRemaining(), qint64(0));
    store.refresh();
    QVERIFY(store.session().refreshWhenAvailable());

    QVERIFY(settle());
    m_fixture->clock.advance(10s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
    QVERIFY(store.session().refreshWhenAvailable());

    // The next refresh that passes the guards clears the flag and sends one request.
    m_fixture->server->faults().clearAll();
    store.refresh();
    QVERIFY(!store.session().refreshWhenAvailable());
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
}

void TestStoreRefresh::cooldownCountsDownThreeTwoOne()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    QList<qint64> seen;
    QObject::connect(&store, &RoyaltiesStore::requestCooldownRemainingChanged,
                     [&] { seen.append(store.requestCooldownRemaining()); });
    m_fixture->clock.advance(3200ms);
    QList<qint64> distinct;
    for (const qint64 value : std::as_const(seen)) {
        if (distinct.isEmpty() || distinct.last() != value) {
            distinct.append(value);
        }
    }
    QCOMPARE(distinct, (QList<qint64>{3, 2, 1, 0}));
    QVERIFY(!store.session().requestAvailableAt().has_value());
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::requestAvailableAt));
}

void TestStoreRefresh::laterShortCooldownNeverShortensALongerOne()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault limited;
    limited.retryAfter = QByteArray("30");
    limited.remainingUses = 1;
    m_fixture->server->faults().set(Route::Stats, limited);
    store.refresh();
    QVERIFY(settle());
    const QDateTime until = *store.session().requestAvailableAt();
    QCOMPARE(m_fixture->clock.now().secsTo(until), 30);
    // A refresh now is queued, not sent, and does not move the deadline.
    store.refresh();
    QCOMPARE(*store.session().requestAvailableAt(), until);
    QCOMPARE(statisticsCount(), 1);
}

void TestStoreRefresh::rateLimitOf120SecondsCountsDownAndSurvivesRestart()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault limited;
    limited.retryAfter = QByteArray("120");
    m_fixture->server->faults().set(Route::Stats, limited);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("Please wait 120 seconds before requesting royalties again.")));
    QCOMPARE(store.requestCooldownRemaining(), qint64(120));
    m_fixture->clock.advance(60s);
    QCOMPARE(store.requestCooldownRemaining(), qint64(60));

    // Quit and launch again half-way through the wait.
    m_fixture->server->faults().clearAll();
    m_fixture->destroyStore();
    m_fixture->reopenPreferences();
    RoyaltiesStore &restarted = m_fixture->makeStore();
    QVERIFY(!restarted.canSwitchPeriod());
    restarted.start();
    QCOMPARE(restarted.requestCooldownRemaining(), qint64(60));
    QVERIFY(settle());
    m_fixture->clock.advance(59s);
    QCOMPARE(restarted.requestCooldownRemaining(), qint64(1));
    QCOMPARE(statisticsCount(), 1);
    // The refresh asked for at launch went out the moment the wait ended, with its own cooldown.
    m_fixture->clock.advance(1s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    QCOMPARE(m_fixture->statisticsRequests().last().receivedAt, m_fixture->clock.now());
    QCOMPARE(restarted.requestCooldownRemaining(), qint64(3));
}

void TestStoreRefresh::periodSwitchIsRefusedDuringRateLimit()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault limited;
    limited.retryAfter = QByteArray("120");
    m_fixture->server->faults().set(Route::Stats, limited);
    store.refresh();
    QVERIFY(settle());
    m_fixture->clock.advance(119s);
    store.selectPeriod(RoyaltyPeriod::yesterday);
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::today);
    m_fixture->clock.advance(1s);
    m_fixture->server->faults().clearAll();
    store.selectPeriod(RoyaltyPeriod::yesterday);
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::yesterday);
}

void TestStoreRefresh::resultForAnotherPeriodIsDiscardedAndAskedAgain()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 200;
    slow.remainingUses = 1;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    store.settings().selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(settle());
    // The answer for today was dropped; the new request waits for the cooldown.
    QVERIFY(!store.lastUpdated().has_value() || store.lastUpdated() < m_fixture->clock.now());
    QVERIFY(store.session().refreshWhenAvailable());
    QCOMPARE(statisticsCount(), 1);
    m_fixture->clock.advance(3s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    QCOMPARE(m_fixture->statisticsRequests().last().request.queryValue(QStringLiteral("start_date")),
             QStringLiteral("2026-11-01"));
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
}

void TestStoreRefresh::connectingWhileFiguresLoadSendsNoSecondRequest()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 400;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    QTRY_COMPARE(statisticsCount(), 1);
    // The cooldown is over long before the figures arrive, and the user presses Connect.
    m_fixture->clock.advance(3500ms);
    QSignalSpy connected(&store, &RoyaltiesStore::isShowingSettingsChanged);
    store.connect();
    QTRY_COMPARE(connected.count(), 1);
    QCOMPARE(statisticsCount(), 1);
    // Connecting has finished, the figures are still on their way, and the store says so.
    QVERIFY(store.isLoading());

    QVERIFY(settle());
    // The figures belonged to the connection just replaced, so they are asked for again, once.
    QCOMPARE(statisticsCount(), 2);
    m_fixture->server->faults().clearAll();
    QVERIFY(settle());
    m_fixture->clock.advance(10s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 2);
    QVERIFY(!store.isLoading());
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now().addSecs(-10)));
    const QList<RecordedRequest> requests = m_fixture->statisticsRequests();
    QVERIFY(requests.at(0).receivedAt.msecsTo(requests.at(1).receivedAt) >= 3000);
}

void TestStoreRefresh::reconnectingWithAnotherKeyAsksAgainAfterTheAnswer()
{
    RoyaltiesStore &store = startedStore();
    const QString firstKey = store.apiKey();
    const QString secondKey = m_fixture->server->apiKeys().issueSignInKey().key;
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 300;
    slow.remainingUses = 1;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    store.session().setApiKey(secondKey);
    QSignalSpy connected(&store, &RoyaltiesStore::isShowingSettingsChanged);
    store.connect();
    QTRY_COMPARE(connected.count(), 1);
    QVERIFY(settle());
    m_fixture->clock.advance(3s);
    QVERIFY(settle());

    const QList<RecordedRequest> requests = m_fixture->statisticsRequests();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests.at(0).header("Authorization"), QByteArray("Bearer ") + firstKey.toUtf8());
    QCOMPARE(requests.at(1).header("Authorization"), QByteArray("Bearer ") + secondKey.toUtf8());
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
}

void TestStoreRefresh::answerArrivingAfterSignOutIsDropped()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 200;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    store.signOut();
    QVERIFY(settle());

    QCOMPARE(statisticsCount(), 1);
    QVERIFY(!store.isLoading());
    QVERIFY(!store.lastUpdated().has_value());
    QCOMPARE(store.summary(), RoyaltySummary());
    QCOMPARE(store.menuBarTitle(), QStringLiteral(u"\u25C9 \u2014"));
    QVERIFY(!store.errorMessage().has_value());
    QVERIFY(!store.nextRefreshAt().has_value());
    m_fixture->clock.advance(10min);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
}

void TestStoreRefresh::answerForAnotherAccountIsDroppedAndAskedAgain()
{
    RoyaltiesStore &store = startedStore();
    const QStringList accounts = DemoData::accountIds();
    QCOMPARE(store.accountID(), accounts.first());
    m_fixture->clock.advance(10s);
    Fault slow;
    slow.delayMs = 200;
    slow.remainingUses = 1;
    m_fixture->server->faults().set(Route::Stats, slow);
    store.refresh();
    store.settings().setAccountID(accounts.at(1));
    store.persistSettings();
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
    QVERIFY(store.lastUpdated() < std::optional<QDateTime>(m_fixture->clock.now()));

    m_fixture->clock.advance(3s);
    QVERIFY(settle());
    const QList<RecordedRequest> requests = m_fixture->statisticsRequests();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests.at(1).request.queryValue(QStringLiteral("account_id")), accounts.at(1));
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
    QCOMPARE(store.summary().currency, QStringLiteral("EUR"));
}

void TestStoreRefresh::rateLimitArrivingAfterSignOutIsStillObeyed()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    Fault limited;
    limited.status = 429;
    limited.retryAfter = QByteArray("120");
    limited.delayMs = 200;
    m_fixture->server->faults().set(Route::Stats, limited);
    store.refresh();
    store.signOut();
    QVERIFY(settle());
    QVERIFY(!store.errorMessage().has_value());
    QCOMPARE(store.requestCooldownRemaining(), qint64(120));
}

void TestStoreRefresh::nextRefreshIsScheduledFromTheEndOfTheRequest()
{
    RoyaltiesStore &store = startedStore();
    QCOMPARE(store.nextRefreshAt(), std::optional<QDateTime>(*store.lastUpdated()).value().addSecs(1800));
    m_fixture->clock.advance(1s);
    QCOMPARE(store.nextRefreshText(m_fixture->clock.now()), QStringLiteral("Next refresh in 29:59"));
}

void TestStoreRefresh::timerFiresTheNextRefresh()
{
    m_fixture->preferences().setInteger(SettingsKeys::refreshMinutes, 60);
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(59min + 59s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
    m_fixture->clock.advance(1s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
    QCOMPARE(store.nextRefreshAt(), std::optional<QDateTime>(m_fixture->clock.now().addSecs(3600)));
}

void TestStoreRefresh::nextRefreshTextCountsDown_data()
{
    QTest::addColumn<qint64>("minutes");
    QTest::addColumn<qint64>("elapsedMs");
    QTest::addColumn<QString>("expected");
    QTest::newRow("30 min, 1 s later") << qint64(30) << qint64(1000) << QStringLiteral("Next refresh in 29:59");
    QTest::newRow("120 min, 1 s later") << qint64(120) << qint64(1000) << QStringLiteral("Next refresh in 1:59:59");
    QTest::newRow("60 min, at once") << qint64(60) << qint64(0) << QStringLiteral("Next refresh in 1:00:00");
    QTest::newRow("rounded up") << qint64(30) << qint64(1500) << QStringLiteral("Next refresh in 29:59");
    QTest::newRow("247 s left") << qint64(30) << qint64((1800 - 247) * 1000) << QStringLiteral("Next refresh in 04:07");
    QTest::newRow("last second") << qint64(30) << qint64(1800 * 1000 - 1) << QStringLiteral("Next refresh in 00:01");
}

void TestStoreRefresh::nextRefreshTextCountsDown()
{
    QFETCH(qint64, minutes);
    QFETCH(qint64, elapsedMs);
    RoyaltiesStore &store = m_fixture->makeStore();
    store.session().setNextRefreshAt(m_fixture->clock.now().addSecs(minutes * 60));
    QTEST(store.nextRefreshText(m_fixture->clock.now().addMSecs(elapsedMs)), "expected");
}

void TestStoreRefresh::nextRefreshTextStates()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    const QDateTime now = m_fixture->clock.now();
    QCOMPARE(store.nextRefreshText(now), QStringLiteral("Automatic refresh not scheduled"));
    store.session().setNextRefreshAt(now);
    QCOMPARE(store.nextRefreshText(now), QStringLiteral(u"Refresh queued\u2026"));
    store.session().setIsLoading(true);
    QCOMPARE(store.nextRefreshText(now), QStringLiteral(u"Refreshing now\u2026"));
    store.session().setIsNetworkAvailable(false);
    QCOMPARE(store.nextRefreshText(now), QStringLiteral(u"Waiting for internet\u2026"));
}

void TestStoreRefresh::lastUpdatedText_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("clock went back") << qint64(-30) << QStringLiteral("Refreshed just now");
    QTest::newRow("0") << qint64(0) << QStringLiteral("Refreshed just now");
    QTest::newRow("4") << qint64(4) << QStringLiteral("Refreshed just now");
    QTest::newRow("5") << qint64(5) << QStringLiteral("Refreshed 5s ago");
    QTest::newRow("59") << qint64(59) << QStringLiteral("Refreshed 59s ago");
    QTest::newRow("60") << qint64(60) << QStringLiteral("Refreshed 1m ago");
    QTest::newRow("3599") << qint64(3599) << QStringLiteral("Refreshed 59m ago");
    QTest::newRow("3600") << qint64(3600) << QStringLiteral("Refreshed 1h ago");
    QTest::newRow("3659") << qint64(3659) << QStringLiteral("Refreshed 1h ago");
    QTest::newRow("3660") << qint64(3660) << QStringLiteral("Refreshed 1h 1m ago");
    QTest::newRow("7500") << qint64(7500) << QStringLiteral("Refreshed 2h 5m ago");
    QTest::newRow("no grouping") << qint64(3600 * 1234) << QStringLiteral("Refreshed 1234h ago");
}

void TestStoreRefresh::lastUpdatedText()
{
    QFETCH(qint64, seconds);
    RoyaltiesStore &store = m_fixture->makeStore();
    const QDateTime now = m_fixture->clock.now();
    QCOMPARE(store.lastUpdatedText(now), QStringLiteral("Not refreshed yet"));
    store.session().setLastUpdated(now);
    // Partial seconds are cut off, never rounded up.
    QTEST(store.lastUpdatedText(now.addMSecs(seconds * 1000 + (seconds >= 0 ? 999 : 0))), "expected");
}

void TestStoreRefresh::firstNetworkReportWhenOnlineTriggersNothing()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    m_fixture->reachability.report(true);
    QVERIFY(store.session().hasReceivedNetworkStatus());
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreRefresh::firstNetworkReportWhenOfflineSetsTheMessage()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->reachability.report(false);
    QVERIFY(!store.isNetworkAvailable());
    QCOMPARE(store.errorMessage(), std::optional<QString>(noInternet()));
    QCOMPARE(store.nextRefreshText(m_fixture->clock.now()), QStringLiteral(u"Waiting for internet\u2026"));
}

void TestStoreRefresh::goingOfflineAndBackSendsOneRequestAtOnce()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->reachability.report(true);
    m_fixture->clock.advance(10min);
    m_fixture->reachability.report(false);
    QCOMPARE(store.errorMessage(), std::optional<QString>(noInternet()));
    m_fixture->clock.advance(5min);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);

    m_fixture->reachability.report(true);
    QVERIFY(store.isLoading());
    QVERIFY(!store.errorMessage().has_value());
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
    m_fixture->clock.advance(1min);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
}

void TestStoreRefresh::networkReportsWhileSignedOutOnlyRecordTheState()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.start();
    m_fixture->reachability.report(false);
    QVERIFY(!store.isNetworkAvailable());
    QVERIFY(!store.errorMessage().has_value());
    m_fixture->reachability.report(true);
    QVERIFY(store.isNetworkAvailable());
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreRefresh::recoveryTickRefreshesAfterSleepingThroughTheTimer()
{
    RoyaltiesStore &store = startedStore();
    const QDateTime due = *store.nextRefreshAt();
    // The machine sleeps past the refresh: on waking the wall clock has jumped, the timer has not
    // fired, and the next recovery tick notices.
    m_fixture->clock.jumpTo(due.addSecs(600));
    store.recoverAutomaticRefreshIfNeeded(false);
    QVERIFY(store.isLoading());
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 1);
}

void TestStoreRefresh::recoveryTickLeavesAFutureRefreshAlone()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(15s);
    m_fixture->clock.advance(15s);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
    store.recoverAutomaticRefreshIfNeeded(false);
    QVERIFY(!store.isLoading());
    store.session().setNextRefreshAt(std::nullopt);
    store.recoverAutomaticRefreshIfNeeded(false);
    QVERIFY(!store.isLoading());
    store.recoverAutomaticRefreshIfNeeded(true);
    QVERIFY(store.isLoading());
}

void TestStoreRefresh::recoveryDoesNothingWhileLoadingOrOffline()
{
    RoyaltiesStore &store = startedStore();
    m_fixture->clock.advance(10s);
    store.session().setIsNetworkAvailable(false);
    store.recoverAutomaticRefreshIfNeeded(true);
    QVERIFY(!store.isLoading());
    store.session().setIsNetworkAvailable(true);
    store.session().setIsLoading(true);
    store.recoverAutomaticRefreshIfNeeded(true);
    store.session().setIsLoading(false);
    QVERIFY(settle());
    QCOMPARE(statisticsCount(), 0);
}

namespace {

Fault statisticsWithNet(const char *net)
{
    Fault fault;
    fault.body = QByteArray(R"({"table_data": [{"currency": "USD", "gross_royalty": 20, "net_royalty": )") + net
                 + QByteArray("}]}");
    return fault;
}

} // namespace

void TestStoreRefresh::fallingNetFigureCountsDown()
{
    m_fixture->preferences().setString(SettingsKeys::displayedRoyalty, QStringLiteral("Net royalties"));
    RoyaltiesStore &store = startedStore();
    m_fixture->server->faults().set(Route::Stats, statisticsWithNet("10.00"));
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.highlightedRoyalty(), 10.0);
    QCOMPARE(store.menuBarTitle(), QStringLiteral("$10.00"));

    m_fixture->server->faults().set(Route::Stats, statisticsWithNet("9.99"));
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    QVERIFY(store.royaltyChangeCountsDown());
    QCOMPARE(store.menuBarTitle(), QStringLiteral("$9.99"));
}

void TestStoreRefresh::unchangedFigureDoesNotCountDown()
{
    m_fixture->preferences().setString(SettingsKeys::displayedRoyalty, QStringLiteral("Net royalties"));
    RoyaltiesStore &store = startedStore();
    m_fixture->server->faults().set(Route::Stats, statisticsWithNet("9.99"));
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    m_fixture->server->faults().set(Route::Stats, statisticsWithNet("10.00"));
    m_fixture->clock.advance(10s);
    store.refresh();
    QVERIFY(settle());
    QVERIFY(!store.royaltyChangeCountsDown());
    m_fixture->clock.advance(10s);
    store.session().setRoyaltyChangeCountsDown(true);
    store.refresh();
    QVERIFY(settle());
    QCOMPARE(store.highlightedRoyalty(), 10.0);
    QVERIFY(!store.royaltyChangeCountsDown());
}

void TestStoreRefresh::neverTwoStatisticsRequestsWithinThreeSeconds()
{
    RoyaltiesStore &store = startedStore();
    // Hammer every way of asking for figures, 250 ms apart, for a minute of virtual time.
    for (int step = 0; step < 240; ++step) {
        switch (step % 4) {
        case 0:
            store.refresh();
            break;
        case 1:
            store.recoverAutomaticRefreshIfNeeded(true);
            break;
        case 2:
            store.selectPeriod(step % 8 == 2 ? RoyaltyPeriod::yesterday : RoyaltyPeriod::today);
            break;
        default:
            m_fixture->reachability.report(step % 12 != 3);
            break;
        }
        m_fixture->clock.advance(250ms);
        settle();
    }
    const QList<RecordedRequest> requests = m_fixture->statisticsRequests();
    QVERIFY(requests.size() >= 10);
    for (qsizetype i = 1; i < requests.size(); ++i) {
        QVERIFY2(requests.at(i - 1).receivedAt.msecsTo(requests.at(i).receivedAt) >= 3000,
                 qPrintable(QStringLiteral("requests %1 and %2 too close").arg(i - 1).arg(i)));
    }
}

void TestStoreRefresh::friendlyMessagePassesDescriptionsThrough()
{
    QCOMPARE(RoyaltiesStore::friendlyMessage(RoyaltiesError::rateLimited(2.2)),
             QStringLiteral("Please wait 3 seconds before requesting royalties again."));
    QCOMPARE(RoyaltiesStore::friendlyMessage(
                 TransportError{QNetworkReply::HostNotFoundError, QStringLiteral("Host royalties.example not found")}),
             QStringLiteral("Host royalties.example not found"));
}

QTEST_GUILESS_MAIN(TestStoreRefresh)
#include "tst_storerefresh.moc"
