#include "ServerPages.h"

#include "service/ServerAddress.h"

namespace ServerPages {

std::optional<QUrl> url(const QString &serverURL, const QString &path, const RoyaltiesService::QueryItems &queryItems)
{
    const ServiceResult<QUrl> made = RoyaltiesService::makeURL(serverURL, path, queryItems);
    if (!made || made.value().host().isEmpty()) {
        return std::nullopt;
    }
    return made.value();
}

bool hasPages(const QString &serverURL)
{
    const QUrl url(serverURL.trimmed(), QUrl::StrictMode);
    return url.isValid() && !url.scheme().isEmpty() && !url.host().isEmpty();
}

std::optional<QUrl> pageURL(const QString &serverURL, const QString &path, AddressExtras extras)
{
    if (!hasPages(serverURL)) {
        return std::nullopt;
    }
    QUrl url(serverURL.trimmed(), QUrl::StrictMode);
    url.setPath(ServerAddress::pagePath(url.path(), path));
    if (extras == AddressExtras::dropped) {
        url.setQuery(QString());
        url.setFragment(QString());
    }
    if (!url.isValid()) {
        return std::nullopt;
    }
    return url;
}

} // namespace ServerPages
