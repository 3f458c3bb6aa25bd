#pragma once

#include "model/DisplayedRoyalty.h"
#include "model/RoyaltyPeriod.h"
#include "model/SalesBreakdownMetric.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <optional>

class Preferences;

// The choices the user makes: the server, the account, the refresh interval, the period, the
// displayed royalty and the sales rows. Read from the settings file as the store is made, each
// written back only when a flow says so (the period and the sales rows at once, the rest when the
// user connects or saves). Also keeps the settings file's other entries that the store owns: the
// cooldown's end and the pending sign-in.
class StoreSettings : public QObject
{
    Q_OBJECT

public:
    StoreSettings(Preferences &preferences, const QString &defaultServerURL, QObject *parent = nullptr);

    const QString &serverURL() const { return m_serverURL; }
    const QString &accountID() const { return m_accountID; }
    qint64 refreshMinutes() const { return m_refreshMinutes; }
    const RoyaltyPeriod &selectedPeriod() const { return m_selectedPeriod; }
    const DisplayedRoyalty &displayedRoyalty() const { return m_displayedRoyalty; }
    const QList<SalesBreakdownMetric> &salesMetricOrder() const { return m_salesMetricOrder; }
    const QSet<SalesBreakdownMetric> &hiddenSalesMetrics() const { return m_hiddenSalesMetrics; }
    // The order without the hidden metrics.
    QList<SalesBreakdownMetric> visibleSalesMetrics() const;
    // Every money figure shows as a mask ("$•••"), for a screen that others see.
    bool hideAmounts() const { return m_hideAmounts; }

    // What the user types or picks; nothing is written until persist().
    void setServerURL(QString value);
    void setAccountID(QString value);
    void setRefreshMinutes(qint64 value);
    void setDisplayedRoyalty(DisplayedRoyalty value);
    // Each of these is written at once.
    void selectPeriod(RoyaltyPeriod value);
    void setSalesMetricOrder(QList<SalesBreakdownMetric> value);
    void setHiddenSalesMetrics(QSet<SalesBreakdownMetric> value);
    void setHideAmounts(bool value);
    // Swaps a metric with the one `offset` places away; nothing when either place is outside.
    void moveSalesMetric(SalesBreakdownMetric metric, qint64 offset);
    void setSalesMetricHidden(SalesBreakdownMetric metric, bool hidden);

    // Writes the connection settings, the interval and the displayed royalty, and the sales rows.
    void persist();
    void persistSalesMetricPreferences();
    // Sign-out: the account is forgotten, here and in the file, with any pending sign-in.
    void forgetAccount();

    // The end of a request cooldown, kept across runs.
    std::optional<QDateTime> requestAvailableAt() const;
    void setRequestAvailableAt(const std::optional<QDateTime> &value);

    // The verifier and state of a browser sign-in under way, kept across runs.
    struct PendingSignIn {
        QString verifier;
        QString state;
    };
    std::optional<PendingSignIn> pendingSignIn() const;
    void setPendingSignIn(const std::optional<PendingSignIn> &value);

    // Where an unreadable settings file was moved aside at start, if it was.
    const std::optional<QString> &setAsideFile() const;

Q_SIGNALS:
    void serverURLChanged();
    void accountIDChanged();
    void refreshMinutesChanged();
    void selectedPeriodChanged();
    void displayedRoyaltyChanged();
    void salesMetricOrderChanged();
    void hiddenSalesMetricsChanged();
    void hideAmountsChanged();

private:
    Preferences &m_preferences;
    QString m_serverURL;
    QString m_accountID;
    qint64 m_refreshMinutes{};
    RoyaltyPeriod m_selectedPeriod{RoyaltyPeriod::today};
    DisplayedRoyalty m_displayedRoyalty{DisplayedRoyalty::gross};
    QList<SalesBreakdownMetric> m_salesMetricOrder;
    QSet<SalesBreakdownMetric> m_hiddenSalesMetrics;
    bool m_hideAmounts = false;
};
