#pragma once

#include "DevServer.h"
#include "ExpectedSettings.h"
#include "FaultPlan.h"
#include "SoakClock.h"
#include "SoakNetwork.h"
#include "SoakOptions.h"
#include "SoakReport.h"
#include "store/AppInfo.h"
#include "store/Preferences.h"
#include "store/RoyaltiesStore.h"
#include "support/TestDoubles.h"
#include "support/VirtualClock.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTemporaryDir>
#include <QTextStream>

#include <functional>
#include <memory>
#include <optional>
#include <random>

// One soak: a connected store against the development server in-process, virtual time that both
// read, and a random day (or many) of faults, outages, sleeps, restarts and user actions. The rules
// are checked as things happen; the first one broken ends the run.
class SoakRun : public QObject
{
public:
    SoakRun(const SoakOptions &options, QTextStream &out);
    ~SoakRun() override;

    // True when the run ended with every rule kept.
    bool run();
    const std::optional<QString> &failure() const { return m_failure; }

private:
    struct Obligation {
        QDateTime until;
        QString what;
        QDateTime answeredAt;
        qint64 step = 0;
    };
    struct Scheduled {
        QString key;
        QDateTime due;
        std::function<void()> action;
    };
    enum class PendingConnect { none, reconnect, saveSettings };
    struct Calm {
        QString kind;
        QDateTime began;
        bool prepared = false;
        std::optional<QDateTime> offlineUntil;
        std::optional<QDateTime> readyAt;
        std::optional<QDateTime> deadline;
        QString rule;
        std::optional<QDateTime> succeededAt;
    };

    // The world and the store (SoakRun.cpp).
    void setUp();
    void makeStore();
    void startStore();
    void restart();
    void checkReadBack(const QString &when);
    void finalReadBack();
    void loop(const QDateTime &until, bool actions);
    void advanceStep();
    bool settle();
    void waitRealTime(int milliseconds);
    QDateTime now() const { return m_clock.now(); }
    QString elapsedText(const QDateTime &at) const;
    void note(const QString &text);
    void fail(const QString &reason);
    qint64 uniform(qint64 low, qint64 high);
    bool chance(double probability);

    // The rules (SoakRunRules.cpp).
    void requestArrived(const RecordedRequest &entry);
    void requestSent(const SoakNetwork::Sent &sent);
    void replyFinished(const SoakNetwork::Finished &finished);
    void refreshSucceeded();
    void refreshFailed();
    void housekeeping();
    void noticeSavedKey();
    void finishPendingConnect(bool interrupted);
    QDateTime modelCooldownUntil() const { return m_modelCooldownUntil; }
    QString storeStateText() const;

    // Calm windows: faults gone and the network back, then a successful refresh is due (SoakRunRules.cpp).
    void beginCalm(const QString &kind);
    void tendCalm();
    void calmReady(const QDateTime &deadline, const QString &rule);
    qint64 cooldownRemainingMs() const;

    // What the soak does at random (SoakRunActions.cpp).
    void randomAction();
    void switchFaultOn();
    void clearSomeFaults();
    void clearAllFaults();
    void pressRefresh();
    void switchPeriod();
    void switchPeriodOnce();
    void toggleNetwork();
    void setNetwork(bool online);
    void sleepMachine();
    void editSettings();
    void changeSalesMetric();
    void quitRightAfterRequest();
    void openPopover();
    void openSettings();
    void signOut();
    void reconnect();
    void schedule(const QString &key, const QDateTime &due, std::function<void()> action);
    void unschedule(const QString &key);
    void runDueScheduled();

    SoakOptions m_options;
    QTextStream &m_out;
    // What happens, and when: drawn from the seed alone.
    std::mt19937_64 m_random;
    // How far each step moves time. A stream of its own, because the number of steps spent waiting
    // for a held reply depends on real time; this way the same seed still brings the same faults
    // and actions at the same virtual moments.
    std::mt19937_64 m_stepRandom;
    QElapsedTimer m_realTime;

    VirtualClock m_virtualClock;
    SoakClock m_clock{m_virtualClock};
    MemorySecretStore m_secrets;
    FakeReachability m_reachability;
    FakeDesktopServices m_desktop;
    FakeLoginItems m_loginItems;
    RecordedNotifications m_notifications;
    SoakNetwork m_network;
    std::unique_ptr<DevServer> m_server;
    QTemporaryDir m_settingsFolder;
    std::unique_ptr<Preferences> m_preferences;
    AppInfo m_appInfo{QStringLiteral("1.4.0"), std::nullopt};
    QLocale m_locale{QLocale::English, QLocale::UnitedStates};
    std::unique_ptr<RoyaltiesStore> m_store;

    FaultPlan m_faultPlan;
    EventLog m_log;
    SoakCounters m_counters;
    ExpectedSettings m_expected;
    QStringList m_demoAccounts;

    QDateTime m_start;
    QDateTime m_end;
    bool m_online = true;
    std::optional<QString> m_failure;

    std::optional<QDateTime> m_lastStatisticsAt;
    QDateTime m_modelCooldownUntil;
    qint64 m_statisticsSent = 0;
    // The account of the last statistics answer, read just before the store takes it in.
    QString m_lastAnsweredAccount;
    // A refresh pressed during the cooldown runs when the cooldown ends.
    std::optional<QDateTime> m_queuedRefreshDue;
    QList<Obligation> m_obligations;

    QList<Scheduled> m_scheduled;
    QDateTime m_nextActionAt;
    QDateTime m_nextCalmAt;
    std::optional<Calm> m_calm;

    PendingConnect m_pendingConnect = PendingConnect::none;
    struct Snapshot {
        QString accountID;
        qint64 refreshMinutes = 30;
        DisplayedRoyalty displayedRoyalty = DisplayedRoyalty::gross;
    } m_pendingSave;
    int m_seenSaves = 0;
    int m_savesBeforeConnect = 0;

    qint64 m_intervalInForce = 30;
    std::optional<QDateTime> m_awaitingNetworkRecoverySince;
    std::optional<QDateTime> m_awaitingSleepRecoverySince;
};
