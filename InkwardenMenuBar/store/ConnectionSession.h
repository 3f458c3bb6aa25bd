#pragma once

#include "Lifetime.h"
#include "SecretStore.h"
#include "model/MoneyFormatter.h"
#include "model/RoyaltyPeriod.h"
#include "model/RoyaltySummary.h"
#include "service/PublisherAccount.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

class AppUpdates;
class Clock;
class ClockTimer;
class NetworkReachability;
class RoyaltiesService;
class ServiceError;
class StoreSettings;
class StoreStatus;
struct AccountsResponse;

// The connection to the royalties service: the key (read from the keyring, checked by connecting),
// the accounts it reaches, and the figures, refreshed on a timer and by hand, never more often than
// the request cooldown allows, paused while the network is gone and resumed when it returns. Each
// connection made or ended replaces the one before, and answers to the old one's requests are no
// longer shown.
class ConnectionSession : public QObject
{
    Q_OBJECT

public:
    struct Environment {
        Clock &clock;
        SecretStore &secrets;
        NetworkReachability &reachability;
        RoyaltiesService &service;
        StoreSettings &settings;
        StoreStatus &status;
        AppUpdates &updates;
        QLocale locale;
    };
    explicit ConnectionSession(Environment environment, QObject *parent = nullptr);
    ~ConnectionSession() override;

    static QString placeholderTitle() { return QStringLiteral(u"\u25C9 \u2014"); }
    static QString failedTitle() { return QStringLiteral(u"\u25C9 !"); }

    const QString &apiKey() const { return m_apiKey; }
    const QList<PublisherAccount> &accounts() const { return m_accounts; }
    const RoyaltySummary &summary() const { return m_summary; }
    bool isLoading() const { return m_isLoading; }
    bool isLoadingAccounts() const { return m_isLoadingAccounts; }
    bool isConnected() const { return m_isConnected; }
    const std::optional<QDateTime> &lastUpdated() const { return m_lastUpdated; }
    // The period `summary()` covers, once a refresh brought it: the selected period can differ until
    // the next refresh does (switched offline, or while the new figures load).
    const std::optional<RoyaltyPeriod> &figuresPeriod() const { return m_figuresPeriod; }
    const std::optional<QDateTime> &nextRefreshAt() const { return m_nextRefreshAt; }
    bool isNetworkAvailable() const { return m_isNetworkAvailable; }
    bool royaltyChangeCountsDown() const { return m_royaltyChangeCountsDown; }
    const QString &menuBarTitle() const { return m_menuBarTitle; }
    qint64 requestCooldownRemaining() const { return m_requestCooldownRemaining; }
    const std::optional<QDateTime> &requestAvailableAt() const { return m_requestAvailableAt; }
    bool refreshWhenAvailable() const { return m_refreshWhenAvailable; }
    bool hasReceivedNetworkStatus() const { return m_hasReceivedNetworkStatus; }
    // Whether the keyring has yet to say whether it holds a key (a first read under way, or a
    // keyring that is locked or does not answer).
    bool isWaitingForKeyring() const { return !m_keyRead; }

    void setApiKey(QString value);
    void setAccounts(QList<PublisherAccount> value);
    void setSummary(RoyaltySummary value);
    void setIsLoading(bool value);
    void setIsLoadingAccounts(bool value);
    void setIsConnected(bool value);
    void setLastUpdated(std::optional<QDateTime> value);
    void setNextRefreshAt(std::optional<QDateTime> value);
    void setIsNetworkAvailable(bool value);
    void setRoyaltyChangeCountsDown(bool value);
    void setMenuBarTitle(QString value);

    bool canRequestSummary() const;
    double highlightedRoyalty() const;
    // In the currency of the figures shown; a mask while the amounts are hidden.
    QString money(double value, bool compact) const;
    QString money(double value, const QString &currencyCode, bool compact) const;
    std::optional<MenuBarMoneyParts> menuBarMoneyParts() const;

