#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/SettingsKeys.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

QStringList rawValues(const QList<SalesBreakdownMetric> &metrics)
{
    QStringList values;
    for (const SalesBreakdownMetric metric : metrics) {
        values.append(metric.rawValue());
    }
    return values;
}

QStringList canonicalOrder()
{
    constexpr auto all = SalesBreakdownMetric::allCases();
    return rawValues(QList<SalesBreakdownMetric>(all.begin(), all.end()));
}

} // namespace

class TestStoreState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void freshInstallationHasTheDefaults();
    void keyInTheKeyringMeansConnected();
    void compiledInServerAddressBeatsTheBuiltInOne();
    void storedServerAddressWins();
    void storedRefreshIntervals_data();
    void storedRefreshIntervals();
    void storedPeriodAndUnknownPeriod();
    void displayedRoyaltyMustBeExactlyNet_data();
    void displayedRoyaltyMustBeExactlyNet();
    void storedOrderSkipsUnknownAndAppendsMissing();
    void storedOrderKeepsDuplicates();
    void hiddenMetricsSkipUnknownNames();
    void valuesComeBackAsTextAfterRestart();
    void unreadableSettingsFileIsSetAside();
    void everyAssignmentNotifies();
    void initialisationAsksForLoginStatus();

    void selectingCurrentPeriodChangesNothing();
    void selectingWhileLoadingChangesNothing();
    void selectingDuringCooldownChangesNothing();
    void selectingAnotherPeriodPersistsAndRefreshes();
    void futureCooldownAtLaunchBlocksPeriodSwitchUntilItEnds();

    void visibleMetricsKeepOrderWithoutHidden();
    void movingSwapsNeighboursAndPersists();
    void movingFirstUpOrLastDownChangesNothing();
    void movingByMoreThanOneSwapsTheTwoPositions();
    void hidingAMetricPersistsBothLists();

    void persistSettingsWritesTrimmedAddressOnly();
    void showSettingsLoadsAccountsWhenThereAreNone();

    void signOutClearsTheConnection();
    void signOutKeepsErrorAndPreferences();
    void signOutKeepsARunningCooldown();

    void moneyUsesTheSummaryCurrency();
    void menuBarPartsAppearAfterFirstRefreshOnly();
    void highlightedRoyaltyFollowsDisplayedRoyaltyAtOnce();

private:
    Preferences &preferences() { return m_fixture->preferences(); }
    std::unique_ptr<StoreFixture> m_fixture;
};

void TestStoreState::freshInstallationHasTheDefaults()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.serverURL(), QStringLiteral("http://localhost:8000"));
    QCOMPARE(store.apiKey(), QString());
    QCOMPARE(store.accountID(), QString());
    QCOMPARE(store.refreshMinutes(), qint64(30));
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::today);
    QVERIFY(store.displayedRoyalty() == DisplayedRoyalty::gross);
    QCOMPARE(rawValues(store.salesMetricOrder()), canonicalOrder());
    QVERIFY(store.hiddenSalesMetrics().isEmpty());
    QVERIFY(store.accounts().isEmpty());
    QCOMPARE(store.summary(), RoyaltySummary());
    QVERIFY(!store.isConnected());
    QVERIFY(!store.isLoading());
    QVERIFY(!store.errorMessage().has_value());
    QVERIFY(!store.lastUpdated().has_value());
    QVERIFY(store.isNetworkAvailable());
    QCOMPARE(store.menuBarTitle(), QStringLiteral(u"\u25C9 \u2014"));
    QCOMPARE(store.requestCooldownRemaining(), qint64(0));
    QVERIFY(!store.session().requestAvailableAt().has_value());
    QVERIFY(store.canSwitchPeriod());
    QVERIFY(!store.latestAppVersion().has_value());
    QVERIFY(!store.downloadedUpdateURL().has_value());
}

void TestStoreState::keyInTheKeyringMeansConnected()
{
    m_fixture->secrets.key = QStringLiteral("ik_demo");
    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.apiKey(), QStringLiteral("ik_demo"));
    QVERIFY(store.isConnected());
}

