#pragma once

#include "store/SecretStore.h"

#include <QString>

#include <chrono>
#include <memory>

class KeyringLock;

// The API key as one item in the user's keyring (the Secret Service, or KWallet on Plasma 5), through
// QtKeychain, never with its plain-text fallback. Every keyring job has a time-out, because a locked
// keyring may show a prompt nobody answers and a keyring that hangs must not freeze Inkwarden.
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
    // How long a save waits when the keyring must first be unlocked (or KWallet's wallet created):
    // someone is reading a prompt and typing a password.
    static constexpr std::chrono::milliseconds defaultPromptTimeout = std::chrono::minutes(3);

    // The service name of Inkwarden's item.
    static QString defaultService();
    // The key (account) name of the item within the service.
    static QString apiKeyName();

    // `service` names the item's service: tests use their own so that a real user's key stays out of
    // reach. `timeout` bounds each keyring job, `promptTimeout` a save that waits for a prompt.
    explicit KeychainStore(QString service = defaultService(), std::chrono::milliseconds timeout = defaultTimeout,
                           std::chrono::milliseconds promptTimeout = defaultPromptTimeout);
    ~KeychainStore() override;

    // A locked keyring is found out by asking the keyring first (the Secret Service, or KWallet on
    // Plasma 5), which shows no prompt; only a key that is there to read is read through QtKeychain
    // (which would prompt for a locked one).
    QCoro::Task<StoredKey> readAPIKey() override;
    QCoro::Task<std::optional<RoyaltiesError>> saveAPIKey(QString key) override;
    QCoro::Task<> deleteAPIKey() override;
    void askToUnlock() override;
    void setChangeHandler(std::function<void()> handler) override;

    // The key, or the empty text: readAPIKey() waited for in a local event loop, for tools and tests.
    // Needs a QCoreApplication; without one it reads no key.
    QString loadAPIKey();

    // The message of a failed save with `status`, a QtKeychain error code or timedOutStatus.
    static QString saveFailureMessage(int status);

private:
    std::shared_ptr<KeyringLock> keyringLock();

    QString m_service;
    std::chrono::milliseconds m_timeout;
    std::chrono::milliseconds m_promptTimeout;
    // Made on first use, on the session bus, for the keyring QtKeychain uses in this session; shared
    // with the reads still under way.
    std::shared_ptr<KeyringLock> m_lock;
    std::function<void()> m_changeHandler;
};
