#pragma once

#include "StoreRowsModel.h"

// The settings' choice of the headline figure: each choice's stored value and its title, and which
// is chosen.
class DisplayedRoyaltyChoicesModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit DisplayedRoyaltyChoicesModel(QObject *parent = nullptr);

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
