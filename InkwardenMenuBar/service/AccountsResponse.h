#pragma once

#include "PublisherAccount.h"

#include <QByteArray>
#include <QList>

#include <optional>

// Body of the account-list endpoint; the newest released app version rides along.
struct AccountsResponse {
    QList<PublisherAccount> accounts;
    std::optional<QString> latestAppVersion;

    static std::optional<AccountsResponse> decode(const QByteArray &json);

    friend bool operator==(const AccountsResponse &, const AccountsResponse &) = default;
};
