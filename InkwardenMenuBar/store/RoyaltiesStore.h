#pragma once

#include "AppInfo.h"
#include "SecretStore.h"
#include "model/DisplayedRoyalty.h"
#include "model/MoneyFormatter.h"
#include "model/RoyaltyPeriod.h"
#include "model/RoyaltySummary.h"
#include "model/SalesBreakdownMetric.h"
#include "service/PublisherAccount.h"
#include "service/RoyaltiesService.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <memory>
#include <optional>

class Clock;
class ClockTimer;
class DesktopServices;
class LoginItemService;
class NetworkReachability;
class Preferences;
class QNetworkAccessManager;
class SecretStore;

// Everything the store reaches outside itself. The app passes the real desktop; tests pass their
// own clock, keyring, settings file, network monitor and desktop.
struct StoreEnvironment {
    Clock &clock;
    SecretStore &secrets;
    Preferences &preferences;
    NetworkReachability &reachability;
    DesktopServices &desktop;
    LoginItemService &loginItems;
    QNetworkAccessManager &network;
    AppInfo appInfo;
    QLocale locale = MoneyFormatter::userLocale();
    // The user's cache folder; downloaded updates go into a folder of their own inside it.
    QString cacheFolder = defaultCacheFolder();

    static QString defaultCacheFolder();
};

// The one object that holds everything Inkwarden knows: the connection settings, the display
// preferences, the last figures, the refresh and cooldown bookkeeping, and the sign-in, update and
// login flags. Every published property notifies on every assignment; views bind to them and call
// the operations, and compute nothing themselves.
class RoyaltiesStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString serverURL READ serverURL WRITE setServerURL NOTIFY serverURLChanged)
    Q_PROPERTY(QString apiKey READ apiKey WRITE setApiKey NOTIFY apiKeyChanged)
    Q_PROPERTY(QString accountID READ accountID WRITE setAccountID NOTIFY accountIDChanged)
    Q_PROPERTY(qint64 refreshMinutes READ refreshMinutes WRITE setRefreshMinutes NOTIFY refreshMinutesChanged)
    Q_PROPERTY(QString selectedPeriod READ selectedPeriodProperty NOTIFY selectedPeriodChanged)
    Q_PROPERTY(QString displayedRoyalty READ displayedRoyaltyProperty WRITE setDisplayedRoyaltyProperty NOTIFY
                   displayedRoyaltyChanged)
    Q_PROPERTY(QStringList salesMetricOrder READ salesMetricOrderProperty NOTIFY salesMetricOrderChanged)
    Q_PROPERTY(QStringList hiddenSalesMetrics READ hiddenSalesMetricsProperty NOTIFY hiddenSalesMetricsChanged)
    Q_PROPERTY(QVariantList accounts READ accountsProperty NOTIFY accountsChanged)
    Q_PROPERTY(QVariantMap summary READ summaryProperty NOTIFY summaryChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool isLoadingAccounts READ isLoadingAccounts NOTIFY isLoadingAccountsChanged)
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    Q_PROPERTY(bool isAuthenticating READ isAuthenticating NOTIFY isAuthenticatingChanged)
    Q_PROPERTY(bool isShowingSettings READ isShowingSettings WRITE setIsShowingSettings NOTIFY isShowingSettingsChanged)
    Q_PROPERTY(QVariant errorMessage READ errorMessageProperty NOTIFY errorMessageChanged)
    Q_PROPERTY(QVariant lastUpdated READ lastUpdatedProperty NOTIFY lastUpdatedChanged)
    Q_PROPERTY(QVariant nextRefreshAt READ nextRefreshAtProperty NOTIFY nextRefreshAtChanged)
    Q_PROPERTY(bool isNetworkAvailable READ isNetworkAvailable NOTIFY isNetworkAvailableChanged)
    Q_PROPERTY(bool royaltyChangeCountsDown READ royaltyChangeCountsDown NOTIFY royaltyChangeCountsDownChanged)
    Q_PROPERTY(QString menuBarTitle READ menuBarTitle NOTIFY menuBarTitleChanged)
    Q_PROPERTY(qint64 requestCooldownRemaining READ requestCooldownRemaining NOTIFY requestCooldownRemainingChanged)
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin NOTIFY opensAtLoginChanged)
    Q_PROPERTY(bool launchAtLoginRequiresApproval READ launchAtLoginRequiresApproval NOTIFY
                   launchAtLoginRequiresApprovalChanged)
    Q_PROPERTY(QVariant latestAppVersion READ latestAppVersionProperty NOTIFY latestAppVersionChanged)
    Q_PROPERTY(bool isDownloadingUpdate READ isDownloadingUpdate NOTIFY isDownloadingUpdateChanged)
    Q_PROPERTY(bool isCheckingForUpdates READ isCheckingForUpdates NOTIFY isCheckingForUpdatesChanged)
    Q_PROPERTY(bool isShowingUpdatePrompt READ isShowingUpdatePrompt WRITE setIsShowingUpdatePrompt NOTIFY
                   isShowingUpdatePromptChanged)
    Q_PROPERTY(QVariant downloadedUpdateURL READ downloadedUpdateURLProperty NOTIFY downloadedUpdateURLChanged)
    Q_PROPERTY(QVariant updateStatusMessage READ updateStatusMessageProperty NOTIFY updateStatusMessageChanged)
    Q_PROPERTY(bool canSwitchPeriod READ canSwitchPeriod NOTIFY canRequestSummaryChanged)
    Q_PROPERTY(bool canRequestSummary READ canRequestSummary NOTIFY canRequestSummaryChanged)

