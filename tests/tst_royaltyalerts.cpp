// New-royalty notifications and hidden amounts, with the store against the development server,
// whose figures for today grow with the hour of the virtual clock. The notifications are recorded
// instead of shown.
#include "store/ConnectionSession.h"
#include "store/RoyaltiesStore.h"
#include "store/RoyaltyAlerts.h"
#include "store/SettingsKeys.h"
#include "store/StoreSettings.h"
#include "support/StoreFixture.h"

#include <QTest>

using namespace std::chrono_literals;

class TestRoyaltyAlerts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void theFirstFiguresDoNotNotify();
    void anIncreaseNotifiesOnceWithTheIncreaseAndTheFigure();
    void aSecondIncreaseNotifiesAgain();
    void theSoundComesWhenChosen();
    void switchedOffNothingNotifies();
    void aFallDoesNotNotify();
    void aPeriodSwitchDoesNotNotifyButTheNextIncreaseDoes();
    void anAccountSwitchDoesNotNotify();
    void yesterdayNeverNotifies();
    void quietHoursHoldBackAndThenSum();
    void quietHoursWithoutSummaryStaySilent();
    void quietHoursRunOverMidnight();
    void hiddenAmountsAreMaskedEverywhere();
    void hiddenAmountsKeepTheNotificationWithoutAmounts();
    void choicesPersistAndACorruptValueFallsBack();

private:
    // The next automatic refresh, `minutes` later.
    void nextRefresh(std::chrono::minutes minutes = 30min);
    const QList<DesktopNotifications::Notification> &shown() const { return m_fixture->notifications.shown; }

    std::unique_ptr<StoreFixture> m_fixture;
};

void TestRoyaltyAlerts::nextRefresh(std::chrono::minutes minutes)
{
    m_fixture->clock.advance(minutes);
    QVERIFY(m_fixture->waitUntilIdle());
}

void TestRoyaltyAlerts::theFirstFiguresDoNotNotify()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    QCOMPARE(store.lastUpdated(), std::optional<QDateTime>(m_fixture->clock.now()));
    QVERIFY(shown().isEmpty());
}

void TestRoyaltyAlerts::anIncreaseNotifiesOnceWithTheIncreaseAndTheFigure()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const double before = store.highlightedRoyalty();
    nextRefresh();
    const double after = store.highlightedRoyalty();
    QVERIFY2(after > before, "the demo figures grow through the day");
    QCOMPARE(shown().size(), 1);
    QCOMPARE(shown().first().title, u'+' + store.money(after - before, false) + QStringLiteral(" in royalties"));
    QCOMPARE(shown().first().body, QStringLiteral("Today: ") + store.money(after, false));
    QVERIFY(shown().first().title.startsWith(QStringLiteral("+$")));
    QVERIFY(!shown().first().withSound);
}

void TestRoyaltyAlerts::aSecondIncreaseNotifiesAgain()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    nextRefresh();
    const double before = store.highlightedRoyalty();
    nextRefresh();
    QCOMPARE(shown().size(), 2);
    QCOMPARE(shown().last().title,
             u'+' + store.money(store.highlightedRoyalty() - before, false) + QStringLiteral(" in royalties"));
}

void TestRoyaltyAlerts::theSoundComesWhenChosen()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    store.alerts().setNotificationSound(true);
    nextRefresh();
    QCOMPARE(shown().size(), 1);
    QVERIFY(shown().first().withSound);
}

void TestRoyaltyAlerts::switchedOffNothingNotifies()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    store.alerts().setNotifyOnNewRoyalties(false);
    nextRefresh();
    nextRefresh();
    QVERIFY(shown().isEmpty());
}

void TestRoyaltyAlerts::aFallDoesNotNotify()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const QDate firstDay = m_fixture->clock.now().date();
    qsizetype beforeMidnight = 0;
    while (m_fixture->clock.now().date() == firstDay) {
        beforeMidnight = shown().size();
        nextRefresh();
    }
    // Past midnight today starts again from nothing: a fall, and no notification.
    QCOMPARE(shown().size(), beforeMidnight);
    QVERIFY(beforeMidnight > 0);
    QVERIFY(store.highlightedRoyalty() < 50);
}

