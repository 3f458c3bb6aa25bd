#include "RoyaltiesService.h"

#include "APIErrorResponse.h"
#include "BookStatsFold.h"
#include "BookStatsResponse.h"
#include "MacAuthExchangeRequest.h"
#include "SendOnceBody.h"
#include "ServerAddress.h"
#include "model/Clock.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrlQuery>
#include <qcoro/qcoronetworkreply.h>

#include <cmath>
#include <memory>

namespace {

const QString statisticsPath = QStringLiteral("/api/v1/mac/bookStatsAPI/");
const QString accountsPath = QStringLiteral("/api/v1/mac/listAccountsAPI/");
const QString exchangePath = QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/");

// Decodes the body type of a successful reply.
template <typename Body>
std::optional<Body> decodeBody(const QByteArray &bytes)
{
    return Body::decode(bytes);
}

template <>
std::optional<RoyaltySummary> decodeBody<RoyaltySummary>(const QByteArray &bytes)
{
    const std::optional<BookStatsResponse> response = BookStatsResponse::decode(bytes);
    if (!response) {
        return std::nullopt;
    }
    // Counts that leave the 64-bit range when added up are no figures to show: an invalid reply.
    return BookStatsFold::folding(response->tableData);
}

// A failure of the transfer, as opposed to an HTTP status that the network layer also reports as an
// error. Qt ends a request that exceeds its transfer time-out as cancelled; Inkwarden never cancels
// one itself, so that is a time-out and is worded as one.
std::optional<TransportError> transportFailure(const QNetworkReply &reply)
{
    const QNetworkReply::NetworkError error = reply.error();
    if (error == QNetworkReply::ContentReSendError) {
        // Qt wanted to send the request again after the connection closed, which a SendOnceBody
        // refuses: what the user should hear about is the closed connection.
        //: A network error: the server closed the connection
        return TransportError{QNetworkReply::RemoteHostClosedError,
                              QCoreApplication::translate("RoyaltiesService", "Connection closed")};
    }
    if (error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied) {
        return std::nullopt;
    }
    // A status the service answered with, which Qt files under its proxy errors (407 from a server
    // that is no proxy): a status like any other. Failures of the connection itself stay failures
    // even after a status arrived (a body cut short, a time-out while it came).
    const bool answered = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    if (answered && error > QNetworkReply::UnknownNetworkError) {
        return std::nullopt;
    }
    if (error == QNetworkReply::OperationCanceledError) {
        return TransportError{QNetworkReply::TimeoutError,
                              QCoreApplication::translate("RoyaltiesService", "The request timed out.")};
    }
    return TransportError{error, reply.errorString()};
}

QString dayText(const QDateTime &instant, const QTimeZone &zone)
{
    return instant.toTimeZone(zone).date().toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace

RoyaltiesService::RoyaltiesService(QNetworkAccessManager &network, const Clock &clock,
                                   std::chrono::milliseconds timeout)
    : m_network(network)
    , m_clock(clock)
    , m_timeout(timeout)
{}

ServiceResult<QUrl> RoyaltiesService::makeURL(const QString &serverURL, const QString &path,
                                              const QueryItems &queryItems)
{
    const QString text = ServerAddress::withoutSlashesAtEnds(serverURL.trimmed()) + path;
    // The scheme is compared as written: "HTTP://" is not accepted, although a URL parser would
    // quietly lower-case it.
    const qsizetype colon = text.indexOf(u':');
    const QStringView scheme = QStringView(text).left(std::max<qsizetype>(colon, 0));
    if (colon < 0 || (scheme != u"http" && scheme != u"https")) {
        return RoyaltiesError::invalidServerURL();
    }
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid()) {
        return RoyaltiesError::invalidServerURL();
    }
    QUrlQuery query;
    query.setQueryItems(queryItems);
    // An empty list still sets an (empty) query, as the list asks for exactly these items.
    url.setQuery(query.isEmpty() ? QStringLiteral("") : query.query(QUrl::FullyEncoded), QUrl::StrictMode);
    if (!url.isValid()) {
        return RoyaltiesError::invalidServerURL();
    }
    return url;
}

double RoyaltiesService::retryAfterSeconds(const QByteArray &headerValue)
{
    bool ok = false;
    const double seconds = headerValue.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(seconds)) {
        return defaultRetryAfterSeconds;
    }
    return seconds;
}

