#pragma once

#include "RoyaltyAlerts.h"
#include "StoreEnvironment.h"
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

class AppUpdates;
class BrowserSignIn;
class Clock;
class ConnectionSession;
class OpenAtLogin;
class StoreSettings;
class StoreStatus;

// The one object the views and the panel item see: everything Inkwarden knows, as properties that
// notify on every assignment, and everything it does, as operations. It owns no state itself but
// hands both to its parts, each of which owns one concern: the settings, the connection and its
// figures, the browser sign-in, updates, opening at login, and the popover's status.
class RoyaltiesStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString serverURL READ serverURL WRITE setServerURL NOTIFY serverURLChanged)
    Q_PROPERTY(QString apiKey READ apiKey WRITE setApiKey NOTIFY apiKeyChanged)
    Q_PROPERTY(QString accountID READ accountID WRITE setAccountID NOTIFY accountIDChanged)
    Q_PROPERTY(qint64 refreshMinutes READ refreshMinutes WRITE setRefreshMinutes NOTIFY refreshMinutesChanged)
    Q_PROPERTY(QString selectedPeriod READ selectedPeriodRaw NOTIFY selectedPeriodChanged)
    Q_PROPERTY(
        QString displayedRoyalty READ displayedRoyaltyRaw WRITE setDisplayedRoyaltyRaw NOTIFY displayedRoyaltyChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool isLoadingAccounts READ isLoadingAccounts NOTIFY isLoadingAccountsChanged)
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    Q_PROPERTY(bool isAuthenticating READ isAuthenticating NOTIFY isAuthenticatingChanged)
    Q_PROPERTY(bool isShowingSettings READ isShowingSettings WRITE setIsShowingSettings NOTIFY isShowingSettingsChanged)
    Q_PROPERTY(QVariant errorMessage READ errorMessageVariant NOTIFY errorMessageChanged)
    Q_PROPERTY(QVariant lastUpdated READ lastUpdatedVariant NOTIFY lastUpdatedChanged)
    Q_PROPERTY(bool isNetworkAvailable READ isNetworkAvailable NOTIFY isNetworkAvailableChanged)
    Q_PROPERTY(bool royaltyChangeCountsDown READ royaltyChangeCountsDown NOTIFY royaltyChangeCountsDownChanged)
    Q_PROPERTY(QString menuBarTitle READ menuBarTitle NOTIFY menuBarTitleChanged)
    Q_PROPERTY(qint64 requestCooldownRemaining READ requestCooldownRemaining NOTIFY requestCooldownRemainingChanged)
    Q_PROPERTY(bool opensAtLogin READ opensAtLogin NOTIFY opensAtLoginChanged)
    Q_PROPERTY(bool launchAtLoginRequiresApproval READ launchAtLoginRequiresApproval NOTIFY
                   launchAtLoginRequiresApprovalChanged)
    Q_PROPERTY(QVariant latestAppVersion READ latestAppVersionVariant NOTIFY latestAppVersionChanged)
    Q_PROPERTY(bool isDownloadingUpdate READ isDownloadingUpdate NOTIFY isDownloadingUpdateChanged)
    Q_PROPERTY(bool isCheckingForUpdates READ isCheckingForUpdates NOTIFY isCheckingForUpdatesChanged)
    Q_PROPERTY(bool isShowingUpdatePrompt READ isShowingUpdatePrompt WRITE setIsShowingUpdatePrompt NOTIFY
                   isShowingUpdatePromptChanged)
    Q_PROPERTY(QVariant updateStatusMessage READ updateStatusMessageVariant NOTIFY updateStatusMessageChanged)
    Q_PROPERTY(bool canSwitchPeriod READ canSwitchPeriod NOTIFY canRequestSummaryChanged)
    Q_PROPERTY(bool canRequestSummary READ canRequestSummary NOTIFY canRequestSummaryChanged)
    Q_PROPERTY(bool hideAmounts READ hideAmounts WRITE setHideAmounts NOTIFY hideAmountsChanged)
    Q_PROPERTY(RoyaltyAlerts *alerts READ alertsObject CONSTANT)

