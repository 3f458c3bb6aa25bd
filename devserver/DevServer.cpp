#include "DevServer.h"

#include <QHttpServerRequest>
#include <QRegularExpression>

DevServer::DevServer(const DevServerConfig &config, QObject *parent)
    : QObject(parent)
    , m_config(config)
    , m_codes(m_clock)
    , m_rateLimiter(config.rateLimitWindow)
    , m_api(m_config, m_keys, m_codes, m_rateLimiter, m_clock)
    , m_signIn(m_config, m_codes)
    , m_dashboard(m_clock)
    , m_installer(m_config)
    , m_admin(m_faults, m_log, [this] { reset(); })
{
    m_config.basePath = DevServerConfig::normalizedBasePath(config.basePath).value_or(QString());

    addRoute(QStringLiteral("/api/v1/mac/bookStatsAPI/"), Route::Stats,
             [this](const IncomingRequest &request) { return m_api.statistics(request); });
    addRoute(QStringLiteral("/api/v1/mac/listAccountsAPI/"), Route::Accounts,
             [this](const IncomingRequest &request) { return m_api.accounts(request); });
    addRoute(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/"), Route::Exchange,
             [this](const IncomingRequest &request) { return m_api.exchange(request); });
    addRoute(SignInPages::connectPath(), Route::Connect,
             [this](const IncomingRequest &request) { return m_signIn.connectPage(request); });
    addRoute(SignInPages::authorizePath(), Route::Connect,
             [this](const IncomingRequest &request) { return m_signIn.authorize(request); });
    addRoute(QStringLiteral("/download_for_linux/"), Route::Download,
             [this](const IncomingRequest &request) { return m_installer.serve(request); });
    addRoute(QStringLiteral("/dashboard_lite/"), Route::Dashboard,
             [this](const IncomingRequest &request) { return m_dashboard.render(request); });

    for (const QString &endpoint : {QStringLiteral("faults"), QStringLiteral("requests"), QStringLiteral("reset")}) {
        addAdminRoute(QStringLiteral("/__admin/") + endpoint, endpoint);
    }

    m_http.setMissingHandler([this](const QHttpServerRequest &request, QHttpServerResponder &&responder) {
        serve(
            QString(), std::nullopt,
            [](const IncomingRequest &incoming) {
                return HttpReply::error(404, QStringLiteral("Nothing lives at %1.").arg(incoming.path));
            },
            request, std::move(responder));
    });
}

DevServer::~DevServer() = default;

void DevServer::addRoute(const QString &path, Route route, Handler handler)
{
    // Rules are regular expressions matched anywhere in the path: anchor them so that only the exact
    // path (under the base path) matches.
    const QString pattern = u'^' + QRegularExpression::escape(m_config.basePath + path) + u'$';
    m_http.route(pattern, [this, route, handler = std::move(handler)](const QHttpServerRequest &request,
                                                                      QHttpServerResponder &&responder) {
        serve(routeName(route), route, handler, request, std::move(responder));
    });
}

void DevServer::addAdminRoute(const QString &path, const QString &endpoint)
{
    const auto answer = [this, endpoint](const QHttpServerRequest &request, QHttpServerResponder &&responder) {
        ReplySender::write(responder, m_admin.handle(IncomingRequest::from(request), endpoint));
    };
    // The admin endpoint lives at the root and, behind a base path, under it as well.
    m_http.route(u'^' + QRegularExpression::escape(path) + u'$', answer);
    if (!m_config.basePath.isEmpty()) {
        m_http.route(u'^' + QRegularExpression::escape(m_config.basePath + path) + u'$', answer);
    }
}

void DevServer::serve(const QString &routeLabel, std::optional<Route> route, const Handler &handler,
                      const QHttpServerRequest &request, QHttpServerResponder &&responder)
{
    const IncomingRequest incoming = IncomingRequest::from(request);
    const RecordedRequest entry = m_log.record(incoming, routeLabel, m_clock.now());
    Q_EMIT requestRecorded(entry);

    const Fault fault = route ? m_faults.take(*route) : Fault{};
    const HttpReply reply = fault.replacesReply() ? fault.reply() : handler(incoming);
    m_sender.send(std::move(responder), reply, fault);
}

quint16 DevServer::listen(const QHostAddress &address, quint16 port)
{
    m_port = m_http.listen(address, port);
    m_address = address;
    return m_port;
}

QUrl DevServer::baseUrl() const
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    const bool anyAddress = m_address == QHostAddress(QHostAddress::Any)
                            || m_address == QHostAddress(QHostAddress::AnyIPv4)
                            || m_address == QHostAddress(QHostAddress::AnyIPv6) || m_address.isNull();
    url.setHost(anyAddress ? QStringLiteral("127.0.0.1") : m_address.toString());
    url.setPort(m_port);
    url.setPath(m_config.basePath);
    return url;
}

QUrl DevServer::url(const QString &path) const
{
    QUrl result = baseUrl();
    result.setPath(m_config.basePath + path);
    return result;
}

void DevServer::reset()
{
    m_faults.clearAll();
    m_log.clear();
    m_rateLimiter.reset();
    m_codes.clear();
    m_keys.reset();
    m_sender.releaseAll();
}
