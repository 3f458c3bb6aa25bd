#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <qcoro/qcorotask.h>

#include <chrono>

// What the Secret Service (org.freedesktop.secrets: gnome-keyring, KeePassXC, KWallet's bridge)
// says about Inkwarden's item, asked directly over D-Bus: only it tells an item in a locked keyring
// apart from no item, without unlocking anything or showing a prompt. It also asks the keyring to
// unlock through the keyring's own prompt, and says when the keyring may have changed (a collection
// locked or unlocked, the service starting or stopping, the prompt answered).
class SecretServiceLock final : public QObject
{
    Q_OBJECT

public:
    enum class ItemState {
        noService,   // nothing on the bus answers for the Secret Service (another store may hold the key)
        absent,      // the service has no such item
        unlocked,    // the item is there and readable
        locked,      // the item is there, in a locked collection
        unreachable, // the service is there but did not answer in time
    };

    SecretServiceLock(QDBusConnection bus, QString service, QString keyName, std::chrono::milliseconds timeout,
                      QObject *parent = nullptr);

    QCoro::Task<ItemState> itemState();
    // Whether the collection new items go to (the "default" alias) is locked; false when that
    // cannot be told.
    QCoro::Task<bool> isDefaultCollectionLocked();
    // Asks the service to unlock the item's collection, through its own prompt; the answer comes as
    // `changed`. Once at a time.
    QCoro::Task<> askToUnlock();

Q_SIGNALS:
    void changed();

    // For the bus's signals; QtDBus only delivers to public slots.
public Q_SLOTS:
    void onCollectionChanged(const QDBusObjectPath &collection);
    void onPromptCompleted(bool dismissed, const QDBusVariant &result);

private:
    // SearchItems for Inkwarden's item: the reply, whatever it is.
    QCoro::Task<QDBusMessage> searchItems();
    // Drops the subscription to the prompt that was shown, once it has answered or failed.
    void forgetPrompt();

    QDBusConnection m_bus;
    QString m_service;
    QString m_keyName;
    std::chrono::milliseconds m_timeout;
    bool m_asking = false;
    // The prompt shown for the unlock, while it has not answered.
    QString m_prompt;
};
