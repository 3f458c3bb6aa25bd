#include "AccountsResponse.h"

#include "JsonObjectReader.h"

std::optional<AccountsResponse> AccountsResponse::decode(const QByteArray &json)
{
    return JsonObjectReader::decodeDocument<AccountsResponse>(json, [](JsonObjectReader &reader) {
        AccountsResponse response;
        response.accounts =
            reader.requiredObjectArray<PublisherAccount>(QLatin1String("accounts"), &PublisherAccount::read);
        response.latestAppVersion = reader.optionalString(QLatin1String("latest_app_version"));
        return response;
    });
}
