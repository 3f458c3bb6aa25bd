#include "RequestLog.h"

QJsonObject RecordedRequest::toJson() const
{
    QJsonArray headers;
    for (const auto &[name, value] : request.headers) {
        headers.append(QJsonArray{QString::fromLatin1(name), QString::fromLatin1(value)});
    }
    return QJsonObject{
        {QStringLiteral("sequence"), sequence},
        {QStringLiteral("received_at"), receivedAt.toString(Qt::ISODateWithMs)},
        {QStringLiteral("route"), route},
        {QStringLiteral("method"), request.method},
        {QStringLiteral("path"), request.path},
        {QStringLiteral("query"), request.query.toString(QUrl::FullyEncoded)},
        {QStringLiteral("headers"), headers},
        {QStringLiteral("body"), QString::fromUtf8(request.body)},
        {QStringLiteral("peer"), request.peer.toString()},
    };
}

RequestLog::RequestLog(qsizetype capacity)
    : m_capacity(capacity)
{}

const RecordedRequest &RequestLog::record(const IncomingRequest &request, const QString &route, const QDateTime &at)
{
    if (m_entries.size() >= m_capacity) {
        m_entries.removeFirst();
    }
    m_entries.append(RecordedRequest{m_nextSequence++, at, route, request});
    return m_entries.constLast();
}

QJsonArray RequestLog::toJson() const
{
    QJsonArray array;
    for (const RecordedRequest &entry : m_entries) {
        array.append(entry.toJson());
    }
    return array;
}