void TestStoreState::compiledInServerAddressBeatsTheBuiltInOne()
{
    m_fixture->appInfo.defaultServerURL = QStringLiteral("https://royalties.example");
    QCOMPARE(m_fixture->makeStore().serverURL(), QStringLiteral("https://royalties.example"));
}

void TestStoreState::storedServerAddressWins()
{
    m_fixture->appInfo.defaultServerURL = QStringLiteral("https://royalties.example");
    preferences().setString(SettingsKeys::serverURL, QStringLiteral("http://192.0.2.7:9000"));
    QCOMPARE(m_fixture->makeStore().serverURL(), QStringLiteral("http://192.0.2.7:9000"));
}

void TestStoreState::storedRefreshIntervals_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("45") << QStringLiteral("45") << qint64(30);
    QTest::newRow("0") << QStringLiteral("0") << qint64(30);
    QTest::newRow("negative") << QStringLiteral("-60") << qint64(30);
    QTest::newRow("text") << QStringLiteral("often") << qint64(30);
    QTest::newRow("60") << QStringLiteral("60") << qint64(60);
    QTest::newRow("120") << QStringLiteral("120") << qint64(120);
    QTest::newRow("180") << QStringLiteral("180") << qint64(180);
}

void TestStoreState::storedRefreshIntervals()
{
    QFETCH(QString, stored);
    preferences().setString(SettingsKeys::refreshMinutes, stored);
    QTEST(m_fixture->makeStore().refreshMinutes(), "expected");
}

void TestStoreState::storedPeriodAndUnknownPeriod()
{
    preferences().setString(SettingsKeys::selectedPeriod, QStringLiteral("This Month"));
    QVERIFY(m_fixture->makeStore().selectedPeriod() == RoyaltyPeriod::thisMonth);
    preferences().setString(SettingsKeys::selectedPeriod, QStringLiteral("Last Week"));
    QVERIFY(m_fixture->makeStore().selectedPeriod() == RoyaltyPeriod::today);
}

void TestStoreState::displayedRoyaltyMustBeExactlyNet_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("net");
    QTest::newRow("raw value") << QStringLiteral("Net royalties") << true;
    QTest::newRow("lower-case word") << QStringLiteral("net") << false;
    QTest::newRow("other case") << QStringLiteral("net royalties") << false;
    QTest::newRow("gross") << QStringLiteral("Gross royalties") << false;
}

void TestStoreState::displayedRoyaltyMustBeExactlyNet()
{
    QFETCH(QString, stored);
    QFETCH(bool, net);
    preferences().setString(SettingsKeys::displayedRoyalty, stored);
    QCOMPARE(m_fixture->makeStore().displayedRoyalty() == DisplayedRoyalty::net, net);
}

void TestStoreState::storedOrderSkipsUnknownAndAppendsMissing()
{
    preferences().setStringList(SettingsKeys::salesMetricOrder,
                                {QStringLiteral("kenpReads"), QStringLiteral("comics"), QStringLiteral("paperbacks")});
    QCOMPARE(
        rawValues(m_fixture->makeStore().salesMetricOrder()),
        (QStringList{QStringLiteral("kenpReads"), QStringLiteral("paperbacks"), QStringLiteral("paidEbooks"),
                     QStringLiteral("hardcovers"), QStringLiteral("audiobooks"), QStringLiteral("expandedDistribution"),
                     QStringLiteral("currentPreOrders"), QStringLiteral("freeEbooks")}));
}

void TestStoreState::storedOrderKeepsDuplicates()
{
    preferences().setStringList(SettingsKeys::salesMetricOrder,
                                {QStringLiteral("paperbacks"), QStringLiteral("paperbacks")});
    const QStringList order = rawValues(m_fixture->makeStore().salesMetricOrder());
    QCOMPARE(order.size(), 9);
    QCOMPARE(order.mid(0, 2), (QStringList{QStringLiteral("paperbacks"), QStringLiteral("paperbacks")}));
    QStringList rest = canonicalOrder();
    rest.removeAll(QStringLiteral("paperbacks"));
    QCOMPARE(order.mid(2), rest);
}

