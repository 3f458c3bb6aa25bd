#include "Route.h"

QString routeName(Route route)
{
    switch (route) {
    case Route::Stats:
        return QStringLiteral("stats");
    case Route::Accounts:
        return QStringLiteral("accounts");
    case Route::Exchange:
        return QStringLiteral("exchange");
    case Route::Download:
        return QStringLiteral("download");
    case Route::Dashboard:
        return QStringLiteral("dashboard");
    case Route::Connect:
        return QStringLiteral("connect");
    }
    return {};
}

std::optional<Route> routeFromName(QStringView name)
{
    for (const Route route : allRoutes) {
        if (name.compare(routeName(route), Qt::CaseInsensitive) == 0) {
            return route;
        }
    }
    return std::nullopt;
}
