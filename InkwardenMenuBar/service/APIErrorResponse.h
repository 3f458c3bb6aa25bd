#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Body that accompanies a failing status.
struct APIErrorResponse {
    QString error;

    static std::optional<APIErrorResponse> decode(const QByteArray &json);

    friend bool operator==(const APIErrorResponse &, const APIErrorResponse &) = default;
};
