#include "SoakRun.h"
#include "store/ConnectionSession.h"

#include <QUrlQuery>

#include <cmath>

using namespace std::chrono_literals;

namespace {

constexpr qint64 requestSpacingMs = 3000;
constexpr qint64 recoveryTickMs = 15'000;
constexpr qint64 cooldownTickMs = 200;
// Room for the moment a timer fires and the answer is read, which the soak settles at once.
constexpr qint64 slackMs = 1000;

QString optionalTime(const std::optional<QDateTime> &time)
{
    return time ? time->toString(Qt::ISODateWithMs) : QStringLiteral("none");
}

} // namespace

void SoakRun::requestArrived(const RecordedRequest &entry)
{
    const qint64 tag = entry.header(SoakNetwork::tagHeader()).toLongLong();
    const bool repeated = tag > 0 && m_network.markArrived(tag);
    const std::optional<Route> route = SoakNetwork::routeOfPath(entry.request.path);
    if (repeated) {
        ++m_counters.resentByHttpLayer;
        fail(QStringLiteral("the server got request #%1 a second time: the HTTP layer sent it again").arg(tag));
    }
    if (!route || (*route != Route::Stats && *route != Route::Accounts)) {
        return;
    }
    const Fault fault = m_server->faults().fault(*route);
    const QString kind = fault.isActive() ? FaultPlan::kindOf(fault) : QString();
    if (!kind.isEmpty()) {
        ++m_counters.faultsMet[kind];
        if (fault.hang) {
            ++m_counters.hangs;
        }
    }
    const QString met = kind.isEmpty() ? QString() : QStringLiteral(", meets ") + kind;
    if (*route == Route::Accounts) {
        ++m_counters.accountRequests;
        note(QStringLiteral("server: account request #%1%2").arg(tag).arg(met));
        return;
    }

    ++m_counters.statisticsRequests;
    const QDateTime at = entry.receivedAt;
    note(QStringLiteral("server: statistics request #%1 (%2 to %3)%4")
             .arg(tag)
             .arg(entry.request.queryValue(QStringLiteral("start_date")),
                  entry.request.queryValue(QStringLiteral("end_date")), met));
    if (m_lastStatisticsAt) {
        const qint64 spacing = m_lastStatisticsAt->msecsTo(at);
        if (!m_counters.minStatisticsSpacingMs || spacing < *m_counters.minStatisticsSpacingMs) {
            m_counters.minStatisticsSpacingMs = spacing;
        }
        if (spacing < requestSpacingMs) {
            QString reason = QStringLiteral("two statistics requests %1 apart at the server (at %2 and %3)")
                                 .arg(durationText(spacing), elapsedText(*m_lastStatisticsAt), elapsedText(at));
            if (repeated) {
                reason += QStringLiteral("; the second is request #%1 again: the store's HTTP client re-sent the "
                                         "GET after the server reset the connection")
                              .arg(tag);
            }
            fail(reason);
        }
    }
    for (auto it = m_obligations.begin(); it != m_obligations.end();) {
        if (at < it->until) {
            fail(QStringLiteral("%1 not honoured: the 429 reached the store at %2 (step %3), the next statistics "
                                "request came at %4, %5 early")
                     .arg(it->what, elapsedText(it->answeredAt))
                     .arg(it->step)
                     .arg(elapsedText(at), durationText(at.msecsTo(it->until))));
            ++it;
            continue;
        }
        if (it->what.startsWith(QLatin1String("Retry-After"))) {
            ++m_counters.retryAfterHonoured;
        }
        it = m_obligations.erase(it);
    }
    m_lastStatisticsAt = at;
}

void SoakRun::requestSent(const SoakNetwork::Sent &sent)
{
    if (sent.route != Route::Stats) {
        return;
    }
    ++m_statisticsSent;
    m_queuedRefreshDue.reset();
    // Every request that goes out starts the 3-second cooldown, whether or not it gets anywhere.
    m_modelCooldownUntil = std::max(m_modelCooldownUntil, now().addMSecs(requestSpacingMs));
    m_counters.maxStatisticsInFlight = std::max(m_counters.maxStatisticsInFlight, m_network.statisticsInFlight());
    note(QStringLiteral("statistics request #%1 sent%2")
             .arg(sent.tag)
             .arg(m_network.statisticsInFlight() > 1
                      ? QStringLiteral(" while %1 others are still in flight").arg(m_network.statisticsInFlight() - 1)
                      : QString()));
    if (m_network.statisticsInFlight() > 1) {
        fail(QStringLiteral("statistics request #%1 went out while another was still in flight").arg(sent.tag));
    }
    if (m_store && m_store->session().hasReceivedNetworkStatus() && !m_store->isNetworkAvailable()) {
        fail(QStringLiteral("a statistics request went out while the store knew the network was down"));
    }
}

