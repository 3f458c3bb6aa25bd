#include "DisplayedRoyaltyChoicesModel.h"

#include "store/RoyaltiesStore.h"

DisplayedRoyaltyChoicesModel::DisplayedRoyaltyChoicesModel(QObject *parent)
    : StoreRowsModel({"value", "title", "isCurrent"}, parent)
{}

void DisplayedRoyaltyChoicesModel::watch(RoyaltiesStore &store)
{
    QObject::connect(&store, &RoyaltiesStore::displayedRoyaltyChanged, this, &DisplayedRoyaltyChoicesModel::refresh);
}

QList<QVariantList> DisplayedRoyaltyChoicesModel::makeRows(const RoyaltiesStore &store) const
{
    QList<QVariantList> rows;
    for (const DisplayedRoyalty royalty : DisplayedRoyalty::allCases()) {
        rows.append(QVariantList{royalty.rawValue(), royalty.title(), royalty == store.displayedRoyalty()});
    }
    return rows;
}
