#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// Who may read what: each bearer key names the e-mail address it belongs to and the accounts it
// sees, in the order the account list returns them.
struct ApiKeyGrant {
    QString key;
    QString userEmail;
    QStringList accountIds;
};

class ApiKeys
{
public:
    ApiKeys();

    // The demo keys plus every key issued since the last reset.
    const ApiKeyGrant *find(const QString &key) const;
    // A fresh random key with the same reach as the demo key, as a successful sign-in gives.
    ApiKeyGrant issueSignInKey();
    // Forgets issued keys; the demo keys stay.
    void reset();

    static QString demoKey();
    static QString noAccountsKey();

private:
    QHash<QString, ApiKeyGrant> m_grants;
};
