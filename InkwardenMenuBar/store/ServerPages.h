#pragma once

#include "service/RoyaltiesService.h"

#include <QString>
#include <QUrl>

#include <optional>

// Addresses under the user's server address: the endpoints with a query, and the pages the browser
// opens. None when the address cannot carry them.
namespace ServerPages {

std::optional<QUrl> url(const QString &serverURL, const QString &path, const RoyaltiesService::QueryItems &queryItems);
// Whether the address can lead to pages: a valid address with a scheme and a host.
bool hasPages(const QString &serverURL);

// What a page's address keeps of the server address's query and fragment.
enum class AddressExtras { dropped, kept };

// A page of the server; the query and fragment of the address are dropped unless asked otherwise.
std::optional<QUrl> pageURL(const QString &serverURL, const QString &path,
                            AddressExtras extras = AddressExtras::dropped);

} // namespace ServerPages