QNetworkRequest RoyaltiesService::prepareRequest(const QUrl &url, std::chrono::milliseconds timeout)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(int(timeout.count()));
    request.setRawHeader("Accept", "application/json");
    return request;
}

QCoro::Task<ServiceResult<RoyaltySummary>> RoyaltiesService::fetchSummary(QString serverURL, QString apiKey,
                                                                          QString accountID, RoyaltyPeriod period) const
{
    const QTimeZone zone = m_clock.timeZone();
    const PeriodDates dates = period.dates(zone, m_clock.now());
    QueryItems items{{QStringLiteral("start_date"), dayText(dates.start, zone)},
                     {QStringLiteral("end_date"), dayText(dates.end, zone)}};
    if (!accountID.isEmpty()) {
        items.append({QStringLiteral("account_id"), accountID});
    }
    const ServiceResult<QUrl> url = makeURL(serverURL, statisticsPath, items);
    if (!url) {
        co_return url.error();
    }
    co_return co_await authorizedGet<RoyaltySummary>(url.value(), apiKey);
}

QCoro::Task<ServiceResult<AccountsResponse>> RoyaltiesService::fetchAccounts(QString serverURL, QString apiKey) const
{
    const ServiceResult<QUrl> url = makeURL(serverURL, accountsPath, {});
    if (!url) {
        co_return url.error();
    }
    co_return co_await authorizedGet<AccountsResponse>(url.value(), apiKey);
}

QCoro::Task<ServiceResult<MacAuthExchangeResponse>>
RoyaltiesService::exchangeAuthenticationCode(QString serverURL, QString code, QString codeVerifier) const
{
    const ServiceResult<QUrl> url = makeURL(serverURL, exchangePath, {});
    if (!url) {
        co_return url.error();
    }
    QNetworkRequest request = prepareRequest(url.value(), m_timeout);
    request.setRawHeader("Content-Type", "application/json");
    // Named, not a temporary: g++ 12 destroys temporaries of a co_await expression twice.
    const QByteArray body = MacAuthExchangeRequest{code, codeVerifier}.encode();
    co_return co_await perform<MacAuthExchangeResponse>(request, body);
}

template <typename Body>
QCoro::Task<ServiceResult<Body>> RoyaltiesService::authorizedGet(QUrl url, QString apiKey) const
{
    QNetworkRequest request = prepareRequest(url, m_timeout);
    request.setRawHeader("Authorization", QByteArrayLiteral("Bearer ") + apiKey.toUtf8());
    const QByteArray noBody;
    co_return co_await perform<Body>(request, noBody);
}

template <typename Body>
QCoro::Task<ServiceResult<Body>> RoyaltiesService::perform(QNetworkRequest request, QByteArray postBody) const
{
    const QByteArray verb = postBody.isNull() ? QByteArrayLiteral("GET") : QByteArrayLiteral("POST");
    request.setHeader(QNetworkRequest::ContentLengthHeader, postBody.size());
    auto *upload = new SendOnceBody(postBody);
    std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> reply(
        m_network.sendCustomRequest(request, verb, upload), [](QNetworkReply *finished) { finished->deleteLater(); });
    // The body lives as long as the reply that reads it.
    upload->setParent(reply.get());
    QObject::connect(m_requestsUnderWay.get(), &QObject::destroyed, reply.get(), &QNetworkReply::abort);
    co_await reply.get();

    if (const std::optional<TransportError> failure = transportFailure(*reply)) {
        co_return *failure;
    }
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid()) {
        co_return RoyaltiesError::invalidResponse();
    }

    const int code = status.toInt();
    if (code == 429) {
        co_return RoyaltiesError::rateLimited(retryAfterSeconds(reply->rawHeader("Retry-After")));
    }
    const QByteArray body = reply->readAll();
    if (code >= 200 && code <= 299) {
        std::optional<Body> decoded = decodeBody<Body>(body);
        if (!decoded) {
            co_return RoyaltiesError::invalidResponse();
        }
        co_return std::move(*decoded);
    }
    if (const std::optional<APIErrorResponse> error = APIErrorResponse::decode(body)) {
        co_return RoyaltiesError::server(error->error);
    }
    //: %1 is an HTTP status code, such as 500
    co_return RoyaltiesError::server(tr("Server returned HTTP %1.").arg(code));
}
