#include "store/ConnectionSession.h"
#include "store/SettingsKeys.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QRegularExpression>
#include <QTest>
#include <QUrlQuery>

using namespace std::chrono_literals;

namespace {

QString invalidResponse()
{
    return QStringLiteral("Inkwarden received an invalid sign-in response.");
}

QString mismatch()
{
    return QStringLiteral("This sign-in response does not match the current request. Please try again.");
}

} // namespace

class TestStoreSignIn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<StoreFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void challengeIs43Base64UrlCharacters();
    void challengeMatchesKnownVector();
    void beginOpensTheConnectPageWithChallengeAndState();
    void verifierAndStateAreTwoDashlessUuids();
    void newSignInOverwritesThePendingValues();
    void schemelessAddressStopsWithoutBrowser();
    void fullSignInAgainstTheServer();
    void callbackAfterRelaunchIsAccepted();
    void mismatchedStateKeepsPendingValuesForTheRightCallback();
    void callbackWithoutPendingSignInIsAMismatch();
    void invalidCallbacks_data();
    void invalidCallbacks();
    void failedExchangeKeepsPendingValues();
    void failedKeySaveKeepsPendingValues();

    void connectWithBlankKeySendsNothing();
    void connectTrimsTheKeyAndSavesIt();
    void connectKeepsAStoredAccountThatIsListed();
    void connectChoosesTheFirstAccountOtherwise();
    void connectWithKeyThatSeesNoAccountsFails();
    void connectFailureLeavesTheOldConnection();

    void loadAccountsDoesNothingWhenSignedOut();
    void loadAccountsDoesNothingWhileLoading();
    void loadAccountsKeepsListedAccountWithoutRefresh();
    void loadAccountsFailureKeepsTheOldList();

    void serverURLNeedsHttpSchemeAndHost();
    void pageURLKeepsBasePathAndDropsQuery();

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

void TestStoreSignIn::challengeIs43Base64UrlCharacters()
{
    for (int i = 0; i < 200; ++i) {
        const QString verifier =
            QUuid::createUuid().toString(QUuid::Id128).toUpper() + QUuid::createUuid().toString(QUuid::Id128).toUpper();
        QCOMPARE(verifier.size(), 64);
        const QString challenge = RoyaltiesStore::codeChallenge(verifier);
        QCOMPARE(challenge.size(), 43);
        QVERIFY(!challenge.contains(u'=') && !challenge.contains(u'+') && !challenge.contains(u'/'));
    }
}

void TestStoreSignIn::challengeMatchesKnownVector()
{
    // The example pair of the PKCE standard (RFC 7636, appendix B).
    QCOMPARE(RoyaltiesStore::codeChallenge(QStringLiteral("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk")),
             QStringLiteral("E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"));
}

void TestStoreSignIn::beginOpensTheConnectPageWithChallengeAndState()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString() + u'/');
    RoyaltiesStore &store = m_fixture->makeStore();
    store.status().setErrorMessage(QStringLiteral("old"));
    store.beginBrowserAuthentication();
    QVERIFY(!store.errorMessage().has_value());
    QVERIFY(store.isAuthenticating());
    QCOMPARE(m_fixture->desktop.openedURLs.size(), 1);
    const QUrl page = m_fixture->desktop.openedURLs.first();
    QCOMPARE(page.path(), QStringLiteral("/mac-app/connect/"));
    const QList<QPair<QString, QString>> items = QUrlQuery(page).queryItems();
    QCOMPARE(items.size(), 2);
    QCOMPARE(items.at(0).first, QStringLiteral("code_challenge"));
    QCOMPARE(items.at(1).first, QStringLiteral("state"));
    const std::optional<QString> verifier = m_fixture->preferences().string(SettingsKeys::pendingAuthVerifier);
    QVERIFY(verifier.has_value());
    QCOMPARE(items.at(0).second, RoyaltiesStore::codeChallenge(*verifier));
    QCOMPARE(std::optional<QString>(items.at(1).second),
             m_fixture->preferences().string(SettingsKeys::pendingAuthState));
}

void TestStoreSignIn::verifierAndStateAreTwoDashlessUuids()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    RoyaltiesStore &store = m_fixture->makeStore();
    store.beginBrowserAuthentication();
    const QRegularExpression upperHex(QStringLiteral("^[0-9A-F]{64}$"));
    const QString verifier = *m_fixture->preferences().string(SettingsKeys::pendingAuthVerifier);
    const QString state = *m_fixture->preferences().string(SettingsKeys::pendingAuthState);
    QVERIFY(upperHex.match(verifier).hasMatch());
    QVERIFY(upperHex.match(state).hasMatch());
    QVERIFY(verifier != state);
    // Random UUIDs carry version 4 at the same place in each half.
    QCOMPARE(verifier.at(12), u'4');
    QCOMPARE(verifier.at(44), u'4');
}

