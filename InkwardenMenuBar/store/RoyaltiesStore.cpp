#include "RoyaltiesStore.h"

#include "NetworkReachability.h"
#include "Preferences.h"
#include "SecretStore.h"
#include "SettingsKeys.h"
#include "model/Clock.h"
#include "model/RefreshInterval.h"

namespace {

// The stored order, unknown names skipped and duplicates kept, then every metric it lacks in the
// canonical order: a version that adds metrics puts them at the end of the user's order.
QList<SalesBreakdownMetric> salesMetricOrderFrom(const QStringList &stored)
{
    QList<SalesBreakdownMetric> order;
    for (const QString &raw : stored) {
        if (const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(raw)) {
            order.append(*metric);
        }
    }
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        if (!order.contains(metric)) {
            order.append(metric);
        }
    }
    return order;
}

QSet<SalesBreakdownMetric> hiddenSalesMetricsFrom(const QStringList &stored)
{
    QSet<SalesBreakdownMetric> hidden;
    for (const QString &raw : stored) {
        if (const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(raw)) {
            hidden.insert(*metric);
        }
    }
    return hidden;
}

} // namespace

RoyaltiesStore::RoyaltiesStore(StoreEnvironment environment, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_moneyFormatter(m_environment.locale)
    , m_service(m_environment.network, m_environment.clock)
{
    Preferences &preferences = m_environment.preferences;

    m_serverURL = preferences.string(SettingsKeys::serverURL)
                      .value_or(m_environment.appInfo.defaultServerURL.value_or(builtInServerURL()));
    m_accountID = preferences.string(SettingsKeys::accountID).value_or(QString());
    const qint64 storedMinutes = preferences.integer(SettingsKeys::refreshMinutes).value_or(0);
    m_refreshMinutes = RefreshInterval::isOffered(storedMinutes) ? storedMinutes : RefreshInterval::defaultMinutes;
    m_selectedPeriod = RoyaltyPeriod::fromRawValue(preferences.string(SettingsKeys::selectedPeriod).value_or(QString()))
                           .value_or(RoyaltyPeriod::today);
    m_displayedRoyalty =
        preferences.string(SettingsKeys::displayedRoyalty) == DisplayedRoyalty(DisplayedRoyalty::net).rawValue()
            ? DisplayedRoyalty::net
            : DisplayedRoyalty::gross;
    m_salesMetricOrder =
        salesMetricOrderFrom(preferences.stringList(SettingsKeys::salesMetricOrder).value_or(QStringList()));
    m_hiddenSalesMetrics =
        hiddenSalesMetricsFrom(preferences.stringList(SettingsKeys::hiddenSalesMetrics).value_or(QStringList()));
    m_requestAvailableAt = preferences.date(SettingsKeys::requestAvailableAt);
    if (const std::optional<QString> &aside = preferences.setAsideFile()) {
        m_errorMessage = QStringLiteral("Inkwarden could not read its settings file and started with the default "
                                        "settings. The old file was kept as ")
                         + *aside + u'.';
    }
    refreshLaunchAtLoginStatus();
    // A keyring that answers at once (or a store in memory) connects the store before it is
    // returned; the real keyring answers later, and nothing waits for it.
    m_environment.secrets.setChangeHandler([this, alive = std::weak_ptr<bool>(m_alive)] {
        if (alive.lock() && !m_keyRead) {
            readStoredKey();
        }
    });
    readStoredKey();
}

RoyaltiesStore::~RoyaltiesStore()
{
    // Before any member goes: the service's requests are aborted as it is destroyed, and the tasks
    // waiting on them must find the store gone.
    *m_alive = false;
}

bool RoyaltiesStore::canRequestSummary() const
{
    if (m_isLoading) {
        return false;
    }
    return !m_requestAvailableAt || *m_requestAvailableAt <= m_environment.clock.now();
}

QList<SalesBreakdownMetric> RoyaltiesStore::visibleSalesMetrics() const
{
    QList<SalesBreakdownMetric> visible;
    for (const SalesBreakdownMetric metric : m_salesMetricOrder) {
        if (!m_hiddenSalesMetrics.contains(metric)) {
            visible.append(metric);
        }
    }
    return visible;
}

double RoyaltiesStore::highlightedRoyalty() const
{
    return MoneyFormatter::highlightedRoyalty(m_summary, m_displayedRoyalty);
}

QString RoyaltiesStore::money(double value, bool compact) const
{
    return m_moneyFormatter.money(value, m_summary.currency, compact);
}

std::optional<MenuBarMoneyParts> RoyaltiesStore::menuBarMoneyParts() const
{
    return m_moneyFormatter.menuBarMoneyParts(m_summary, m_displayedRoyalty, m_lastUpdated.has_value());
}

void RoyaltiesStore::selectPeriod(RoyaltyPeriod period)
{
    if (period == m_selectedPeriod || !canSwitchPeriod()) {
        return;
    }
    setSelectedPeriod(period);
    m_environment.preferences.setString(SettingsKeys::selectedPeriod, period.rawValue());
    refresh();
}

void RoyaltiesStore::selectPeriod(const QString &rawValue)
{
    if (const std::optional<RoyaltyPeriod> period = RoyaltyPeriod::fromRawValue(rawValue)) {
        selectPeriod(*period);
    }
}

void RoyaltiesStore::moveSalesMetric(SalesBreakdownMetric metric, qint64 offset)
{
    const qsizetype index = m_salesMetricOrder.indexOf(metric);
    if (index < 0) {
        return;
    }
    const qint64 target = index + offset;
    if (target < 0 || target >= m_salesMetricOrder.size()) {
        return;
    }
    QList<SalesBreakdownMetric> order = m_salesMetricOrder;
    order.swapItemsAt(index, target);
    setSalesMetricOrder(std::move(order));
    persistSalesMetricPreferences();
}

void RoyaltiesStore::moveSalesMetric(const QString &rawValue, qint64 offset)
{
    if (const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(rawValue)) {
        moveSalesMetric(*metric, offset);
    }
}

void RoyaltiesStore::setSalesMetricHidden(const QString &rawValue, bool hidden)
{
    const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(rawValue);
    if (!metric) {
        return;
    }
    QSet<SalesBreakdownMetric> hiddenMetrics = m_hiddenSalesMetrics;
    if (hidden) {
        hiddenMetrics.insert(*metric);
    } else {
        hiddenMetrics.remove(*metric);
    }
    setHiddenSalesMetrics(std::move(hiddenMetrics));
    persistSalesMetricPreferences();
}

void RoyaltiesStore::persistSettings()
{
    Preferences &preferences = m_environment.preferences;
    preferences.setString(SettingsKeys::serverURL, m_serverURL.trimmed());
    preferences.setString(SettingsKeys::accountID, m_accountID);
    preferences.setInteger(SettingsKeys::refreshMinutes, m_refreshMinutes);
    preferences.setString(SettingsKeys::displayedRoyalty, m_displayedRoyalty.rawValue());
    persistSalesMetricPreferences();
}

void RoyaltiesStore::persistSalesMetricPreferences()
{
    QStringList order;
    for (const SalesBreakdownMetric metric : m_salesMetricOrder) {
        order.append(metric.rawValue());
    }
    QStringList hidden;
    for (const SalesBreakdownMetric metric : m_hiddenSalesMetrics) {
        hidden.append(metric.rawValue());
    }
    m_environment.preferences.setStringList(SettingsKeys::salesMetricOrder, order);
    m_environment.preferences.setStringList(SettingsKeys::hiddenSalesMetrics, hidden);
}

void RoyaltiesStore::showSettings()
{
    refreshLaunchAtLoginStatus();
    setIsShowingSettings(true);
    if (m_accounts.isEmpty()) {
        loadAccounts();
    }
}

void RoyaltiesStore::signOut()
{
    // Deleting a missing key cannot fail, so nothing waits for the keyring here.
    m_environment.secrets.deleteAPIKey();

    ++m_connectionGeneration;
    setApiKey(QString());
    setAccountID(QString());
    setAccounts({});
    setLatestAppVersion(std::nullopt);
    setDownloadedUpdateURL(std::nullopt);
    setUpdateStatusMessage(std::nullopt);
    setIsShowingUpdatePrompt(false);
    m_promptedUpdateVersion.reset();
    setIsLoadingAccounts(false);
    setSummary(RoyaltySummary());
    setLastUpdated(std::nullopt);
    setNextRefreshAt(std::nullopt);
    m_timer.reset();
    setIsConnected(false);
    setIsAuthenticating(false);
    setIsShowingSettings(false);
    setMenuBarTitle(placeholderTitle());

    Preferences &preferences = m_environment.preferences;
    preferences.remove(SettingsKeys::accountID);
    preferences.remove(SettingsKeys::pendingAuthVerifier);
    preferences.remove(SettingsKeys::pendingAuthState);
}
