#include "AppUpdates.h"

#include "DesktopServices.h"
#include "PlatformTexts.h"
#include "ServerPages.h"
#include "StoreStatus.h"
#include "VersionComparison.h"
#include "service/RoyaltiesService.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString installerNotFound()
{
    return QCoreApplication::translate("AppUpdates",
                                       "The downloaded installer could not be found. Download the update again.");
}

// A folder name, the same in every language: a download stays where the next start looks for it.
QString updatesFolderName()
{
    return QStringLiteral("Inkwarden Updates");
}

} // namespace

AppUpdates::AppUpdates(Environment environment, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_installerDownloader(m_environment.network)
{}

AppUpdates::~AppUpdates() = default;

void AppUpdates::setLatestAppVersion(std::optional<QString> value)
{
    m_latestAppVersion = std::move(value);
    Q_EMIT latestAppVersionChanged();
}

void AppUpdates::setIsDownloadingUpdate(bool value)
{
    m_isDownloadingUpdate = value;
    Q_EMIT isDownloadingUpdateChanged();
}

void AppUpdates::setIsCheckingForUpdates(bool value)
{
    m_isCheckingForUpdates = value;
    Q_EMIT isCheckingForUpdatesChanged();
}

void AppUpdates::setIsShowingUpdatePrompt(bool value)
{
    m_isShowingUpdatePrompt = value;
    Q_EMIT isShowingUpdatePromptChanged();
}

void AppUpdates::setDownloadedUpdateURL(std::optional<QUrl> value)
{
    m_downloadedUpdateURL = std::move(value);
    Q_EMIT downloadedUpdateURLChanged();
}

void AppUpdates::setUpdateStatusMessage(std::optional<QString> value)
{
    m_updateStatusMessage = std::move(value);
    Q_EMIT updateStatusMessageChanged();
}

void AppUpdates::setErrorMessage(std::optional<QString> message)
{
    m_environment.status.setErrorMessage(std::move(message));
}

QString AppUpdates::currentAppVersion() const
{
    // Not translated: isUpdateAvailable() tells an unknown version by these words.
    return m_environment.appInfo.version.value_or(QStringLiteral("Unknown"));
}

bool AppUpdates::isUpdateAvailable() const
{
    const QString current = currentAppVersion();
    return m_latestAppVersion && current != u"Unknown" && compareVersions(*m_latestAppVersion, current) > 0;
}

QString AppUpdates::updateActionTitle() const
{
    if (m_isDownloadingUpdate) {
        //: The update button while the new version downloads
        return tr("Downloading\u2026");
    }
    if (m_downloadedUpdateURL) {
        //: The update button once the installer is downloaded: it opens the installer
        return tr("Open installer");
    }
    //: The button that downloads a newer version of Inkwarden
    return tr("Update");
}

void AppUpdates::presentUpdatePromptIfNeeded()
{
    if (!isUpdateAvailable() || m_promptedUpdateVersion == m_latestAppVersion) {
        return;
    }
    m_promptedUpdateVersion = m_latestAppVersion;
    setIsShowingUpdatePrompt(true);
}

void AppUpdates::offerVersion(std::optional<QString> version)
{
    setLatestAppVersion(std::move(version));
    presentUpdatePromptIfNeeded();
}

void AppUpdates::forget()
{
    setLatestAppVersion(std::nullopt);
    setDownloadedUpdateURL(std::nullopt);
    setUpdateStatusMessage(std::nullopt);
    setIsShowingUpdatePrompt(false);
    m_promptedUpdateVersion.reset();
}

void AppUpdates::checkForUpdates(const QString &serverURL, const QString &key)
{
    if (m_isCheckingForUpdates) {
        return;
    }
    setErrorMessage(std::nullopt);
    setIsCheckingForUpdates(true);
    performCheckForUpdates(serverURL, key);
}

QCoro::Task<> AppUpdates::performCheckForUpdates(QString serverURL, QString key)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const ServiceResult<AccountsResponse> response = co_await m_environment.service.fetchAccounts(serverURL, key);
    if (!*alive) {
        co_return;
    }
    if (response) {
        offerVersion(response.value().latestAppVersion);
        if (!response.value().latestAppVersion) {
            setErrorMessage(tr("Inkwarden could not determine the latest available version."));
        }
    } else {
        //: %1 is the reason, such as a network error
        setErrorMessage(tr("Update check failed: %1").arg(response.error().localizedDescription()));
    }
    setIsCheckingForUpdates(false);
}

