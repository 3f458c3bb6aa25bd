#include "InstallerDownloader.h"

#include "RoyaltiesService.h"

#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTemporaryFile>
#include <qcoro/qcoronetworkreply.h>

namespace {

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

InstallerDownloader::Result failed(QString reason)
{
    return {std::nullopt, std::move(reason)};
}

} // namespace

InstallerDownloader::InstallerDownloader(QNetworkAccessManager &network)
    : m_network(network)
    , m_underWay(std::make_unique<QObject>())
{}

InstallerDownloader::~InstallerDownloader() = default;

QCoro::Task<InstallerDownloader::Result> InstallerDownloader::download(QUrl url, QString folder, QString fileName)
{
    QTemporaryFile download(QDir::tempPath() + QStringLiteral("/inkwarden-update-XXXXXX"));
    const bool canWrite = download.open();
    QNetworkRequest request(url);
    request.setTransferTimeout(RoyaltiesService::requestTimeoutMilliseconds);
    QNetworkReply *reply = m_network.get(request);
    const std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> owner(
        reply, [](QNetworkReply *finished) { finished->deleteLater(); });
    QObject::connect(m_underWay.get(), &QObject::destroyed, reply, &QNetworkReply::abort);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [&download, reply] { download.write(reply->readAll()); });
    // Nothing of this object is read after the wait: it may be gone by then.
    co_await reply;
    download.write(reply->readAll());

    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (reply->error() != QNetworkReply::NoError && reply->error() < QNetworkReply::ContentAccessDenied) {
        co_return failed(reply->error() == QNetworkReply::OperationCanceledError ? tr("The request timed out.")
                                                                                 : reply->errorString());
    }
    if (!status.isValid() || status.toInt() < 200 || status.toInt() > 299) {
        co_return failed(tr("The latest Inkwarden update could not be downloaded."));
    }
    if (!canWrite || !download.flush()) {
        //: %1 is the system's reason why the file could not be written
        co_return failed(tr("The update could not be saved: %1").arg(download.errorString()));
    }
    if (!QDir().mkpath(folder)) {
        //: %1 is the path of a folder
        co_return failed(tr("The folder %1 could not be created.").arg(folder));
    }
    const QString destination = folder + u'/' + fileName;
    if (QFileInfo::exists(destination) && !QFile::remove(destination)) {
        //: %1 is the path of an installer downloaded before
        co_return failed(tr("The earlier download at %1 could not be replaced.").arg(destination));
    }
    if (const std::optional<QString> problem = moveIntoPlace(download, destination)) {
        //: %1 is the path the installer goes to, %2 the system's reason why it could not
        co_return failed(tr("The update could not be moved to %1: %2").arg(destination, *problem));
    }
    // A package the user opens should be readable like any other download.
    QFile::setPermissions(destination, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                                           | QFileDevice::ReadOther);
    co_return Result{destination, QString()};
}
