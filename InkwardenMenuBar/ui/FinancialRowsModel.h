#pragma once

#include "StoreRowsModel.h"

// The dashboard's three money rows: gross royalties, ad spend and net royalties, in the account's currency.
class FinancialRowsModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit FinancialRowsModel(QObject *parent = nullptr);

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
