#include "StoreFixture.h"

#include "HttpTestClient.h"

#include <QDeadlineTimer>
#include <QTest>
#include <QUrlQuery>

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
    m_store = std::make_unique<RoyaltiesStore>(StoreEnvironment{clock, secrets, *m_preferences, reachability, desktop,
                                                                loginItems, notifications, network, appInfo, locale,
                                                                m_cacheFolder.path()});
    return *m_store;
}

RoyaltiesStore &StoreFixture::makeConnectedStore()
{
    secrets.key = ApiKeys::demoKey();
    m_preferences->setString(QStringLiteral("serverURL"), server->baseUrl().toString());
    return makeStore();
}

RoyaltiesStore &StoreFixture::makeRefreshedStore()
{
    using namespace std::chrono_literals;
    RoyaltiesStore &store = makeConnectedStore();
    store.start();
    waitUntilIdle();
    clock.advance(3s);
    waitUntilIdle();
    return store;
}

QString StoreFixture::authorizeInBrowser(const QUrl &connectPage)
{
    HttpTestClient browser;
    const HttpResult page = browser.get(connectPage);
    if (page.status != 200) {
        return {};
    }
    const QUrlQuery asked(connectPage);
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("code_challenge"), asked.queryItemValue(QStringLiteral("code_challenge")));
    form.addQueryItem(QStringLiteral("state"), asked.queryItemValue(QStringLiteral("state")));
    const HttpResult redirect =
        browser.post(server->url(QStringLiteral("/mac-app/connect/authorize/")),
                     form.query(QUrl::FullyEncoded).toUtf8(), "application/x-www-form-urlencoded");
    return QString::fromUtf8(redirect.header("Location"));
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
