#include "SalesMetricSettingsModel.h"

#include "model/SalesBreakdownMetric.h"
#include "store/RoyaltiesStore.h"

SalesMetricSettingsModel::SalesMetricSettingsModel(QObject *parent)
    : StoreRowsModel(
        {"key", "title", "isShown", "showsDivider", "canMoveUp", "canMoveDown", "moveUpTitle", "moveDownTitle"}, parent)
{}

void SalesMetricSettingsModel::watch(RoyaltiesStore &store)
{
    for (const auto signal : {&RoyaltiesStore::salesMetricOrderChanged, &RoyaltiesStore::hiddenSalesMetricsChanged}) {
        QObject::connect(&store, signal, this, &SalesMetricSettingsModel::refresh);
    }
}

QList<QVariantList> SalesMetricSettingsModel::makeRows(const RoyaltiesStore &store) const
{
    QList<QVariantList> rows;
    const QList<SalesBreakdownMetric> &order = store.salesMetricOrder();
    const qsizetype count = order.size();
    for (qsizetype position = 0; position < count; ++position) {
        const SalesBreakdownMetric metric = order.at(position);
        rows.append(QVariantList{
            metric.rawValue(),
            metric.title(),
            !store.hiddenSalesMetrics().contains(metric),
            position > 0,
            position > 0,
            position < count - 1,
            //: Tool tip of the button that moves a row of sales up in the list: %1 is the row's title
            //: ("Paid ebooks").
            tr("Move %1 up").arg(metric.title()),
            //: Tool tip of the button that moves a row of sales down in the list: %1 is the row's title
            //: ("Paid ebooks").
            tr("Move %1 down").arg(metric.title()),
        });
    }
    return rows;
}
