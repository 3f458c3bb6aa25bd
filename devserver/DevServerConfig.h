#pragma once

#include <QString>

#include <chrono>
#include <optional>

// What the development server is told at start: the version it announces, the folder it lives
// under, the installer it hands out and how strict its rate limit is.
struct DevServerConfig {
    // Announced as "latest_app_version"; empty leaves the key out of the account list.
    QString latestAppVersion = QStringLiteral("0.2.0");
    // "" or a prefix such as "/inkwarden" put before every path, as behind a reverse proxy.
    QString basePath;
    // Served by the download page instead of the built-in placeholder when set.
    QString installerFile;
    // Minimum time between two statistics requests of one key; zero turns the limit off.
    std::chrono::milliseconds rateLimitWindow = std::chrono::seconds(3);

    // "/inkwarden/" and "inkwarden" become "/inkwarden", "/" becomes ""; nothing for a prefix with
    // characters other than letters, digits, "-", "_", "." and "/".
    static std::optional<QString> normalizedBasePath(const QString &path);
};
