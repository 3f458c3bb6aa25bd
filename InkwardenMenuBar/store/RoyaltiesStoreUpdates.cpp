#include "DesktopServices.h"
#include "PlatformTexts.h"
#include "RoyaltiesStore.h"
#include "VersionComparison.h"
#include "service/ServerAddress.h"

#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <qcoro/qcoronetworkreply.h>

namespace {

QString installerNotFound()
{
    return QStringLiteral("The downloaded installer could not be found. Download the update again.");
}

QString updatesFolderName()
{
    return QStringLiteral("Inkwarden Updates");
}

// Puts the finished download at `destination` in one step, whatever file systems the temporary
// folder and the updates folder are on (a rename works only within one): a copy beside the
// destination, renamed over it once complete, so that the name never holds a partial installer and
// a failure leaves nothing behind. The reason when it fails.
std::optional<QString> moveIntoPlace(QTemporaryFile &download, const QString &destination)
{
    QSaveFile target(destination);
    if (!target.open(QIODevice::WriteOnly)) {
        return target.errorString();
    }
    if (!download.seek(0)) {
        return download.errorString();
    }
    constexpr qint64 chunkSize = 1 << 20;
    while (!download.atEnd()) {
        const QByteArray chunk = download.read(chunkSize);
        if (chunk.isEmpty() || target.write(chunk) != chunk.size()) {
            // Unfinished, the copy goes with `target`.
            return chunk.isEmpty() ? download.errorString() : target.errorString();
        }
    }
    if (!target.commit()) {
        return target.errorString();
    }
    return std::nullopt;
}

} // namespace

QString StoreEnvironment::defaultCacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
}

QString RoyaltiesStore::currentAppVersion() const
{
    return m_environment.appInfo.version.value_or(QStringLiteral("Unknown"));
}

bool RoyaltiesStore::isUpdateAvailable() const
{
    const QString current = currentAppVersion();
    return m_latestAppVersion && current != u"Unknown" && compareVersions(*m_latestAppVersion, current) > 0;
}

QString RoyaltiesStore::updateActionTitle() const
{
    if (m_isDownloadingUpdate) {
        return QStringLiteral(u"Downloading\u2026");
    }
    return m_downloadedUpdateURL ? QStringLiteral("Open installer") : QStringLiteral("Update");
}

void RoyaltiesStore::presentUpdatePromptIfNeeded()
{
    if (!isUpdateAvailable() || m_promptedUpdateVersion == m_latestAppVersion) {
        return;
    }
    m_promptedUpdateVersion = m_latestAppVersion;
    setIsShowingUpdatePrompt(true);
}

void RoyaltiesStore::checkForUpdates()
{
    if (!m_isConnected || m_isCheckingForUpdates) {
        return;
    }
    setErrorMessage(std::nullopt);
    setIsCheckingForUpdates(true);
    performCheckForUpdates();
}

QCoro::Task<> RoyaltiesStore::performCheckForUpdates()
{
    const std::shared_ptr<const bool> alive = m_alive;
    const QString key = m_apiKey.trimmed();
    const ServiceResult<AccountsResponse> response = co_await m_service.fetchAccounts(m_serverURL, key);
    if (!*alive) {
        co_return;
    }
    if (response) {
        setLatestAppVersion(response.value().latestAppVersion);
        presentUpdatePromptIfNeeded();
        if (!response.value().latestAppVersion) {
            setErrorMessage(QStringLiteral("Inkwarden could not determine the latest available version."));
        }
    } else {
        setErrorMessage(QStringLiteral("Update check failed: ") + friendlyMessage(response.error()));
    }
    setIsCheckingForUpdates(false);
}

QString RoyaltiesStore::updatesFolder() const
{
    return m_environment.cacheFolder + u'/' + updatesFolderName();
}

std::optional<QUrl> RoyaltiesStore::existingDownloadedUpdateURL() const
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

void RoyaltiesStore::downloadLatestUpdate()
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
    const std::optional<QUrl> url = makeServerPageURL(PlatformTexts::installerPagePath());
    if (!url) {
        setErrorMessage(QStringLiteral("Enter a valid server URL in Settings before downloading an update."));
        return;
    }
    setIsDownloadingUpdate(true);
    setUpdateStatusMessage(QStringLiteral(u"Downloading update\u2026 You can keep using Inkwarden."));
    performDownload(*url);
}

