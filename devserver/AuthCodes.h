#pragma once

#include "ServerClock.h"

#include <QDateTime>
#include <QHash>
#include <QString>

#include <optional>

// Authorisation codes handed out by the sign-in page. Each remembers the PKCE challenge it was
// issued for and can be presented to the exchange once, whatever the outcome.
class AuthCodes
{
public:
    explicit AuthCodes(const ServerClock &clock);

    QString issue(const QString &codeChallenge, const QString &state);

    // Empty on success, else the reason the exchange refuses the code.
    std::optional<QString> redeem(const QString &code, const QString &codeVerifier);

    void clear();

    static constexpr qint64 lifetimeSeconds = 600;

private:
    struct PendingCode {
        QString challenge;
        QString state;
        QDateTime issuedAt;
        bool used = false;
    };

    const ServerClock &m_clock;
    QHash<QString, PendingCode> m_codes;
};
