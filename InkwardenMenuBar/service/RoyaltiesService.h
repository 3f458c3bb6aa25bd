#pragma once

#include "AccountsResponse.h"
#include "MacAuthExchangeResponse.h"
#include "ServiceError.h"
#include "model/RoyaltyPeriod.h"
#include "model/RoyaltySummary.h"

#include <QCoreApplication>
#include <QList>
#include <QNetworkRequest>
#include <QObject>
#include <QPair>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <memory>

class Clock;
class QNetworkAccessManager;

// The HTTP client of the royalties service: builds the request URLs from the user's server address,
// sends the three requests, and turns every reply into a decoded body or one ServiceError. It keeps
// nothing between requests, so overlapping requests are fine.
class RoyaltiesService
{
    Q_DECLARE_TR_FUNCTIONS(RoyaltiesService)

public:
    using QueryItems = QList<QPair<QString, QString>>;

    static constexpr int requestTimeoutMilliseconds = 30'000;
    static constexpr double defaultRetryAfterSeconds = 3.0;

    // `network` and `clock` must outlive the service. Destroying the service aborts the requests it
    // still has under way: their callers resume with a transport error.
    RoyaltiesService(QNetworkAccessManager &network, const Clock &clock,
                     std::chrono::milliseconds timeout = std::chrono::milliseconds(requestTimeoutMilliseconds));

    // The summary of `period` for `accountID` (all of the key's figures when empty).
    QCoro::Task<ServiceResult<RoyaltySummary>> fetchSummary(QString serverURL, QString apiKey, QString accountID,
                                                            RoyaltyPeriod period) const;
    QCoro::Task<ServiceResult<AccountsResponse>> fetchAccounts(QString serverURL, QString apiKey) const;
    QCoro::Task<ServiceResult<MacAuthExchangeResponse>> exchangeAuthenticationCode(QString serverURL, QString code,
                                                                                   QString codeVerifier) const;

    // The endpoint URL under the server address; fails before any traffic when the address is
    // unusable.
    static ServiceResult<QUrl> makeURL(const QString &serverURL, const QString &path, const QueryItems &queryItems);

    // The seconds a 429 reply asks for: the "Retry-After" value when all of it is a finite number,
    // else three seconds.
    static double retryAfterSeconds(const QByteArray &headerValue);

    // A request for `url` as every request of the service starts: the time-out and "Accept".
    static QNetworkRequest
    prepareRequest(const QUrl &url,
                   std::chrono::milliseconds timeout = std::chrono::milliseconds(requestTimeoutMilliseconds));

private:
    template <typename Body>
    QCoro::Task<ServiceResult<Body>> authorizedGet(QUrl url, QString apiKey) const;
    template <typename Body>
    QCoro::Task<ServiceResult<Body>> perform(QNetworkRequest request, QByteArray postBody) const;

    QNetworkAccessManager &m_network;
    const Clock &m_clock;
    std::chrono::milliseconds m_timeout;
    // Every reply under way is tied to this object's lifetime.
    std::unique_ptr<QObject> m_requestsUnderWay = std::make_unique<QObject>();
};
