#include "TestDoubles.h"

#include <qcoro/qcorosignal.h>

QCoro::Task<StoredKey> MemorySecretStore::readAPIKey()
{
    ++reads;
    if (holdReads) {
        co_await qCoro(&held, &HeldReads::released);
    }
    if (lock) {
        co_return StoredKey{*lock, {}};
    }
    co_return key.isEmpty() ? StoredKey{} : StoredKey{StoredKey::State::found, key};
}

void MemorySecretStore::change(std::optional<StoredKey::State> newLock)
{
    lock = newLock;
    if (changeHandler) {
        changeHandler();
    }
}

void MemorySecretStore::release()
{
    holdReads = false;
    Q_EMIT held.released();
}

QCoro::Task<std::optional<RoyaltiesError>> MemorySecretStore::saveAPIKey(QString newKey)
{
    ++saves;
    key.clear();
    if (failSaveWith) {
        co_return failSaveWith;
    }
    key = newKey;
    co_return std::nullopt;
}

QCoro::Task<> MemorySecretStore::deleteAPIKey()
{
    ++deletes;
    key.clear();
    co_return;
}

QCoro::Task<std::optional<QString>> FakeDesktopServices::openFile(QString path)
{
    openedFiles.append(path);
    co_return openFileFailure;
}
