#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

// Files the tests lay out in their scratch folders: desktop entries, fake programs, settings.

inline constexpr QFile::Permissions executablePermissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                                            | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther
                                                            | QFile::ExeOther;

// Writes `contents` to `path`, making its folder first; sets `permissions` when given.
inline bool writeFile(const QString &path, const QByteArray &contents, QFile::Permissions permissions = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        return false;
    }
    file.close();
    return permissions == QFile::Permissions() || file.setPermissions(permissions);
}
