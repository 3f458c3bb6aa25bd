#pragma once

#include "KeyringLock.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcessEnvironment>
#include <QString>

#include <chrono>

// KDE's wallet daemon (kwalletd5), asked directly over D-Bus: whether the wallet exists, is open,
// and, while it is closed, whether it holds Inkwarden's entry at all (the wallet keeps the names of
// its entries readable). Opening the wallet is the unlock: kwalletd shows its own password dialog,
// or its wizard for a wallet that does not exist yet. A wallet opened or created is a change, as is
// the daemon starting or stopping and the dialog answering.
class KWalletLock final : public KeyringLock
{
    Q_OBJECT

public:
    // Whether QtKeychain keeps the key in KWallet in this session: it does on Plasma 5, found the way
    // QtKeychain finds it, and uses the Secret Service everywhere else.
    static bool isUsedIn(const QProcessEnvironment &environment);

    // `folder` and `keyName` name the entry as QtKeychain files it; the folder is also the name the
    // wallet's dialogs show for Inkwarden.
    KWalletLock(QDBusConnection bus, QString folder, QString keyName, std::chrono::milliseconds timeout,
                QObject *parent = nullptr);

    QCoro::Task<ItemState> itemState() override;
    // Whether the wallet is closed, or not there yet, so that a save waits for its dialog.
    QCoro::Task<bool> isLockedForSaving() override;
    // Opens the wallet, which shows the wallet's password dialog.
    QCoro::Task<> askToUnlock() override;

    // For the bus's signals; QtDBus only delivers to public slots.
public Q_SLOTS:
    void onWalletChanged(const QString &wallet);
    void onAsyncOpened(int transaction, int handle);

private:
    // One method of the daemon: the reply, whatever it is.
    QCoro::Task<QDBusMessage> call(QString method, QVariantList arguments = {});

    QDBusConnection m_bus;
    QString m_folder;
    QString m_keyName;
    std::chrono::milliseconds m_timeout;
    // The transaction of the open this asked for, while its dialog has not answered.
    int m_transaction = -1;
    bool m_asking = false;
};
