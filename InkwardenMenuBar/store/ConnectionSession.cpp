#include "ConnectionSession.h"

#include "AppUpdates.h"
#include "NetworkReachability.h"
#include "PlatformTexts.h"
#include "StoreSettings.h"
#include "StoreStatus.h"
#include "model/Clock.h"
#include "service/RoyaltiesService.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace {

constexpr double requestCooldownSeconds = 3.0;
constexpr auto cooldownTick = 200ms;
constexpr auto recoveryTick = 15s;
constexpr auto startSignInDelay = 500ms;
// How often a locked or silent keyring is asked again when it says nothing by itself.
constexpr auto keyringRetryInterval = 60s;

QString noInternetMessage()
{
    return QCoreApplication::translate("ConnectionSession",
                                       "No internet connection. Inkwarden will refresh automatically when it returns.");
}

// What stands for an amount while the amounts are hidden.
QString hiddenAmount()
{
    return QStringLiteral(u"\u2022\u2022\u2022");
}

QString noAccountsMessage()
{
    return QCoreApplication::translate("ConnectionSession", "This API key does not have access to any accounts.");
}

} // namespace

ConnectionSession::ConnectionSession(Environment environment, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_moneyFormatter(m_environment.locale)
    , m_requestAvailableAt(m_environment.settings.requestAvailableAt())
{
    // A keyring that answers at once (or a store in memory) connects the session before it is
    // returned; the real keyring answers later, and nothing waits for it.
    m_environment.secrets.setChangeHandler([this, alive = std::weak_ptr<const bool>(m_lifetime.token())] {
        const std::shared_ptr<const bool> living = alive.lock();
        if (living && *living && !m_keyRead) {
            readStoredKey();
        }
    });
    QObject::connect(&m_environment.settings, &StoreSettings::hideAmountsChanged, this, &ConnectionSession::retitle);
    readStoredKey();
}

ConnectionSession::~ConnectionSession() = default;

void ConnectionSession::setApiKey(QString value)
{
    m_apiKey = std::move(value);
    Q_EMIT apiKeyChanged();
}

void ConnectionSession::setAccounts(QList<PublisherAccount> value)
{
    m_accounts = std::move(value);
    Q_EMIT accountsChanged();
}

void ConnectionSession::setSummary(RoyaltySummary value)
{
    m_summary = std::move(value);
    Q_EMIT summaryChanged();
}

void ConnectionSession::setIsLoading(bool value)
{
    m_isLoading = value;
    Q_EMIT isLoadingChanged();
    Q_EMIT canRequestSummaryChanged();
}

void ConnectionSession::setIsLoadingAccounts(bool value)
{
    m_isLoadingAccounts = value;
    Q_EMIT isLoadingAccountsChanged();
}

void ConnectionSession::setIsConnected(bool value)
{
    m_isConnected = value;
    Q_EMIT isConnectedChanged();
}

void ConnectionSession::setLastUpdated(std::optional<QDateTime> value)
{
    m_lastUpdated = std::move(value);
    Q_EMIT lastUpdatedChanged();
}

void ConnectionSession::setNextRefreshAt(std::optional<QDateTime> value)
{
    m_nextRefreshAt = std::move(value);
    Q_EMIT nextRefreshAtChanged();
}

void ConnectionSession::setIsNetworkAvailable(bool value)
{
    m_isNetworkAvailable = value;
    Q_EMIT isNetworkAvailableChanged();
}

void ConnectionSession::setRoyaltyChangeCountsDown(bool value)
{
    m_royaltyChangeCountsDown = value;
    Q_EMIT royaltyChangeCountsDownChanged();
}

void ConnectionSession::setMenuBarTitle(QString value)
{
    m_menuBarTitle = std::move(value);
    Q_EMIT menuBarTitleChanged();
}

void ConnectionSession::setRequestCooldownRemaining(qint64 value)
{
    m_requestCooldownRemaining = value;
    Q_EMIT requestCooldownRemainingChanged();
}

void ConnectionSession::setRequestAvailableAt(std::optional<QDateTime> value)
{
    m_requestAvailableAt = std::move(value);
    Q_EMIT canRequestSummaryChanged();
}

bool ConnectionSession::canRequestSummary() const
{
    if (m_isLoading) {
        return false;
    }
    return !m_requestAvailableAt || *m_requestAvailableAt <= m_environment.clock.now();
}

double ConnectionSession::highlightedRoyalty() const
{
    return MoneyFormatter::highlightedRoyalty(m_summary, m_environment.settings.displayedRoyalty());
}

QString ConnectionSession::money(double value, bool compact) const
{
    return money(value, m_summary.currency, compact);
}

QString ConnectionSession::money(double value, const QString &currencyCode, bool compact) const
{
    if (m_environment.settings.hideAmounts()) {
        return m_moneyFormatter.currencySymbol(currencyCode) + hiddenAmount();
    }
    return m_moneyFormatter.money(value, currencyCode, compact);
}

std::optional<MenuBarMoneyParts> ConnectionSession::menuBarMoneyParts() const
{
    std::optional<MenuBarMoneyParts> parts = m_moneyFormatter.menuBarMoneyParts(
        m_summary, m_environment.settings.displayedRoyalty(), m_lastUpdated.has_value());
    if (parts && m_environment.settings.hideAmounts()) {
        parts->amount = hiddenAmount();
    }
    return parts;
}

void ConnectionSession::retitle()
{
    if (m_lastUpdated && m_menuBarTitle != placeholderTitle() && m_menuBarTitle != failedTitle()) {
        setMenuBarTitle(money(highlightedRoyalty(), true));
    }
}

void ConnectionSession::replaceConnection()
{
    m_connection = std::make_unique<Lifetime>();
}

void ConnectionSession::end()
{
    replaceConnection();
    setApiKey(QString());
    setAccounts({});
    setIsLoadingAccounts(false);
    m_figuresPeriod.reset();
    setSummary(RoyaltySummary());
    setLastUpdated(std::nullopt);
    setNextRefreshAt(std::nullopt);
    m_timer.reset();
    setIsConnected(false);
    setMenuBarTitle(placeholderTitle());
}

void ConnectionSession::start()
{
    startRecoveryMonitoring();
    updateRequestCooldown();
    m_startRequested = true;
    // Until the keyring has answered, neither the figures nor the sign-in can begin.
    if (m_keyRead) {
        beginWithStoredKey();
    }
}

QCoro::Task<> ConnectionSession::readStoredKey()
{
    if (m_readingKey) {
        m_readKeyAgain = true;
        co_return;
    }
    m_readingKey = true;
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    StoredKey stored;
    do {
        m_readKeyAgain = false;
        // Named, not a temporary: g++ 12 mishandles temporaries inside a co_await expression.
        QCoro::Task<StoredKey> reading = m_environment.secrets.readAPIKey();
        stored = co_await std::move(reading);
        if (!*alive) {
            co_return;
        }
    } while (m_readKeyAgain);
    m_readingKey = false;
    adoptStoredKey(stored);
}

void ConnectionSession::adoptStoredKey(const StoredKey &stored)
{
    const bool wasProblem = m_keyringMessage.has_value();
    const auto clearProblem = [this] {
        m_keyringRetryTimer.reset();
        if (m_keyringMessage && m_environment.status.errorMessage() == m_keyringMessage) {
            m_environment.status.setErrorMessage(std::nullopt);
        }
        m_keyringMessage.reset();
    };
    if (m_isConnected) {
        // Connected meanwhile, through a sign-in whose callback came while the keyring took its
        // time: the new key stands, and the sign-in has begun the figures.
        clearProblem();
        m_keyRead = true;
        return;
    }
    switch (stored.state) {
    case StoredKey::State::found:
        clearProblem();
        setApiKey(stored.key);
        setIsConnected(true);
        m_keyRead = true;
        if (m_startRequested) {
            beginWithStoredKey();
        }
        return;
    case StoredKey::State::absent:
        clearProblem();
        m_keyRead = true;
        if (m_startRequested || wasProblem) {
            beginWithStoredKey();
        }
        return;
    case StoredKey::State::locked:
    case StoredKey::State::unreachable:
        break;
    }
    // Not "no key": the key is most likely there, behind a lock or a keyring that is busy. Say so,
    // ask once for the unlock, and read again when the keyring changes (or, failing a word from
    // it, now and then); never sign in because of it.
    const bool locked = stored.state == StoredKey::State::locked;
    m_keyringMessage = locked ? PlatformTexts::keyringLocked() : PlatformTexts::keyringUnreachable();
    m_environment.status.setErrorMessage(m_keyringMessage);
    if (locked && !m_askedToUnlock) {
        m_askedToUnlock = true;
        m_environment.secrets.askToUnlock();
    }
    if (!m_keyringRetryTimer) {
        m_keyringRetryTimer = m_environment.clock.startTimer(keyringRetryInterval, true, [this] { readStoredKey(); });
    }
}

void ConnectionSession::beginWithStoredKey()
{
    if (m_isConnected) {
        loadAccounts();
        refresh();
        return;
    }
    // Without a key the user goes straight to the browser sign-in, a moment after launch.
    m_startSignInTimer = m_environment.clock.startTimer(startSignInDelay, false, [this] {
        m_startSignInTimer.reset();
        Q_EMIT signInWanted();
    });
}

void ConnectionSession::refresh()
{
    if (!m_isConnected) {
        return;
    }
    if (!m_isNetworkAvailable) {
        m_environment.status.setErrorMessage(noInternetMessage());
        return;
    }
    if (!canRequestSummary()) {
        m_refreshWhenAvailable = true;
        return;
    }
    if (m_summaryInFlight) {
        // Connecting has cleared `isLoading` while figures are still on their way. They answer
        // this refresh, or are asked for again if they belong to the connection just replaced.
        m_refreshWhenAvailable = true;
        setIsLoading(true);
        return;
    }
    m_refreshWhenAvailable = false;
    m_environment.status.setErrorMessage(std::nullopt);
    setIsLoading(true);
    beginRequestCooldown(requestCooldownSeconds);
    performRefresh(m_environment.settings.selectedPeriod());
}

QCoro::Task<> ConnectionSession::performRefresh(RoyaltyPeriod period)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const std::shared_ptr<const bool> connection = m_connection->token();
    const QString accountID = m_environment.settings.accountID();
    m_summaryInFlight = true;
    const ServiceResult<RoyaltySummary> result =
        co_await m_environment.service.fetchSummary(m_environment.settings.serverURL(), m_apiKey, accountID, period);
    if (!*alive) {
        co_return;
    }
    m_summaryInFlight = false;

    if (!*connection || accountID != m_environment.settings.accountID()) {
        // The user signed out, connected again or chose another account while this loaded: the
        // answer is dropped, whatever it says, and the figures now wanted are asked for. A server
        // that asked to wait is still obeyed.
        if (const RoyaltiesError *error = result ? nullptr : result.error().royaltiesError();
            error && error->kind() == RoyaltiesError::Kind::rateLimited) {
            beginRequestCooldown(error->retryAfter());
        }
        setIsLoading(false);
        refresh();
        co_return;
    }

    if (result) {
        if (!(m_environment.settings.selectedPeriod() == period)) {
            // The user switched periods while this one loaded: ask again for the one now shown.
            setIsLoading(false);
            refresh();
            co_return;
        }
        const double previous = highlightedRoyalty();
        const RoyaltySummary &summary = result.value();
        const double current = MoneyFormatter::highlightedRoyalty(summary, m_environment.settings.displayedRoyalty());
        setRoyaltyChangeCountsDown(current < previous);
        m_figuresPeriod = period;
        setSummary(summary);
        setLastUpdated(m_environment.clock.now());
        setMenuBarTitle(money(highlightedRoyalty(), true));
        setIsLoading(false);
        scheduleNextRefresh();
        Q_EMIT figuresRefreshed(accountID, period);
        co_return;
    }

    setIsLoading(false);
    if (const RoyaltiesError *error = result.error().royaltiesError();
        error && error->kind() == RoyaltiesError::Kind::rateLimited) {
        beginRequestCooldown(error->retryAfter());
    }
    m_environment.status.setErrorMessage(friendlyMessage(result.error()));
    setMenuBarTitle(failedTitle());
    scheduleNextRefresh();
}

