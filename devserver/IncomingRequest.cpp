#include "IncomingRequest.h"

#include <QHttpServerRequest>
#include <QMetaEnum>

namespace {

QString methodName(QHttpServerRequest::Method method)
{
    const char *key = QMetaEnum::fromType<QHttpServerRequest::Method>().valueToKey(int(method));
    return key ? QString::fromLatin1(key).toUpper() : QStringLiteral("UNKNOWN");
}

} // namespace

IncomingRequest IncomingRequest::from(const QHttpServerRequest &request)
{
    IncomingRequest incoming;
    incoming.method = methodName(request.method());
    incoming.path = request.url().path();
    incoming.query = request.query();
    incoming.headers = request.headers();
    incoming.body = request.body();
    incoming.peer = request.remoteAddress();
    return incoming;
}

QByteArray IncomingRequest::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

QString IncomingRequest::queryValue(const QString &key) const
{
    return query.queryItemValue(key, QUrl::FullyDecoded);
}

QUrlQuery IncomingRequest::formFields() const
{
    // Forms encode spaces as "+", which QUrlQuery would otherwise keep as a literal plus.
    QByteArray encoded = body;
    encoded.replace('+', "%20");
    return QUrlQuery(QString::fromLatin1(encoded));
}
