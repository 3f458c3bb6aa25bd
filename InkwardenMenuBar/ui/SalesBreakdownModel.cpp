#include "SalesBreakdownModel.h"

#include "model/SalesBreakdownMetric.h"
#include "model/SystemColor.h"
#include "store/RoyaltiesStore.h"

SalesBreakdownModel::SalesBreakdownModel(QObject *parent)
    : StoreRowsModel({"key", "isCustomFormat", "title", "units", "royalties", "icon", "color", "showsDivider"}, parent)
{}

void SalesBreakdownModel::watch(RoyaltiesStore &store)
{
    for (const auto signal : {&RoyaltiesStore::summaryChanged, &RoyaltiesStore::salesMetricOrderChanged,
                              &RoyaltiesStore::hiddenSalesMetricsChanged, &RoyaltiesStore::hideAmountsChanged}) {
        QObject::connect(&store, signal, this, &SalesBreakdownModel::refresh);
    }
}

QList<QVariantList> SalesBreakdownModel::makeRows(const RoyaltiesStore &store) const
{
    QList<QVariantList> rows;
    const RoyaltySummary &summary = store.summary();
    const SalesBreakdownMetric::MoneyText moneyText = [&store](double value) { return store.money(value, false); };
    for (const SalesBreakdownMetric metric : store.visibleSalesMetrics()) {
        const std::optional<QString> royalties = metric.royaltiesText(summary, moneyText);
        rows.append(QVariantList{
            metric.rawValue(),
            false,
            metric.title(),
            metric.unitsText(summary, store.locale()),
            royalties ? QVariant(*royalties) : QVariant(),
            metric.icon(),
            systemColorName(metric.color()),
            !rows.isEmpty(),
        });
    }
    // Custom formats follow by name; QMap keeps its keys in ascending order.
    for (auto it = summary.customFormats.cbegin(); it != summary.customFormats.cend(); ++it) {
        rows.append(QVariantList{
            QString(QStringLiteral("custom:") + it.key()),
            true,
            it.key(),
            SalesBreakdownMetric::countedUnits(it->units, store.locale()),
            store.money(it->royalties, false),
            QStringLiteral("square.grid.2x2"),
            QStringLiteral("pink"),
            !rows.isEmpty(),
        });
    }
    return rows;
}
