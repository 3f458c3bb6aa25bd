#include "RoyaltiesStore.h"

#include "AppUpdates.h"
#include "BrowserSignIn.h"
#include "ConnectionSession.h"
#include "OpenAtLogin.h"
#include "PlatformTexts.h"
#include "Preferences.h"
#include "RoyaltyAlerts.h"
#include "ServerPages.h"
#include "StoreSettings.h"
#include "StoreStatus.h"
#include "model/Clock.h"

#include <QStandardPaths>

namespace {

template <typename T>
QVariant optionalVariant(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

} // namespace

QString StoreEnvironment::defaultCacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
}

RoyaltiesStore::RoyaltiesStore(StoreEnvironment environment, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_service(m_environment.network, m_environment.clock)
    , m_status(std::make_unique<StoreStatus>())
    , m_settings(std::make_unique<StoreSettings>(m_environment.preferences,
                                                 m_environment.appInfo.defaultServerURL.value_or(builtInServerURL())))
{
    if (const std::optional<QString> &aside = m_settings->setAsideFile()) {
        //: %1 is the path of the unreadable settings file, renamed and kept aside
        m_status->setErrorMessage(tr("Inkwarden could not read its settings file and started with the default "
                                     "settings. The old file was kept as %1.")
                                      .arg(*aside));
    }
    m_login =
        std::make_unique<OpenAtLogin>(m_environment.loginItems, m_environment.desktop, m_environment.clock, *m_status);
    m_login->refreshStatus();
    m_updates = std::make_unique<AppUpdates>(AppUpdates::Environment{m_service, m_environment.network,
                                                                     m_environment.desktop, *m_status,
                                                                     m_environment.appInfo, m_environment.cacheFolder});
    m_session = std::make_unique<ConnectionSession>(
        ConnectionSession::Environment{m_environment.clock, m_environment.secrets, m_environment.reachability,
                                       m_service, *m_settings, *m_status, *m_updates, m_environment.locale});
    m_signIn = std::make_unique<BrowserSignIn>(BrowserSignIn::Environment{
        m_service, m_environment.secrets, m_environment.desktop, *m_settings, *m_status, *m_session});
    QObject::connect(m_session.get(), &ConnectionSession::signInWanted, m_signIn.get(), &BrowserSignIn::begin);
    m_alerts = std::make_unique<RoyaltyAlerts>(RoyaltyAlerts::Environment{
        m_environment.clock, m_environment.preferences, m_environment.notifications, *m_session, *m_settings});
    QObject::connect(m_session.get(), &ConnectionSession::figuresRefreshed, m_alerts.get(),
                     &RoyaltyAlerts::figuresRefreshed);
    forwardSignals();
}

// The parts go first (the sign-in and the session wait on the service), the service after them.
RoyaltiesStore::~RoyaltiesStore()
{
    m_alerts.reset();
    m_signIn.reset();
    m_session.reset();
    m_updates.reset();
}

void RoyaltiesStore::forwardSignals()
{
    const auto forward = [this](const auto *part, auto partSignal, auto storeSignal) {
        QObject::connect(part, partSignal, this, storeSignal);
    };
    const StoreSettings *settings = m_settings.get();
    forward(settings, &StoreSettings::serverURLChanged, &RoyaltiesStore::serverURLChanged);
    forward(settings, &StoreSettings::accountIDChanged, &RoyaltiesStore::accountIDChanged);
    forward(settings, &StoreSettings::refreshMinutesChanged, &RoyaltiesStore::refreshMinutesChanged);
    forward(settings, &StoreSettings::selectedPeriodChanged, &RoyaltiesStore::selectedPeriodChanged);
    forward(settings, &StoreSettings::displayedRoyaltyChanged, &RoyaltiesStore::displayedRoyaltyChanged);
    forward(settings, &StoreSettings::salesMetricOrderChanged, &RoyaltiesStore::salesMetricOrderChanged);
    forward(settings, &StoreSettings::hiddenSalesMetricsChanged, &RoyaltiesStore::hiddenSalesMetricsChanged);
    forward(settings, &StoreSettings::hideAmountsChanged, &RoyaltiesStore::hideAmountsChanged);
    const ConnectionSession *session = m_session.get();
    forward(session, &ConnectionSession::apiKeyChanged, &RoyaltiesStore::apiKeyChanged);
    forward(session, &ConnectionSession::accountsChanged, &RoyaltiesStore::accountsChanged);
    forward(session, &ConnectionSession::summaryChanged, &RoyaltiesStore::summaryChanged);
    forward(session, &ConnectionSession::isLoadingChanged, &RoyaltiesStore::isLoadingChanged);
    forward(session, &ConnectionSession::isLoadingAccountsChanged, &RoyaltiesStore::isLoadingAccountsChanged);
    forward(session, &ConnectionSession::isConnectedChanged, &RoyaltiesStore::isConnectedChanged);
    forward(session, &ConnectionSession::lastUpdatedChanged, &RoyaltiesStore::lastUpdatedChanged);
    forward(session, &ConnectionSession::nextRefreshAtChanged, &RoyaltiesStore::nextRefreshAtChanged);
    forward(session, &ConnectionSession::isNetworkAvailableChanged, &RoyaltiesStore::isNetworkAvailableChanged);
    forward(session, &ConnectionSession::royaltyChangeCountsDownChanged,
            &RoyaltiesStore::royaltyChangeCountsDownChanged);
    forward(session, &ConnectionSession::menuBarTitleChanged, &RoyaltiesStore::menuBarTitleChanged);
    forward(session, &ConnectionSession::requestCooldownRemainingChanged,
            &RoyaltiesStore::requestCooldownRemainingChanged);
    forward(session, &ConnectionSession::canRequestSummaryChanged, &RoyaltiesStore::canRequestSummaryChanged);
    forward(m_signIn.get(), &BrowserSignIn::isAuthenticatingChanged, &RoyaltiesStore::isAuthenticatingChanged);
    forward(m_status.get(), &StoreStatus::isShowingSettingsChanged, &RoyaltiesStore::isShowingSettingsChanged);
    forward(m_status.get(), &StoreStatus::errorMessageChanged, &RoyaltiesStore::errorMessageChanged);
    forward(m_login.get(), &OpenAtLogin::opensAtLoginChanged, &RoyaltiesStore::opensAtLoginChanged);
    forward(m_login.get(), &OpenAtLogin::launchAtLoginRequiresApprovalChanged,
            &RoyaltiesStore::launchAtLoginRequiresApprovalChanged);
    const AppUpdates *updates = m_updates.get();
    forward(updates, &AppUpdates::latestAppVersionChanged, &RoyaltiesStore::latestAppVersionChanged);
    forward(updates, &AppUpdates::isDownloadingUpdateChanged, &RoyaltiesStore::isDownloadingUpdateChanged);
    forward(updates, &AppUpdates::isCheckingForUpdatesChanged, &RoyaltiesStore::isCheckingForUpdatesChanged);
    forward(updates, &AppUpdates::isShowingUpdatePromptChanged, &RoyaltiesStore::isShowingUpdatePromptChanged);
    forward(updates, &AppUpdates::downloadedUpdateURLChanged, &RoyaltiesStore::downloadedUpdateURLChanged);
    forward(updates, &AppUpdates::updateStatusMessageChanged, &RoyaltiesStore::updateStatusMessageChanged);
}

QString RoyaltiesStore::placeholderTitle()
{
    return ConnectionSession::placeholderTitle();
}

QString RoyaltiesStore::failedTitle()
{
    return ConnectionSession::failedTitle();
}

// The published state, read from the part that owns it.
const QString &RoyaltiesStore::serverURL() const
{
    return m_settings->serverURL();
}
const QString &RoyaltiesStore::apiKey() const
{
    return m_session->apiKey();
}
const QString &RoyaltiesStore::accountID() const
{
    return m_settings->accountID();
}
qint64 RoyaltiesStore::refreshMinutes() const
{
    return m_settings->refreshMinutes();
}
const RoyaltyPeriod &RoyaltiesStore::selectedPeriod() const
{
    return m_settings->selectedPeriod();
}
const DisplayedRoyalty &RoyaltiesStore::displayedRoyalty() const
{
    return m_settings->displayedRoyalty();
}
const QList<SalesBreakdownMetric> &RoyaltiesStore::salesMetricOrder() const
{
    return m_settings->salesMetricOrder();
}
const QSet<SalesBreakdownMetric> &RoyaltiesStore::hiddenSalesMetrics() const
{
    return m_settings->hiddenSalesMetrics();
}
const QList<PublisherAccount> &RoyaltiesStore::accounts() const
{
    return m_session->accounts();
}
const RoyaltySummary &RoyaltiesStore::summary() const
{
    return m_session->summary();
}
bool RoyaltiesStore::isLoading() const
{
    return m_session->isLoading();
}
bool RoyaltiesStore::isLoadingAccounts() const
{
    return m_session->isLoadingAccounts();
}
bool RoyaltiesStore::isConnected() const
{
    return m_session->isConnected();
}
bool RoyaltiesStore::isAuthenticating() const
{
    return m_signIn->isAuthenticating();
}
bool RoyaltiesStore::isShowingSettings() const
{
    return m_status->isShowingSettings();
}
const std::optional<QString> &RoyaltiesStore::errorMessage() const
{
    return m_status->errorMessage();
}
const RoyaltyPeriod &RoyaltiesStore::figuresPeriod() const
{
    const std::optional<RoyaltyPeriod> &period = m_session->figuresPeriod();
    return period ? *period : selectedPeriod();
}
const std::optional<QDateTime> &RoyaltiesStore::lastUpdated() const
{
    return m_session->lastUpdated();
}
const std::optional<QDateTime> &RoyaltiesStore::nextRefreshAt() const
{
    return m_session->nextRefreshAt();
}
bool RoyaltiesStore::isNetworkAvailable() const
{
    return m_session->isNetworkAvailable();
}
bool RoyaltiesStore::royaltyChangeCountsDown() const
{
    return m_session->royaltyChangeCountsDown();
}
const QString &RoyaltiesStore::menuBarTitle() const
{
    return m_session->menuBarTitle();
}
qint64 RoyaltiesStore::requestCooldownRemaining() const
{
    return m_session->requestCooldownRemaining();
}
bool RoyaltiesStore::opensAtLogin() const
{
    return m_login->opensAtLogin();
}
bool RoyaltiesStore::launchAtLoginRequiresApproval() const
{
    return m_login->launchAtLoginRequiresApproval();
}
const std::optional<QString> &RoyaltiesStore::latestAppVersion() const
{
    return m_updates->latestAppVersion();
}
bool RoyaltiesStore::isDownloadingUpdate() const
{
    return m_updates->isDownloadingUpdate();
}
bool RoyaltiesStore::isCheckingForUpdates() const
{
    return m_updates->isCheckingForUpdates();
}
bool RoyaltiesStore::isShowingUpdatePrompt() const
{
    return m_updates->isShowingUpdatePrompt();
}
const std::optional<QUrl> &RoyaltiesStore::downloadedUpdateURL() const
{
    return m_updates->downloadedUpdateURL();
}
const std::optional<QString> &RoyaltiesStore::updateStatusMessage() const
{
    return m_updates->updateStatusMessage();
}
bool RoyaltiesStore::hideAmounts() const
{
    return m_settings->hideAmounts();
}

void RoyaltiesStore::setHideAmounts(bool value)
{
    m_settings->setHideAmounts(value);
}

bool RoyaltiesStore::isWaitingForKeyring() const
{
    return m_session->isWaitingForKeyring();
}

void RoyaltiesStore::setServerURL(QString value)
{
    m_settings->setServerURL(std::move(value));
}
void RoyaltiesStore::setApiKey(QString value)
{
    m_session->setApiKey(std::move(value));
}
void RoyaltiesStore::setAccountID(QString value)
{
    m_settings->setAccountID(std::move(value));
}
void RoyaltiesStore::setRefreshMinutes(qint64 value)
{
    m_settings->setRefreshMinutes(value);
}
void RoyaltiesStore::setIsShowingSettings(bool value)
{
    m_status->setIsShowingSettings(value);
}
void RoyaltiesStore::setIsShowingUpdatePrompt(bool value)
{
    m_updates->setIsShowingUpdatePrompt(value);
}

void RoyaltiesStore::setDisplayedRoyaltyRaw(const QString &value)
{
    if (const std::optional<DisplayedRoyalty> royalty = DisplayedRoyalty::fromRawValue(value)) {
        m_settings->setDisplayedRoyalty(*royalty);
    }
}

QString RoyaltiesStore::selectedPeriodRaw() const
{
    return selectedPeriod().rawValue();
}
QString RoyaltiesStore::displayedRoyaltyRaw() const
{
    return displayedRoyalty().rawValue();
}
QVariant RoyaltiesStore::errorMessageVariant() const
{
    return optionalVariant(errorMessage());
}
QVariant RoyaltiesStore::lastUpdatedVariant() const
{
    return optionalVariant(lastUpdated());
}
QVariant RoyaltiesStore::latestAppVersionVariant() const
{
    return optionalVariant(latestAppVersion());
}
QVariant RoyaltiesStore::updateStatusMessageVariant() const
{
    return optionalVariant(updateStatusMessage());
}

bool RoyaltiesStore::canRequestSummary() const
{
    return m_session->canRequestSummary();
}
QList<SalesBreakdownMetric> RoyaltiesStore::visibleSalesMetrics() const
{
    return m_settings->visibleSalesMetrics();
}
double RoyaltiesStore::highlightedRoyalty() const
{
    return m_session->highlightedRoyalty();
}
QString RoyaltiesStore::money(double value, bool compact) const
{
    return m_session->money(value, compact);
}
std::optional<MenuBarMoneyParts> RoyaltiesStore::menuBarMoneyParts() const
{
    return m_session->menuBarMoneyParts();
}
QString RoyaltiesStore::currentAppVersion() const
{
    return m_updates->currentAppVersion();
}
bool RoyaltiesStore::isUpdateAvailable() const
{
    return m_updates->isUpdateAvailable();
}
QString RoyaltiesStore::updateActionTitle() const
{
    return m_updates->updateActionTitle();
}
std::optional<QUrl> RoyaltiesStore::existingDownloadedUpdateURL() const
{
    return m_updates->existingDownloadedUpdateURL();
}

std::optional<QUrl> RoyaltiesStore::makeServerURL(const QString &path,
                                                  const RoyaltiesService::QueryItems &queryItems) const
{
    return ServerPages::url(serverURL(), path, queryItems);
}

std::optional<QUrl> RoyaltiesStore::makeServerPageURL(const QString &path) const
{
    return ServerPages::pageURL(serverURL(), path);
}

QString RoyaltiesStore::lastUpdatedText(const QDateTime &now) const
{
    return m_session->lastUpdatedText(now);
}
QString RoyaltiesStore::nextRefreshText(const QDateTime &now) const
{
    return m_session->nextRefreshText(now);
}
QString RoyaltiesStore::friendlyMessage(const ServiceError &error)
{
    return ConnectionSession::friendlyMessage(error);
}
QString RoyaltiesStore::codeChallenge(const QString &verifier)
{
    return BrowserSignIn::codeChallenge(verifier);
}

void RoyaltiesStore::selectPeriod(RoyaltyPeriod period)
{
    if (period == selectedPeriod() || !canSwitchPeriod()) {
        return;
    }
    m_settings->selectPeriod(period);
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
    m_settings->moveSalesMetric(metric, offset);
}

void RoyaltiesStore::moveSalesMetric(const QString &rawValue, qint64 offset)
{
    if (const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(rawValue)) {
        moveSalesMetric(*metric, offset);
    }
}

void RoyaltiesStore::setSalesMetricHidden(const QString &rawValue, bool hidden)
{
    if (const std::optional<SalesBreakdownMetric> metric = SalesBreakdownMetric::fromRawValue(rawValue)) {
        m_settings->setSalesMetricHidden(*metric, hidden);
    }
}

void RoyaltiesStore::persistSettings()
{
    m_settings->persist();
}
void RoyaltiesStore::persistSalesMetricPreferences()
{
    m_settings->persistSalesMetricPreferences();
}

void RoyaltiesStore::showSettings()
{
    refreshLaunchAtLoginStatus();
    m_status->setIsShowingSettings(true);
    if (accounts().isEmpty()) {
        loadAccounts();
    }
}

void RoyaltiesStore::signOut()
{
    // Deleting a missing key cannot fail, so nothing waits for the keyring here.
    m_environment.secrets.deleteAPIKey();
    m_session->end();
    m_settings->forgetAccount();
    m_updates->forget();
    m_signIn->setIsAuthenticating(false);
    m_status->setIsShowingSettings(false);
}

void RoyaltiesStore::start()
{
    m_session->start();
}
void RoyaltiesStore::refresh()
{
    m_session->refresh();
}
void RoyaltiesStore::recoverAutomaticRefreshIfNeeded(bool force)
{
    m_session->recoverAutomaticRefreshIfNeeded(force);
}
void RoyaltiesStore::beginBrowserAuthentication()
{
    m_signIn->begin();
}
void RoyaltiesStore::handleAuthenticationCallback(const QString &url)
{
    m_signIn->handleCallback(url);
}
void RoyaltiesStore::connect()
{
    m_session->connect();
}
void RoyaltiesStore::loadAccounts()
{
    m_session->loadAccounts();
}
void RoyaltiesStore::presentUpdatePromptIfNeeded()
{
    m_updates->presentUpdatePromptIfNeeded();
}

void RoyaltiesStore::checkForUpdates()
{
    if (isConnected()) {
        m_updates->checkForUpdates(serverURL(), apiKey().trimmed());
    }
}

void RoyaltiesStore::downloadLatestUpdate()
{
    m_updates->downloadLatestUpdate(makeServerPageURL(PlatformTexts::installerPagePath()));
}

void RoyaltiesStore::openDownloadedUpdate()
{
    m_updates->openDownloadedUpdate();
}
void RoyaltiesStore::revealDownloadedUpdate()
{
    m_updates->revealDownloadedUpdate();
}
void RoyaltiesStore::openDashboard()
{
    m_updates->openDashboard(serverURL());
}
void RoyaltiesStore::refreshLaunchAtLoginStatus()
{
    m_login->refreshStatus();
}
void RoyaltiesStore::setOpensAtLogin(bool enabled)
{
    m_login->setOpensAtLogin(enabled);
}
void RoyaltiesStore::openLoginItemsSettings()
{
    m_login->openLoginItemsSettings();
}
