#include "SoakRun.h"
#include "store/ConnectionSession.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"

namespace {

QString routeText(Route route)
{
    return route == Route::Stats ? QStringLiteral("statistics") : QStringLiteral("accounts");
}

QString faultKey(Route route)
{
    return QStringLiteral("fault:") + routeName(route);
}

} // namespace

void SoakRun::randomAction()
{
    // A connection attempt under way is left to finish first, as a user would wait for it.
    if (m_pendingConnect != PendingConnect::none) {
        return;
    }
    // Whatever comes next may change what a queued refresh should do; only a press left alone is checked.
    m_queuedRefreshDue.reset();
    const bool connected = m_store->isConnected();
    const bool signedIn = m_expected.signedIn;
    struct Choice {
        int weight;
        void (SoakRun::*action)();
    };
    QList<Choice> choices{{26, &SoakRun::switchFaultOn}, {6, &SoakRun::clearSomeFaults},
                          {10, &SoakRun::switchPeriod},  {8, &SoakRun::toggleNetwork},
                          {1, &SoakRun::sleepMachine},   {5, &SoakRun::changeSalesMetric},
                          {5, &SoakRun::openPopover},    {3, &SoakRun::restart}};
    if (connected) {
        choices << Choice{14, &SoakRun::pressRefresh} << Choice{6, &SoakRun::editSettings}
                << Choice{3, &SoakRun::openSettings} << Choice{2, &SoakRun::signOut}
                << Choice{3, &SoakRun::quitRightAfterRequest};
    }
    if (!signedIn) {
        choices << Choice{30, &SoakRun::reconnect};
    }
    int total = 0;
    for (const Choice &choice : std::as_const(choices)) {
        total += choice.weight;
    }
    qint64 roll = uniform(0, total - 1);
    for (const Choice &choice : std::as_const(choices)) {
        if (roll < choice.weight) {
            (this->*choice.action)();
            return;
        }
        roll -= choice.weight;
    }
}

void SoakRun::switchFaultOn()
{
    const FaultPlan::Choice choice = m_faultPlan.choose(m_random);
    m_server->faults().set(choice.route, choice.fault);
    ++m_counters.faultsSwitchedOn;
    const QString extent = choice.fault.remainingUses
                               ? QStringLiteral("the next %1 requests").arg(*choice.fault.remainingUses)
                               : QStringLiteral("%1").arg(durationText(choice.lasts->count()));
    note(QStringLiteral("fault on %1: %2, for %3")
             .arg(routeText(choice.route), FaultPlan::kindOf(choice.fault), extent));
    if (choice.lasts) {
        const Route route = choice.route;
        schedule(faultKey(route), now().addMSecs(choice.lasts->count()), [this, route] {
            m_server->faults().clear(route);
            note(QStringLiteral("fault off on %1").arg(routeText(route)));
        });
    } else {
        unschedule(faultKey(choice.route));
    }
}

void SoakRun::clearSomeFaults()
{
    const Route route = chance(0.5) ? Route::Stats : Route::Accounts;
    m_server->faults().clear(route);
    unschedule(faultKey(route));
    note(QStringLiteral("fault off on %1").arg(routeText(route)));
}

void SoakRun::clearAllFaults()
{
    m_server->faults().clearAll();
    unschedule(faultKey(Route::Stats));
    unschedule(faultKey(Route::Accounts));
}

void SoakRun::pressRefresh()
{
    const bool burst = chance(0.35);
    const qint64 presses = burst ? uniform(2, 8) : 1;
    m_counters.refreshBursts += burst ? 1 : 0;
    note(burst ? QStringLiteral("refresh pressed %1 times in a row").arg(presses) : QStringLiteral("refresh pressed"));
    for (qint64 press = 0; press < presses && !m_failure; ++press) {
        // Nothing stands in the way: the press has to send a request at once.
        const bool ready = m_store->isConnected() && m_store->isNetworkAvailable() && !m_store->isLoading();
        const bool mustSend = ready && now() >= m_modelCooldownUntil;
        const bool queues = ready && now() < m_modelCooldownUntil;
        const qint64 sentBefore = m_statisticsSent;
        m_store->refresh();
        ++m_counters.refreshPresses;
        settle();
        if (mustSend && m_statisticsSent == sentBefore) {
            fail(QStringLiteral("a refresh press sent nothing with no request loading and no cooldown running; "
                                "store: %1")
                     .arg(storeStateText()));
        }
        if (queues && !m_queuedRefreshDue) {
            m_queuedRefreshDue = m_modelCooldownUntil;
        }
        if (press + 1 < presses) {
            m_clock.advance(std::chrono::milliseconds(uniform(0, 1500)));
            settle();
        }
    }
}

void SoakRun::switchPeriod()
{
    // Sometimes a user clicks through the periods in quick succession.
    const qint64 switches = chance(0.3) ? uniform(2, 4) : 1;
    for (qint64 index = 0; index < switches && !m_failure; ++index) {
        if (index > 0) {
            m_clock.advance(std::chrono::milliseconds(uniform(0, 4000)));
            settle();
        }
        switchPeriodOnce();
    }
}