void ConnectionSession::beginRequestCooldown(double seconds)
{
    const qint64 milliseconds = std::llround(std::max(seconds, 0.0) * 1000.0);
    const QDateTime until = m_environment.clock.now().addMSecs(milliseconds);
    // A running cooldown is never shortened: a long wait the server asked for outlives the short
    // cooldown of a later request.
    if (m_requestAvailableAt && *m_requestAvailableAt > until) {
        return;
    }
    setRequestAvailableAt(until);
    m_environment.settings.setRequestAvailableAt(until);
    updateRequestCooldown();
}

void ConnectionSession::updateRequestCooldown()
{
    m_cooldownTimer.reset();
    if (!m_requestAvailableAt) {
        setRequestCooldownRemaining(0);
        return;
    }
    const qint64 remainingMilliseconds = m_environment.clock.now().msecsTo(*m_requestAvailableAt);
    if (remainingMilliseconds > 0) {
        const auto remaining = static_cast<qint64>(std::ceil(double(remainingMilliseconds) / 1000.0));
        setRequestCooldownRemaining(std::max<qint64>(remaining, 1));
        m_cooldownTimer = m_environment.clock.startTimer(cooldownTick, true, [this] { updateRequestCooldown(); });
        return;
    }
    setRequestCooldownRemaining(0);
    setRequestAvailableAt(std::nullopt);
    m_environment.settings.setRequestAvailableAt(std::nullopt);
    if (m_refreshWhenAvailable && !m_isLoading) {
        m_refreshWhenAvailable = false;
        refresh();
    }
}

