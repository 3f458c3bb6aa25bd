#include "HttpReply.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

const QByteArray jsonType = QByteArrayLiteral("application/json");

} // namespace

HttpReply HttpReply::json(const QJsonObject &object, int status)
{
    return {status, jsonType, {}, QJsonDocument(object).toJson(QJsonDocument::Compact)};
}

HttpReply HttpReply::json(const QJsonArray &array, int status)
{
    return {status, jsonType, {}, QJsonDocument(array).toJson(QJsonDocument::Compact)};
}

HttpReply HttpReply::error(int status, const QString &message)
{
    return json(QJsonObject{{QStringLiteral("error"), message}}, status);
}

HttpReply HttpReply::html(const QString &page, int status)
{
    return {status, QByteArrayLiteral("text/html; charset=utf-8"), {}, page.toUtf8()};
}

HttpReply HttpReply::redirect(const QUrl &location)
{
    const QByteArray target = location.toEncoded();
    HttpReply reply;
    reply.status = 302;
    reply.contentType = QByteArrayLiteral("text/html; charset=utf-8");
    reply.headers.append({QByteArrayLiteral("Location"), target});
    // Browsers that do not follow a redirect to a custom scheme still get a link to click.
    reply.body = "<!DOCTYPE html><html><body><p><a href=\"" + QString::fromUtf8(target).toHtmlEscaped().toUtf8()
                 + "\">Return to Inkwarden</a></p></body></html>";
    return reply;
}

QByteArray HttpReply::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}
