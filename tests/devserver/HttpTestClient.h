#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPair>
#include <QUrl>

// One finished exchange with the development server.
struct HttpResult {
    int status = 0; // 0 when no HTTP reply arrived
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QByteArray body;
    QList<QNetworkReply::RawHeaderPair> headers;

    QByteArray header(const QByteArray &name) const;
    bool hasHeader(const QByteArray &name) const;
};

using HeaderList = QList<QPair<QByteArray, QByteArray>>;

// Real HTTP over QNetworkAccessManager, waited for in a local event loop so that the in-process
// server keeps answering. Redirects are not followed: the sign-in redirect goes to the app.
class HttpTestClient
{
public:
    HttpResult get(const QUrl &url, const HeaderList &headers = {}, int timeoutMs = 10000);
    HttpResult getWithKey(const QUrl &url, const QString &apiKey, int timeoutMs = 10000);
    HttpResult post(const QUrl &url, const QByteArray &body, const QByteArray &contentType,
                    const HeaderList &headers = {}, int timeoutMs = 10000);
    HttpResult send(const QByteArray &verb, const QUrl &url, const QByteArray &body = {},
                    const HeaderList &headers = {}, int timeoutMs = 10000);

private:
    QNetworkAccessManager m_manager;
};