void ConnectionSession::scheduleNextRefresh()
{
    m_timer.reset();
    const auto interval = std::chrono::minutes(std::max<qint64>(m_environment.settings.refreshMinutes(), 1));
    setNextRefreshAt(m_environment.clock.now().addMSecs(std::chrono::milliseconds(interval).count()));
    m_timer = m_environment.clock.startTimer(interval, false, [this] {
        m_timer.reset();
        refresh();
    });
}

void ConnectionSession::startRecoveryMonitoring()
{
    if (m_recoveryTimer) {
        return;
    }
    QObject::connect(&m_environment.reachability, &NetworkReachability::availabilityChanged, this,
                     &ConnectionSession::handleNetworkAvailability);
    m_environment.reachability.start();
    m_recoveryTimer =
        m_environment.clock.startTimer(recoveryTick, true, [this] { recoverAutomaticRefreshIfNeeded(false); });
}

void ConnectionSession::handleNetworkAvailability(bool available)
{
    const bool wasAvailable = m_isNetworkAvailable;
    const bool hadStatus = m_hasReceivedNetworkStatus;
    m_hasReceivedNetworkStatus = true;
    setIsNetworkAvailable(available);
    if (!m_isConnected) {
        return;
    }
    if (!available) {
        m_environment.status.setErrorMessage(noInternetMessage());
    } else if (!wasAvailable && hadStatus) {
        recoverAutomaticRefreshIfNeeded(true);
    }
}

