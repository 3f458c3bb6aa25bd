#include "PkceVerifier.h"

#include <QCryptographicHash>

namespace {

bool allOf(const QString &text, bool (*accept)(QChar))
{
    return std::all_of(text.cbegin(), text.cend(), accept);
}

bool isAsciiAlphanumeric(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

} // namespace

QString PkceVerifier::challengeFor(const QString &verifier)
{
    const QByteArray digest = QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

bool PkceVerifier::isWellFormedVerifier(const QString &verifier)
{
    return verifier.size() >= 43 && verifier.size() <= 128 && allOf(verifier, [](QChar c) {
               return isAsciiAlphanumeric(c) || c == u'-' || c == u'.' || c == u'_' || c == u'~';
           });
}

bool PkceVerifier::isWellFormedChallenge(const QString &challenge)
{
    return challenge.size() == 43
           && allOf(challenge, [](QChar c) { return isAsciiAlphanumeric(c) || c == u'-' || c == u'_'; });
}

bool PkceVerifier::verifierMatchesChallenge(const QString &verifier, const QString &challenge)
{
    const QByteArray expected = challengeFor(verifier).toLatin1();
    const QByteArray given = challenge.toLatin1();
    if (expected.size() != given.size()) {
        return false;
    }
    unsigned char difference = 0;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        difference |= static_cast<unsigned char>(expected[i] ^ given[i]);
    }
    return difference == 0;
}
