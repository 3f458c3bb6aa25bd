#pragma once

#include "StoreViewModel.h"

#include <QString>
#include <QVariant>

// The dashboard's headline figure, its caption and status colour, the period picker's cooldown
// caption, and whether the update banner shows.
class DashboardViewModel : public StoreViewModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool showsUpdateBanner READ showsUpdateBanner NOTIFY changed)
    Q_PROPERTY(QVariant periodCooldownCaption READ periodCooldownCaption NOTIFY changed)
    Q_PROPERTY(QString statusIndicatorColor READ statusIndicatorColor NOTIFY changed)
    Q_PROPERTY(QString displayedRoyaltyCaption READ displayedRoyaltyCaption NOTIFY changed)
    Q_PROPERTY(QString displayedRoyaltyTitle READ displayedRoyaltyTitle NOTIFY changed)
    Q_PROPERTY(double highlightedRoyalty READ highlightedRoyalty NOTIFY changed)
    Q_PROPERTY(QString highlightedRoyaltyText READ highlightedRoyaltyText NOTIFY changed)

public:
    explicit DashboardViewModel(QObject *parent = nullptr);

    bool showsUpdateBanner() const;
    // None while no cooldown runs.
    QVariant periodCooldownCaption() const;
    QString statusIndicatorColor() const;
    QString displayedRoyaltyCaption() const;
    // As written ("Gross royalties"), for screen readers, which would read the caption's capitals
    // letter by letter.
    QString displayedRoyaltyTitle() const;
    double highlightedRoyalty() const;
    QString highlightedRoyaltyText() const;
};
