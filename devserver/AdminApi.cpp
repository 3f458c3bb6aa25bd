#include "AdminApi.h"

#include "FaultSwitches.h"
#include "RequestLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

AdminApi::AdminApi(FaultSwitches &faults, RequestLog &log, std::function<void()> resetAll)
    : m_faults(faults)
    , m_log(log)
    , m_resetAll(std::move(resetAll))
{}

bool AdminApi::isLoopbackPeer(const QHostAddress &peer)
{
    bool isMappedIpv4 = false;
    const quint32 ipv4 = peer.toIPv4Address(&isMappedIpv4);
    if (isMappedIpv4) {
        return QHostAddress(ipv4).isLoopback();
    }
    return peer.isLoopback();
}

HttpReply AdminApi::handle(const IncomingRequest &request, const QString &endpoint)
{
    if (!isLoopbackPeer(request.peer)) {
        return HttpReply::error(403, QStringLiteral("The admin endpoint only answers on the loopback interface."));
    }
    if (endpoint == QLatin1String("faults")) {
        return faults(request);
    }
    if (endpoint == QLatin1String("requests")) {
        return requests(request);
    }
    if (endpoint == QLatin1String("reset")) {
        if (request.method != QLatin1String("POST")) {
            return HttpReply::error(405, QStringLiteral("Use POST to reset the server."));
        }
        m_resetAll();
        return HttpReply::json(QJsonObject{{QStringLiteral("reset"), true}});
    }
    return HttpReply::error(404, QStringLiteral("No such admin endpoint."));
}

HttpReply AdminApi::faults(const IncomingRequest &request)
{
    if (request.method == QLatin1String("DELETE")) {
        m_faults.clearAll();
    } else if (request.method == QLatin1String("POST") || request.method == QLatin1String("PUT")) {
        QJsonParseError parseError;
        const QJsonDocument document = QJsonDocument::fromJson(request.body, &parseError);
        if (!document.isObject()) {
            return HttpReply::error(400, QStringLiteral("Send a JSON object of route names to faults."));
        }
        QJsonObject object = document.object();
        QString error;
        const QJsonValue spec = object.take(QStringLiteral("spec"));
        if (!spec.isUndefined()) {
            const QJsonArray specs = spec.isArray() ? spec.toArray() : QJsonArray{spec};
            for (const QJsonValueConstRef one : specs) {
                if (!one.isString() || !m_faults.applySpec(one.toString(), &error)) {
                    return HttpReply::error(400, one.isString() ? error : QStringLiteral("\"spec\" must be text."));
                }
            }
        }
        if (!m_faults.applyJson(object, &error)) {
            return HttpReply::error(400, error);
        }
    } else if (request.method != QLatin1String("GET")) {
        return HttpReply::error(405, QStringLiteral("Use GET, POST or DELETE."));
    }
    return HttpReply::json(m_faults.toJson());
}

HttpReply AdminApi::requests(const IncomingRequest &request)
{
    if (request.method == QLatin1String("DELETE")) {
        m_log.clear();
    } else if (request.method != QLatin1String("GET")) {
        return HttpReply::error(405, QStringLiteral("Use GET or DELETE."));
    }
    return HttpReply::json(m_log.toJson());
}