    void start();
    void refresh();
    void recoverAutomaticRefreshIfNeeded(bool force);
    // Checks the key against the server and connects with it.
    void connect();
    void loadAccounts();
    // Sign-out: the key, the accounts and the figures go; a running cooldown stays.
    void end();

    QString lastUpdatedText(const QDateTime &now) const;
    QString nextRefreshText(const QDateTime &now) const;
    static QString friendlyMessage(const ServiceError &error);

Q_SIGNALS:
    void apiKeyChanged();
    void accountsChanged();
    void summaryChanged();
    void isLoadingChanged();
    void isLoadingAccountsChanged();
    void isConnectedChanged();
    void lastUpdatedChanged();
    void nextRefreshAtChanged();
    void isNetworkAvailableChanged();
    void royaltyChangeCountsDownChanged();
    void menuBarTitleChanged();
    void requestCooldownRemainingChanged();
    // Whether a request may start now has changed (loading, or the cooldown's end).
    void canRequestSummaryChanged();
    // Started without a key: the user signs in in the browser.
    void signInWanted();
    // A refresh has brought the figures of `accountID` and `period`; they are `summary()` now.
    void figuresRefreshed(const QString &accountID, RoyaltyPeriod period);

private:
    void setRequestCooldownRemaining(qint64 value);
    void setRequestAvailableAt(std::optional<QDateTime> value);
    QCoro::Task<> readStoredKey();
    void adoptStoredKey(const StoredKey &stored);
    void beginWithStoredKey();
    void beginRequestCooldown(double seconds);
    void updateRequestCooldown();
    void scheduleNextRefresh();
    void startRecoveryMonitoring();
    void handleNetworkAvailability(bool available);
    void adoptAccounts(const AccountsResponse &response);
    // A new connection: the answers to the requests of the one before are not wanted any more.
    void replaceConnection();
    // The title again after the amounts were hidden or shown, if it shows a figure.
    void retitle();

    QCoro::Task<> performRefresh(RoyaltyPeriod period);
    QCoro::Task<> performConnect(QString key);
    QCoro::Task<> performLoadAccounts();

    Environment m_environment;
    MoneyFormatter m_moneyFormatter;

    QString m_apiKey;
    QList<PublisherAccount> m_accounts;
    RoyaltySummary m_summary;
    bool m_isLoading = false;
    bool m_isLoadingAccounts = false;
    bool m_isConnected = false;
    std::optional<QDateTime> m_lastUpdated;
    std::optional<RoyaltyPeriod> m_figuresPeriod;
    std::optional<QDateTime> m_nextRefreshAt;
    bool m_isNetworkAvailable = true;
    bool m_royaltyChangeCountsDown = false;
    QString m_menuBarTitle = placeholderTitle();
    qint64 m_requestCooldownRemaining = 0;

    std::unique_ptr<ClockTimer> m_timer;
    std::unique_ptr<ClockTimer> m_recoveryTimer;
    std::unique_ptr<ClockTimer> m_cooldownTimer;
    std::unique_ptr<ClockTimer> m_startSignInTimer;
    std::optional<QDateTime> m_requestAvailableAt;
    bool m_refreshWhenAvailable = false;
    // True while a statistics request is on its way. `isLoading` is shared with connecting, which
    // clears it on finishing; this one is the statistics request's own, so that a second one never
    // starts beside it.
    bool m_summaryInFlight = false;
    bool m_hasReceivedNetworkStatus = false;
    // The connection as it is now: replaced when the user connects again or signs out.
    std::unique_ptr<Lifetime> m_connection = std::make_unique<Lifetime>();

    // The keyring has answered with a key or with none.
    bool m_keyRead = false;
    bool m_readingKey = false;
    bool m_readKeyAgain = false;
    bool m_startRequested = false;
    bool m_askedToUnlock = false;
    std::optional<QString> m_keyringMessage;
    std::unique_ptr<ClockTimer> m_keyringRetryTimer;
    Lifetime m_lifetime;
};
