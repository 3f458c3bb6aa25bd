#include "UpdateViewModel.h"

#include "store/PlatformTexts.h"
#include "store/RoyaltiesStore.h"

UpdateViewModel::UpdateViewModel(QObject *parent)
    : StoreViewModel({&RoyaltiesStore::latestAppVersionChanged, &RoyaltiesStore::isDownloadingUpdateChanged,
                      &RoyaltiesStore::isCheckingForUpdatesChanged, &RoyaltiesStore::downloadedUpdateURLChanged},
                     parent)
{}

bool UpdateViewModel::isUpdateAvailable() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.isUpdateAvailable(); });
}

QString UpdateViewModel::updateActionTitle() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.updateActionTitle(); });
}

QString UpdateViewModel::bannerTitle() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        //: Title of the update banner: %1 is the new version number ("1.5.0").
        return tr("Inkwarden %1 is available").arg(store.latestAppVersion().value_or(QString()));
    });
}

QString UpdateViewModel::bannerSubtitle() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        //: Under the update banner's title: %1 is the running version number ("1.4.0").
        return tr("You have version %1").arg(store.currentAppVersion());
    });
}

QString UpdateViewModel::promptMessage() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        //: Update prompt: %1 is the running version number ("1.4.0"), %2 the question whether to download
        //: the new version.
        return tr("You are using version %1. %2")
            .arg(store.currentAppVersion(), PlatformTexts::downloadUpdateQuestion());
    });
}

QString UpdateViewModel::showInFilesTitle()
{
    return PlatformTexts::showInFileManager();
}

QString UpdateViewModel::appVersionTitle() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        //: In the settings: %1 is the running version number ("1.4.0").
        return tr("Inkwarden %1").arg(store.currentAppVersion());
    });
}

QVariant UpdateViewModel::versionStatusText() const
{
    return fromStore([](const RoyaltiesStore &store) -> QVariant {
        if (store.isUpdateAvailable()) {
            //: In the settings: %1 is the new version number ("1.5.0").
            return tr("Version %1 is available").arg(*store.latestAppVersion());
        }
        if (store.latestAppVersion()) {
            //: In the settings, once the update check found no newer version.
            return tr("You’re up to date");
        }
        return {};
    });
}

QString UpdateViewModel::versionStatusColor() const
{
    const bool available = fromStore([](const RoyaltiesStore &store) { return store.isUpdateAvailable(); });
    return available ? QStringLiteral("orange") : QStringLiteral("green");
}

QString UpdateViewModel::checkForUpdatesTitle() const
{
    const bool checking = fromStore([](const RoyaltiesStore &store) { return store.isCheckingForUpdates(); });
    if (checking) {
        //: Title of the check-for-updates button while the check is under way.
        return tr("Checking…");
    }
    //: Button in the settings.
    return tr("Check for updates");
}

bool UpdateViewModel::canCheckForUpdates() const
{
    return fromStore(
        [](const RoyaltiesStore &store) { return !store.isCheckingForUpdates() && !store.isDownloadingUpdate(); });
}

QString UpdateViewModel::installUpdateTitle() const
{
    const bool downloading = fromStore([](const RoyaltiesStore &store) { return store.isDownloadingUpdate(); });
    if (downloading) {
        //: Title of the install-update button while the update downloads.
        return tr("Downloading…");
    }
    //: Button that downloads and opens the new version's installer.
    return tr("Install update");
}

bool UpdateViewModel::hasDownloadedUpdate() const
{
    return fromStore([](const RoyaltiesStore &store) { return store.downloadedUpdateURL().has_value(); });
}

bool UpdateViewModel::canStartUpdateAction() const
{
    return fromStore([](const RoyaltiesStore &store) { return !store.isDownloadingUpdate(); });
}

void UpdateViewModel::performUpdateAction()
{
    RoyaltiesStore *const target = store();
    if (!target) {
        return;
    }
    if (target->downloadedUpdateURL()) {
        target->openDownloadedUpdate();
    } else {
        target->downloadLatestUpdate();
    }
}
