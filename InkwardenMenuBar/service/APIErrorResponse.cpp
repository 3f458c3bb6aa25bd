#include "APIErrorResponse.h"

#include "JsonObjectReader.h"

std::optional<APIErrorResponse> APIErrorResponse::decode(const QByteArray &json)
{
    return JsonObjectReader::decodeDocument<APIErrorResponse>(
        json, [](JsonObjectReader &reader) { return APIErrorResponse{reader.requiredString(QLatin1String("error"))}; });
}