public:
    static QString placeholderTitle();
    static QString failedTitle();
    static QString builtInServerURL() { return QStringLiteral("http://localhost:8000"); }

    explicit RoyaltiesStore(StoreEnvironment environment, QObject *parent = nullptr);
    ~RoyaltiesStore() override;

    // The parts, for the status item, the views' models and the tests.
    StoreSettings &settings() const { return *m_settings; }
    StoreStatus &status() const { return *m_status; }
    ConnectionSession &session() const { return *m_session; }
    BrowserSignIn &signIn() const { return *m_signIn; }
    AppUpdates &updates() const { return *m_updates; }
    OpenAtLogin &login() const { return *m_login; }
    RoyaltyAlerts &alerts() const { return *m_alerts; }
    const QLocale &locale() const { return m_environment.locale; }
    Clock &clock() const { return m_environment.clock; }

    const QString &serverURL() const;
    const QString &apiKey() const;
    const QString &accountID() const;
    qint64 refreshMinutes() const;
    const RoyaltyPeriod &selectedPeriod() const;
    // The period of the figures shown, which trails the selected one until a refresh brings its figures.
    const RoyaltyPeriod &figuresPeriod() const;
    const DisplayedRoyalty &displayedRoyalty() const;
    const QList<SalesBreakdownMetric> &salesMetricOrder() const;
    const QSet<SalesBreakdownMetric> &hiddenSalesMetrics() const;
    const QList<PublisherAccount> &accounts() const;
    const RoyaltySummary &summary() const;
    bool isLoading() const;
    bool isLoadingAccounts() const;
    bool isConnected() const;
    bool isAuthenticating() const;
    bool isShowingSettings() const;
    const std::optional<QString> &errorMessage() const;
    const std::optional<QDateTime> &lastUpdated() const;
    const std::optional<QDateTime> &nextRefreshAt() const;
    bool isNetworkAvailable() const;
    bool royaltyChangeCountsDown() const;
    const QString &menuBarTitle() const;
    qint64 requestCooldownRemaining() const;
    bool opensAtLogin() const;
    bool launchAtLoginRequiresApproval() const;
    const std::optional<QString> &latestAppVersion() const;
    bool isDownloadingUpdate() const;
    bool isCheckingForUpdates() const;
    bool isShowingUpdatePrompt() const;
    const std::optional<QUrl> &downloadedUpdateURL() const;
    const std::optional<QString> &updateStatusMessage() const;
    bool isWaitingForKeyring() const;
    bool hideAmounts() const;
    void setHideAmounts(bool value);

    bool canSwitchPeriod() const { return canRequestSummary(); }
    bool canRequestSummary() const;
    QList<SalesBreakdownMetric> visibleSalesMetrics() const;
    double highlightedRoyalty() const;
    QString money(double value, bool compact) const;
    std::optional<MenuBarMoneyParts> menuBarMoneyParts() const;
    QString currentAppVersion() const;
    bool isUpdateAvailable() const;
    QString updateActionTitle() const;
    std::optional<QUrl> existingDownloadedUpdateURL() const;
    std::optional<QUrl> makeServerURL(const QString &path, const RoyaltiesService::QueryItems &queryItems) const;
    std::optional<QUrl> makeServerPageURL(const QString &path) const;
    Q_INVOKABLE QString lastUpdatedText(const QDateTime &now) const;
    Q_INVOKABLE QString nextRefreshText(const QDateTime &now) const;
    static QString friendlyMessage(const ServiceError &error);
    static QString codeChallenge(const QString &verifier);

    void selectPeriod(RoyaltyPeriod period);
    Q_INVOKABLE void selectPeriod(const QString &rawValue);
    void moveSalesMetric(SalesBreakdownMetric metric, qint64 offset);
    Q_INVOKABLE void moveSalesMetric(const QString &rawValue, qint64 offset);
    Q_INVOKABLE void setSalesMetricHidden(const QString &rawValue, bool hidden);
    Q_INVOKABLE void persistSettings();
    Q_INVOKABLE void persistSalesMetricPreferences();
    Q_INVOKABLE void showSettings();
    Q_INVOKABLE void signOut();
    void start();
    Q_INVOKABLE void refresh();
    void recoverAutomaticRefreshIfNeeded(bool force);
    Q_INVOKABLE void beginBrowserAuthentication();
    void handleAuthenticationCallback(const QString &url);
    // Checks the key against the server and connects. Hides QObject::connect inside the store on
    // purpose: the store always names QObject::connect in full.
    Q_INVOKABLE void connect();
    Q_INVOKABLE void loadAccounts();
    void presentUpdatePromptIfNeeded();
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void downloadLatestUpdate();
    Q_INVOKABLE void openDownloadedUpdate();
    Q_INVOKABLE void revealDownloadedUpdate();
    Q_INVOKABLE void openDashboard();
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
    void hideAmountsChanged();

private:
    // What the views write: the fields of the connect and settings pages, and the popover's pages.
    void setServerURL(QString value);
    void setApiKey(QString value);
    void setAccountID(QString value);
    void setRefreshMinutes(qint64 value);
    void setDisplayedRoyaltyRaw(const QString &value);
    void setIsShowingSettings(bool value);
    void setIsShowingUpdatePrompt(bool value);
    // The forms QML reads: raw values, and none as undefined.
    QString selectedPeriodRaw() const;
    QString displayedRoyaltyRaw() const;
    QVariant errorMessageVariant() const;
    QVariant lastUpdatedVariant() const;
    QVariant latestAppVersionVariant() const;
    QVariant updateStatusMessageVariant() const;
    RoyaltyAlerts *alertsObject() const { return m_alerts.get(); }
    void forwardSignals();

    StoreEnvironment m_environment;
    RoyaltiesService m_service;
    std::unique_ptr<StoreStatus> m_status;
    std::unique_ptr<StoreSettings> m_settings;
    std::unique_ptr<OpenAtLogin> m_login;
    std::unique_ptr<AppUpdates> m_updates;
    std::unique_ptr<ConnectionSession> m_session;
    std::unique_ptr<BrowserSignIn> m_signIn;
    std::unique_ptr<RoyaltyAlerts> m_alerts;
};