void ConnectionSession::recoverAutomaticRefreshIfNeeded(bool force)
{
    if (!m_isConnected || !m_isNetworkAvailable || m_isLoading) {
        return;
    }
    if (!m_nextRefreshAt && !force) {
        return;
    }
    if (m_nextRefreshAt && !force && m_environment.clock.now() < *m_nextRefreshAt) {
        return;
    }
    m_timer.reset();
    refresh();
}

QString ConnectionSession::lastUpdatedText(const QDateTime &now) const
{
    if (!m_lastUpdated) {
        //: When the royalty figures were last fetched: never yet
        return tr("Not refreshed yet");
    }
    const qint64 seconds = m_lastUpdated->msecsTo(now) / 1000;
    if (seconds <= 4) {
        //: When the royalty figures were last fetched
        return tr("Refreshed just now");
    }
    // Abbreviated units, the same for any count, and plain digits.
    if (seconds < 60) {
        //: When the royalty figures were last fetched: %1 seconds ago ("s" abbreviates seconds)
        return tr("Refreshed %1s ago").arg(seconds);
    }
    if (seconds < 3600) {
        //: When the royalty figures were last fetched: %1 minutes ago ("m" abbreviates minutes)
        return tr("Refreshed %1m ago").arg(seconds / 60);
    }
    const qint64 hours = seconds / 3600;
    const qint64 rest = seconds % 3600;
    if (rest < 60) {
        //: When the royalty figures were last fetched: %1 hours ago ("h" abbreviates hours)
        return tr("Refreshed %1h ago").arg(hours);
    }
    //: When the royalty figures were last fetched: %1 hours and %2 minutes ago ("h" and "m" abbreviate
    //: hours and minutes)
    return tr("Refreshed %1h %2m ago").arg(hours).arg(rest / 60);
}

