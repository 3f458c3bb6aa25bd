#include "StoreFixture.h"

#include <QDeadlineTimer>
#include <QTest>

StoreFixture::StoreFixture()
{
    restartServer(DevServerConfig());
    reopenPreferences();
}

void StoreFixture::restartServer(const DevServerConfig &config)
{
    server.reset();
    server = std::make_unique<DevServer>(config);
    server->clock().setSource([this] { return clock.now(); });
    if (server->listen() == 0) {
        qFatal("the development server could not listen");
    }
}

StoreFixture::~StoreFixture()
{
    m_store.reset();
}

void StoreFixture::reopenPreferences()
{
    m_preferences.reset();
    m_preferences = std::make_unique<Preferences>(m_settingsFolder.filePath(QStringLiteral("inkwarden.conf")));
}

RoyaltiesStore &StoreFixture::makeStore()
{
    m_store.reset();
    m_store =
        std::make_unique<RoyaltiesStore>(StoreEnvironment{clock, secrets, *m_preferences, reachability, desktop,
                                                          loginItems, network, appInfo, locale, m_cacheFolder.path()});
    return *m_store;
}

RoyaltiesStore &StoreFixture::makeConnectedStore()
{
    secrets.key = ApiKeys::demoKey();
    m_preferences->setString(QStringLiteral("serverURL"), server->baseUrl().toString());
    return makeStore();
}

QList<RecordedRequest> StoreFixture::statisticsRequests() const
{
    QList<RecordedRequest> statistics;
    for (const RecordedRequest &request : server->requests()) {
        if (request.request.path.endsWith(QStringLiteral("/bookStatsAPI/"))) {
            statistics.append(request);
        }
    }
    return statistics;
}

bool StoreFixture::waitUntilIdle(int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired()) {
        if (m_store && !m_store->isLoading() && !m_store->isLoadingAccounts()) {
            // Let a finished reply's last steps run before the test looks.
            QCoreApplication::processEvents();
            if (!m_store->isLoading() && !m_store->isLoadingAccounts()) {
                return true;
            }
        }
        QTest::qWait(5);
    }
    return false;
}
