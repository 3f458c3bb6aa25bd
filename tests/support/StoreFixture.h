#pragma once

#include "DevServer.h"
#include "TestDoubles.h"
#include "VirtualClock.h"
#include "store/Preferences.h"
#include "store/RoyaltiesStore.h"

#include <QNetworkAccessManager>
#include <QTemporaryDir>

#include <memory>

// A store wired to test doubles, a virtual clock and a development server running in-process, whose
// own clock follows the virtual one. Tests create the store after arranging the settings, key and
// app information they want it to start from.
class StoreFixture
{
public:
    StoreFixture();
    ~StoreFixture();

    // Settings as a previous run would have left them.
    Preferences &preferences() { return *m_preferences; }
    // Drops the settings object and opens the same file again, as a new process would.
    void reopenPreferences();

    RoyaltiesStore &makeStore();
    RoyaltiesStore &store() { return *m_store; }
    void destroyStore() { m_store.reset(); }

    // Connected with the demo key to the development server; no request sent yet.
    RoyaltiesStore &makeConnectedStore();
    // Connected and started, with its first figures in: loading the accounts chose the first one,
    // whose figures came once the request cooldown ended.
    RoyaltiesStore &makeRefreshedStore();

    // Replaces the development server with one started from `config`.
    void restartServer(const DevServerConfig &config);
    // The cache folder the store was given; downloaded updates go below it.
    QString cacheFolder() const { return m_cacheFolder.path(); }

    // The browser's part of a sign-in: opens the connect page the store asked for, presses
    // Authorize, and gives the inkwarden:// address the browser is sent to (empty on failure).
    QString authorizeInBrowser(const QUrl &connectPage);

    // Statistics requests the server has seen.
    QList<RecordedRequest> statisticsRequests() const;
    // Waits (in real time, for real HTTP) until the store has no request in flight.
    bool waitUntilIdle(int timeoutMs = 5000);

    VirtualClock clock;
    MemorySecretStore secrets;
    FakeReachability reachability;
    FakeDesktopServices desktop;
    FakeLoginItems loginItems;
    RecordedNotifications notifications;
    QNetworkAccessManager network;
    AppInfo appInfo{QStringLiteral("1.4.0"), std::nullopt};
    QLocale locale{QLocale::English, QLocale::UnitedStates};
    std::unique_ptr<DevServer> server;

private:
    QTemporaryDir m_settingsFolder;
    QTemporaryDir m_cacheFolder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<RoyaltiesStore> m_store;
};