void TestRoyaltyAlerts::aPeriodSwitchDoesNotNotifyButTheNextIncreaseDoes()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    m_fixture->clock.advance(3s);
    store.selectPeriod(RoyaltyPeriod::thisMonth);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::thisMonth);
    QVERIFY(shown().isEmpty());
    nextRefresh();
    QCOMPARE(shown().size(), 1);
    QCOMPARE(shown().first().body, QStringLiteral("This Month: ") + store.money(store.highlightedRoyalty(), false));
}

void TestRoyaltyAlerts::anAccountSwitchDoesNotNotify()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(store.accounts().size() >= 2);
    store.settings().setAccountID(store.accounts().at(1).accountID);
    store.persistSettings();
    m_fixture->clock.advance(30min);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.summary().currency, QStringLiteral("EUR"));
    QVERIFY(shown().isEmpty());
}

void TestRoyaltyAlerts::yesterdayNeverNotifies()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    m_fixture->clock.advance(3s);
    store.selectPeriod(RoyaltyPeriod::yesterday);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(store.selectedPeriod() == RoyaltyPeriod::yesterday);
    const qsizetype before = shown().size();
    nextRefresh();
    nextRefresh();
    QCOMPARE(shown().size(), before);
}

void TestRoyaltyAlerts::quietHoursHoldBackAndThenSum()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    RoyaltyAlerts &alerts = store.alerts();
    alerts.setQuietHoursStart(QTime(9, 45));
    alerts.setQuietHoursEnd(QTime(10, 45));
    alerts.setQuietHoursEnabled(true);
    const double start = store.highlightedRoyalty();
    nextRefresh(); // 10:00
    nextRefresh(); // 10:30
    QVERIFY(shown().isEmpty());
    const double atEnd = store.highlightedRoyalty();
    QVERIFY(atEnd > start);
    // 10:45: the held increases come as one, before the next refresh.
    m_fixture->clock.advance(14min);
    QVERIFY(shown().isEmpty());
    m_fixture->clock.advance(2min);
    QCOMPARE(shown().size(), 1);
    QCOMPARE(shown().first().title, u'+' + store.money(atEnd - start, false) + QStringLiteral(" in royalties"));
    QCOMPARE(shown().first().body, QStringLiteral("Today: ") + store.money(atEnd, false));
    nextRefresh(14min);
    QCOMPARE(shown().size(), 2);
}

void TestRoyaltyAlerts::quietHoursWithoutSummaryStaySilent()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    store.alerts().setQuietHoursStart(QTime(9, 45));
    store.alerts().setQuietHoursEnd(QTime(10, 45));
    store.alerts().setQuietHoursEnabled(true);
    store.alerts().setQuietHoursSummary(false);
    nextRefresh();
    nextRefresh();
    m_fixture->clock.advance(20min);
    QVERIFY(shown().isEmpty());
}

void TestRoyaltyAlerts::quietHoursRunOverMidnight()
{
    RoyaltyAlerts &alerts = m_fixture->makeStore().alerts();
    QVERIFY(!alerts.isQuietAt(QTime(23, 0)));
    alerts.setQuietHoursEnabled(true);
    QCOMPARE(alerts.quietHoursStartText(), QStringLiteral("22:00"));
    QCOMPARE(alerts.quietHoursEndText(), QStringLiteral("07:00"));
    QVERIFY(alerts.isQuietAt(QTime(23, 0)));
    QVERIFY(alerts.isQuietAt(QTime(0, 0)));
    QVERIFY(alerts.isQuietAt(QTime(6, 59)));
    QVERIFY(!alerts.isQuietAt(QTime(7, 0)));
    QVERIFY(!alerts.isQuietAt(QTime(21, 59)));
}

