#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

class QJsonArray;
class QJsonObject;
class QUrl;

// One answer of the development server, built by a handler before the fault switches and the
// responder see it.
struct HttpReply {
    int status = 200;
    QByteArray contentType;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;

    static HttpReply json(const QJsonObject &object, int status = 200);
    static HttpReply json(const QJsonArray &array, int status = 200);
    // The service's error body: {"error": message}.
    static HttpReply error(int status, const QString &message);
    static HttpReply html(const QString &page, int status = 200);
    static HttpReply redirect(const QUrl &location);

    QByteArray header(const QByteArray &name) const;
};
