#include "StartupBanner.h"

#include "ApiKeys.h"
#include "DemoData.h"
#include "DevServer.h"

namespace {

QString describeAccounts(const ApiKeyGrant *grant)
{
    if (!grant || grant->accountIds.isEmpty()) {
        return QStringLiteral("no accounts");
    }
    QStringList parts;
    for (const QString &id : grant->accountIds) {
        const DemoAccount *account = DemoData::account(id);
        if (account) {
            parts.append(account->displayName
                             ? QStringLiteral("%1 (\"%2\", %3)").arg(id, *account->displayName, account->currency)
                             : QStringLiteral("%1 (no display name, %2)").arg(id, account->currency));
        }
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

QString startupBanner(DevServer &server)
{
    const QString base = server.baseUrl().toString();
    const ApiKeys &keys = server.apiKeys();
    QStringList lines;
    lines << QStringLiteral("Inkwarden development server listening on %1").arg(base)
          << QStringLiteral("Port: %1").arg(server.port()) << QString()
          << QStringLiteral("API keys (send as \"Authorization: Bearer <key>\"):")
          << QStringLiteral("  %1  sees %2").arg(ApiKeys::demoKey(), describeAccounts(keys.find(ApiKeys::demoKey())))
          << QStringLiteral("  %1  sees %2")
                 .arg(ApiKeys::noAccountsKey(), describeAccounts(keys.find(ApiKeys::noAccountsKey())))
          << QStringLiteral("  Keys from browser sign-in see the same accounts as %1.").arg(ApiKeys::demoKey())
          << QString()
          << QStringLiteral("Latest app version: %1")
                 .arg(server.config().latestAppVersion.isEmpty() ? QStringLiteral("(not announced)")
                                                                 : server.config().latestAppVersion)
          << QStringLiteral("Dashboard: %1").arg(server.url(QStringLiteral("/dashboard_lite/")).toString())
          << QStringLiteral("Installer: %1").arg(server.url(QStringLiteral("/download_for_linux/")).toString())
          << QStringLiteral("Sign-in:   %1?code_challenge=...&state=...")
                 .arg(server.url(QStringLiteral("/mac-app/connect/")).toString())
          << QStringLiteral("Admin (loopback only): %1/__admin/faults, /__admin/requests, /__admin/reset").arg(base);
    const QJsonObject faults = server.faults().toJson();
    for (auto it = faults.begin(); it != faults.end(); ++it) {
        lines << QStringLiteral("Fault: %1=%2").arg(it.key(), server.faults().fault(*routeFromName(it.key())).toText());
    }
    return lines.join(u'\n') + u'\n';
}