void TestStoreSignIn::newSignInOverwritesThePendingValues()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    RoyaltiesStore &store = m_fixture->makeStore();
    store.beginBrowserAuthentication();
    const std::optional<QString> first = m_fixture->preferences().string(SettingsKeys::pendingAuthState);
    store.beginBrowserAuthentication();
    QVERIFY(m_fixture->preferences().string(SettingsKeys::pendingAuthState) != first);
    QCOMPARE(m_fixture->desktop.openedURLs.size(), 2);
}

void TestStoreSignIn::schemelessAddressStopsWithoutBrowser()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, QStringLiteral("royalties.example.com"));
    RoyaltiesStore &store = m_fixture->makeStore();
    store.beginBrowserAuthentication();
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Enter a valid Inkwarden server URL.")));
    QVERIFY(!store.isAuthenticating());
    QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::pendingAuthVerifier));
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::pendingAuthState));
}

void TestStoreSignIn::fullSignInAgainstTheServer()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    RoyaltiesStore &store = m_fixture->makeStore();
    QVERIFY(!store.isConnected());
    store.start();
    m_fixture->clock.advance(500ms);
    QCOMPARE(m_fixture->desktop.openedURLs.size(), 1);

    const QString callback = m_fixture->authorizeInBrowser(m_fixture->desktop.openedURLs.first());
    QVERIFY(callback.startsWith(QStringLiteral("inkwarden://authenticated?")));
    store.handleAuthenticationCallback(callback);
    QVERIFY(store.isAuthenticating());
    QVERIFY(store.isLoading());

    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!store.isAuthenticating());
    QVERIFY(!store.errorMessage().has_value());
    QVERIFY(!m_fixture->secrets.key.isEmpty());
    QCOMPARE(store.apiKey(), m_fixture->secrets.key);
    QCOMPARE(store.accounts().size(), 2);
    QCOMPARE(store.accountID(), store.accounts().first().accountID);
    QVERIFY(store.lastUpdated().has_value());
    QVERIFY(store.summary().gross > 0);
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::pendingAuthState));
    QVERIFY(!m_fixture->preferences().contains(SettingsKeys::pendingAuthVerifier));
    QCOMPARE(m_fixture->preferences().string(SettingsKeys::accountID), std::optional<QString>(store.accountID()));
    // The first summary was asked for the chosen account.
    QCOMPARE(m_fixture->statisticsRequests().last().request.queryValue(QStringLiteral("account_id")),
             store.accountID());

    // The code is spent: handing the same callback in again fails at the server, and nothing is lost.
    store.handleAuthenticationCallback(callback);
    QVERIFY(store.errorMessage().has_value() || store.isLoading());
}

void TestStoreSignIn::callbackAfterRelaunchIsAccepted()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    m_fixture->makeStore().beginBrowserAuthentication();
    const QUrl page = m_fixture->desktop.openedURLs.first();
    m_fixture->destroyStore();
    m_fixture->reopenPreferences();

    RoyaltiesStore &relaunched = m_fixture->makeStore();
    relaunched.handleAuthenticationCallback(m_fixture->authorizeInBrowser(page));
    QTRY_VERIFY_WITH_TIMEOUT(relaunched.isConnected(), 5000);
    QVERIFY(!relaunched.errorMessage().has_value());
}

void TestStoreSignIn::mismatchedStateKeepsPendingValuesForTheRightCallback()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    RoyaltiesStore &store = m_fixture->makeStore();
    store.beginBrowserAuthentication();
    const QString callback = m_fixture->authorizeInBrowser(m_fixture->desktop.openedURLs.first());
    QUrl forged(callback);
    QUrlQuery query(forged);
    query.removeAllQueryItems(QStringLiteral("state"));
    query.addQueryItem(QStringLiteral("state"), QStringLiteral("FORGED"));
    forged.setQuery(query);

    const std::optional<QString> state = m_fixture->preferences().string(SettingsKeys::pendingAuthState);
    store.handleAuthenticationCallback(forged.toString());
    QCOMPARE(store.errorMessage(), std::optional<QString>(mismatch()));
    QVERIFY(!store.isLoading());
    QCOMPARE(m_fixture->preferences().string(SettingsKeys::pendingAuthState), state);
    QVERIFY(m_fixture->preferences().contains(SettingsKeys::pendingAuthVerifier));
    QVERIFY(m_fixture->server->requests().size() == 2);

    store.handleAuthenticationCallback(callback);
    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
}

void TestStoreSignIn::callbackWithoutPendingSignInIsAMismatch()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.handleAuthenticationCallback(QStringLiteral("inkwarden://authenticated?code=abc&state=def"));
    QCOMPARE(store.errorMessage(), std::optional<QString>(mismatch()));
    QVERIFY(!store.isAuthenticating());
}

