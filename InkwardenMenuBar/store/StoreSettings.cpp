#include "StoreSettings.h"

#include "Preferences.h"
#include "SettingsKeys.h"
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

template <typename Metrics>
QStringList rawValues(const Metrics &metrics)
{
    QStringList values;
    for (const SalesBreakdownMetric metric : metrics) {
        values.append(metric.rawValue());
    }
    return values;
}

} // namespace

StoreSettings::StoreSettings(Preferences &preferences, const QString &defaultServerURL, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
{
    m_serverURL = preferences.string(SettingsKeys::serverURL).value_or(defaultServerURL);
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
    m_hideAmounts = preferences.boolean(SettingsKeys::hideAmounts).value_or(false);
}

QList<SalesBreakdownMetric> StoreSettings::visibleSalesMetrics() const
{
    QList<SalesBreakdownMetric> visible;
    for (const SalesBreakdownMetric metric : m_salesMetricOrder) {
        if (!m_hiddenSalesMetrics.contains(metric)) {
            visible.append(metric);
        }
    }
    return visible;
}

void StoreSettings::setServerURL(QString value)
{
    m_serverURL = std::move(value);
    Q_EMIT serverURLChanged();
}

void StoreSettings::setAccountID(QString value)
{
    m_accountID = std::move(value);
    Q_EMIT accountIDChanged();
}

void StoreSettings::setRefreshMinutes(qint64 value)
{
    m_refreshMinutes = value;
    Q_EMIT refreshMinutesChanged();
}

void StoreSettings::setDisplayedRoyalty(DisplayedRoyalty value)
{
    m_displayedRoyalty = value;
    Q_EMIT displayedRoyaltyChanged();
}

void StoreSettings::selectPeriod(RoyaltyPeriod value)
{
    m_selectedPeriod = value;
    Q_EMIT selectedPeriodChanged();
    m_preferences.setString(SettingsKeys::selectedPeriod, value.rawValue());
}

void StoreSettings::setSalesMetricOrder(QList<SalesBreakdownMetric> value)
{
    m_salesMetricOrder = std::move(value);
    Q_EMIT salesMetricOrderChanged();
}

void StoreSettings::setHiddenSalesMetrics(QSet<SalesBreakdownMetric> value)
{
    m_hiddenSalesMetrics = std::move(value);
    Q_EMIT hiddenSalesMetricsChanged();
}

void StoreSettings::setHideAmounts(bool value)
{
    m_hideAmounts = value;
    m_preferences.setBoolean(SettingsKeys::hideAmounts, value);
    Q_EMIT hideAmountsChanged();
}

void StoreSettings::moveSalesMetric(SalesBreakdownMetric metric, qint64 offset)
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

void StoreSettings::setSalesMetricHidden(SalesBreakdownMetric metric, bool hidden)
{
    QSet<SalesBreakdownMetric> hiddenMetrics = m_hiddenSalesMetrics;
    if (hidden) {
        hiddenMetrics.insert(metric);
    } else {
        hiddenMetrics.remove(metric);
    }
    setHiddenSalesMetrics(std::move(hiddenMetrics));
    persistSalesMetricPreferences();
}

void StoreSettings::persist()
{
    m_preferences.setString(SettingsKeys::serverURL, m_serverURL.trimmed());
    m_preferences.setString(SettingsKeys::accountID, m_accountID);
    m_preferences.setInteger(SettingsKeys::refreshMinutes, m_refreshMinutes);
    m_preferences.setString(SettingsKeys::displayedRoyalty, m_displayedRoyalty.rawValue());
    persistSalesMetricPreferences();
}

void StoreSettings::persistSalesMetricPreferences()
{
    m_preferences.setStringList(SettingsKeys::salesMetricOrder, rawValues(m_salesMetricOrder));
    m_preferences.setStringList(SettingsKeys::hiddenSalesMetrics, rawValues(m_hiddenSalesMetrics));
}

void StoreSettings::forgetAccount()
{
    setAccountID(QString());
    m_preferences.remove(SettingsKeys::accountID);
    setPendingSignIn(std::nullopt);
}

std::optional<QDateTime> StoreSettings::requestAvailableAt() const
{
    return m_preferences.date(SettingsKeys::requestAvailableAt);
}

void StoreSettings::setRequestAvailableAt(const std::optional<QDateTime> &value)
{
    if (value) {
        m_preferences.setDate(SettingsKeys::requestAvailableAt, *value);
    } else {
        m_preferences.remove(SettingsKeys::requestAvailableAt);
    }
}

std::optional<StoreSettings::PendingSignIn> StoreSettings::pendingSignIn() const
{
    const std::optional<QString> verifier = m_preferences.string(SettingsKeys::pendingAuthVerifier);
    const std::optional<QString> state = m_preferences.string(SettingsKeys::pendingAuthState);
    if (!verifier || !state) {
        return std::nullopt;
    }
    return PendingSignIn{*verifier, *state};
}

void StoreSettings::setPendingSignIn(const std::optional<PendingSignIn> &value)
{
    if (value) {
        m_preferences.setStrings(
            {{SettingsKeys::pendingAuthVerifier, value->verifier}, {SettingsKeys::pendingAuthState, value->state}});
    } else {
        m_preferences.remove({SettingsKeys::pendingAuthVerifier, SettingsKeys::pendingAuthState});
    }
}

const std::optional<QString> &StoreSettings::setAsideFile() const
{
    return m_preferences.setAsideFile();
}