void SoakRun::switchPeriodOnce()
{
    QList<RoyaltyPeriod> others;
    for (const RoyaltyPeriod period : RoyaltyPeriod::allCases()) {
        if (!(period == m_store->selectedPeriod())) {
            others.append(period);
        }
    }
    const RoyaltyPeriod period = others.at(uniform(0, others.size() - 1));
    const bool loading = m_store->isLoading();
    const bool coolingDown = now() < m_modelCooldownUntil;
    m_store->selectPeriod(period);
    const bool accepted = m_store->selectedPeriod() == period;
    note(QStringLiteral("period %1: %2")
             .arg(period.rawValue(), accepted ? QStringLiteral("switched") : QStringLiteral("refused")));
    if (accepted) {
        ++m_counters.periodSwitches;
        m_expected.period = period;
        if (loading || coolingDown) {
            fail(QStringLiteral("the period switched while %1")
                     .arg(loading ? QStringLiteral("a request was loading") : QStringLiteral("the cooldown ran")));
        }
    } else {
        ++m_counters.periodSwitchesRefused;
        if (!loading && !coolingDown) {
            fail(QStringLiteral("a period switch was refused with no request loading and no cooldown running; "
                                "store: %1")
                     .arg(storeStateText()));
        }
    }
    settle();
}

void SoakRun::toggleNetwork()
{
    if (!m_online) {
        unschedule(QStringLiteral("network"));
        setNetwork(true);
        return;
    }
    setNetwork(false);
    const qint64 seconds = chance(0.7) ? uniform(10, 5LL * 60) : uniform(5LL * 60, 90LL * 60);
    schedule(QStringLiteral("network"), now().addSecs(seconds), [this] { setNetwork(true); });
}

void SoakRun::setNetwork(bool online)
{
    if (online == m_online) {
        return;
    }
    m_online = online;
    m_network.setOnline(online);
    note(online ? QStringLiteral("network up") : QStringLiteral("network down"));
    if (online) {
        if (m_expected.signedIn) {
            m_awaitingNetworkRecoverySince = now();
        }
    } else {
        ++m_counters.networkOutages;
        m_awaitingNetworkRecoverySince.reset();
    }
    m_reachability.report(online);
    settle();
}

void SoakRun::sleepMachine()
{
    const qint64 room = now().msecsTo(m_end) - 60'000;
    if (room < 60'000) {
        return;
    }
    const double kind = std::uniform_real_distribution<double>(0.0, 1.0)(m_random);
    // Mostly a lid closed for a while; now and then a night.
    qint64 duration = kind < 0.7    ? uniform(60'000, 20LL * 60'000)
                      : kind < 0.95 ? uniform(20LL * 60'000, 90LL * 60'000)
                                    : uniform(90LL * 60'000, 8LL * 3600'000);
    duration = std::min(duration, room);
    // Laptops usually lose the network as they go to sleep and find it again a little after waking.
    const bool dropsNetwork = m_online && chance(0.6);
    if (dropsNetwork) {
        setNetwork(false);
        unschedule(QStringLiteral("network"));
    }
    // Linux timers stand still in sleep (monotonic clock); now and then take the other kind too.
    const bool paused = chance(0.8);
    const bool missesRefresh =
        m_store->isConnected() && m_store->nextRefreshAt() && *m_store->nextRefreshAt() <= now().addMSecs(duration);
    ++m_counters.sleeps;
    m_counters.sleepsWithPausedTimers += paused ? 1 : 0;
    m_clock.sleep(std::chrono::milliseconds(duration), paused);
    note(QStringLiteral("woke after sleeping %1%2%3")
             .arg(durationText(duration),
                  paused ? QStringLiteral(" (timers paused)") : QStringLiteral(" (timers overdue)"),
                  missesRefresh ? QStringLiteral(", past the scheduled refresh") : QString()));
    if (missesRefresh) {
        m_awaitingSleepRecoverySince = now();
    }
    if (dropsNetwork) {
        schedule(QStringLiteral("network"), now().addSecs(uniform(2, 20)), [this] { setNetwork(true); });
    }
}

void SoakRun::editSettings()
{
    if (!m_online || m_server->faults().fault(Route::Accounts).isActive()) {
        return;
    }
    const qint64 which = uniform(0, 2);
    if (which == 0) {
        QList<qint64> others{30, 60, 120, 180};
        others.removeAll(m_store->refreshMinutes());
        const qint64 minutes = others.at(uniform(0, others.size() - 1));
        m_store->settings().setRefreshMinutes(minutes);
        note(QStringLiteral("settings: refresh every %1 minutes, saved").arg(minutes));
    } else if (which == 1) {
        const DisplayedRoyalty royalty =
            m_store->displayedRoyalty() == DisplayedRoyalty::gross ? DisplayedRoyalty::net : DisplayedRoyalty::gross;
        m_store->settings().setDisplayedRoyalty(royalty);
        note(QStringLiteral("settings: show %1, saved").arg(royalty.rawValue()));
    } else {
        QStringList others = m_demoAccounts;
        others.removeAll(m_store->accountID());
        const QString account = others.at(uniform(0, others.size() - 1));
        m_store->settings().setAccountID(account);
        note(QStringLiteral("settings: account %1, saved").arg(account));
    }
    m_pendingSave = {m_store->accountID(), m_store->refreshMinutes(), m_store->displayedRoyalty()};
    m_savesBeforeConnect = m_secrets.saves;
    m_pendingConnect = PendingConnect::saveSettings;
    m_store->connect();
    settle();
}

