#include "HttpTestClient.h"

#include <QBuffer>
#include <QEventLoop>
#include <QNetworkRequest>

QByteArray HttpResult::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

bool HttpResult::hasHeader(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

HttpResult HttpTestClient::get(const QUrl &url, const HeaderList &headers, int timeoutMs)
{
    return send("GET", url, {}, headers, timeoutMs);
}

HttpResult HttpTestClient::getWithKey(const QUrl &url, const QString &apiKey, int timeoutMs)
{
    return get(url, {{"Accept", "application/json"}, {"Authorization", "Bearer " + apiKey.toUtf8()}}, timeoutMs);
}

HttpResult HttpTestClient::post(const QUrl &url, const QByteArray &body, const QByteArray &contentType,
                                const HeaderList &headers, int timeoutMs)
{
    HeaderList all = headers;
    all.append({"Content-Type", contentType});
    return send("POST", url, body, all, timeoutMs);
}

HttpResult HttpTestClient::send(const QByteArray &verb, const QUrl &url, const QByteArray &body,
                                const HeaderList &headers, int timeoutMs)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setTransferTimeout(timeoutMs);
    for (const auto &[name, value] : headers) {
        request.setRawHeader(name, value);
    }
    QBuffer *payload = new QBuffer;
    payload->setData(body);
    QNetworkReply *reply = m_manager.sendCustomRequest(request, verb, payload);
    payload->setParent(reply);

    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) {
        loop.exec();
    }

    HttpResult result;
    result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    result.error = reply->error();
    result.body = reply->readAll();
    result.headers = reply->rawHeaderPairs();
    reply->deleteLater();
    return result;
}
