#pragma once

#include "StoreRowsModel.h"

// The settings' list of sales formats in the user's order: whether each is shown and where it can move.
class SalesMetricSettingsModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit SalesMetricSettingsModel(QObject *parent = nullptr);

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
