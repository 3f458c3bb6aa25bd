#pragma once

#include "BookStatsRow.h"

#include <QByteArray>
#include <QList>

#include <optional>

// Body of the statistics endpoint.
struct BookStatsResponse {
    QList<BookStatsRow> tableData;

    // The whole body or nothing: a missing "table_data" or any mistyped member fails it.
    static std::optional<BookStatsResponse> decode(const QByteArray &json);

    friend bool operator==(const BookStatsResponse &, const BookStatsResponse &) = default;
};
