#pragma once

#include "HttpReply.h"
#include "IncomingRequest.h"

struct DevServerConfig;

// "/download_for_linux/": the installer of the announced version, as an attachment named
// "Inkwarden-<version>.deb". Without `--installer-file` the bytes are a small placeholder.
class InstallerDownload
{
public:
    explicit InstallerDownload(const DevServerConfig &config);

    HttpReply serve(const IncomingRequest &request) const;

    QString fileName() const;
    QByteArray placeholderBytes() const;

private:
    const DevServerConfig &m_config;
};
