#pragma once

#include <QString>

#include <array>
#include <optional>

// The parts of the service that can be made to fail on purpose, each with the name used by
// `--fault` and the admin endpoint.
enum class Route {
    Stats,
    Accounts,
    Exchange,
    Download,
    Dashboard,
    Connect,
};

inline constexpr std::array allRoutes{Route::Stats,    Route::Accounts,  Route::Exchange,
                                      Route::Download, Route::Dashboard, Route::Connect};

QString routeName(Route route);
std::optional<Route> routeFromName(QStringView name);
