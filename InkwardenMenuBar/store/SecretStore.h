#pragma once

#include "service/RoyaltiesError.h"

#include <QString>
#include <qcoro/qcorotask.h>

#include <functional>
#include <optional>

// What reading the stored key found. Only `absent` means there is no key: a keyring that is locked,
// or that does not answer, still holds whatever it held.
struct StoredKey {
    enum class State {
        found,       // `key` holds it
        absent,      // no key is stored, or there is no keyring on this system to store one
        locked,      // the keyring holds the key but is locked
        unreachable, // the keyring did not answer in time, or refused
    };
    State state = State::absent;
    QString key;

    friend bool operator==(const StoredKey &, const StoredKey &) = default;
};

// Keeps the one secret of the app, the user's API key. The app uses the system keyring; tests may
// hand in another store.
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    // Reads the stored key without blocking; never fails, but says why there is no key.
    virtual QCoro::Task<StoredKey> readAPIKey() = 0;
    // Replaces the stored key (the old one is deleted first); the error says why it could not.
    virtual QCoro::Task<std::optional<RoyaltiesError>> saveAPIKey(QString key) = 0;
    // Removes the stored key, if any; never fails.
    virtual QCoro::Task<> deleteAPIKey() = 0;

    // Asks a locked keyring to unlock, through its own prompt; the answer comes through the change
    // handler. Does nothing where a keyring cannot be asked.
    virtual void askToUnlock() {}
    // Called whenever the keyring may have changed (unlocked or locked, started or stopped), so that
    // a key that could not be read is read again.
    // Taken by value: a store that can change keeps the handler.
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    virtual void setChangeHandler(std::function<void()> /*handler*/) {}
};
