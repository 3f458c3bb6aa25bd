#pragma once

#include "SecretStore.h"

#include <QString>

#include <chrono>

// The API key as one item in the user's keyring: the Secret Service, through QtKeychain, never with
// its plain-text fallback. Every keyring job has a time-out, because a locked keyring may show a
// prompt nobody answers and a Secret Service that hangs must not freeze Inkwarden.
//
// The store keeps no state between calls; a save or delete still running when the store is destroyed
// finishes on its own.
class KeychainStore final : public SecretStore
{
public:
    // The status in the save failure's message when the keyring did not answer in time. Any other
    // status is QtKeychain's error code (QKeychain::Error, all non-negative).
    static constexpr int timedOutStatus = -1;
    static constexpr std::chrono::milliseconds defaultTimeout = std::chrono::seconds(10);

    // The service name of Inkwarden's item.
    static QString defaultService();
    // The key (account) name of the item within the service.
    static QString apiKeyName();

    // `service` names the item's service: tests use their own so that a real user's key stays out of
    // reach. `timeout` bounds each keyring job.
    explicit KeychainStore(QString service = defaultService(), std::chrono::milliseconds timeout = defaultTimeout);

    // Runs a local event loop until the keyring answers or the time-out passes, so it needs a
    // QCoreApplication; without one it reads no key.
    QString loadAPIKey() override;
    QCoro::Task<std::optional<RoyaltiesError>> saveAPIKey(QString key) override;
    QCoro::Task<> deleteAPIKey() override;

    // The message of a failed save with `status`, a QtKeychain error code or timedOutStatus.
    static QString saveFailureMessage(int status);

private:
    QString m_service;
    std::chrono::milliseconds m_timeout;
};