void SoakRun::replyFinished(const SoakNetwork::Finished &finished)
{
    if (!finished.online) {
        ++m_counters.refusedWhileOffline;
        note(QStringLiteral("request #%1 failed: the network is down").arg(finished.tag));
        return;
    }
    if (finished.route != Route::Stats) {
        return;
    }
    m_lastAnsweredAccount = QUrlQuery(finished.url).queryItemValue(QStringLiteral("account_id"));
    note(QStringLiteral("statistics answer #%1: %2")
             .arg(finished.tag)
             .arg(finished.status != 0 ? QStringLiteral("HTTP %1").arg(finished.status)
                                       : QStringLiteral("no answer (network error %1)").arg(int(finished.error))));
    if (finished.status != 429 || finished.error == QNetworkReply::OperationCanceledError) {
        return;
    }
    ++m_counters.rateLimitsMet;
    const std::optional<double> seconds =
        finished.hasRetryAfter ? FaultPlan::numericRetryAfter(finished.retryAfter) : std::nullopt;
    Obligation obligation;
    obligation.answeredAt = now();
    obligation.step = m_counters.steps;
    if (seconds) {
        obligation.until = now().addMSecs(std::llround(std::max(*seconds, 0.0) * 1000.0));
        obligation.what = QStringLiteral("Retry-After: \"%1\"").arg(QString::fromLatin1(finished.retryAfter));
    } else {
        ++m_counters.retryAfterDefault;
        obligation.until = now().addMSecs(requestSpacingMs);
        obligation.what = finished.hasRetryAfter ? QStringLiteral("the 3-second wait for Retry-After: \"%1\"")
                                                       .arg(QString::fromLatin1(finished.retryAfter))
                                                 : QStringLiteral("the 3-second wait for a 429 without Retry-After");
    }
    note(QStringLiteral("rate limited: no statistics request before %1").arg(elapsedText(obligation.until)));
    m_modelCooldownUntil = std::max(m_modelCooldownUntil, obligation.until);
    m_obligations.append(obligation);
}

void SoakRun::refreshSucceeded()
{
    ++m_counters.successfulRefreshes;
    note(QStringLiteral("refresh succeeded: %1").arg(m_store->money(m_store->highlightedRoyalty(), true)));
    if (m_lastAnsweredAccount != m_store->accountID()) {
        // An answer that was still on its way when the account changed, shown as the new account's
        // figures, or shown after signing out.
        ++m_counters.figuresOfAnotherAccount;
        fail(m_store->accountID().isEmpty()
                 ? QStringLiteral("the figures of %1 are shown after signing out").arg(m_lastAnsweredAccount)
                 : QStringLiteral("the figures shown are those of %1, while %2 is chosen")
                       .arg(m_lastAnsweredAccount, m_store->accountID()));
    }
    if (m_awaitingNetworkRecoverySince) {
        ++m_counters.networkRecoveries;
        m_counters.longestNetworkRecoveryMs =
            std::max(m_counters.longestNetworkRecoveryMs, m_awaitingNetworkRecoverySince->msecsTo(now()));
        m_awaitingNetworkRecoverySince.reset();
    }
    if (m_awaitingSleepRecoverySince) {
        ++m_counters.sleepRecoveries;
        m_counters.longestSleepRecoveryMs =
            std::max(m_counters.longestSleepRecoveryMs, m_awaitingSleepRecoverySince->msecsTo(now()));
        m_awaitingSleepRecoverySince.reset();
    }
    if (m_calm && m_calm->readyAt && now() >= *m_calm->readyAt && !m_calm->succeededAt) {
        m_calm->succeededAt = now();
    }
}

void SoakRun::refreshFailed()
{
    ++m_counters.failedRefreshes;
    note(QStringLiteral("refresh failed: %1").arg(m_store->errorMessage().value_or(QString())));
}

