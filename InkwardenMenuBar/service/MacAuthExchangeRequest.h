#pragma once

#include <QByteArray>
#include <QString>

// Request body of the sign-in code exchange: the code from the callback and the PKCE verifier.
struct MacAuthExchangeRequest {
    QString code;
    QString codeVerifier;

    QByteArray encode() const;
};
