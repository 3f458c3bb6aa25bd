#include "DashboardViewModel.h"

#include "store/RoyaltiesStore.h"

DashboardViewModel::DashboardViewModel(QObject *parent)
    : StoreViewModel({&RoyaltiesStore::requestCooldownRemainingChanged, &RoyaltiesStore::errorMessageChanged,
                      &RoyaltiesStore::isNetworkAvailableChanged, &RoyaltiesStore::displayedRoyaltyChanged,
                      &RoyaltiesStore::summaryChanged, &RoyaltiesStore::latestAppVersionChanged,
                      &RoyaltiesStore::hideAmountsChanged},
                     parent)
{}

bool DashboardViewModel::showsUpdateBanner() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.isUpdateAvailable(); });
}

QVariant DashboardViewModel::periodCooldownCaption() const
{
    const qint64 remaining = fromStore([](const RoyaltiesStore &store) { return store.requestCooldownRemaining(); });
    if (remaining < 1) {
        return {};
    }
    //: Under the period picker while requests must wait: %1 is a number of seconds, "s" their symbol.
    return tr("Period selection available in %1s", nullptr, int(qMin<qint64>(remaining, 0x7fffffff))).arg(remaining);
}

QString DashboardViewModel::statusIndicatorColor() const
{
    // An error always shows orange, even with the network there.
    const bool troubled = fromStore(
        [](const RoyaltiesStore &store) { return store.errorMessage().has_value() || !store.isNetworkAvailable(); });
    return troubled ? QStringLiteral("orange") : QStringLiteral("green");
}

QString DashboardViewModel::displayedRoyaltyCaption() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.displayedRoyalty().title().toUpper(); });
}

QString DashboardViewModel::displayedRoyaltyTitle() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.displayedRoyalty().title(); });
}

double DashboardViewModel::highlightedRoyalty() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.highlightedRoyalty(); });
}

QString DashboardViewModel::highlightedRoyaltyText() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.money(store.highlightedRoyalty(), false); });
}
