#include "FinancialRowsModel.h"

#include "store/RoyaltiesStore.h"

FinancialRowsModel::FinancialRowsModel(QObject *parent)
    : StoreRowsModel({"title", "value", "icon", "color"}, parent)
{}

void FinancialRowsModel::watch(RoyaltiesStore &store)
{
    for (const auto signal : {&RoyaltiesStore::summaryChanged, &RoyaltiesStore::hideAmountsChanged}) {
        QObject::connect(&store, signal, this, &FinancialRowsModel::refresh);
    }
}

QList<QVariantList> FinancialRowsModel::makeRows(const RoyaltiesStore &store) const
{
    const auto row = [&store](const QString &title, double value, const QString &icon, const QString &color) {
        return QVariantList{title, store.money(value, false), icon, color};
    };
    const RoyaltySummary &summary = store.summary();
    return {
        row(QStringLiteral("Gross royalties"), summary.gross, QStringLiteral("chart.line.uptrend.xyaxis"),
            QStringLiteral("blue")),
        row(QStringLiteral("Ad spend & expenses"), summary.spending, QStringLiteral("megaphone"),
            QStringLiteral("orange")),
        row(QStringLiteral("Net royalties"), summary.net, QStringLiteral("banknote"), QStringLiteral("green")),
    };
}
