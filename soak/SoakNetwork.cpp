#include "SoakNetwork.h"

#include <QTcpServer>

namespace {

// A local port that refuses connections: taken from the system and given back at once.
quint16 refusingPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    const quint16 port = probe.serverPort();
    probe.close();
    return port;
}

} // namespace

SoakNetwork::SoakNetwork(QObject *parent)
    : QNetworkAccessManager(parent)
    , m_unreachablePort(refusingPort())
{}

std::optional<Route> SoakNetwork::routeOfPath(const QString &path)
{
    if (path.endsWith(QStringLiteral("/bookStatsAPI/"))) {
        return Route::Stats;
    }
    if (path.endsWith(QStringLiteral("/listAccountsAPI/"))) {
        return Route::Accounts;
    }
    if (path.endsWith(QStringLiteral("/exchangeAuthCodeAPI/"))) {
        return Route::Exchange;
    }
    return std::nullopt;
}

bool SoakNetwork::markArrived(qint64 tag)
{
    m_awaitingArrival.remove(tag);
    if (m_arrived.contains(tag)) {
        return true;
    }
    m_arrived.insert(tag);
    return false;
}

QNetworkReply *SoakNetwork::createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoingData)
{
    const qint64 tag = m_nextTag++;
    const std::optional<Route> route = routeOfPath(request.url().path());
    const bool online = m_online;

    QNetworkRequest tagged(request);
    tagged.setRawHeader(tagHeader(), QByteArray::number(tag));
    if (online) {
        m_awaitingArrival.insert(tag);
    } else {
        QUrl nowhere = request.url();
        nowhere.setHost(QStringLiteral("127.0.0.1"));
        nowhere.setPort(m_unreachablePort);
        tagged.setUrl(nowhere);
    }

    QNetworkReply *reply = QNetworkAccessManager::createRequest(operation, tagged, outgoingData);
    ++m_unfinished;
    if (route) {
        ++m_unfinishedByRoute[*route];
    }
    if (onSent) {
        onSent(Sent{tag, route, online});
    }
    // Connected before the caller sees the reply, so this runs before the store reads the answer.
    QObject::connect(reply, &QNetworkReply::finished, this, [this, reply, tag, route, online, url = request.url()] {
        --m_unfinished;
        if (route) {
            --m_unfinishedByRoute[*route];
        }
        // Not on the server's books any more, whether or not it ever got there (an aborted request).
        m_awaitingArrival.remove(tag);
        Finished finished;
        finished.tag = tag;
        finished.route = route;
        finished.online = online;
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        finished.status = status.isValid() ? status.toInt() : 0;
        finished.hasRetryAfter = reply->hasRawHeader("Retry-After");
        finished.retryAfter = reply->rawHeader("Retry-After");
        finished.error = reply->error();
        finished.url = url;
        if (onFinished) {
            onFinished(finished);
        }
    });
    return reply;
}
