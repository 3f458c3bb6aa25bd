#include "AccountChoicesModel.h"

#include "store/RoyaltiesStore.h"

AccountChoicesModel::AccountChoicesModel(QObject *parent)
    : StoreRowsModel({"accountID", "text"}, parent)
{}

void AccountChoicesModel::watch(RoyaltiesStore &store)
{
    QObject::connect(&store, &RoyaltiesStore::accountsChanged, this, &AccountChoicesModel::refresh);
}

QList<QVariantList> AccountChoicesModel::makeRows(const RoyaltiesStore &store) const
{
    QList<QVariantList> rows;
    for (const PublisherAccount &account : store.accounts()) {
        rows.append(QVariantList{account.accountID, account.displayName.value_or(account.userEmail)});
    }
    return rows;
}