public:
    static QString placeholderTitle() { return QStringLiteral(u"\u25C9 \u2014"); }
    static QString failedTitle() { return QStringLiteral(u"\u25C9 !"); }
    static QString builtInServerURL() { return QStringLiteral("http://localhost:8000"); }

    explicit RoyaltiesStore(StoreEnvironment environment, QObject *parent = nullptr);
    ~RoyaltiesStore() override;

    const QString &serverURL() const { return m_serverURL; }
    const QString &apiKey() const { return m_apiKey; }
    const QString &accountID() const { return m_accountID; }
    qint64 refreshMinutes() const { return m_refreshMinutes; }
    const RoyaltyPeriod &selectedPeriod() const { return m_selectedPeriod; }
    const DisplayedRoyalty &displayedRoyalty() const { return m_displayedRoyalty; }
    const QList<SalesBreakdownMetric> &salesMetricOrder() const { return m_salesMetricOrder; }
    const QSet<SalesBreakdownMetric> &hiddenSalesMetrics() const { return m_hiddenSalesMetrics; }
    const QList<PublisherAccount> &accounts() const { return m_accounts; }
    const RoyaltySummary &summary() const { return m_summary; }
    // The locale that figures and counts are written in.
    const QLocale &locale() const { return m_environment.locale; }
    // The store's own time and timers, for the views' once-a-second status lines.
    Clock &clock() const { return m_environment.clock; }
    bool isLoading() const { return m_isLoading; }
    bool isLoadingAccounts() const { return m_isLoadingAccounts; }
    bool isConnected() const { return m_isConnected; }
    bool isAuthenticating() const { return m_isAuthenticating; }
    bool isShowingSettings() const { return m_isShowingSettings; }
    const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    const std::optional<QDateTime> &lastUpdated() const { return m_lastUpdated; }
    const std::optional<QDateTime> &nextRefreshAt() const { return m_nextRefreshAt; }
    bool isNetworkAvailable() const { return m_isNetworkAvailable; }
    bool royaltyChangeCountsDown() const { return m_royaltyChangeCountsDown; }
    const QString &menuBarTitle() const { return m_menuBarTitle; }
    qint64 requestCooldownRemaining() const { return m_requestCooldownRemaining; }
    bool opensAtLogin() const { return m_opensAtLogin; }
    bool launchAtLoginRequiresApproval() const { return m_launchAtLoginRequiresApproval; }
    const std::optional<QString> &latestAppVersion() const { return m_latestAppVersion; }
    bool isDownloadingUpdate() const { return m_isDownloadingUpdate; }
    bool isCheckingForUpdates() const { return m_isCheckingForUpdates; }
    bool isShowingUpdatePrompt() const { return m_isShowingUpdatePrompt; }
    const std::optional<QUrl> &downloadedUpdateURL() const { return m_downloadedUpdateURL; }
    const std::optional<QString> &updateStatusMessage() const { return m_updateStatusMessage; }

    void setServerURL(QString value);
    void setApiKey(QString value);
    void setAccountID(QString value);
    void setRefreshMinutes(qint64 value);
    void setSelectedPeriod(RoyaltyPeriod value);
    void setDisplayedRoyalty(DisplayedRoyalty value);
    void setSalesMetricOrder(QList<SalesBreakdownMetric> value);
    void setHiddenSalesMetrics(QSet<SalesBreakdownMetric> value);
    void setAccounts(QList<PublisherAccount> value);
    void setSummary(RoyaltySummary value);
    void setIsLoading(bool value);
    void setIsLoadingAccounts(bool value);
    void setIsConnected(bool value);
    void setIsAuthenticating(bool value);
    void setIsShowingSettings(bool value);
    void setErrorMessage(std::optional<QString> value);
    void setLastUpdated(std::optional<QDateTime> value);
    void setNextRefreshAt(std::optional<QDateTime> value);
    void setIsNetworkAvailable(bool value);
    void setRoyaltyChangeCountsDown(bool value);
    void setMenuBarTitle(QString value);
    void setRequestCooldownRemaining(qint64 value);
    void setLaunchAtLoginRequiresApproval(bool value);
    void setLatestAppVersion(std::optional<QString> value);
    void setIsDownloadingUpdate(bool value);
    void setIsCheckingForUpdates(bool value);
    void setIsShowingUpdatePrompt(bool value);
    void setDownloadedUpdateURL(std::optional<QUrl> value);
    void setUpdateStatusMessage(std::optional<QString> value);

    QString selectedPeriodProperty() const;
    QString displayedRoyaltyProperty() const;
    void setDisplayedRoyaltyProperty(const QString &value);
    QStringList salesMetricOrderProperty() const;
    QStringList hiddenSalesMetricsProperty() const;
    QVariantList accountsProperty() const;
    QVariantMap summaryProperty() const;
    QVariant errorMessageProperty() const;
    QVariant lastUpdatedProperty() const;
    QVariant nextRefreshAtProperty() const;
    QVariant latestAppVersionProperty() const;
    QVariant downloadedUpdateURLProperty() const;
    QVariant updateStatusMessageProperty() const;

    // Derived state.
    bool canSwitchPeriod() const { return canRequestSummary(); }
    bool canRequestSummary() const;
    QList<SalesBreakdownMetric> visibleSalesMetrics() const;
    double highlightedRoyalty() const;
    QString money(double value, bool compact) const;
    std::optional<MenuBarMoneyParts> menuBarMoneyParts() const;
    const std::optional<QDateTime> &requestAvailableAt() const { return m_requestAvailableAt; }
    bool refreshWhenAvailable() const { return m_refreshWhenAvailable; }
    bool hasReceivedNetworkStatus() const { return m_hasReceivedNetworkStatus; }
    const std::optional<QString> &promptedUpdateVersion() const { return m_promptedUpdateVersion; }

    // State, settings and persistence.
    void selectPeriod(RoyaltyPeriod period);
    Q_INVOKABLE void selectPeriod(const QString &rawValue);
    void moveSalesMetric(SalesBreakdownMetric metric, qint64 offset);
    Q_INVOKABLE void moveSalesMetric(const QString &rawValue, qint64 offset);
    Q_INVOKABLE void setSalesMetricHidden(const QString &rawValue, bool hidden);
    Q_INVOKABLE void persistSettings();
    Q_INVOKABLE void persistSalesMetricPreferences();
    Q_INVOKABLE void showSettings();
    Q_INVOKABLE void signOut();

    // Refresh, cooldown and recovery.
    void start();
    Q_INVOKABLE void refresh();
    void recoverAutomaticRefreshIfNeeded(bool force);
    Q_INVOKABLE QString lastUpdatedText(const QDateTime &now) const;
    Q_INVOKABLE QString nextRefreshText(const QDateTime &now) const;
    static QString friendlyMessage(const ServiceError &error);

    // Sign-in and accounts.
    Q_INVOKABLE void beginBrowserAuthentication();
    static QString codeChallenge(const QString &verifier);
    void handleAuthenticationCallback(const QString &url);
    // Checks the key against the server and connects. Hides QObject::connect inside the store on
    // purpose: the store always names QObject::connect in full.
    Q_INVOKABLE void connect();
    Q_INVOKABLE void loadAccounts();
    std::optional<QUrl> makeServerURL(const QString &path, const RoyaltiesService::QueryItems &queryItems) const;
    std::optional<QUrl> makeServerPageURL(const QString &path) const;

    // Updates and the web dashboard.
    QString currentAppVersion() const;
    bool isUpdateAvailable() const;
    QString updateActionTitle() const;
    void presentUpdatePromptIfNeeded();
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void downloadLatestUpdate();
    std::optional<QUrl> existingDownloadedUpdateURL() const;
    Q_INVOKABLE void openDownloadedUpdate();
    Q_INVOKABLE void revealDownloadedUpdate();
    Q_INVOKABLE void openDashboard();

    // Open at login.
    void refreshLaunchAtLoginStatus();
    Q_INVOKABLE void setOpensAtLogin(bool enabled);
    Q_INVOKABLE void openLoginItemsSettings();

