#pragma once

#include <QString>

#include <optional>

// What the build compiled into the app about itself. Either value may be missing: an empty or
// absent entry reads as none.
struct AppInfo {
    std::optional<QString> version;
    std::optional<QString> defaultServerURL;

    // The app's own information, from its compiled-in resource.
    static AppInfo compiledIn();
    // Reads an app-information JSON file; a missing or unreadable file gives no values.
    static AppInfo fromFile(const QString &path);
};
