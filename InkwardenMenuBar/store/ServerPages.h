#pragma once

#include "service/RoyaltiesService.h"

#include <QString>
#include <QUrl>

#include <optional>

// Addresses under the user's server address: the endpoints with a query, and the pages the browser
// opens. None when the address cannot carry them.
namespace ServerPages {

std::optional<QUrl> url(const QString &serverURL, const QString &path, const RoyaltiesService::QueryItems &queryItems);
// A page of the server: the query and fragment of the address are dropped.
std::optional<QUrl> pageURL(const QString &serverURL, const QString &path);

} // namespace ServerPages
