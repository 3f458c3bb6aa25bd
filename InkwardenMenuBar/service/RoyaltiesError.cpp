#include "RoyaltiesError.h"

#include "model/CountedText.h"

#include <cmath>
#include <limits>

QString RoyaltiesError::errorDescription() const
{
    switch (m_kind) {
    case Kind::server:
        return m_message;
    case Kind::rateLimited: {
        //: The server asked to wait before the next request; %1 is a number of seconds. English
        //: keeps "seconds" even for 1; other languages use their plural forms
        const char *const waitText =
            QT_TRANSLATE_N_NOOP("RoyaltiesError", "Please wait %1 seconds before requesting royalties again.");
        const double seconds = std::max(std::ceil(m_retryAfter), 1.0);
        // The digits are written as ever, without grouping ("86401"), hence the C locale. A wait
        // beyond the 64-bit range (or no number at all) keeps its plain digits too.
        if (seconds < 9223372036854775808.0) {
            return countedText("RoyaltiesError", waitText, qint64(seconds), QLocale::c());
        }
        return tr(waitText, nullptr, std::numeric_limits<int>::max()).arg(QString::number(seconds, 'f', 0));
    }
    case Kind::invalidServerURL:
        return tr("Enter a valid server URL, including http:// or https://.");
    case Kind::missingAPIKey:
        return tr("Enter your Inkwarden API key.");
    case Kind::invalidResponse:
        return tr("Inkwarden returned an unexpected response.");
    }
    Q_UNREACHABLE();
}
