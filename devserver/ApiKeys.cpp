#include "ApiKeys.h"

#include "DemoData.h"

#include <QRandomGenerator>

ApiKeys::ApiKeys()
{
    reset();
}

const ApiKeyGrant *ApiKeys::find(const QString &key) const
{
    const auto it = m_grants.constFind(key);
    return it == m_grants.cend() ? nullptr : &it.value();
}

ApiKeyGrant ApiKeys::issueSignInKey()
{
    QByteArray random(24, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(random.data()), random.size() / 4);
    const QString key =
        QStringLiteral("iwk_")
        + QString::fromLatin1(random.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
    ApiKeyGrant grant{key, DemoData::userEmail(), DemoData::accountIds()};
    m_grants.insert(key, grant);
    return grant;
}

void ApiKeys::reset()
{
    m_grants.clear();
    m_grants.insert(demoKey(), ApiKeyGrant{demoKey(), DemoData::userEmail(), DemoData::accountIds()});
    m_grants.insert(noAccountsKey(), ApiKeyGrant{noAccountsKey(), DemoData::noAccountsEmail(), {}});
}

QString ApiKeys::demoKey()
{
    return QStringLiteral("inkwarden-demo-key");
}

QString ApiKeys::noAccountsKey()
{
    return QStringLiteral("inkwarden-no-accounts-key");
}
