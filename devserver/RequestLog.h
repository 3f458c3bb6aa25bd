#pragma once

#include "IncomingRequest.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// One request as it arrived, with the route it reached ("" for an unknown path).
struct RecordedRequest {
    qint64 sequence = 0;
    QDateTime receivedAt;
    QString route;
    IncomingRequest request;

    QByteArray header(const QByteArray &name) const { return request.header(name); }
    QJsonObject toJson() const;
};

// Every request the service answered (admin calls aside), oldest first, for tests and for
// `GET /__admin/requests`. Keeps the newest `capacity` entries.
class RequestLog
{
public:
    explicit RequestLog(qsizetype capacity = 2000);

    const RecordedRequest &record(const IncomingRequest &request, const QString &route, const QDateTime &at);
    QList<RecordedRequest> entries() const { return m_entries; }
    void clear() { m_entries.clear(); }
    QJsonArray toJson() const;

private:
    qsizetype m_capacity;
    qint64 m_nextSequence = 1;
    QList<RecordedRequest> m_entries;
};