void SoakRun::changeSalesMetric()
{
    const auto metrics = SalesBreakdownMetric::allCases();
    const SalesBreakdownMetric metric = metrics.at(std::size_t(uniform(0, qint64(metrics.size()) - 1)));
    if (chance(0.5)) {
        const qint64 offset = chance(0.5) ? -1 : 1;
        const qsizetype index = m_expected.salesMetricOrder.indexOf(metric);
        const qint64 target = index + offset;
        if (index >= 0 && target >= 0 && target < m_expected.salesMetricOrder.size()) {
            m_expected.salesMetricOrder.swapItemsAt(index, target);
        }
        m_store->moveSalesMetric(metric, offset);
        note(QStringLiteral("sales breakdown: %1 moved %2")
                 .arg(metric.rawValue(), offset < 0 ? QStringLiteral("up") : QStringLiteral("down")));
    } else {
        const bool hide = !m_expected.hiddenSalesMetrics.contains(metric);
        if (hide) {
            m_expected.hiddenSalesMetrics.insert(metric);
        } else {
            m_expected.hiddenSalesMetrics.remove(metric);
        }
        m_store->setSalesMetricHidden(metric.rawValue(), hide);
        note(QStringLiteral("sales breakdown: %1 %2")
                 .arg(metric.rawValue(), hide ? QStringLiteral("hidden") : QStringLiteral("shown")));
    }
    ++m_counters.salesMetricChanges;
    if (m_store->salesMetricOrder() != m_expected.salesMetricOrder
        || m_store->hiddenSalesMetrics() != m_expected.hiddenSalesMetrics) {
        fail(QStringLiteral("a change to the sales breakdown did not come out as asked"));
    }
}

void SoakRun::quitRightAfterRequest()
{
    // The cooldown of a request that has just gone out has to outlive the process.
    note(QStringLiteral("refresh pressed, then quit and relaunch within 3 seconds"));
    m_store->refresh();
    ++m_counters.refreshPresses;
    settle();
    m_clock.advance(std::chrono::milliseconds(uniform(0, 2900)));
    settle();
    restart();
}

void SoakRun::openPopover()
{
    ++m_counters.popoverOpens;
    note(QStringLiteral("popover opened"));
    m_store->recoverAutomaticRefreshIfNeeded(false);
    settle();
}

void SoakRun::openSettings()
{
    note(QStringLiteral("settings opened and closed"));
    m_store->showSettings();
    settle();
    m_store->status().setIsShowingSettings(false);
}

void SoakRun::signOut()
{
    ++m_counters.signOuts;
    note(QStringLiteral("signed out"));
    m_store->signOut();
    m_expected.signedIn = false;
    m_expected.accountID.clear();
    m_awaitingNetworkRecoverySince.reset();
    m_awaitingSleepRecoverySince.reset();
    schedule(QStringLiteral("reconnect"), now().addSecs(uniform(60, 2LL * 3600)), [this] { reconnect(); });
    settle();
}

void SoakRun::reconnect()
{
    if (m_expected.signedIn || m_pendingConnect != PendingConnect::none) {
        return;
    }
    unschedule(QStringLiteral("reconnect"));
    note(QStringLiteral("connecting with the demo key"));
    m_store->session().setApiKey(ApiKeys::demoKey());
    m_pendingSave = {m_store->accountID(), m_store->refreshMinutes(), m_store->displayedRoyalty()};
    m_savesBeforeConnect = m_secrets.saves;
    m_pendingConnect = PendingConnect::reconnect;
    m_store->connect();
    settle();
}

void SoakRun::schedule(const QString &key, const QDateTime &due, std::function<void()> action)
{
    unschedule(key);
    m_scheduled.append({key, due, std::move(action)});
}

void SoakRun::unschedule(const QString &key)
{
    m_scheduled.removeIf([&key](const Scheduled &scheduled) { return scheduled.key == key; });
}

void SoakRun::runDueScheduled()
{
    while (!m_failure) {
        auto next = std::min_element(m_scheduled.begin(), m_scheduled.end(),
                                     [](const Scheduled &a, const Scheduled &b) { return a.due < b.due; });
        if (next == m_scheduled.end() || next->due > now()) {
            return;
        }
        const std::function<void()> action = std::move(next->action);
        m_scheduled.erase(next);
        action();
    }
}
