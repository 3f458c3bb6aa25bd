#pragma once

#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"
#include "service/BookStatsResponse.h"
#include "service/MacAuthExchangeResponse.h"

#include <QByteArray>

#include <optional>

// A second, deliberately plain statement of the wire rules that the fuzzer holds the real decoders
// to: a missing key or a null leaves an optional member absent, a required one missing, null or
// mistyped rejects the body, an integer member accepts only a whole number within 64 bits, and
// unknown keys are ignored. It shares Qt's JSON parser with the app but none of the member reading.
namespace ReferenceDecoder {

std::optional<BookStatsResponse> bookStats(const QByteArray &json);
std::optional<AccountsResponse> accounts(const QByteArray &json);
std::optional<MacAuthExchangeResponse> exchange(const QByteArray &json);
std::optional<APIErrorResponse> apiError(const QByteArray &json);

} // namespace ReferenceDecoder