void TestStoreState::hiddenMetricsSkipUnknownNames()
{
    preferences().setStringList(SettingsKeys::hiddenSalesMetrics,
                                {QStringLiteral("freeEbooks"), QStringLiteral("comics"), QStringLiteral("kenpReads")});
    const QSet<SalesBreakdownMetric> hidden = m_fixture->makeStore().hiddenSalesMetrics();
    QCOMPARE(hidden, (QSet<SalesBreakdownMetric>{SalesBreakdownMetric::freeEbooks, SalesBreakdownMetric::kenpReads}));
}

void TestStoreState::valuesComeBackAsTextAfterRestart()
{
    {
        RoyaltiesStore &store = m_fixture->makeStore();
        store.settings().setServerURL(QStringLiteral("  http://192.0.2.7:9000 "));
        store.settings().setAccountID(QStringLiteral("acc_2"));
        store.settings().setRefreshMinutes(120);
        store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
        store.setSalesMetricHidden(QStringLiteral("audiobooks"), true);
        store.moveSalesMetric(SalesBreakdownMetric::freeEbooks, -1);
        store.persistSettings();
        m_fixture->destroyStore();
    }
    m_fixture->reopenPreferences();
    QFile file(preferences().filePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.contains("refreshMinutes=120"));
    QVERIFY(text.contains("serverURL=http://192.0.2.7:9000\n"));

    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.serverURL(), QStringLiteral("http://192.0.2.7:9000"));
    QCOMPARE(store.accountID(), QStringLiteral("acc_2"));
    QCOMPARE(store.refreshMinutes(), qint64(120));
    QVERIFY(store.displayedRoyalty() == DisplayedRoyalty::net);
    QCOMPARE(store.hiddenSalesMetrics(), QSet<SalesBreakdownMetric>{SalesBreakdownMetric::audiobooks});
    QCOMPARE(rawValues(store.salesMetricOrder()).last(2),
             (QStringList{QStringLiteral("freeEbooks"), QStringLiteral("currentPreOrders")}));
}

void TestStoreState::unreadableSettingsFileIsSetAside()
{
    const QString path = preferences().filePath();
    const QByteArray damaged("[General\nrefreshMinutes=60\nserverURL=http://192.0.2.7\n");
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(damaged);
    }
    m_fixture->reopenPreferences();
    const std::optional<QString> aside = preferences().setAsideFile();
    QVERIFY(aside.has_value());
    QFile kept(*aside);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), damaged);

    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.refreshMinutes(), qint64(30));
    QVERIFY(store.errorMessage().has_value());
    QVERIFY(store.errorMessage()->contains(*aside));

    // Writing goes to a fresh file; the damaged one stays where it was put.
    store.persistSettings();
    QVERIFY(QFile::exists(*aside));
    QCOMPARE(preferences().integer(SettingsKeys::refreshMinutes), std::optional<qint64>(30));
}

void TestStoreState::everyAssignmentNotifies()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QSignalSpy serverSpy(&store, &RoyaltiesStore::serverURLChanged);
    QSignalSpy loadingSpy(&store, &RoyaltiesStore::isLoadingChanged);
    QSignalSpy errorSpy(&store, &RoyaltiesStore::errorMessageChanged);
    store.settings().setServerURL(store.serverURL());
    store.settings().setServerURL(store.serverURL());
    store.session().setIsLoading(false);
    store.status().setErrorMessage(std::nullopt);
    QCOMPARE(serverSpy.count(), 2);
    QCOMPARE(loadingSpy.count(), 1);
    QCOMPARE(errorSpy.count(), 1);
}