QString AppUpdates::updatesFolder() const
{
    return m_environment.cacheFolder + u'/' + updatesFolderName();
}

std::optional<QUrl> AppUpdates::existingDownloadedUpdateURL() const
{
    if (!m_latestAppVersion) {
        return std::nullopt;
    }
    const QString path = updatesFolder() + u'/' + PlatformTexts::installerFileName(*m_latestAppVersion);
    if (!QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    return QUrl::fromLocalFile(path);
}

void AppUpdates::downloadLatestUpdate(const std::optional<QUrl> &installerPage)
{
    if (m_isDownloadingUpdate) {
        return;
    }
    setErrorMessage(std::nullopt);
    if (const std::optional<QUrl> existing = existingDownloadedUpdateURL()) {
        setDownloadedUpdateURL(existing);
        openDownloadedUpdate();
        return;
    }
    if (!installerPage) {
        setErrorMessage(tr("Enter a valid server URL in Settings before downloading an update."));
        return;
    }
    setIsDownloadingUpdate(true);
    setUpdateStatusMessage(tr("Downloading update\u2026 You can keep using Inkwarden."));
    performDownload(*installerPage);
}

QCoro::Task<> AppUpdates::performDownload(QUrl url)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const QString fileName = PlatformTexts::installerFileName(m_latestAppVersion.value_or(QStringLiteral("latest")));
    QCoro::Task<InstallerDownloader::Result> downloading =
        m_installerDownloader.download(url, updatesFolder(), fileName);
    const InstallerDownloader::Result result = co_await std::move(downloading);
    if (!*alive) {
        co_return;
    }
    setIsDownloadingUpdate(false);
    if (!result.path) {
        setUpdateStatusMessage(std::nullopt);
        //: %1 is the reason, such as a network error
        setErrorMessage(tr("Update failed: %1").arg(result.failure));
        co_return;
    }
    setDownloadedUpdateURL(QUrl::fromLocalFile(*result.path));
    setUpdateStatusMessage(tr("Update downloaded. Opening the installer\u2026"));
    openDownloadedUpdate();
}

std::optional<QString> AppUpdates::chosenInstallerPath() const
{
    // The remembered file is used as it is, even if it has gone since: opening it then says so.
    if (m_downloadedUpdateURL) {
        return m_downloadedUpdateURL->toLocalFile();
    }
    if (const std::optional<QUrl> existing = existingDownloadedUpdateURL()) {
        return existing->toLocalFile();
    }
    return std::nullopt;
}

void AppUpdates::openDownloadedUpdate()
{
    const std::optional<QString> path = chosenInstallerPath();
    if (!path) {
        setUpdateStatusMessage(std::nullopt);
        setErrorMessage(installerNotFound());
        return;
    }
    setDownloadedUpdateURL(QUrl::fromLocalFile(*path));
    setErrorMessage(std::nullopt);
    setUpdateStatusMessage(tr("Opening the installer\u2026"));
    performOpenInstaller(*path);
}

QCoro::Task<> AppUpdates::performOpenInstaller(QString path)
{
    const std::shared_ptr<const bool> alive = m_lifetime.token();
    const std::optional<QString> failure = co_await m_environment.desktop.openFile(path);
    if (!*alive) {
        co_return;
    }
    if (failure) {
        setUpdateStatusMessage(PlatformTexts::openFromFileManager());
        setErrorMessage(PlatformTexts::installerNotOpened(*failure));
        revealDownloadedUpdate();
        co_return;
    }
    setUpdateStatusMessage(PlatformTexts::installerOpened());
}

void AppUpdates::revealDownloadedUpdate()
{
    const std::optional<QString> path = chosenInstallerPath();
    if (!path) {
        setErrorMessage(installerNotFound());
        return;
    }
    setDownloadedUpdateURL(QUrl::fromLocalFile(*path));
    m_environment.desktop.revealFile(*path);
}

void AppUpdates::openDashboard(const QString &serverURL)
{
    if (!ServerPages::hasPages(serverURL)) {
        setErrorMessage(tr("Enter a valid server URL in Settings before opening the dashboard."));
        return;
    }
    // Unlike the other pages, the dashboard keeps a query or fragment of the server address.
    const std::optional<QUrl> url =
        ServerPages::pageURL(serverURL, QStringLiteral("/dashboard_lite/"), ServerPages::AddressExtras::kept);
    if (!url) {
        setErrorMessage(tr("Inkwarden could not open the dashboard URL."));
        return;
    }
    m_environment.desktop.openURL(*url);
}
