#include "TestDoubles.h"

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