void TestStoreState::initialisationAsksForLoginStatus()
{
    m_fixture->loginItems.currentStatus = LoginItemService::Status::requiresApproval;
    RoyaltiesStore &store = m_fixture->makeStore();
    QVERIFY(!store.opensAtLogin());
    QVERIFY(store.launchAtLoginRequiresApproval());
}

void TestStoreState::selectingCurrentPeriodChangesNothing()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    QSignalSpy spy(&store, &RoyaltiesStore::selectedPeriodChanged);
    store.selectPeriod(RoyaltyPeriod::today);
    QCOMPARE(spy.count(), 0);
    QVERIFY(!preferences().contains(SettingsKeys::selectedPeriod));
    QVERIFY(!store.isLoading());
    QVERIFY(m_fixture->statisticsRequests().isEmpty());
}

void TestStoreState::selectingWhileLoadingChangesNothing()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.session().setIsLoading(true);
    store.selectPeriod(RoyaltyPeriod::yesterday);
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::today);
    QVERIFY(!preferences().contains(SettingsKeys::selectedPeriod));
    QVERIFY(!store.session().refreshWhenAvailable());
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreState::selectingDuringCooldownChangesNothing()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->clock.advance(1s);
    QVERIFY(!store.canSwitchPeriod());
    store.selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::today);
    QVERIFY(!preferences().contains(SettingsKeys::selectedPeriod));
    QVERIFY(!store.session().refreshWhenAvailable());
    QCOMPARE(m_fixture->statisticsRequests().size(), 1);
}

void TestStoreState::selectingAnotherPeriodPersistsAndRefreshes()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.selectPeriod(QStringLiteral("Yesterday"));
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::yesterday);
    QCOMPARE(preferences().string(SettingsKeys::selectedPeriod), std::optional<QString>(QStringLiteral("Yesterday")));
    QVERIFY(store.isLoading());
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statisticsRequests().size(), 1);
    QCOMPARE(m_fixture->statisticsRequests().first().request.queryValue(QStringLiteral("start_date")),
             QStringLiteral("2026-11-20"));
}

void TestStoreState::futureCooldownAtLaunchBlocksPeriodSwitchUntilItEnds()
{
    preferences().setDate(SettingsKeys::requestAvailableAt, m_fixture->clock.now().addSecs(90));
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    QVERIFY(!store.canSwitchPeriod());
    store.selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::today);
    m_fixture->clock.advance(89s);
    QVERIFY(!store.canSwitchPeriod());
    m_fixture->clock.advance(1s);
    QVERIFY(store.canSwitchPeriod());
}

void TestStoreState::visibleMetricsKeepOrderWithoutHidden()
{
    preferences().setStringList(SettingsKeys::salesMetricOrder, {QStringLiteral("freeEbooks")});
    preferences().setStringList(SettingsKeys::hiddenSalesMetrics,
                                {QStringLiteral("paperbacks"), QStringLiteral("kenpReads")});
    const QStringList visible = rawValues(m_fixture->makeStore().visibleSalesMetrics());
    QCOMPARE(visible, (QStringList{QStringLiteral("freeEbooks"), QStringLiteral("paidEbooks"),
                                   QStringLiteral("hardcovers"), QStringLiteral("audiobooks"),
                                   QStringLiteral("expandedDistribution"), QStringLiteral("currentPreOrders")}));
}

void TestStoreState::movingSwapsNeighboursAndPersists()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.moveSalesMetric(QStringLiteral("hardcovers"), -1);
    const QStringList order = rawValues(store.salesMetricOrder());
    QCOMPARE(order.mid(0, 3),
             (QStringList{QStringLiteral("paidEbooks"), QStringLiteral("hardcovers"), QStringLiteral("paperbacks")}));
    QCOMPARE(preferences().stringList(SettingsKeys::salesMetricOrder), std::optional<QStringList>(order));
    QVERIFY(preferences().contains(SettingsKeys::hiddenSalesMetrics));
}

