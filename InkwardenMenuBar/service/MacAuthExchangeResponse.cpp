#include "MacAuthExchangeResponse.h"

#include "JsonObjectReader.h"

std::optional<MacAuthExchangeResponse> MacAuthExchangeResponse::decode(const QByteArray &json)
{
    return JsonObjectReader::decodeDocument<MacAuthExchangeResponse>(json, [](JsonObjectReader &reader) {
        MacAuthExchangeResponse response;
        response.apiKey = reader.requiredString(QLatin1String("api_key"));
        response.userEmail = reader.requiredString(QLatin1String("user_email"));
        return response;
    });
}
