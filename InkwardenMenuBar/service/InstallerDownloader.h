#pragma once

#include <QCoreApplication>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

class QNetworkAccessManager;

// Fetches an installer into a folder: streamed to a temporary file as it arrives (an installer is
// too big to hold in memory), then put in place in one step, so that its name never holds a partial
// file. Downloads still under way when this object goes are cancelled.
class InstallerDownloader
{
    Q_DECLARE_TR_FUNCTIONS(InstallerDownloader)

public:
    explicit InstallerDownloader(QNetworkAccessManager &network);
    ~InstallerDownloader();

    // Where the installer now is, or why it is not.
    struct Result {
        std::optional<QString> path;
        QString failure;
    };
    // `fileName` inside `folder`, replacing an earlier download of that name.
    QCoro::Task<Result> download(QUrl url, QString folder, QString fileName);

private:
    QNetworkAccessManager &m_network;
    // Downloads under way are tied to this object's lifetime.
    std::unique_ptr<QObject> m_underWay;
};