void SoakRun::housekeeping()
{
    runDueScheduled();
    noticeSavedKey();
    if (m_pendingConnect != PendingConnect::none && m_network.unfinishedReplies(Route::Accounts) == 0) {
        finishPendingConnect(false);
    }
    // The cooldown ticker runs every 0.2 seconds, so the queued refresh goes out within one tick.
    if (m_queuedRefreshDue && now() > m_queuedRefreshDue->addMSecs(cooldownTickMs + 1)) {
        fail(QStringLiteral("a refresh pressed during the cooldown did not run when the cooldown ended at %1; "
                            "store: %2")
                 .arg(elapsedText(*m_queuedRefreshDue), storeStateText()));
    }
    for (auto it = m_obligations.begin(); it != m_obligations.end();) {
        if (it->until <= now()) {
            if (it->what.startsWith(QLatin1String("Retry-After"))) {
                ++m_counters.retryAfterHonoured;
            }
            it = m_obligations.erase(it);
        } else {
            ++it;
        }
    }
}

void SoakRun::noticeSavedKey()
{
    if (m_secrets.saves == m_seenSaves) {
        return;
    }
    m_seenSaves = m_secrets.saves;
    if (m_secrets.key.isEmpty()) {
        return;
    }
    // A connection went through: the key is in the keyring and the settings as they stood were
    // written.
    m_expected.signedIn = true;
    m_expected.accountID =
        m_demoAccounts.contains(m_pendingSave.accountID) ? m_pendingSave.accountID : m_demoAccounts.first();
    m_expected.refreshMinutes = m_pendingSave.refreshMinutes;
    m_expected.displayedRoyalty = m_pendingSave.displayedRoyalty;
}

void SoakRun::finishPendingConnect(bool interrupted)
{
    const PendingConnect kind = m_pendingConnect;
    m_pendingConnect = PendingConnect::none;
    const bool saved = m_secrets.saves > m_savesBeforeConnect;
    if (kind == PendingConnect::reconnect) {
        if (saved) {
            ++m_counters.reconnects;
            note(QStringLiteral("reconnected"));
        } else {
            ++m_counters.failedReconnects;
            note(QStringLiteral("reconnecting failed: %1")
                     .arg(interrupted ? QStringLiteral("interrupted")
                                      : m_store->errorMessage().value_or(QStringLiteral("no message"))));
            schedule(QStringLiteral("reconnect"), now().addSecs(uniform(60, 20LL * 60)), [this] { reconnect(); });
        }
        return;
    }
    if (saved) {
        ++m_counters.settingsSaved;
        note(QStringLiteral("settings saved"));
    } else if (interrupted) {
        note(QStringLiteral("saving the settings was interrupted"));
    } else {
        fail(QStringLiteral("saving the settings failed with the network up and nothing wrong with the account "
                            "list: %1")
                 .arg(m_store->errorMessage().value_or(QStringLiteral("no message"))));
    }
}

QString SoakRun::storeStateText() const
{
    if (!m_store) {
        return QStringLiteral("no store");
    }
    return QStringLiteral("connected %1, network %2, loading %3, next refresh at %4, request available at %5, "
                          "refresh when available %6, error \"%7\"")
        .arg(m_store->isConnected() ? QStringLiteral("yes") : QStringLiteral("no"),
             m_store->isNetworkAvailable() ? QStringLiteral("up") : QStringLiteral("down"),
             m_store->isLoading() ? QStringLiteral("yes") : QStringLiteral("no"),
             optionalTime(m_store->nextRefreshAt()), optionalTime(m_store->session().requestAvailableAt()),
             m_store->session().refreshWhenAvailable() ? QStringLiteral("yes") : QStringLiteral("no"),
             m_store->errorMessage().value_or(QString()));
}

qint64 SoakRun::cooldownRemainingMs() const
{
    return std::max<qint64>(now().msecsTo(m_modelCooldownUntil), 0);
}

void SoakRun::beginCalm(const QString &kind)
{
    m_queuedRefreshDue.reset();
    ++m_counters.calmWindows;
    ++m_counters.calmWindowsByKind[kind];
    m_calm = Calm{};
    m_calm->kind = kind;
    m_calm->began = now();
    note(QStringLiteral("calm window (%1): every fault off, the network up, connected").arg(kind));
    clearAllFaults();
    m_scheduled.clear();
    if (!m_online) {
        setNetwork(true);
    }
    if (!m_expected.signedIn && m_pendingConnect == PendingConnect::none) {
        reconnect();
    }
}