Q_SIGNALS:
    void serverURLChanged();
    void apiKeyChanged();
    void accountIDChanged();
    void refreshMinutesChanged();
    void selectedPeriodChanged();
    void displayedRoyaltyChanged();
    void salesMetricOrderChanged();
    void hiddenSalesMetricsChanged();
    void accountsChanged();
    void summaryChanged();
    void isLoadingChanged();
    void isLoadingAccountsChanged();
    void isConnectedChanged();
    void isAuthenticatingChanged();
    void isShowingSettingsChanged();
    void errorMessageChanged();
    void lastUpdatedChanged();
    void nextRefreshAtChanged();
    void isNetworkAvailableChanged();
    void royaltyChangeCountsDownChanged();
    void menuBarTitleChanged();
    void requestCooldownRemainingChanged();
    void opensAtLoginChanged();
    void launchAtLoginRequiresApprovalChanged();
    void latestAppVersionChanged();
    void isDownloadingUpdateChanged();
    void isCheckingForUpdatesChanged();
    void isShowingUpdatePromptChanged();
    void downloadedUpdateURLChanged();
    void updateStatusMessageChanged();
    void canRequestSummaryChanged();

public:
    // Whether the store still waits for the keyring to say whether it holds a key (a first read
    // under way, or a keyring that is locked or does not answer).
    bool isWaitingForKeyring() const { return !m_keyRead; }

