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

} // namespace SettingsKeys