void SoakRun::calmReady(const QDateTime &deadline, const QString &rule)
{
    m_calm->readyAt = now();
    m_calm->deadline = deadline;
    m_calm->rule = rule;
    note(QStringLiteral("calm window: a successful refresh is due by %1 (%2)").arg(elapsedText(deadline), rule));
}

void SoakRun::tendCalm()
{
    Calm &calm = *m_calm;
    if (!calm.prepared) {
        if (calm.began.msecsTo(now()) > 2LL * 3600LL * 1000) {
            fail(QStringLiteral("the store was not connected and idle two hours after every fault was cleared: %1")
                     .arg(storeStateText()));
            return;
        }
        if (!m_expected.signedIn && m_pendingConnect == PendingConnect::none) {
            unschedule(QStringLiteral("reconnect"));
            reconnect();
            return;
        }
        if (m_pendingConnect != PendingConnect::none || m_network.unfinishedReplies() > 0 || m_store->isLoading()
            || !m_store->isConnected()) {
            return;
        }
        calm.prepared = true;
        if (calm.kind == QLatin1String("network return")) {
            setNetwork(false);
            calm.offlineUntil = now().addSecs(uniform(60, 20LL * 60));
            return;
        }
        if (calm.kind == QLatin1String("wake") && m_store->nextRefreshAt()) {
            // Sleep through the scheduled refresh: the recovery tick has to catch it up.
            const qint64 toRefresh = std::max<qint64>(now().msecsTo(*m_store->nextRefreshAt()), 0);
            const qint64 duration = toRefresh + uniform(60'000, 30LL * 60'000);
            // Timers paused, as Linux's monotonic timers are: only the recovery tick catches up.
            ++m_counters.sleeps;
            ++m_counters.sleepsWithPausedTimers;
            m_clock.sleep(std::chrono::milliseconds(duration), true);
            note(QStringLiteral("slept %1 past the scheduled refresh (timers paused)")
                     .arg(durationText(duration - toRefresh)));
            m_awaitingSleepRecoverySince = now();
            calmReady(now().addMSecs(cooldownRemainingMs() + recoveryTickMs + slackMs),
                      QStringLiteral("a refresh missed in sleep runs at the next 15-second recovery tick"));
            return;
        }
        const qint64 interval = std::max(m_intervalInForce, m_store->refreshMinutes()) * 60'000;
        calmReady(
            now().addMSecs(std::max(interval, cooldownRemainingMs()) + recoveryTickMs + slackMs),
            QStringLiteral("within the refresh interval of %1 minutes and a recovery tick").arg(interval / 60'000));
        return;
    }

    if (calm.offlineUntil && !calm.readyAt) {
        if (now() < *calm.offlineUntil) {
            return;
        }
        // Ready before the report: the refresh it triggers may well finish inside it.
        calmReady(now().addMSecs(cooldownRemainingMs() + slackMs),
                  QStringLiteral("coming back online refreshes at once, or when the cooldown ends"));
        setNetwork(true);
    }

    if (calm.succeededAt) {
        const qint64 waited = calm.readyAt->msecsTo(*calm.succeededAt);
        if (*calm.succeededAt > *calm.deadline) {
            fail(QStringLiteral("no timely recovery in a %1 calm window: the refresh came %2 after the store was "
                                "ready, later than %3")
                     .arg(calm.kind, durationText(waited), calm.rule));
            return;
        }
        ++m_counters.calmRecoveries;
        m_counters.longestCalmRecoveryMs = std::max(m_counters.longestCalmRecoveryMs, waited);
        note(QStringLiteral("calm window (%1) recovered after %2").arg(calm.kind, durationText(waited)));
        m_calm.reset();
        m_nextCalmAt = now().addSecs(uniform(2LL * 3600, 4LL * 3600));
        return;
    }
    if (calm.deadline && now() > *calm.deadline) {
        fail(QStringLiteral("no recovery in a %1 calm window: the faults were cleared and the network was up at %2, "
                            "but no refresh succeeded by %3 (%4); store: %5")
                 .arg(calm.kind, elapsedText(*calm.readyAt), elapsedText(*calm.deadline), calm.rule, storeStateText()));
    }
}
