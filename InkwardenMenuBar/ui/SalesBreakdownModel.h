#pragma once

#include "StoreRowsModel.h"

// The dashboard's sales breakdown: the visible formats in the user's order, then the custom formats by name.
class SalesBreakdownModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit SalesBreakdownModel(QObject *parent = nullptr);

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
