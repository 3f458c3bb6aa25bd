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
        //: Row of the popover's figures: royalties before ad spend and expenses.
        row(tr("Gross royalties"), summary.gross, QStringLiteral("chart.line.uptrend.xyaxis"), QStringLiteral("blue")),
        //: Row of the popover's figures: what was spent on ads and other expenses in the period.
        row(tr("Ad spend & expenses"), summary.spending, QStringLiteral("megaphone"), QStringLiteral("orange")),
        //: Row of the popover's figures: royalties after ad spend and expenses.
        row(tr("Net royalties"), summary.net, QStringLiteral("banknote"), QStringLiteral("green")),
    };
}