void TestStoreState::movingFirstUpOrLastDownChangesNothing()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QSignalSpy spy(&store, &RoyaltiesStore::salesMetricOrderChanged);
    store.moveSalesMetric(SalesBreakdownMetric::paidEbooks, -1);
    store.moveSalesMetric(SalesBreakdownMetric::freeEbooks, 1);
    store.moveSalesMetric(SalesBreakdownMetric::paidEbooks, 8);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(rawValues(store.salesMetricOrder()), canonicalOrder());
    QVERIFY(!preferences().contains(SettingsKeys::salesMetricOrder));
}

void TestStoreState::movingByMoreThanOneSwapsTheTwoPositions()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.moveSalesMetric(SalesBreakdownMetric::paidEbooks, 3);
    QCOMPARE(rawValues(store.salesMetricOrder()).mid(0, 4),
             (QStringList{QStringLiteral("audiobooks"), QStringLiteral("paperbacks"), QStringLiteral("hardcovers"),
                          QStringLiteral("paidEbooks")}));
}

void TestStoreState::hidingAMetricPersistsBothLists()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.setSalesMetricHidden(QStringLiteral("kenpReads"), true);
    QCOMPARE(preferences().stringList(SettingsKeys::hiddenSalesMetrics),
             std::optional<QStringList>(QStringList{QStringLiteral("kenpReads")}));
    QCOMPARE(preferences().stringList(SettingsKeys::salesMetricOrder), std::optional<QStringList>(canonicalOrder()));
    store.setSalesMetricHidden(QStringLiteral("kenpReads"), false);
    QVERIFY(store.hiddenSalesMetrics().isEmpty());
    QCOMPARE(store.visibleSalesMetrics().size(), 8);
}

void TestStoreState::persistSettingsWritesTrimmedAddressOnly()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral(" \thttps://royalties.example/app \n"));
    store.settings().setAccountID(QStringLiteral("acc_9"));
    store.settings().setRefreshMinutes(60);
    store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
    store.persistSettings();
    QCOMPARE(store.serverURL(), QStringLiteral(" \thttps://royalties.example/app \n"));
    QCOMPARE(preferences().string(SettingsKeys::serverURL),
             std::optional<QString>(QStringLiteral("https://royalties.example/app")));
    QCOMPARE(preferences().string(SettingsKeys::accountID), std::optional<QString>(QStringLiteral("acc_9")));
    QCOMPARE(preferences().integer(SettingsKeys::refreshMinutes), std::optional<qint64>(60));
    QCOMPARE(preferences().string(SettingsKeys::displayedRoyalty),
             std::optional<QString>(QStringLiteral("Net royalties")));
    QVERIFY(!preferences().contains(SettingsKeys::selectedPeriod));
}

void TestStoreState::showSettingsLoadsAccountsWhenThereAreNone()
{
    m_fixture->loginItems.currentStatus = LoginItemService::Status::enabled;
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    m_fixture->loginItems.currentStatus = LoginItemService::Status::enabled;
    store.showSettings();
    QVERIFY(store.isShowingSettings());
    QVERIFY(store.opensAtLogin());
    QVERIFY(store.isLoadingAccounts());
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.accounts().size(), 2);

    m_fixture->server->clearRequests();
    store.status().setIsShowingSettings(false);
    store.showSettings();
    QVERIFY(!store.isLoadingAccounts());
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreState::signOutClearsTheConnection()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    preferences().setString(SettingsKeys::pendingAuthState, QStringLiteral("S"));
    preferences().setString(SettingsKeys::pendingAuthVerifier, QStringLiteral("V"));
    store.status().setIsShowingSettings(true);
    QVERIFY(store.lastUpdated().has_value());
    QVERIFY(store.nextRefreshAt().has_value());

    store.signOut();
    QCOMPARE(m_fixture->secrets.deletes, 1);
    QCOMPARE(m_fixture->secrets.key, QString());
    QCOMPARE(store.apiKey(), QString());
    QCOMPARE(store.accountID(), QString());
    QVERIFY(store.accounts().isEmpty());
    QVERIFY(!store.latestAppVersion().has_value());
    QVERIFY(!store.isShowingUpdatePrompt());
    QVERIFY(!store.updates().promptedUpdateVersion().has_value());
    QCOMPARE(store.summary(), RoyaltySummary());
    QVERIFY(!store.lastUpdated().has_value());
    QVERIFY(!store.nextRefreshAt().has_value());
    QVERIFY(!store.isConnected());
    QVERIFY(!store.isShowingSettings());
    QCOMPARE(store.menuBarTitle(), QStringLiteral(u"\u25C9 \u2014"));
    QVERIFY(!preferences().contains(SettingsKeys::accountID));
    QVERIFY(!preferences().contains(SettingsKeys::pendingAuthState));
    QVERIFY(!preferences().contains(SettingsKeys::pendingAuthVerifier));

    // The refresh timer is gone: half an hour later nothing is asked.
    m_fixture->server->clearRequests();
    m_fixture->clock.advance(31min);
    QTest::qWait(50);
    QVERIFY(m_fixture->statisticsRequests().isEmpty());
}

