#include "RoyaltiesStore.h"

// The published properties: plain assignments that always notify, and the forms QML reads.

namespace {

template <typename Metrics>
QStringList rawValues(const Metrics &metrics)
{
    QStringList values;
    values.reserve(metrics.size());
    for (const SalesBreakdownMetric metric : metrics) {
        values.append(metric.rawValue());
    }
    return values;
}

template <typename T>
QVariant optionalVariant(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

} // namespace

void RoyaltiesStore::setServerURL(QString value)
{
    m_serverURL = std::move(value);
    Q_EMIT serverURLChanged();
}

void RoyaltiesStore::setApiKey(QString value)
{
    m_apiKey = std::move(value);
    Q_EMIT apiKeyChanged();
}

void RoyaltiesStore::setAccountID(QString value)
{
    m_accountID = std::move(value);
    Q_EMIT accountIDChanged();
}

void RoyaltiesStore::setRefreshMinutes(qint64 value)
{
    m_refreshMinutes = value;
    Q_EMIT refreshMinutesChanged();
}

void RoyaltiesStore::setSelectedPeriod(RoyaltyPeriod value)
{
    m_selectedPeriod = value;
    Q_EMIT selectedPeriodChanged();
}

void RoyaltiesStore::setDisplayedRoyalty(DisplayedRoyalty value)
{
    m_displayedRoyalty = value;
    Q_EMIT displayedRoyaltyChanged();
}

void RoyaltiesStore::setSalesMetricOrder(QList<SalesBreakdownMetric> value)
{
    m_salesMetricOrder = std::move(value);
    Q_EMIT salesMetricOrderChanged();
}

void RoyaltiesStore::setHiddenSalesMetrics(QSet<SalesBreakdownMetric> value)
{
    m_hiddenSalesMetrics = std::move(value);
    Q_EMIT hiddenSalesMetricsChanged();
}

void RoyaltiesStore::setAccounts(QList<PublisherAccount> value)
{
    m_accounts = std::move(value);
    Q_EMIT accountsChanged();
}

void RoyaltiesStore::setSummary(RoyaltySummary value)
{
    m_summary = std::move(value);
    Q_EMIT summaryChanged();
}

void RoyaltiesStore::setIsLoading(bool value)
{
    m_isLoading = value;
    Q_EMIT isLoadingChanged();
    Q_EMIT canRequestSummaryChanged();
}

void RoyaltiesStore::setIsLoadingAccounts(bool value)
{
    m_isLoadingAccounts = value;
    Q_EMIT isLoadingAccountsChanged();
}

void RoyaltiesStore::setIsConnected(bool value)
{
    m_isConnected = value;
    Q_EMIT isConnectedChanged();
}

void RoyaltiesStore::setIsAuthenticating(bool value)
{
    m_isAuthenticating = value;
    Q_EMIT isAuthenticatingChanged();
}

void RoyaltiesStore::setIsShowingSettings(bool value)
{
    m_isShowingSettings = value;
    Q_EMIT isShowingSettingsChanged();
}

void RoyaltiesStore::setErrorMessage(std::optional<QString> value)
{
    m_errorMessage = std::move(value);
    Q_EMIT errorMessageChanged();
}

void RoyaltiesStore::setLastUpdated(std::optional<QDateTime> value)
{
    m_lastUpdated = std::move(value);
    Q_EMIT lastUpdatedChanged();
}

void RoyaltiesStore::setNextRefreshAt(std::optional<QDateTime> value)
{
    m_nextRefreshAt = std::move(value);
    Q_EMIT nextRefreshAtChanged();
}

void RoyaltiesStore::setIsNetworkAvailable(bool value)
{
    m_isNetworkAvailable = value;
    Q_EMIT isNetworkAvailableChanged();
}

void RoyaltiesStore::setRoyaltyChangeCountsDown(bool value)
{
    m_royaltyChangeCountsDown = value;
    Q_EMIT royaltyChangeCountsDownChanged();
}

void RoyaltiesStore::setMenuBarTitle(QString value)
{
    m_menuBarTitle = std::move(value);
    Q_EMIT menuBarTitleChanged();
}

void RoyaltiesStore::setRequestCooldownRemaining(qint64 value)
{
    m_requestCooldownRemaining = value;
    Q_EMIT requestCooldownRemainingChanged();
}

void RoyaltiesStore::publishOpensAtLogin(bool value)
{
    m_opensAtLogin = value;
    Q_EMIT opensAtLoginChanged();
}

void RoyaltiesStore::setLaunchAtLoginRequiresApproval(bool value)
{
    m_launchAtLoginRequiresApproval = value;
    Q_EMIT launchAtLoginRequiresApprovalChanged();
}

void RoyaltiesStore::setLatestAppVersion(std::optional<QString> value)
{
    m_latestAppVersion = std::move(value);
    Q_EMIT latestAppVersionChanged();
}

void RoyaltiesStore::setIsDownloadingUpdate(bool value)
{
    m_isDownloadingUpdate = value;
    Q_EMIT isDownloadingUpdateChanged();
}

void RoyaltiesStore::setIsCheckingForUpdates(bool value)
{
    m_isCheckingForUpdates = value;
    Q_EMIT isCheckingForUpdatesChanged();
}

void RoyaltiesStore::setIsShowingUpdatePrompt(bool value)
{
    m_isShowingUpdatePrompt = value;
    Q_EMIT isShowingUpdatePromptChanged();
}

void RoyaltiesStore::setDownloadedUpdateURL(std::optional<QUrl> value)
{
    m_downloadedUpdateURL = std::move(value);
    Q_EMIT downloadedUpdateURLChanged();
}

void RoyaltiesStore::setUpdateStatusMessage(std::optional<QString> value)
{
    m_updateStatusMessage = std::move(value);
    Q_EMIT updateStatusMessageChanged();
}

void RoyaltiesStore::setRequestAvailableAt(std::optional<QDateTime> value)
{
    m_requestAvailableAt = std::move(value);
    Q_EMIT canRequestSummaryChanged();
}

QString RoyaltiesStore::selectedPeriodProperty() const
{
    return m_selectedPeriod.rawValue();
}

QString RoyaltiesStore::displayedRoyaltyProperty() const
{
    return m_displayedRoyalty.rawValue();
}

void RoyaltiesStore::setDisplayedRoyaltyProperty(const QString &value)
{
    if (const std::optional<DisplayedRoyalty> royalty = DisplayedRoyalty::fromRawValue(value)) {
        setDisplayedRoyalty(*royalty);
    }
}

QStringList RoyaltiesStore::salesMetricOrderProperty() const
{
    return rawValues(m_salesMetricOrder);
}

QStringList RoyaltiesStore::hiddenSalesMetricsProperty() const
{
    // In the canonical order, so the text is stable from one read to the next.
    QList<SalesBreakdownMetric> hidden;
    for (const SalesBreakdownMetric metric : SalesBreakdownMetric::allCases()) {
        if (m_hiddenSalesMetrics.contains(metric)) {
            hidden.append(metric);
        }
    }
    return rawValues(hidden);
}

QVariantList RoyaltiesStore::accountsProperty() const
{
    QVariantList accounts;
    for (const PublisherAccount &account : m_accounts) {
        accounts.append(QVariantMap{
            {QStringLiteral("accountID"), account.accountID},
            {QStringLiteral("userEmail"), account.userEmail},
            {QStringLiteral("displayName"), optionalVariant(account.displayName)},
            {QStringLiteral("accessType"), account.accessType},
        });
    }
    return accounts;
}

QVariantMap RoyaltiesStore::summaryProperty() const
{
    QVariantMap customFormats;
    for (auto it = m_summary.customFormats.cbegin(); it != m_summary.customFormats.cend(); ++it) {
        customFormats.insert(
            it.key(), QVariantMap{{QStringLiteral("units"), it->units}, {QStringLiteral("royalties"), it->royalties}});
    }
    return {
        {QStringLiteral("gross"), m_summary.gross},       {QStringLiteral("spending"), m_summary.spending},
        {QStringLiteral("net"), m_summary.net},           {QStringLiteral("currency"), m_summary.currency},
        {QStringLiteral("customFormats"), customFormats},
    };
}

QVariant RoyaltiesStore::errorMessageProperty() const
{
    return optionalVariant(m_errorMessage);
}

QVariant RoyaltiesStore::lastUpdatedProperty() const
{
    return optionalVariant(m_lastUpdated);
}

QVariant RoyaltiesStore::nextRefreshAtProperty() const
{
    return optionalVariant(m_nextRefreshAt);
}

QVariant RoyaltiesStore::latestAppVersionProperty() const
{
    return optionalVariant(m_latestAppVersion);
}

QVariant RoyaltiesStore::downloadedUpdateURLProperty() const
{
    return optionalVariant(m_downloadedUpdateURL);
}

QVariant RoyaltiesStore::updateStatusMessageProperty() const
{
    return optionalVariant(m_updateStatusMessage);
}
