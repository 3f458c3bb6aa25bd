#pragma once

#include "StoreViewModel.h"

#include <QString>
#include <QVariant>

// The update banner, the update prompt and the settings' version section: what they say about the
// installed version, the offered one and the download.
class UpdateViewModel : public StoreViewModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isUpdateAvailable READ isUpdateAvailable NOTIFY changed)
    Q_PROPERTY(QString updateActionTitle READ updateActionTitle NOTIFY changed)
    Q_PROPERTY(QString bannerTitle READ bannerTitle NOTIFY changed)
    Q_PROPERTY(QString bannerSubtitle READ bannerSubtitle NOTIFY changed)
    Q_PROPERTY(QString promptTitle READ bannerTitle NOTIFY changed)
    Q_PROPERTY(QString promptMessage READ promptMessage NOTIFY changed)
    Q_PROPERTY(QString showInFilesTitle READ showInFilesTitle CONSTANT)
    Q_PROPERTY(QString appVersionTitle READ appVersionTitle NOTIFY changed)
    Q_PROPERTY(QVariant versionStatusText READ versionStatusText NOTIFY changed)
    Q_PROPERTY(QString versionStatusColor READ versionStatusColor NOTIFY changed)
    Q_PROPERTY(QString checkForUpdatesTitle READ checkForUpdatesTitle NOTIFY changed)
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY changed)
    Q_PROPERTY(QString installUpdateTitle READ installUpdateTitle NOTIFY changed)
    Q_PROPERTY(bool hasDownloadedUpdate READ hasDownloadedUpdate NOTIFY changed)
    Q_PROPERTY(bool canStartUpdateAction READ canStartUpdateAction NOTIFY changed)

public:
    explicit UpdateViewModel(QObject *parent = nullptr);

    bool isUpdateAvailable() const;
    QString updateActionTitle() const;
    QString bannerTitle() const;
    QString bannerSubtitle() const;
    QString promptMessage() const;
    static QString showInFilesTitle();
    QString appVersionTitle() const;
    // None until a check has answered: then there is no status line at all.
    QVariant versionStatusText() const;
    QString versionStatusColor() const;
    QString checkForUpdatesTitle() const;
    bool canCheckForUpdates() const;
    QString installUpdateTitle() const;
    bool hasDownloadedUpdate() const;
    bool canStartUpdateAction() const;

    // The update button of the banner and of the settings: opens the downloaded installer when
    // there is one, else downloads it.
    Q_INVOKABLE void performUpdateAction();
};
