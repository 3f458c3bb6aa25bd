#pragma once

#include <QObject>
#include <qcoro/qcorotask.h>

// What the user's keyring says about Inkwarden's item, asked without unlocking anything or showing a
// prompt: only the keyring itself tells an item behind a lock apart from no item. It also asks the
// keyring to unlock through the keyring's own prompt, and says when the keyring may have changed (a
// lock opened or closed, the keyring starting or stopping, the prompt answered).
//
// One implementation per keyring that QtKeychain may keep the item in: the Secret Service, and
// KWallet on Plasma 5.
class KeyringLock : public QObject
{
    Q_OBJECT

public:
    enum class ItemState {
        noService,   // the keyring is not there, or is switched off (another store may hold the key)
        absent,      // the keyring has no such item
        unlocked,    // the item is there and readable
        locked,      // the item is (or may be) there, behind a lock
        unreachable, // the keyring is there but did not answer in time
    };

    using QObject::QObject;

    virtual QCoro::Task<ItemState> itemState() = 0;
    // Whether saving a new item would first have to unlock something (or create the wallet), that
    // is, whether a save waits for the user; false when that cannot be told.
    virtual QCoro::Task<bool> isLockedForSaving() = 0;
    // Asks the keyring to unlock, through its own prompt; the answer comes as `changed`. Once at a
    // time.
    virtual QCoro::Task<> askToUnlock() = 0;

Q_SIGNALS:
    void changed();
};
