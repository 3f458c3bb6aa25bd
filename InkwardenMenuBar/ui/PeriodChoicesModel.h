#pragma once

#include "StoreRowsModel.h"

// The period picker's segments: each period's stored value and its title, and which is selected;
// and the selected period's title, for the dashboard's header.
class PeriodChoicesModel : public StoreRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString currentTitle READ currentTitle NOTIFY currentTitleChanged)

public:
    explicit PeriodChoicesModel(QObject *parent = nullptr);
    QString currentTitle() const;

Q_SIGNALS:
    void currentTitleChanged();

protected:
    QList<QVariantList> makeRows(const RoyaltiesStore &store) const override;
    void watch(RoyaltiesStore &store) override;
};
