#include "SettingsViewModel.h"

#include "model/RefreshInterval.h"
#include "store/PlatformTexts.h"
#include "store/RoyaltiesStore.h"

#include <QTime>

#include <algorithm>

SettingsViewModel::SettingsViewModel(QObject *parent)
    : StoreViewModel({&RoyaltiesStore::accountsChanged, &RoyaltiesStore::isLoadingAccountsChanged,
                      &RoyaltiesStore::accountIDChanged, &RoyaltiesStore::refreshMinutesChanged,
                      &RoyaltiesStore::launchAtLoginRequiresApprovalChanged},
                     parent)
{}

QString SettingsViewModel::apiKeyHint()
{
    return PlatformTexts::apiKeyStorageNote();
}

QString SettingsViewModel::accountRowForm() const
{
    return fromStore([](const RoyaltiesStore &store) {
        if (store.isLoadingAccounts()) {
            return QStringLiteral("loading");
        }
        if (store.accounts().size() >= 2) {
            return QStringLiteral("picker");
        }
        return store.accounts().size() == 1 ? QStringLiteral("single") : QStringLiteral("none");
    });
}

QVariant SettingsViewModel::accountHint() const
{
    return fromStore([](const RoyaltiesStore &store) -> QVariant {
        if (store.isLoadingAccounts()) {
            //: Hint under the account picker in the settings.
            return tr("Loading accounts authorized by this API key");
        }
        if (store.accounts().isEmpty()) {
            //: Hint under the account picker in the settings.
            return tr("Account details could not be loaded");
        }
        return {};
    });
}

int SettingsViewModel::selectedAccountIndex() const
{
    return fromStore(
        [](const RoyaltiesStore &store) {
            const QList<PublisherAccount> &accounts = store.accounts();
            const auto found = std::find_if(accounts.cbegin(), accounts.cend(), [&store](const PublisherAccount &a) {
                return a.accountID == store.accountID();
            });
            return found == accounts.cend() ? -1 : int(std::distance(accounts.cbegin(), found));
        },
        -1);
}

QString SettingsViewModel::singleAccountName() const
{
    return fromStore([](const RoyaltiesStore &store) {
        const QList<PublisherAccount> &accounts = store.accounts();
        return accounts.size() == 1 ? accounts.first().displayName.value_or(accounts.first().userEmail) : QString();
    });
}

QVariantList SettingsViewModel::refreshIntervalChoices()
{
    const QStringList texts{
        //: Choice of how often royalties are refreshed.
        tr("Every 30 minutes"),
        //: Choice of how often royalties are refreshed.
        tr("Every hour"),
        //: Choice of how often royalties are refreshed.
        tr("Every 2 hours"),
        //: Choice of how often royalties are refreshed.
        tr("Every 3 hours"),
    };
    QVariantList choices;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        choices.append(QVariantMap{{QStringLiteral("text"), texts.at(i)},
                                   {QStringLiteral("minutes"), RefreshInterval::offeredMinutes.at(size_t(i))}});
    }
    return choices;
}

int SettingsViewModel::refreshIntervalIndex() const
{
    const auto &offered = RefreshInterval::offeredMinutes;
    const qint64 minutes = fromStore([](const RoyaltiesStore &store) { return store.refreshMinutes(); });
    const auto found = std::find(offered.cbegin(), offered.cend(), minutes);
    return found == offered.cend() ? -1 : int(std::distance(offered.cbegin(), found));
}

QString SettingsViewModel::startAutomaticallyHint() const
{
    const bool awaitingApproval =
        fromStore([](const RoyaltiesStore &store) { return store.launchAtLoginRequiresApproval(); });
    return awaitingApproval ? PlatformTexts::loginApprovalRequired() : PlatformTexts::launchAtLoginExplanation();
}

QString SettingsViewModel::loginApprovalNotice()
{
    return PlatformTexts::loginRegisteredButNotApproved();
}

QStringList SettingsViewModel::quietHoursChoices()
{
    QStringList choices;
    for (int minutes = 0; minutes < 24 * 60; minutes += 30) {
        choices.append(QTime(minutes / 60, minutes % 60).toString(QStringLiteral("HH:mm")));
    }
    return choices;
}

int SettingsViewModel::quietHoursStartIndex() const
{
    return int(quietHoursChoices().indexOf(
        fromStore([](const RoyaltiesStore &store) { return store.alerts().quietHoursStartText(); })));
}

int SettingsViewModel::quietHoursEndIndex() const
{
    return int(quietHoursChoices().indexOf(
        fromStore([](const RoyaltiesStore &store) { return store.alerts().quietHoursEndText(); })));
}

QList<QMetaObject::Connection> SettingsViewModel::watchParts(RoyaltiesStore &store)
{
    return {QObject::connect(&store.alerts(), &RoyaltyAlerts::changed, this, &StoreViewModel::changed)};
}

QString SettingsViewModel::openLoginItemsSettingsTitle()
{
    return PlatformTexts::openLoginItemsSettings();
}