private:
    void setRequestAvailableAt(std::optional<QDateTime> value);
    // The stored key: read as the store is made, without waiting for the keyring; read again when a
    // locked or silent keyring changes, and every keyringRetryInterval meanwhile.
    QCoro::Task<> readStoredKey();
    void adoptStoredKey(const StoredKey &stored);
    // What start() does once the key is known: connect with it, or sign in without one.
    void beginWithStoredKey();
    // The published value; setOpensAtLogin(bool) is the user's request to change it.
    void publishOpensAtLogin(bool value);
    void beginRequestCooldown(double seconds);
    void updateRequestCooldown();
    void scheduleNextRefresh();
    void startRecoveryMonitoring();
    void handleNetworkAvailability(bool available);
    void adoptAccounts(const AccountsResponse &response);

    QCoro::Task<> performRefresh(RoyaltyPeriod period);
    QCoro::Task<> exchangeCode(QString code, QString verifier);
    QCoro::Task<> performConnect(QString key);
    QCoro::Task<> performLoadAccounts();
    QCoro::Task<> performCheckForUpdates();
    QCoro::Task<> performDownload(QUrl url);
    QCoro::Task<> performOpenInstaller(QString path);
    std::optional<QString> chosenInstallerPath() const;
    QString updatesFolder() const;

    static QString newPkceValue();

    StoreEnvironment m_environment;
    MoneyFormatter m_moneyFormatter;
    RoyaltiesService m_service;

    QString m_serverURL{};
    QString m_apiKey{};
    QString m_accountID{};
    qint64 m_refreshMinutes{};
    RoyaltyPeriod m_selectedPeriod{RoyaltyPeriod::today};
    DisplayedRoyalty m_displayedRoyalty{DisplayedRoyalty::gross};
    QList<SalesBreakdownMetric> m_salesMetricOrder{};
    QSet<SalesBreakdownMetric> m_hiddenSalesMetrics{};
    QList<PublisherAccount> m_accounts{};
    RoyaltySummary m_summary{};
    bool m_isLoading{};
    bool m_isLoadingAccounts{};
    bool m_isConnected{};
    bool m_isAuthenticating{};
    bool m_isShowingSettings{};
    std::optional<QString> m_errorMessage{};
    std::optional<QDateTime> m_lastUpdated{};
    std::optional<QDateTime> m_nextRefreshAt{};
    bool m_isNetworkAvailable{true};
    bool m_royaltyChangeCountsDown{};
    QString m_menuBarTitle{placeholderTitle()};
    qint64 m_requestCooldownRemaining{};
    bool m_opensAtLogin{};
    bool m_launchAtLoginRequiresApproval{};
    std::optional<QString> m_latestAppVersion{};
    bool m_isDownloadingUpdate{};
    bool m_isCheckingForUpdates{};
    bool m_isShowingUpdatePrompt{};
    std::optional<QUrl> m_downloadedUpdateURL{};
    std::optional<QString> m_updateStatusMessage{};

    std::unique_ptr<ClockTimer> m_timer;
    std::unique_ptr<ClockTimer> m_recoveryTimer;
    std::unique_ptr<ClockTimer> m_cooldownTimer;
    std::unique_ptr<ClockTimer> m_startSignInTimer;
    std::unique_ptr<ClockTimer> m_loginStatusLookTimer;
    // Downloads under way are tied to this object's lifetime.
    std::unique_ptr<QObject> m_downloadsUnderWay = std::make_unique<QObject>();
    std::optional<QDateTime> m_requestAvailableAt;
    bool m_refreshWhenAvailable = false;
    // True while a statistics request is on its way. `isLoading` is shared with connecting, which
    // clears it on finishing; this one is the statistics request's own, so that a second one never
    // starts beside it.
    bool m_summaryInFlight = false;
    // Counts the connections made and ended (connect, sign-out): an answer to a request sent under
    // another connection, or for another account, is not the user's to see.
    quint64 m_connectionGeneration = 0;
    bool m_hasReceivedNetworkStatus = false;
    std::optional<QString> m_promptedUpdateVersion;
    // False from the moment the store starts to go away; a task that resumes after that stops at once.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    // The keyring has answered with a key or with none.
    bool m_keyRead = false;
    bool m_readingKey = false;
    bool m_readKeyAgain = false;
    bool m_startRequested = false;
    bool m_askedToUnlock = false;
    std::optional<QString> m_keyringMessage;
    std::unique_ptr<ClockTimer> m_keyringRetryTimer;
};
