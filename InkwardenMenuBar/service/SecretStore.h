#pragma once

#include "RoyaltiesError.h"

#include <QString>
#include <qcoro/qcorotask.h>

#include <optional>

// Keeps the one secret of the app, the user's API key. The app uses the system keyring; tests may
// hand in another store.
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    // The stored key, or the empty text when there is none or it cannot be read. Never fails.
    virtual QString loadAPIKey() = 0;
    // Replaces the stored key (the old one is deleted first); the error says why it could not.
    virtual QCoro::Task<std::optional<RoyaltiesError>> saveAPIKey(QString key) = 0;
    // Removes the stored key, if any; never fails.
    virtual QCoro::Task<> deleteAPIKey() = 0;
};