QString ConnectionSession::nextRefreshText(const QDateTime &now) const
{
    if (!m_isNetworkAvailable) {
        //: Instead of the time of the next refresh, while there is no network
        return tr("Waiting for internet\u2026");
    }
    if (m_isLoading) {
        //: Instead of the time of the next refresh, while the figures are being fetched
        return tr("Refreshing now\u2026");
    }
    if (!m_nextRefreshAt) {
        return tr("Automatic refresh not scheduled");
    }
    if (now < *m_nextRefreshAt) {
        const auto remaining = static_cast<qint64>(std::ceil(double(now.msecsTo(*m_nextRefreshAt)) / 1000.0));
        const qint64 hours = remaining / 3600;
        const qint64 minutes = (remaining % 3600) / 60;
        const qint64 seconds = remaining % 60;
        const QString countdown = hours == 0 ? QString::asprintf("%02lld:%02lld", minutes, seconds)
                                             : QString::asprintf("%lld:%02lld:%02lld", hours, minutes, seconds);
        //: %1 is a countdown, such as 04:59 or 1:04:59
        return tr("Next refresh in %1").arg(countdown);
    }
    //: Instead of the time of the next refresh, when it is due and waits its turn
    return tr("Refresh queued\u2026");
}

QString ConnectionSession::friendlyMessage(const ServiceError &error)
{
    return error.localizedDescription();
}

void ConnectionSession::connect()
{
    m_environment.status.setErrorMessage(std::nullopt);
    const QString key = m_apiKey.trimmed();
    if (key.isEmpty()) {
        m_environment.status.setErrorMessage(RoyaltiesError::missingAPIKey().errorDescription());
        return;
    }
    setIsLoading(true);
    performConnect(key);
}

QCoro::Task<> ConnectionSession::performConnect(QString key)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const ServiceResult<AccountsResponse> response =
        co_await m_environment.service.fetchAccounts(m_environment.settings.serverURL(), key);
    if (!*alive) {
        co_return;
    }
    const std::optional<QString> failure = [&]() -> std::optional<QString> {
        if (!response) {
            return friendlyMessage(response.error());
        }
        if (response.value().accounts.isEmpty()) {
            return noAccountsMessage();
        }
        return std::nullopt;
    }();
    if (failure) {
        setIsLoading(false);
        m_environment.status.setErrorMessage(*failure);
        co_return;
    }

    m_environment.updates.offerVersion(response.value().latestAppVersion);
    adoptAccounts(response.value());

    const std::optional<RoyaltiesError> saveError = co_await m_environment.secrets.saveAPIKey(key);
    if (!*alive) {
        co_return;
    }
    if (saveError) {
        setIsLoading(false);
        m_environment.status.setErrorMessage(saveError->errorDescription());
        co_return;
    }
    m_environment.settings.persist();
    replaceConnection();
    setIsConnected(true);
    m_environment.status.setIsShowingSettings(false);
    setIsLoading(false);
    refresh();
}

void ConnectionSession::adoptAccounts(const AccountsResponse &response)
{
    setAccounts(response.accounts);
    const bool chosenAccountListed =
        std::any_of(response.accounts.cbegin(), response.accounts.cend(),
                    [this](const PublisherAccount &a) { return a.accountID == m_environment.settings.accountID(); });
    if (!chosenAccountListed) {
        m_environment.settings.setAccountID(response.accounts.first().accountID);
    }
}

void ConnectionSession::loadAccounts()
{
    if (!m_isConnected || m_isLoadingAccounts) {
        return;
    }
    setIsLoadingAccounts(true);
    performLoadAccounts();
}

QCoro::Task<> ConnectionSession::performLoadAccounts()
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    // Named, not a temporary: g++ 12 destroys temporaries of a co_await expression twice.
    const QString key = m_apiKey.trimmed();
    const ServiceResult<AccountsResponse> response =
        co_await m_environment.service.fetchAccounts(m_environment.settings.serverURL(), key);
    if (!*alive) {
        co_return;
    }
    if (!response || response.value().accounts.isEmpty()) {
        setIsLoadingAccounts(false);
        m_environment.status.setErrorMessage(response ? noAccountsMessage() : friendlyMessage(response.error()));
        co_return;
    }
    m_environment.updates.offerVersion(response.value().latestAppVersion);
    const QString previousAccountID = m_environment.settings.accountID();
    adoptAccounts(response.value());
    if (m_environment.settings.accountID() != previousAccountID) {
        m_environment.settings.persist();
        refresh();
    }
    setIsLoadingAccounts(false);
}
