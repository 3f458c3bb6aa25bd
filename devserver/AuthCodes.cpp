#include "AuthCodes.h"

#include "PkceVerifier.h"

#include <QRandomGenerator>

AuthCodes::AuthCodes(const ServerClock &clock)
    : m_clock(clock)
{}

QString AuthCodes::issue(const QString &codeChallenge, const QString &state)
{
    QByteArray random(24, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(random.data()), random.size() / 4);
    QString code = QString::fromLatin1(random.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
    m_codes.insert(code, PendingCode{codeChallenge, state, m_clock.now(), false});
    return code;
}

std::optional<QString> AuthCodes::redeem(const QString &code, const QString &codeVerifier)
{
    const auto it = m_codes.find(code);
    if (it == m_codes.end()) {
        return QStringLiteral("Unknown authorization code.");
    }
    if (it->used) {
        return QStringLiteral("This authorization code has already been used.");
    }
    // A code gets one attempt: a wrong verifier spends it too, so it cannot be guessed at.
    it->used = true;
    if (it->issuedAt.secsTo(m_clock.now()) > lifetimeSeconds) {
        return QStringLiteral("This authorization code has expired.");
    }
    if (!PkceVerifier::isWellFormedVerifier(codeVerifier)
        || !PkceVerifier::verifierMatchesChallenge(codeVerifier, it->challenge)) {
        return QStringLiteral("The code verifier does not match the code challenge.");
    }
    return std::nullopt;
}

void AuthCodes::clear()
{
    m_codes.clear();
}
