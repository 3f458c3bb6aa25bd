#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrlQuery>

class QHttpServerRequest;

// A request as the handlers and the request log see it: a plain copy of what QHttpServer parsed,
// so handlers can be driven without a socket.
struct IncomingRequest {
    QString method; // "GET", "POST", …
    QString path;   // decoded path, base path included
    QUrlQuery query;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    QHostAddress peer;

    static IncomingRequest from(const QHttpServerRequest &request);

    // Case-insensitive header lookup; empty when the header is absent.
    QByteArray header(const QByteArray &name) const;
    // A query item's fully decoded value; empty when absent.
    QString queryValue(const QString &key) const;
    // Fields of an application/x-www-form-urlencoded body.
    QUrlQuery formFields() const;
};
