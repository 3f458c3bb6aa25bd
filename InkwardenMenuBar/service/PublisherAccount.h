#pragma once

#include <QString>

#include <optional>

class JsonObjectReader;

// One account that an API key may read. Accounts compare and hash by all four members.
struct PublisherAccount {
    QString accountID;
    QString userEmail;
    std::optional<QString> displayName;
    QString accessType;

    QString id() const { return accountID; }

    static PublisherAccount read(JsonObjectReader &reader);

    friend bool operator==(const PublisherAccount &, const PublisherAccount &) = default;
};

size_t qHash(const PublisherAccount &account, size_t seed = 0) noexcept;
