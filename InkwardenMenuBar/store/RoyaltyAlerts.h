#pragma once

#include "model/RoyaltyPeriod.h"
#include "model/RoyaltySummary.h"

#include <QObject>
#include <QString>
#include <QTime>

#include <memory>
#include <optional>

class Clock;
class ClockTimer;
class ConnectionSession;
class DesktopNotifications;
class Preferences;
class StoreSettings;

// Tells the author when they earn: a refresh that finds more royalties than the last one of the same
// account and period (today or this month) shows one desktop notification with the increase and the
// new figure. A fall never does, nor the first figures after a start or a switch of period or
// account. Within quiet hours increases are held back and, if the user wants, summed into one
// notification when the quiet hours end. The choices are kept in the settings file at once.
class RoyaltyAlerts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool notifyOnNewRoyalties READ notifyOnNewRoyalties WRITE setNotifyOnNewRoyalties NOTIFY changed)
    Q_PROPERTY(bool notificationSound READ notificationSound WRITE setNotificationSound NOTIFY changed)
    Q_PROPERTY(bool quietHoursEnabled READ quietHoursEnabled WRITE setQuietHoursEnabled NOTIFY changed)
    // "HH:mm", local time.
    Q_PROPERTY(QString quietHoursStart READ quietHoursStartText WRITE setQuietHoursStartText NOTIFY changed)
    Q_PROPERTY(QString quietHoursEnd READ quietHoursEndText WRITE setQuietHoursEndText NOTIFY changed)
    Q_PROPERTY(bool quietHoursSummary READ quietHoursSummary WRITE setQuietHoursSummary NOTIFY changed)

public:
    struct Environment {
        Clock &clock;
        Preferences &preferences;
        DesktopNotifications &notifications;
        const ConnectionSession &session;
        const StoreSettings &settings;
    };
    explicit RoyaltyAlerts(Environment environment, QObject *parent = nullptr);
    ~RoyaltyAlerts() override;

    static QTime defaultQuietHoursStart() { return {22, 0}; }
    static QTime defaultQuietHoursEnd() { return {7, 0}; }

    bool notifyOnNewRoyalties() const { return m_notifyOnNewRoyalties; }
    bool notificationSound() const { return m_notificationSound; }
    bool quietHoursEnabled() const { return m_quietHoursEnabled; }
    QTime quietHoursStart() const { return m_quietHoursStart; }
    QTime quietHoursEnd() const { return m_quietHoursEnd; }
    bool quietHoursSummary() const { return m_quietHoursSummary; }
    QString quietHoursStartText() const;
    QString quietHoursEndText() const;

    void setNotifyOnNewRoyalties(bool value);
    void setNotificationSound(bool value);
    void setQuietHoursEnabled(bool value);
    void setQuietHoursStart(QTime value);
    void setQuietHoursEnd(QTime value);
    // A text that is not a time leaves the time as it is.
    void setQuietHoursStartText(const QString &value);
    void setQuietHoursEndText(const QString &value);
    void setQuietHoursSummary(bool value);

    // Whether `time` (local) lies within the quiet hours, which may run over midnight.
    bool isQuietAt(QTime time) const;

    // A refresh of `accountID` and `period` has succeeded: its figures are the session's now.
    void figuresRefreshed(const QString &accountID, RoyaltyPeriod period);

Q_SIGNALS:
    void changed();

private:
    void announce(double increase, RoyaltyPeriod period);
    void holdUntilQuietHoursEnd(double increase, RoyaltyPeriod period);
    void releaseHeld();
    void scheduleRelease();

    Environment m_environment;
    bool m_notifyOnNewRoyalties = true;
    bool m_notificationSound = false;
    bool m_quietHoursEnabled = false;
    QTime m_quietHoursStart = defaultQuietHoursStart();
    QTime m_quietHoursEnd = defaultQuietHoursEnd();
    bool m_quietHoursSummary = true;

    // The figures of the last successful refresh, and whose they were.
    struct Seen {
        QString accountID;
        RoyaltyPeriod period;
        RoyaltySummary summary;
    };
    std::optional<Seen> m_lastSeen;
    // Increases found within quiet hours, to be told as one when they end.
    double m_held = 0;
    std::optional<RoyaltyPeriod> m_heldPeriod;
    std::unique_ptr<ClockTimer> m_releaseTimer;
};
