#include "PeriodChoicesModel.h"

#include "store/RoyaltiesStore.h"

PeriodChoicesModel::PeriodChoicesModel(QObject *parent)
    : StoreRowsModel({"value", "title", "isCurrent"}, parent)
{
    QObject::connect(this, &StoreRowsModel::storeChanged, this, &PeriodChoicesModel::currentTitleChanged);
}

QString PeriodChoicesModel::currentTitle() const
{
    return store() ? store()->selectedPeriod().title() : QString();
}

void PeriodChoicesModel::watch(RoyaltiesStore &store)
{
    QObject::connect(&store, &RoyaltiesStore::selectedPeriodChanged, this, [this] {
        refresh();
        Q_EMIT currentTitleChanged();
    });
}

QList<QVariantList> PeriodChoicesModel::makeRows(const RoyaltiesStore &store) const
{
    QList<QVariantList> rows;
    for (const RoyaltyPeriod period : RoyaltyPeriod::allCases()) {
        rows.append(QVariantList{period.rawValue(), period.title(), period == store.selectedPeriod()});
    }
    return rows;
}
