#include "RoyaltiesError.h"

#include <cmath>

QString RoyaltiesError::errorDescription() const
{
    switch (m_kind) {
    case Kind::server:
        return m_message;
    case Kind::rateLimited: {
        const double seconds = std::max(std::ceil(m_retryAfter), 1.0);
        return QStringLiteral("Please wait ") + QString::number(seconds, 'f', 0)
               + QStringLiteral(" seconds before requesting royalties again.");
    }
    case Kind::invalidServerURL:
        return QStringLiteral("Enter a valid server URL, including http:// or https://.");
    case Kind::missingAPIKey:
        return QStringLiteral("Enter your Inkwarden API key.");
    case Kind::invalidResponse:
        return QStringLiteral("Inkwarden returned an unexpected response.");
    }
    Q_UNREACHABLE();
}
