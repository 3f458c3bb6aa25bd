#pragma once

#include <QString>

// The S256 method of PKCE as the app uses it: the challenge is the unpadded base64url form of the
// SHA-256 of the verifier's bytes.
class PkceVerifier
{
public:
    static QString challengeFor(const QString &verifier);

    // 43 to 128 characters of letters, digits, "-", ".", "_" and "~".
    static bool isWellFormedVerifier(const QString &verifier);
    // 43 characters of the base64url alphabet, no padding.
    static bool isWellFormedChallenge(const QString &challenge);

    // Whether the verifier hashes to the challenge; compared in constant time.
    static bool verifierMatchesChallenge(const QString &verifier, const QString &challenge);
};
