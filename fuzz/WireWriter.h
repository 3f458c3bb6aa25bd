#pragma once

#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"
#include "service/BookStatsResponse.h"
#include "service/MacAuthExchangeResponse.h"

#include <QByteArray>

// Writes decoded bodies back out as JSON, in the spellings a server may legitimately choose, so the
// fuzzer can check that each of them decodes to the same value again.
namespace WireWriter {

enum class Form {
    Compact,
    Indented,
    // Every absent optional member written as an explicit null.
    NullForAbsent,
    // An unknown key (holding look-alikes of real members) added to every object the body defines.
    WithUnknownKeys,
};

inline constexpr Form allForms[] = {Form::Compact, Form::Indented, Form::NullForAbsent, Form::WithUnknownKeys};

QByteArray bookStats(const BookStatsResponse &response, Form form);
QByteArray accounts(const AccountsResponse &response, Form form);
QByteArray exchange(const MacAuthExchangeResponse &response, Form form);
QByteArray apiError(const APIErrorResponse &response, Form form);

} // namespace WireWriter