void TestRoyaltyAlerts::hiddenAmountsAreMaskedEverywhere()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    const QString shownTitle = store.menuBarTitle();
    QVERIFY(shownTitle.startsWith(u'$'));
    store.setHideAmounts(true);
    const QString mask = QStringLiteral(u"$\u2022\u2022\u2022");
    QCOMPARE(store.menuBarTitle(), mask);
    QCOMPARE(store.money(1234.5, false), mask);
    QCOMPARE(store.menuBarMoneyParts()->amount, QStringLiteral(u"\u2022\u2022\u2022"));
    QCOMPARE(m_fixture->preferences().boolean(SettingsKeys::hideAmounts), std::optional<bool>(true));
    nextRefresh();
    QCOMPARE(store.menuBarTitle(), mask);

    // Remembered across a restart.
    m_fixture->destroyStore();
    m_fixture->reopenPreferences();
    RoyaltiesStore &again = m_fixture->makeRefreshedStore();
    QVERIFY(again.hideAmounts());
    QCOMPARE(again.menuBarTitle(), mask);
    again.setHideAmounts(false);
    QVERIFY(again.menuBarTitle() != mask);
    QVERIFY(again.menuBarTitle().startsWith(u'$'));
}

void TestRoyaltyAlerts::hiddenAmountsKeepTheNotificationWithoutAmounts()
{
    RoyaltiesStore &store = m_fixture->makeRefreshedStore();
    store.setHideAmounts(true);
    nextRefresh();
    QCOMPARE(shown().size(), 1);
    QCOMPARE(shown().first().title, QStringLiteral("New royalties"));
    QCOMPARE(shown().first().body, QStringLiteral("Today"));
}

void TestRoyaltyAlerts::choicesPersistAndACorruptValueFallsBack()
{
    {
        RoyaltyAlerts &alerts = m_fixture->makeStore().alerts();
        QVERIFY(alerts.notifyOnNewRoyalties());
        QVERIFY(!alerts.notificationSound());
        QVERIFY(!alerts.quietHoursEnabled());
        QVERIFY(alerts.quietHoursSummary());
        alerts.setNotifyOnNewRoyalties(false);
        alerts.setNotificationSound(true);
        alerts.setQuietHoursEnabled(true);
        alerts.setQuietHoursStartText(QStringLiteral("21:30"));
        alerts.setQuietHoursEndText(QStringLiteral("not a time"));
        alerts.setQuietHoursSummary(false);
        QCOMPARE(alerts.quietHoursEndText(), QStringLiteral("07:00"));
    }
    m_fixture->destroyStore();
    m_fixture->reopenPreferences();
    {
        const RoyaltyAlerts &alerts = m_fixture->makeStore().alerts();
        QVERIFY(!alerts.notifyOnNewRoyalties());
        QVERIFY(alerts.notificationSound());
        QVERIFY(alerts.quietHoursEnabled());
        QCOMPARE(alerts.quietHoursStartText(), QStringLiteral("21:30"));
        QCOMPARE(alerts.quietHoursEndText(), QStringLiteral("07:00"));
        QVERIFY(!alerts.quietHoursSummary());
    }
    m_fixture->destroyStore();
    Preferences &preferences = m_fixture->preferences();
    preferences.setString(SettingsKeys::notifyOnNewRoyalties, QStringLiteral("perhaps"));
    preferences.setString(SettingsKeys::notificationSound, QStringLiteral("1"));
    preferences.setString(SettingsKeys::quietHoursStart, QStringLiteral("25:99"));
    preferences.setString(SettingsKeys::hideAmounts, QStringLiteral("yes"));
    m_fixture->reopenPreferences();
    RoyaltiesStore &store = m_fixture->makeStore();
    QVERIFY(store.alerts().notifyOnNewRoyalties());
    QVERIFY(!store.alerts().notificationSound());
    QCOMPARE(store.alerts().quietHoursStartText(), QStringLiteral("22:00"));
    QVERIFY(!store.hideAmounts());
}

QTEST_GUILESS_MAIN(TestRoyaltyAlerts)
#include "tst_royaltyalerts.moc"