void TestStoreState::signOutKeepsErrorAndPreferences()
{
    preferences().setString(SettingsKeys::refreshMinutes, QStringLiteral("60"));
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.status().setErrorMessage(QStringLiteral("Invalid API key."));
    store.setSalesMetricHidden(QStringLiteral("kenpReads"), true);
    store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
    const QString address = store.serverURL();
    store.signOut();
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Invalid API key.")));
    QCOMPARE(store.serverURL(), address);
    QCOMPARE(store.refreshMinutes(), qint64(60));
    QVERIFY(store.displayedRoyalty() == DisplayedRoyalty::net);
    QVERIFY(store.hiddenSalesMetrics().contains(SalesBreakdownMetric::kenpReads));
}

void TestStoreState::signOutKeepsARunningCooldown()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.refresh();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.requestCooldownRemaining(), qint64(3));
    store.signOut();
    QVERIFY(store.session().requestAvailableAt().has_value());
    QVERIFY(preferences().contains(SettingsKeys::requestAvailableAt));
    m_fixture->clock.advance(1200ms);
    QCOMPARE(store.requestCooldownRemaining(), qint64(2));
    m_fixture->clock.advance(2s);
    QCOMPARE(store.requestCooldownRemaining(), qint64(0));
    QVERIFY(!preferences().contains(SettingsKeys::requestAvailableAt));
}

void TestStoreState::moneyUsesTheSummaryCurrency()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.money(1234.5, false), QStringLiteral("$1,234.50"));
    QCOMPARE(store.money(1234.56, true), QStringLiteral("$1,235"));
    RoyaltySummary euros;
    euros.currency = QStringLiteral("eur");
    store.session().setSummary(euros);
    QCOMPARE(store.money(12, false), QStringLiteral(u"\u20AC12.00"));
}

void TestStoreState::menuBarPartsAppearAfterFirstRefreshOnly()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QVERIFY(!store.menuBarMoneyParts().has_value());
    store.session().setLastUpdated(m_fixture->clock.now());
    QCOMPARE(store.menuBarMoneyParts(), (MenuBarMoneyParts{QStringLiteral("$"), QStringLiteral("0.00")}));
}

void TestStoreState::highlightedRoyaltyFollowsDisplayedRoyaltyAtOnce()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    RoyaltySummary summary;
    summary.gross = 20;
    summary.net = 12.5;
    store.session().setSummary(summary);
    store.session().setMenuBarTitle(store.money(store.highlightedRoyalty(), true));
    QCOMPARE(store.highlightedRoyalty(), 20.0);
    store.settings().setDisplayedRoyalty(DisplayedRoyalty::net);
    QCOMPARE(store.highlightedRoyalty(), 12.5);
    // The panel title follows only with the next refresh.
    QCOMPARE(store.menuBarTitle(), QStringLiteral("$20.00"));
}

QTEST_GUILESS_MAIN(TestStoreState)
#include "tst_storestate.moc"
