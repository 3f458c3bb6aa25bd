#include "PublisherAccount.h"

#include "JsonObjectReader.h"

#include <QHashFunctions>

PublisherAccount PublisherAccount::read(JsonObjectReader &reader)
{
    PublisherAccount account;
    account.accountID = reader.requiredString(QLatin1String("account_id"));
    account.userEmail = reader.requiredString(QLatin1String("user_email"));
    account.displayName = reader.optionalString(QLatin1String("display_name"));
    account.accessType = reader.requiredString(QLatin1String("access_type"));
    return account;
}

size_t qHash(const PublisherAccount &account, size_t seed) noexcept
{
    return qHashMulti(seed, account.accountID, account.userEmail, account.displayName.has_value(),
                      account.displayName.value_or(QString()), account.accessType);
}
