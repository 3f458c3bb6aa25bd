#pragma once

#include "KeyringLock.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QString>

#include <chrono>

// The Secret Service (org.freedesktop.secrets: gnome-keyring, KeePassXC, KWallet's bridge), asked
// directly over D-Bus. A collection locked or unlocked, or created, is a change; so is the service
// starting or stopping, and the unlock prompt answering.
class SecretServiceLock final : public KeyringLock
{
    Q_OBJECT

public:
    SecretServiceLock(QDBusConnection bus, QString service, QString keyName, std::chrono::milliseconds timeout,
                      QObject *parent = nullptr);

    QCoro::Task<ItemState> itemState() override;
    // Whether the collection new items go to (the "default" alias) is locked.
    QCoro::Task<bool> isLockedForSaving() override;
    // Unlocks the item's collection.
    QCoro::Task<> askToUnlock() override;

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
