#pragma once

#include "store/DesktopNotifications.h"
#include "store/DesktopServices.h"
#include "store/LoginItemService.h"
#include "store/NetworkReachability.h"
#include "store/SecretStore.h"

#include <QList>
#include <QUrl>

// Says when held-back keyring answers may go.
class HeldReads final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void released();
};

// A keyring in memory, with a switch that makes saving fail, and one that locks it: a locked
// keyring answers reads with `locked` (or `unreachable`) until it is unlocked, and may hold its
// answers back until released, as a keyring that takes its time.
class MemorySecretStore final : public SecretStore
{
public:
    QCoro::Task<StoredKey> readAPIKey() override;
    QCoro::Task<std::optional<RoyaltiesError>> saveAPIKey(QString newKey) override;
    QCoro::Task<> deleteAPIKey() override;
    void askToUnlock() override { ++unlockRequests; }
    void setChangeHandler(std::function<void()> handler) override { changeHandler = std::move(handler); }

    // Unlocks (or answers again) and tells the store, as the Secret Service's signal does.
    void change(std::optional<StoredKey::State> newLock);
    // Answers the reads held back.
    void release();

    QString key;
    // The answer instead of the key while set (locked or unreachable).
    std::optional<StoredKey::State> lock;
    bool holdReads = false;
    int reads = 0;
    int unlockRequests = 0;
    std::function<void()> changeHandler;
    HeldReads held;
    std::optional<RoyaltiesError> failSaveWith;
    int saves = 0;
    int deletes = 0;
};

// A network monitor the test drives by hand.
class FakeReachability final : public NetworkReachability
{
    Q_OBJECT

public:
    void start() override { ++starts; }
    void report(bool available) { Q_EMIT availabilityChanged(available); }

    int starts = 0;
};

// Records what the app asks of the desktop; opening a file fails when told to.
class FakeDesktopServices final : public DesktopServices
{
public:
    bool openURL(const QUrl &url) override
    {
        openedURLs.append(url);
        return true;
    }
    QCoro::Task<std::optional<QString>> openFile(QString path) override;
    void revealFile(const QString &path) override { revealedFiles.append(path); }
    void openLoginItemsSettings() override { ++loginItemsSettingsOpened; }

    QList<QUrl> openedURLs;
    QStringList openedFiles;
    QStringList revealedFiles;
    std::optional<QString> openFileFailure;
    int loginItemsSettingsOpened = 0;
};

// Notifications kept in a list instead of shown; `activated` is emitted by the test.
class RecordedNotifications final : public DesktopNotifications
{
public:
    void show(const Notification &notification) override { shown.append(notification); }

    QList<Notification> shown;
};

// A login-item service whose status the test sets.
class FakeLoginItems final : public LoginItemService
{
public:
    Status status() const override { return currentStatus; }
    std::optional<QString> registerItem() override
    {
        ++registrations;
        if (!registerFailure) {
            currentStatus = statusAfterRegister;
        }
        return registerFailure;
    }
    std::optional<QString> unregisterItem() override
    {
        ++unregistrations;
        if (!unregisterFailure) {
            currentStatus = Status::notRegistered;
        }
        return unregisterFailure;
    }

    Status currentStatus = Status::notRegistered;
    // What the system reports once registered: enabled, or a quiet refusal, or waiting for approval.
    Status statusAfterRegister = Status::enabled;
    std::optional<QString> registerFailure;
    std::optional<QString> unregisterFailure;
    int registrations = 0;
    int unregistrations = 0;
};
