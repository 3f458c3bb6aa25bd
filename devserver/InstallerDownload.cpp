#include "InstallerDownload.h"

#include "DevServerConfig.h"

#include <QFile>

InstallerDownload::InstallerDownload(const DevServerConfig &config)
    : m_config(config)
{}

QString InstallerDownload::fileName() const
{
    const QString version = m_config.latestAppVersion.isEmpty() ? QStringLiteral("latest") : m_config.latestAppVersion;
    return QStringLiteral("Inkwarden-") + version + QStringLiteral(".deb");
}

QByteArray InstallerDownload::placeholderBytes() const
{
    return "This is not a real package: the Inkwarden development server hands out this placeholder as "
           + fileName().toUtf8()
           + ".\nStart inkwarden-devserver with --installer-file PATH to serve a real .deb instead.\n";
}

HttpReply InstallerDownload::serve(const IncomingRequest &request) const
{
    if (request.method != QLatin1String("GET")) {
        return HttpReply::error(405, QStringLiteral("Use GET to download the installer."));
    }
    QByteArray bytes = placeholderBytes();
    if (!m_config.installerFile.isEmpty()) {
        QFile file(m_config.installerFile);
        if (!file.open(QIODevice::ReadOnly)) {
            return HttpReply::error(404, QStringLiteral("The installer file could not be read."));
        }
        bytes = file.readAll();
    }
    HttpReply reply;
    reply.contentType = QByteArrayLiteral("application/vnd.debian.binary-package");
    reply.headers.append({QByteArrayLiteral("Content-Disposition"),
                          QByteArrayLiteral("attachment; filename=\"") + fileName().toUtf8() + '"'});
    reply.body = bytes;
    return reply;
}
