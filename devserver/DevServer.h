#pragma once

#include "AdminApi.h"
#include "ApiKeys.h"
#include "AuthCodes.h"
#include "DashboardPage.h"
#include "DevServerConfig.h"
#include "FaultSwitches.h"
#include "InstallerDownload.h"
#include "RateLimiter.h"
#include "ReplySender.h"
#include "RequestLog.h"
#include "RoyaltiesApi.h"
#include "ServerClock.h"
#include "SignInPages.h"

#include <QHostAddress>
#include <QHttpServer>
#include <QObject>
#include <QUrl>

#include <functional>

// inkwarden-devserver as an object: construct, listen (port 0 picks a free one), talk HTTP to it.
// Tests run it in-process, set its fault switches, move its clock and read its request log.
class DevServer : public QObject
{
    Q_OBJECT

public:
    explicit DevServer(const DevServerConfig &config = {}, QObject *parent = nullptr);
    ~DevServer() override;

    // The port listened on, or 0 when listening failed.
    quint16 listen(const QHostAddress &address = QHostAddress(QHostAddress::LocalHost), quint16 port = 0);
    quint16 port() const { return m_port; }
    // "http://host:port" plus the base path, without a trailing slash: the app's server address.
    QUrl baseUrl() const;
    // baseUrl() with `path` (which starts with "/") appended.
    QUrl url(const QString &path) const;

    const DevServerConfig &config() const { return m_config; }
    ServerClock &clock() { return m_clock; }
    FaultSwitches &faults() { return m_faults; }
    RateLimiter &rateLimiter() { return m_rateLimiter; }
    ApiKeys &apiKeys() { return m_keys; }

    QList<RecordedRequest> requests() const { return m_log.entries(); }
    void clearRequests() { m_log.clear(); }
    // Delayed and hanging replies not yet sent.
    qsizetype heldReplies() const { return m_sender.heldCount(); }

    // Back to a fresh start: no faults, an empty log, no rate-limit history, no codes or issued keys,
    // and hanging connections closed. The clock stays as it is.
    void reset();

Q_SIGNALS:
    void requestRecorded(const RecordedRequest &entry);

private:
    using Handler = std::function<HttpReply(const IncomingRequest &)>;

    void addRoute(const QString &path, Route route, Handler handler);
    void addAdminRoute(const QString &path, const QString &endpoint);
    void serve(const QString &routeLabel, std::optional<Route> route, const Handler &handler,
               const QHttpServerRequest &request, QHttpServerResponder &&responder);

    DevServerConfig m_config;
    ServerClock m_clock;
    ApiKeys m_keys;
    AuthCodes m_codes;
    RateLimiter m_rateLimiter;
    FaultSwitches m_faults;
    RequestLog m_log;
    RoyaltiesApi m_api;
    SignInPages m_signIn;
    DashboardPage m_dashboard;
    InstallerDownload m_installer;
    AdminApi m_admin;
    QHttpServer m_http;
    // After m_http, so held responders go before the connections they belong to.
    ReplySender m_sender;
    QHostAddress m_address;
    quint16 m_port = 0;
};
