#include "AuthCodes.h"
#include "ManualServerClock.h"
#include "PkceVerifier.h"

#include <QCryptographicHash>
#include <QTest>
#include <QUuid>

namespace {

// The app's verifier: two random UUIDs in upper case without dashes.
QString appStyleVerifier()
{
    const auto part = [] { return QUuid::createUuid().toString(QUuid::WithoutBraces).remove(u'-').toUpper(); };
    return part() + part();
}

} // namespace

class TestPkce : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = ManualServerClock();
        m_serverClock.setSource(m_clock.source());
    }

    void challengeMatchesTheRfc7636Example()
    {
        QCOMPARE(PkceVerifier::challengeFor(QStringLiteral("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk")),
                 QStringLiteral("E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"));
    }

    void appVerifierGivesUnpaddedBase64UrlChallengeOf43Characters()
    {
        for (int i = 0; i < 50; ++i) {
            const QString verifier = appStyleVerifier();
            QCOMPARE(verifier.size(), 64);
            QVERIFY(PkceVerifier::isWellFormedVerifier(verifier));
            const QString challenge = PkceVerifier::challengeFor(verifier);
            QCOMPARE(challenge.size(), 43);
            QVERIFY(!challenge.contains(u'=') && !challenge.contains(u'+') && !challenge.contains(u'/'));
            QVERIFY(PkceVerifier::isWellFormedChallenge(challenge));
            QVERIFY(PkceVerifier::verifierMatchesChallenge(verifier, challenge));
        }
    }

    void challengeIsSha256OfTheVerifierBytes()
    {
        const QString verifier = appStyleVerifier();
        QString expected =
            QString::fromLatin1(QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256).toBase64());
        expected.replace(u'+', u'-').replace(u'/', u'_').remove(u'=');
        QCOMPARE(PkceVerifier::challengeFor(verifier), expected);
    }

    void malformedVerifiersAndChallengesAreRecognised()
    {
        QVERIFY(!PkceVerifier::isWellFormedVerifier(QString(42, u'A')));
        QVERIFY(!PkceVerifier::isWellFormedVerifier(QString(129, u'A')));
        QVERIFY(!PkceVerifier::isWellFormedVerifier(QString(50, u'A') + u' '));
        QVERIFY(PkceVerifier::isWellFormedVerifier(QString(43, u'~')));
        QVERIFY(!PkceVerifier::isWellFormedChallenge(QString(44, u'A')));
        QVERIFY(!PkceVerifier::isWellFormedChallenge(QString(42, u'A') + u'='));
        QVERIFY(!PkceVerifier::isWellFormedChallenge(QString(42, u'A') + u'+'));
    }

    void differentVerifierDoesNotMatch()
    {
        const QString challenge = PkceVerifier::challengeFor(appStyleVerifier());
        QVERIFY(!PkceVerifier::verifierMatchesChallenge(appStyleVerifier(), challenge));
        QVERIFY(!PkceVerifier::verifierMatchesChallenge(QString(), challenge));
    }

    void codeRedeemsOnceWithTheRightVerifier()
    {
        AuthCodes codes(m_serverClock);
        const QString verifier = appStyleVerifier();
        const QString code = codes.issue(PkceVerifier::challengeFor(verifier), QStringLiteral("STATE"));
        QVERIFY(!code.isEmpty());
        QCOMPARE(codes.redeem(code, verifier), std::nullopt);
        QCOMPARE(codes.redeem(code, verifier), QStringLiteral("This authorization code has already been used."));
    }

    void wrongVerifierSpendsTheCode()
    {
        AuthCodes codes(m_serverClock);
        const QString verifier = appStyleVerifier();
        const QString code = codes.issue(PkceVerifier::challengeFor(verifier), QString());
        QCOMPARE(codes.redeem(code, appStyleVerifier()),
                 QStringLiteral("The code verifier does not match the code challenge."));
        QVERIFY(codes.redeem(code, verifier).has_value());
    }

    void codeExpiresAfterTenMinutes()
    {
        AuthCodes codes(m_serverClock);
        const QString verifier = appStyleVerifier();
        const QString late = codes.issue(PkceVerifier::challengeFor(verifier), QString());
        const QString inTime = codes.issue(PkceVerifier::challengeFor(verifier), QString());
        m_clock.advanceMs(AuthCodes::lifetimeSeconds * 1000);
        QCOMPARE(codes.redeem(inTime, verifier), std::nullopt);
        m_clock.advanceMs(1000);
        QCOMPARE(codes.redeem(late, verifier), QStringLiteral("This authorization code has expired."));
    }

    void unknownAndClearedCodesAreRefused()
    {
        AuthCodes codes(m_serverClock);
        const QString verifier = appStyleVerifier();
        QCOMPARE(codes.redeem(QStringLiteral("nope"), verifier), QStringLiteral("Unknown authorization code."));
        const QString code = codes.issue(PkceVerifier::challengeFor(verifier), QString());
        codes.clear();
        QCOMPARE(codes.redeem(code, verifier), QStringLiteral("Unknown authorization code."));
    }

    void issuedCodesAreDistinct()
    {
        AuthCodes codes(m_serverClock);
        QSet<QString> seen;
        for (int i = 0; i < 100; ++i) {
            seen.insert(codes.issue(PkceVerifier::challengeFor(appStyleVerifier()), QString()));
        }
        QCOMPARE(seen.size(), 100);
    }

private:
    ManualServerClock m_clock;
    ServerClock m_serverClock;
};

QTEST_GUILESS_MAIN(TestPkce)
#include "tst_devserver_pkce.moc"
