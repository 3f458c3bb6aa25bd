#pragma once

#include "StoreRowsModel.h"

// The accounts the API key reaches, as the settings' account picker offers them.
class AccountChoicesModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit AccountChoicesModel(QObject *parent = nullptr);

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
