#pragma once

#include <QString>

// The user's server address as text: trimmed of blanks and line breaks, and of "/" at both ends
// before a path is appended.
namespace ServerAddress {

QString withoutSlashesAtEnds(const QString &text);

// "/" + base path + page when the address has a base path, else the page alone.
QString pagePath(const QString &basePath, const QString &page);

} // namespace ServerAddress
