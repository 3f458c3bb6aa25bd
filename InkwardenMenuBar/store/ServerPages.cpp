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

std::optional<QUrl> pageURL(const QString &serverURL, const QString &path)
{
    QUrl url(serverURL.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) {
        return std::nullopt;
    }
    url.setPath(ServerAddress::pagePath(url.path(), path));
    url.setQuery(QString());
    url.setFragment(QString());
    if (!url.isValid()) {
        return std::nullopt;
    }
    return url;
}

} // namespace ServerPages