void TestStoreSignIn::invalidCallbacks_data()
{
    QTest::addColumn<QString>("url");
    QTest::newRow("code without state") << QStringLiteral("inkwarden://authenticated?code=abc");
    QTest::newRow("state without code") << QStringLiteral("inkwarden://authenticated?state=S");
    QTest::newRow("code without value") << QStringLiteral("inkwarden://authenticated?code&state=S");
    QTest::newRow("other scheme") << QStringLiteral("https://authenticated?code=abc&state=S");
    QTest::newRow("scheme in capitals") << QStringLiteral("INKWARDEN://authenticated?code=abc&state=S");
    QTest::newRow("host in capitals") << QStringLiteral("inkwarden://Authenticated?code=abc&state=S");
    QTest::newRow("other host") << QStringLiteral("inkwarden://signed-in?code=abc&state=S");
    QTest::newRow("error from the page") << QStringLiteral("inkwarden://authenticated?error=access_denied&state=S");
    QTest::newRow("not a url") << QStringLiteral("inkwarden://auth enticated?code=%zz");
    QTest::newRow("empty") << QString();
}

void TestStoreSignIn::invalidCallbacks()
{
    QFETCH(QString, url);
    m_fixture->preferences().setString(SettingsKeys::pendingAuthState, QStringLiteral("S"));
    m_fixture->preferences().setString(SettingsKeys::pendingAuthVerifier, QStringLiteral("V"));
    RoyaltiesStore &store = m_fixture->makeStore();
    store.handleAuthenticationCallback(url);
    QCOMPARE(store.errorMessage(), std::optional<QString>(invalidResponse()));
    QVERIFY(!store.isLoading());
    QVERIFY(m_fixture->preferences().contains(SettingsKeys::pendingAuthState));
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreSignIn::failedExchangeKeepsPendingValues()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    m_fixture->preferences().setString(SettingsKeys::pendingAuthState, QStringLiteral("S"));
    m_fixture->preferences().setString(SettingsKeys::pendingAuthVerifier, QStringLiteral("V"));
    RoyaltiesStore &store = m_fixture->makeStore();
    store.handleAuthenticationCallback(QStringLiteral("inkwarden://authenticated?code=unknown&state=S"));
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(store.errorMessage().has_value());
    QVERIFY(!store.isAuthenticating());
    QVERIFY(!store.isConnected());
    QVERIFY(m_fixture->preferences().contains(SettingsKeys::pendingAuthState));
    QVERIFY(m_fixture->preferences().contains(SettingsKeys::pendingAuthVerifier));
}

void TestStoreSignIn::failedKeySaveKeepsPendingValues()
{
    m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    m_fixture->secrets.failSaveWith =
        RoyaltiesError::server(QStringLiteral("Could not save the API key in the keyring (7)."));
    RoyaltiesStore &store = m_fixture->makeStore();
    store.beginBrowserAuthentication();
    store.handleAuthenticationCallback(m_fixture->authorizeInBrowser(m_fixture->desktop.openedURLs.first()));
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("Could not save the API key in the keyring (7).")));
    QVERIFY(!store.isConnected());
    QVERIFY(!store.isAuthenticating());
    QVERIFY(m_fixture->preferences().contains(SettingsKeys::pendingAuthState));
}

void TestStoreSignIn::connectWithBlankKeySendsNothing()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(m_fixture->server->baseUrl().toString());
    store.session().setApiKey(QStringLiteral("  \n\t "));
    store.connect();
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Enter your Inkwarden API key.")));
    QVERIFY(!store.isLoading());
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreSignIn::connectTrimsTheKeyAndSavesIt()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral(" ") + m_fixture->server->baseUrl().toString() + QStringLiteral("/ "));
    store.session().setApiKey(QStringLiteral("  ") + ApiKeys::demoKey() + QStringLiteral("\n"));
    store.status().setIsShowingSettings(true);
    store.connect();
    QVERIFY(store.isLoading());
    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
    QCOMPARE(m_fixture->secrets.key, ApiKeys::demoKey());
    QVERIFY(!store.isShowingSettings());
    QCOMPARE(m_fixture->server->requests().first().header("Authorization"),
             QByteArray("Bearer ") + ApiKeys::demoKey().toUtf8());
    QCOMPARE(m_fixture->preferences().string(SettingsKeys::serverURL),
             std::optional<QString>(m_fixture->server->baseUrl().toString() + QStringLiteral("/")));
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statisticsRequests().size(), 1);
}

void TestStoreSignIn::connectKeepsAStoredAccountThatIsListed()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(m_fixture->server->baseUrl().toString());
    store.session().setApiKey(ApiKeys::demoKey());
    store.connect();
    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
    const QString second = store.accounts().at(1).accountID;
    store.signOut();
    store.session().setApiKey(ApiKeys::demoKey());
    store.settings().setAccountID(second);
    m_fixture->clock.advance(5s);
    store.connect();
    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
    QCOMPARE(store.accountID(), second);
}

