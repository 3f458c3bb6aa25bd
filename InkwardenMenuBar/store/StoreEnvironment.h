#pragma once

#include "AppInfo.h"
#include "model/MoneyFormatter.h"

#include <QLocale>
#include <QString>

class Clock;
class DesktopNotifications;
class DesktopServices;
class LoginItemService;
class NetworkReachability;
class Preferences;
class QNetworkAccessManager;
class SecretStore;

// Everything the store reaches outside itself. The app passes the real desktop; tests pass their
// own clock, keyring, settings file, network monitor and desktop.
struct StoreEnvironment {
    Clock &clock;
    SecretStore &secrets;
    Preferences &preferences;
    NetworkReachability &reachability;
    DesktopServices &desktop;
    LoginItemService &loginItems;
    DesktopNotifications &notifications;
    QNetworkAccessManager &network;
    AppInfo appInfo;
    QLocale locale = MoneyFormatter::userLocale();
    // The user's cache folder; downloaded updates go into a folder of their own inside it.
    QString cacheFolder = defaultCacheFolder();

    static QString defaultCacheFolder();
};
