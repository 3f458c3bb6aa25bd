#include "BookStatsResponse.h"

#include "JsonObjectReader.h"

std::optional<BookStatsResponse> BookStatsResponse::decode(const QByteArray &json)
{
    return JsonObjectReader::decodeDocument<BookStatsResponse>(json, [](JsonObjectReader &reader) {
        return BookStatsResponse{
            reader.requiredObjectArray<BookStatsRow>(QLatin1String("table_data"), &BookStatsRow::read)};
    });
}
