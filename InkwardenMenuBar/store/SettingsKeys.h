#pragma once

#include <QString>

// The keys of Inkwarden's settings file.
namespace SettingsKeys {

inline const QString serverURL = QStringLiteral("serverURL");
inline const QString accountID = QStringLiteral("accountID");
inline const QString refreshMinutes = QStringLiteral("refreshMinutes");
inline const QString selectedPeriod = QStringLiteral("selectedPeriod");
inline const QString displayedRoyalty = QStringLiteral("displayedRoyalty");
inline const QString salesMetricOrder = QStringLiteral("salesMetricOrder");
inline const QString hiddenSalesMetrics = QStringLiteral("hiddenSalesMetrics");
inline const QString requestAvailableAt = QStringLiteral("requestAvailableAt");
inline const QString pendingAuthState = QStringLiteral("pendingAuthState");
inline const QString pendingAuthVerifier = QStringLiteral("pendingAuthVerifier");
inline const QString lastPresentedAppVersion = QStringLiteral("lastPresentedAppVersion");
// Beyond the connection and the figures: new-royalty notifications and hidden amounts.
inline const QString notifyOnNewRoyalties = QStringLiteral("notifyOnNewRoyalties");
inline const QString notificationSound = QStringLiteral("notificationSound");
inline const QString quietHoursEnabled = QStringLiteral("quietHoursEnabled");
inline const QString quietHoursStart = QStringLiteral("quietHoursStart");
inline const QString quietHoursEnd = QStringLiteral("quietHoursEnd");
inline const QString quietHoursSummary = QStringLiteral("quietHoursSummary");
inline const QString hideAmounts = QStringLiteral("hideAmounts");

} // namespace SettingsKeys