void TestStoreSignIn::connectChoosesTheFirstAccountOtherwise()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(m_fixture->server->baseUrl().toString());
    store.session().setApiKey(ApiKeys::demoKey());
    store.settings().setAccountID(QStringLiteral("account-of-someone-else"));
    store.connect();
    QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
    QCOMPARE(store.accountID(), store.accounts().first().accountID);
}

void TestStoreSignIn::connectWithKeyThatSeesNoAccountsFails()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(m_fixture->server->baseUrl().toString());
    store.session().setApiKey(ApiKeys::noAccountsKey());
    store.connect();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("This API key does not have access to any accounts.")));
    QVERIFY(!store.isConnected());
    QCOMPARE(m_fixture->secrets.saves, 0);
}

void TestStoreSignIn::connectFailureLeavesTheOldConnection()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    const QList<PublisherAccount> accounts = store.accounts();
    store.session().setApiKey(QStringLiteral("mistyped-key"));
    store.connect();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Invalid API key.")));
    QVERIFY(store.isConnected());
    QCOMPARE(store.accounts(), accounts);
    QCOMPARE(m_fixture->secrets.key, ApiKeys::demoKey());
}

void TestStoreSignIn::loadAccountsDoesNothingWhenSignedOut()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.loadAccounts();
    QVERIFY(!store.isLoadingAccounts());
    QVERIFY(m_fixture->server->requests().isEmpty());
}

void TestStoreSignIn::loadAccountsDoesNothingWhileLoading()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.loadAccounts();
    QVERIFY(store.isLoadingAccounts());
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    const QList<RecordedRequest> requests = m_fixture->server->requests();
    QCOMPARE(std::count_if(requests.cbegin(), requests.cend(),
                           [](const RecordedRequest &r) { return r.request.path.endsWith(u"/listAccountsAPI/"); }),
             1);
}

void TestStoreSignIn::loadAccountsKeepsListedAccountWithoutRefresh()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    // The first load had to choose an account: it saved it and asked for its figures.
    QCOMPARE(m_fixture->statisticsRequests().size(), 1);
    m_fixture->server->clearRequests();
    m_fixture->clock.advance(10s);
    const QString second = store.accounts().at(1).accountID;
    store.settings().setAccountID(second);
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.accountID(), second);
    QVERIFY(m_fixture->statisticsRequests().isEmpty());
}

void TestStoreSignIn::loadAccountsFailureKeepsTheOldList()
{
    RoyaltiesStore &store = m_fixture->makeConnectedStore();
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    const QList<PublisherAccount> accounts = store.accounts();
    Fault fault;
    fault.status = 502;
    m_fixture->server->faults().set(Route::Accounts, fault);
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.accounts(), accounts);
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral("Injected failure: HTTP 502.")));
}

void TestStoreSignIn::serverURLNeedsHttpSchemeAndHost()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral(" https://royalties.example/app/ "));
    QCOMPARE(store.makeServerURL(QStringLiteral("/mac-app/connect/"), {{QStringLiteral("a"), QStringLiteral("b")}}),
             std::optional<QUrl>(QUrl(QStringLiteral("https://royalties.example/app/mac-app/connect/?a=b"))));
    store.settings().setServerURL(QStringLiteral("http:///nohost"));
    QVERIFY(!store.makeServerURL(QStringLiteral("/x/"), {}).has_value());
    store.settings().setServerURL(QStringLiteral("ftp://royalties.example"));
    QVERIFY(!store.makeServerURL(QStringLiteral("/x/"), {}).has_value());
}

void TestStoreSignIn::pageURLKeepsBasePathAndDropsQuery()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral(" https://royalties.example/app/?x=1#top "));
    QCOMPARE(store.makeServerPageURL(QStringLiteral("/download_for_linux/")),
             std::optional<QUrl>(QUrl(QStringLiteral("https://royalties.example/app/download_for_linux/"))));
    store.settings().setServerURL(QStringLiteral("http://localhost:8000"));
    QCOMPARE(store.makeServerPageURL(QStringLiteral("/dashboard_lite/")),
             std::optional<QUrl>(QUrl(QStringLiteral("http://localhost:8000/dashboard_lite/"))));
    // Any scheme will do for a page, as long as there is a host.
    store.settings().setServerURL(QStringLiteral("gopher://royalties.example"));
    QVERIFY(store.makeServerPageURL(QStringLiteral("/p/")).has_value());
    store.settings().setServerURL(QStringLiteral("royalties.example"));
    QVERIFY(!store.makeServerPageURL(QStringLiteral("/p/")).has_value());
}

QTEST_GUILESS_MAIN(TestStoreSignIn)
#include "tst_storesignin.moc"
