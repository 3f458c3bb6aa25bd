#include "ApiKeys.h"
#include "DevServer.h"
#include "HttpTestClient.h"
#include "ManualServerClock.h"
#include "service/APIErrorResponse.h"
#include "service/AccountsResponse.h"
#include "service/MacAuthExchangeRequest.h"
#include "service/MacAuthExchangeResponse.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTest>
#include <QUrlQuery>
#include <QUuid>

namespace {

// Verifier, state and challenge made the way the app makes them, independently of the server's code.
QString appStyleRandom()
{
    const auto part = [] { return QUuid::createUuid().toString(QUuid::WithoutBraces).remove(u'-').toUpper(); };
    return part() + part();
}

QString challengeOf(const QString &verifier)
{
    QString challenge =
        QString::fromLatin1(QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256).toBase64());
    return challenge.replace(u'+', u'-').replace(u'/', u'_').remove(u'=');
}

QByteArray form(const QList<QPair<QString, QString>> &fields)
{
    QByteArray body;
    for (const auto &[key, value] : fields) {
        if (!body.isEmpty()) {
            body += '&';
        }
        body += QUrl::toPercentEncoding(key) + '=' + QUrl::toPercentEncoding(value);
    }
    return body;
}

} // namespace

class TestSignIn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = ManualServerClock();
        m_server = std::make_unique<DevServer>();
        m_server->clock().setSource(m_clock.source());
        QVERIFY(m_server->listen() != 0);
    }

    void cleanup() { m_server.reset(); }

    void connectPageIsAnHtmlPageWithAnAuthorizeButton()
    {
        const QString challenge = challengeOf(appStyleRandom());
        const QString state = appStyleRandom();
        const HttpResult page =
            connectPage({{QStringLiteral("code_challenge"), challenge}, {QStringLiteral("state"), state}});
        QCOMPARE(page.status, 200);
        QVERIFY(page.header("Content-Type").startsWith("text/html"));
        const QString html = QString::fromUtf8(page.body);
        QVERIFY(html.contains(QStringLiteral(">Authorize</button>")));
        QVERIFY(html.contains(QStringLiteral("action=\"/mac-app/connect/authorize/\"")));
        QVERIFY(html.contains(QStringLiteral("value=\"%1\"").arg(challenge)));
        QVERIFY(html.contains(QStringLiteral("value=\"%1\"").arg(state)));
        QVERIFY(html.contains(QStringLiteral("author@example.com")));
    }

    void connectPageEscapesWhatItEchoes()
    {
        const HttpResult page = connectPage({{QStringLiteral("code_challenge"), challengeOf(appStyleRandom())},
                                             {QStringLiteral("state"), QStringLiteral("\"><script>x</script>")}});
        QCOMPARE(page.status, 200);
        QVERIFY(!page.body.contains("<script>"));
    }

    void connectPageWithoutChallengeIs400()
    {
        const HttpResult page = connectPage({{QStringLiteral("state"), appStyleRandom()}});
        QCOMPARE(page.status, 400);
        QVERIFY(page.header("Content-Type").startsWith("text/html"));
        QVERIFY(page.body.contains("no code challenge"));
    }

    void connectPageWithMalformedChallengeIs400()
    {
        QCOMPARE(connectPage({{QStringLiteral("code_challenge"), QStringLiteral("short")}}).status, 400);
    }

    void connectPageRefusesThePlainMethod()
    {
        QCOMPARE(connectPage({{QStringLiteral("code_challenge"), challengeOf(appStyleRandom())},
                              {QStringLiteral("code_challenge_method"), QStringLiteral("plain")}})
                     .status,
                 400);
        QCOMPARE(connectPage({{QStringLiteral("code_challenge"), challengeOf(appStyleRandom())},
                              {QStringLiteral("code_challenge_method"), QStringLiteral("S256")}})
                     .status,
                 200);
    }

    void authorizeRedirectsToTheAppWithCodeAndState()
    {
        const QString state = appStyleRandom();
        const HttpResult result = authorize(challengeOf(appStyleRandom()), state);
        QCOMPARE(result.status, 302);
        const QUrl location = QUrl::fromEncoded(result.header("Location"));
        QCOMPARE(location.scheme(), QStringLiteral("inkwarden"));
        QCOMPARE(location.host(), QStringLiteral("authenticated"));
        const QUrlQuery query(location);
        QVERIFY(!query.queryItemValue(QStringLiteral("code")).isEmpty());
        QCOMPARE(query.queryItemValue(QStringLiteral("state")), state);
        QVERIFY(result.body.contains("Return to Inkwarden"));
    }

    void stateWithReservedCharactersComesBackUnchanged()
    {
        const QString state = QStringLiteral("a&b=c d+e/f?g#h%");
        const QUrl location = QUrl::fromEncoded(authorize(challengeOf(appStyleRandom()), state).header("Location"));
        QCOMPARE(QUrlQuery(location).queryItemValue(QStringLiteral("state"), QUrl::FullyDecoded), state);
    }

    void cancelRedirectsWithoutACode()
    {
        const QString state = appStyleRandom();
        const HttpResult result = m_client.post(m_server->url(QStringLiteral("/mac-app/connect/authorize/")),
                                                form({{QStringLiteral("code_challenge"), challengeOf(appStyleRandom())},
                                                      {QStringLiteral("state"), state},
                                                      {QStringLiteral("decision"), QStringLiteral("cancel")}}),
                                                "application/x-www-form-urlencoded");
        QCOMPARE(result.status, 302);
        const QUrlQuery query(QUrl::fromEncoded(result.header("Location")));
        QVERIFY(!query.hasQueryItem(QStringLiteral("code")));
        QCOMPARE(query.queryItemValue(QStringLiteral("error")), QStringLiteral("access_denied"));
        QCOMPARE(query.queryItemValue(QStringLiteral("state")), state);
    }

    void authorizeWithoutChallengeIs400() { QCOMPARE(authorize(QString(), appStyleRandom()).status, 400); }

    void exchangeWithTheRightVerifierGivesAWorkingKey()
    {
        const QString verifier = appStyleRandom();
        const HttpResult result = exchange(codeFor(verifier), verifier);
        QCOMPARE(result.status, 200);
        const std::optional<MacAuthExchangeResponse> response = MacAuthExchangeResponse::decode(result.body);
        QVERIFY(response);
        QCOMPARE(response->userEmail, QStringLiteral("author@example.com"));
        QVERIFY(response->apiKey != ApiKeys::demoKey());
        const HttpResult accounts =
            m_client.getWithKey(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")), response->apiKey);
        QCOMPARE(accounts.status, 200);
        QCOMPARE(AccountsResponse::decode(accounts.body)->accounts.size(), 2);
    }

    void exchangeWithAnotherVerifierFails()
    {
        const QString code = codeFor(appStyleRandom());
        const HttpResult result = exchange(code, appStyleRandom());
        QCOMPARE(result.status, 400);
        QCOMPARE(APIErrorResponse::decode(result.body)->error,
                 QStringLiteral("The code verifier does not match the code challenge."));
    }

    void codeWorksOnlyOnce()
    {
        const QString verifier = appStyleRandom();
        const QString code = codeFor(verifier);
        QCOMPARE(exchange(code, verifier).status, 200);
        const HttpResult again = exchange(code, verifier);
        QCOMPARE(again.status, 400);
        QCOMPARE(APIErrorResponse::decode(again.body)->error,
                 QStringLiteral("This authorization code has already been used."));
    }

    void failedExchangeSpendsTheCode()
    {
        const QString verifier = appStyleRandom();
        const QString code = codeFor(verifier);
        QCOMPARE(exchange(code, appStyleRandom()).status, 400);
        QCOMPARE(exchange(code, verifier).status, 400);
    }

    void codeExpiresAfterTenMinutes()
    {
        const QString verifier = appStyleRandom();
        const QString code = codeFor(verifier);
        m_clock.advanceMs(11 * 60 * 1000);
        const HttpResult result = exchange(code, verifier);
        QCOMPARE(result.status, 400);
        QCOMPARE(APIErrorResponse::decode(result.body)->error, QStringLiteral("This authorization code has expired."));
    }

    void unknownCodeFails()
    {
        const HttpResult result = exchange(QStringLiteral("made-up"), appStyleRandom());
        QCOMPARE(result.status, 400);
        QCOMPARE(APIErrorResponse::decode(result.body)->error, QStringLiteral("Unknown authorization code."));
    }

    void exchangeNeedsBothFieldsAsJson_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("not json") << QByteArray("code=a&code_verifier=b");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("no verifier") << QByteArray(R"({"code":"abc"})");
        QTest::newRow("number code") << QByteArray(R"({"code":1,"code_verifier":"abc"})");
        QTest::newRow("empty code") << QByteArray(R"({"code":"","code_verifier":"abc"})");
    }

    void exchangeNeedsBothFieldsAsJson()
    {
        QFETCH(QByteArray, body);
        const HttpResult result =
            m_client.post(m_server->url(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/")), body, "application/json");
        QCOMPARE(result.status, 400);
        QVERIFY(APIErrorResponse::decode(result.body));
    }

    void exchangeIsPostOnly()
    {
        const HttpResult result = m_client.get(m_server->url(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/")));
        QCOMPARE(result.status, 405);
        QCOMPARE(result.header("Allow"), QByteArray("POST"));
    }

    void browserWalkFromConnectPageToWorkingKey()
    {
        const QString verifier = appStyleRandom();
        const QString state = appStyleRandom();
        const HttpResult page =
            connectPage({{QStringLiteral("code_challenge"), challengeOf(verifier)}, {QStringLiteral("state"), state}});
        QCOMPARE(page.status, 200);

        // Submit the form as a browser would: its action and its hidden fields, plus the button.
        const QString html = QString::fromUtf8(page.body);
        const QRegularExpression action(QStringLiteral("<form method=\"post\" action=\"([^\"]+)\""));
        const QRegularExpression hidden(QStringLiteral("<input type=\"hidden\" name=\"([^\"]+)\" value=\"([^\"]*)\">"));
        const QString target = action.match(html).captured(1);
        QVERIFY(!target.isEmpty());
        QList<QPair<QString, QString>> fields;
        for (auto it = hidden.globalMatch(html); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            fields.append({match.captured(1), match.captured(2)});
        }
        fields.append({QStringLiteral("decision"), QStringLiteral("authorize")});
        const HttpResult redirect = m_client.post(m_server->baseUrl().resolved(QUrl(target)), form(fields),
                                                  "application/x-www-form-urlencoded");
        QCOMPARE(redirect.status, 302);

        const QUrl callback = QUrl::fromEncoded(redirect.header("Location"));
        const QUrlQuery query(callback);
        QCOMPARE(query.queryItemValue(QStringLiteral("state")), state);
        const HttpResult exchanged = exchange(query.queryItemValue(QStringLiteral("code")), verifier);
        QCOMPARE(exchanged.status, 200);
        const QString key = MacAuthExchangeResponse::decode(exchanged.body)->apiKey;
        QCOMPARE(m_client.getWithKey(m_server->url(QStringLiteral("/api/v1/mac/listAccountsAPI/")), key).status, 200);
    }

private:
    HttpResult connectPage(const QList<QPair<QString, QString>> &items)
    {
        QUrl url = m_server->url(QStringLiteral("/mac-app/connect/"));
        QUrlQuery query;
        query.setQueryItems(items);
        url.setQuery(query);
        return m_client.get(url);
    }

    HttpResult authorize(const QString &challenge, const QString &state)
    {
        return m_client.post(m_server->url(QStringLiteral("/mac-app/connect/authorize/")),
                             form({{QStringLiteral("code_challenge"), challenge},
                                   {QStringLiteral("state"), state},
                                   {QStringLiteral("decision"), QStringLiteral("authorize")}}),
                             "application/x-www-form-urlencoded");
    }

    QString codeFor(const QString &verifier)
    {
        const HttpResult result = authorize(challengeOf(verifier), appStyleRandom());
        return QUrlQuery(QUrl::fromEncoded(result.header("Location"))).queryItemValue(QStringLiteral("code"));
    }

    HttpResult exchange(const QString &code, const QString &verifier)
    {
        return m_client.post(m_server->url(QStringLiteral("/api/v1/mac/exchangeAuthCodeAPI/")),
                             MacAuthExchangeRequest{code, verifier}.encode(), "application/json",
                             {{"Accept", "application/json"}});
    }

    ManualServerClock m_clock;
    std::unique_ptr<DevServer> m_server;
    HttpTestClient m_client;
};

QTEST_GUILESS_MAIN(TestSignIn)
#include "tst_devserver_signin.moc"