QCoro::Task<> RoyaltiesStore::performDownload(QUrl url)
{
    const std::shared_ptr<const bool> alive = m_alive;
    const QString version = m_latestAppVersion.value_or(QStringLiteral("latest"));
    const QString folder = updatesFolder();

    // Streamed to a temporary file as it arrives: an installer is too big to hold in memory.
    QTemporaryFile download(QDir::tempPath() + QStringLiteral("/inkwarden-update-XXXXXX"));
    const bool canWrite = download.open();
    QNetworkRequest request(url);
    request.setTransferTimeout(RoyaltiesService::requestTimeoutMilliseconds);
    QNetworkReply *reply = m_environment.network.get(request);
    const std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> owner(
        reply, [](QNetworkReply *finished) { finished->deleteLater(); });
    QObject::connect(m_downloadsUnderWay.get(), &QObject::destroyed, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [&download, reply] { download.write(reply->readAll()); });
    co_await reply;
    if (!*alive) {
        co_return;
    }
    download.write(reply->readAll());

    const auto fail = [this](const QString &reason) {
        setIsDownloadingUpdate(false);
        setUpdateStatusMessage(std::nullopt);
        setErrorMessage(QStringLiteral("Update failed: ") + reason);
    };
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (reply->error() != QNetworkReply::NoError && reply->error() < QNetworkReply::ContentAccessDenied) {
        fail(reply->error() == QNetworkReply::OperationCanceledError ? QStringLiteral("The request timed out.")
                                                                     : reply->errorString());
        co_return;
    }
    if (!status.isValid() || status.toInt() < 200 || status.toInt() > 299) {
        fail(QStringLiteral("The latest Inkwarden update could not be downloaded."));
        co_return;
    }
    if (!canWrite || !download.flush()) {
        fail(QStringLiteral("The update could not be saved: ") + download.errorString());
        co_return;
    }
    if (!QDir().mkpath(folder)) {
        fail(QStringLiteral("The folder %1 could not be created.").arg(folder));
        co_return;
    }
    const QString destination = folder + u'/' + PlatformTexts::installerFileName(version);
    if (QFileInfo::exists(destination) && !QFile::remove(destination)) {
        fail(QStringLiteral("The earlier download at %1 could not be replaced.").arg(destination));
        co_return;
    }
    if (const std::optional<QString> problem = moveIntoPlace(download, destination)) {
        fail(QStringLiteral("The update could not be moved to %1: %2").arg(destination, *problem));
        co_return;
    }
    // A package the user opens should be readable like any other download.
    QFile::setPermissions(destination, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                                           | QFileDevice::ReadOther);

    setIsDownloadingUpdate(false);
    setDownloadedUpdateURL(QUrl::fromLocalFile(destination));
    setUpdateStatusMessage(QStringLiteral(u"Update downloaded. Opening the installer\u2026"));
    openDownloadedUpdate();
}

std::optional<QString> RoyaltiesStore::chosenInstallerPath() const
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

void RoyaltiesStore::openDownloadedUpdate()
{
    const std::optional<QString> path = chosenInstallerPath();
    if (!path) {
        setUpdateStatusMessage(std::nullopt);
        setErrorMessage(installerNotFound());
        return;
    }
    setDownloadedUpdateURL(QUrl::fromLocalFile(*path));
    setErrorMessage(std::nullopt);
    setUpdateStatusMessage(QStringLiteral(u"Opening the installer\u2026"));
    performOpenInstaller(*path);
}

QCoro::Task<> RoyaltiesStore::performOpenInstaller(QString path)
{
    const std::shared_ptr<const bool> alive = m_alive;
    const std::optional<QString> failure = co_await m_environment.desktop.openFile(path);
    if (!*alive) {
        co_return;
    }
    if (failure) {
        setUpdateStatusMessage(PlatformTexts::openFromFileManager());
        setErrorMessage(PlatformTexts::installerNotOpenedPrefix() + *failure);
        revealDownloadedUpdate();
        co_return;
    }
    setUpdateStatusMessage(PlatformTexts::installerOpened());
}

void RoyaltiesStore::revealDownloadedUpdate()
{
    const std::optional<QString> path = chosenInstallerPath();
    if (!path) {
        setErrorMessage(installerNotFound());
        return;
    }
    setDownloadedUpdateURL(QUrl::fromLocalFile(*path));
    m_environment.desktop.revealFile(*path);
}

void RoyaltiesStore::openDashboard()
{
    QUrl url(m_serverURL.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) {
        setErrorMessage(QStringLiteral("Enter a valid server URL in Settings before opening the dashboard."));
        return;
    }
    // Unlike the other pages, the dashboard keeps a query or fragment of the server address.
    url.setPath(ServerAddress::pagePath(url.path(), QStringLiteral("/dashboard_lite/")));
    if (!url.isValid()) {
        setErrorMessage(QStringLiteral("Inkwarden could not open the dashboard URL."));
        return;
    }
    m_environment.desktop.openURL(url);
}
