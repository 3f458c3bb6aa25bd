#include "MacAuthExchangeRequest.h"

#include <QJsonDocument>
#include <QJsonObject>

QByteArray MacAuthExchangeRequest::encode() const
{
    const QJsonObject object{
        {QStringLiteral("code"), code},
        {QStringLiteral("code_verifier"), codeVerifier},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}
