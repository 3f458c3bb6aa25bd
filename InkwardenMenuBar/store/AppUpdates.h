#pragma once

#include "AppInfo.h"
#include "Lifetime.h"
#include "service/InstallerDownloader.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <optional>

class DesktopServices;
class RoyaltiesService;
class StoreStatus;

// Newer versions of Inkwarden: what the server offers, the prompt that tells of one once, the
// download of its installer into the user's cache folder, and opening or showing that installer.
// Also opens the web dashboard, the other page of the server the app sends the user to.
class AppUpdates : public QObject
{
    Q_OBJECT

public:
    struct Environment {
        RoyaltiesService &service;
        QNetworkAccessManager &network;
        DesktopServices &desktop;
        StoreStatus &status;
        AppInfo appInfo;
        // Downloaded installers go into a folder of their own inside it.
        QString cacheFolder;
    };
    explicit AppUpdates(Environment environment, QObject *parent = nullptr);
    ~AppUpdates() override;

    const std::optional<QString> &latestAppVersion() const { return m_latestAppVersion; }
    bool isDownloadingUpdate() const { return m_isDownloadingUpdate; }
    bool isCheckingForUpdates() const { return m_isCheckingForUpdates; }
    bool isShowingUpdatePrompt() const { return m_isShowingUpdatePrompt; }
    const std::optional<QUrl> &downloadedUpdateURL() const { return m_downloadedUpdateURL; }
    const std::optional<QString> &updateStatusMessage() const { return m_updateStatusMessage; }
    const std::optional<QString> &promptedUpdateVersion() const { return m_promptedUpdateVersion; }

    void setLatestAppVersion(std::optional<QString> value);
    void setIsDownloadingUpdate(bool value);
    void setIsCheckingForUpdates(bool value);
    void setIsShowingUpdatePrompt(bool value);
    void setDownloadedUpdateURL(std::optional<QUrl> value);
    void setUpdateStatusMessage(std::optional<QString> value);

    QString currentAppVersion() const;
    bool isUpdateAvailable() const;
    QString updateActionTitle() const;
    void presentUpdatePromptIfNeeded();
    // The version an answer of the server named: remembered, and the prompt shown if it is new.
    void offerVersion(std::optional<QString> version);
    // Sign-out: nothing of the last server's offer stays.
    void forget();

    void checkForUpdates(const QString &serverURL, const QString &key);
    // From the installer page of the server, none when the server address is not valid.
    void downloadLatestUpdate(const std::optional<QUrl> &installerPage);
    std::optional<QUrl> existingDownloadedUpdateURL() const;
    void openDownloadedUpdate();
    void revealDownloadedUpdate();
    void openDashboard(const QString &serverURL);

Q_SIGNALS:
    void latestAppVersionChanged();
    void isDownloadingUpdateChanged();
    void isCheckingForUpdatesChanged();
    void isShowingUpdatePromptChanged();
    void downloadedUpdateURLChanged();
    void updateStatusMessageChanged();

private:
    QCoro::Task<> performCheckForUpdates(QString serverURL, QString key);
    QCoro::Task<> performDownload(QUrl url);
    QCoro::Task<> performOpenInstaller(QString path);
    std::optional<QString> chosenInstallerPath() const;
    QString updatesFolder() const;
    void setErrorMessage(std::optional<QString> message);

    Environment m_environment;
    InstallerDownloader m_installerDownloader;
    std::optional<QString> m_latestAppVersion;
    bool m_isDownloadingUpdate = false;
    bool m_isCheckingForUpdates = false;
    bool m_isShowingUpdatePrompt = false;
    std::optional<QUrl> m_downloadedUpdateURL;
    std::optional<QString> m_updateStatusMessage;
    std::optional<QString> m_promptedUpdateVersion;
    Lifetime m_lifetime;
};
