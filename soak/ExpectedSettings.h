#pragma once

#include "model/DisplayedRoyalty.h"
#include "model/RoyaltyPeriod.h"
#include "model/SalesBreakdownMetric.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

class RoyaltiesStore;

// What a store started from the soak's settings file and keyring must read back: the settings as
// the soak last had them saved, and the key unless the soak signed out.
struct ExpectedSettings {
    bool signedIn = true;
    QString apiKey;
    QString serverURL;
    QString accountID;
    qint64 refreshMinutes = 30;
    RoyaltyPeriod period = RoyaltyPeriod::today;
    DisplayedRoyalty displayedRoyalty = DisplayedRoyalty::gross;
    QList<SalesBreakdownMetric> salesMetricOrder;
    QSet<SalesBreakdownMetric> hiddenSalesMetrics;

    // One line per setting that `store` (or the keyring, holding `keyringKey`) does not match.
    QStringList differences(const RoyaltiesStore &store, const QString &keyringKey) const;
};
