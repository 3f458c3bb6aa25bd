#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Response body of the sign-in code exchange.
struct MacAuthExchangeResponse {
    QString apiKey;
    QString userEmail;

    static std::optional<MacAuthExchangeResponse> decode(const QByteArray &json);

    friend bool operator==(const MacAuthExchangeResponse &, const MacAuthExchangeResponse &) = default;
};
