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
        return QStringLiteral("Inkwarden ") + store.latestAppVersion().value_or(QString())
               + QStringLiteral(" is available");
    });
}

QString UpdateViewModel::bannerSubtitle() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        return QStringLiteral("You have version ") + store.currentAppVersion();
    });
}

QString UpdateViewModel::promptMessage() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        return QStringLiteral("You are using version ") + store.currentAppVersion() + QStringLiteral(". ")
               + PlatformTexts::downloadUpdateQuestion();
    });
}

QString UpdateViewModel::showInFilesTitle()
{
    return PlatformTexts::showInFileManager();
}

QString UpdateViewModel::appVersionTitle() const
{
    return fromStore([](const RoyaltiesStore &store) -> QString {
        return QStringLiteral("Inkwarden ") + store.currentAppVersion();
    });
}

QVariant UpdateViewModel::versionStatusText() const
{
    return fromStore([](const RoyaltiesStore &store) -> QVariant {
        if (store.isUpdateAvailable()) {
            return QString(QStringLiteral("Version ") + *store.latestAppVersion() + QStringLiteral(" is available"));
        }
        if (store.latestAppVersion()) {
            return QStringLiteral(u"You\u2019re up to date");
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
    return checking ? QStringLiteral(u"Checking\u2026") : QStringLiteral("Check for updates");
}

bool UpdateViewModel::canCheckForUpdates() const
{
    return fromStore(
        [](const RoyaltiesStore &store) { return !store.isCheckingForUpdates() && !store.isDownloadingUpdate(); });
}

QString UpdateViewModel::installUpdateTitle() const
{
    const bool downloading = fromStore([](const RoyaltiesStore &store) { return store.isDownloadingUpdate(); });
    return downloading ? QStringLiteral(u"Downloading\u2026") : QStringLiteral("Install update");
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
