#include "UiTest.h"
#include "store/BrowserSignIn.h"
#include "store/ConnectionSession.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"

#include <QSignalSpy>

class TestConnectView : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void showsLogoTitleAndSignInInOrder();
    void signInButtonCallsBeginBrowserAuthentication();
    void waitingForBrowserKeepsSignInEnabledAndClickingStartsAgain();
    void loadingDisablesBothButtonsAndOnlyConnectLabelChanges();
    void collapsedGroupHidesFieldsButErrorBannerStillShows();
    void expandingShowsFieldsBoundToTheStore();
    void typingWritesIntoTheStore();
    void connectButtonCallsConnect();
    void emptyVersionGivesVersionLineWithNothingAfter();
    void newConnectViewStartsCollapsed();
    void quitButtonQuitsTheApplication();
};

void TestConnectView::showsLogoTitleAndSignInInOrder()
{
    fixture->makeStore();
    show();
    QVERIFY(shown(QStringLiteral("connectView")));
    QCOMPARE(text(QStringLiteral("connectTitle")), QStringLiteral("Inkwarden"));
    QCOMPARE(text(QStringLiteral("connectSubtitle")), QStringLiteral("See your latest royalties from the menu bar."));
    QCOMPARE(text(QStringLiteral("signInButton")), QStringLiteral("Sign in with Inkwarden"));
    QCOMPARE(text(QStringLiteral("manualConnectionToggle")), QStringLiteral("Connect manually"));
    QCOMPARE(text(QStringLiteral("browserSignInNote")),
             QStringLiteral("Browser sign-in fills the API key automatically. Manual entry remains available "
                            "whenever you need it."));
    QCOMPARE(text(QStringLiteral("versionLine")), QStringLiteral("Version 1.4.0"));
    QCOMPARE(text(QStringLiteral("quitButton")), QStringLiteral("Quit"));
    const QStringList order{QStringLiteral("connectLogo"),       QStringLiteral("connectTitle"),
                            QStringLiteral("signInButton"),      QStringLiteral("manualConnectionToggle"),
                            QStringLiteral("browserSignInNote"), QStringLiteral("versionLine"),
                            QStringLiteral("quitButton")};
    qreal previous = -1;
    for (const QString &name : order) {
        QQuickItem *found = item(name);
        const qreal y = found->mapToScene(QPointF(0, 0)).y();
        QVERIFY2(y > previous, qPrintable(name));
        previous = y;
    }
    QVERIFY(!item(QStringLiteral("signInButtonSpinner"))->isVisible());
}

void TestConnectView::signInButtonCallsBeginBrowserAuthentication()
{
    RoyaltiesStore &store = fixture->makeStore();
    show();
    QVERIFY(click(QStringLiteral("signInButton")));
    QVERIFY(store.isAuthenticating());
    QCOMPARE(fixture->desktop.openedURLs.size(), 1);
    QVERIFY(fixture->desktop.openedURLs.first().path().endsWith(QStringLiteral("/mac-app/connect/")));
}

void TestConnectView::waitingForBrowserKeepsSignInEnabledAndClickingStartsAgain()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.signIn().setIsAuthenticating(true);
    show();
    QVERIFY(enabled(QStringLiteral("signInButton")));
    QCOMPARE(text(QStringLiteral("signInButton")),
             QString(QStringLiteral("Waiting for browser sign-in") + QChar(0x2026)));
    QVERIFY(item(QStringLiteral("signInButtonSpinner"))->isVisible());
    QVERIFY(click(QStringLiteral("signInButton")));
    QCOMPARE(fixture->desktop.openedURLs.size(), 1);
    QVERIFY(store.isAuthenticating());
}

void TestConnectView::loadingDisablesBothButtonsAndOnlyConnectLabelChanges()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.session().setIsLoading(true);
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    QVERIFY(!enabled(QStringLiteral("signInButton")));
    QVERIFY(!enabled(QStringLiteral("connectButton")));
    QCOMPARE(text(QStringLiteral("connectButton")), QString(QStringLiteral("Connecting") + QChar(0x2026)));
    QVERIFY(item(QStringLiteral("connectButtonSpinner"))->isVisible());
    QCOMPARE(text(QStringLiteral("signInButton")), QStringLiteral("Sign in with Inkwarden"));
    QVERIFY(!item(QStringLiteral("signInButtonSpinner"))->isVisible());
    store.signIn().setIsAuthenticating(true);
    view->settle();
    QCOMPARE(text(QStringLiteral("signInButton")),
             QString(QStringLiteral("Waiting for browser sign-in") + QChar(0x2026)));
    QVERIFY(!click(QStringLiteral("signInButton")));
    QVERIFY(fixture->desktop.openedURLs.isEmpty());
}

void TestConnectView::collapsedGroupHidesFieldsButErrorBannerStillShows()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.status().setErrorMessage(QStringLiteral("Enter a valid Inkwarden server URL."));
    show();
    QVERIFY(!shown(QStringLiteral("manualConnection")));
    QVERIFY(!shown(QStringLiteral("serverURLInput")));
    QVERIFY(!shown(QStringLiteral("apiKeyInput")));
    QVERIFY(shown(QStringLiteral("errorBanner")));
    QCOMPARE(text(QStringLiteral("errorMessage")), QStringLiteral("Enter a valid Inkwarden server URL."));
    QVERIFY(item(QStringLiteral("errorBanner"))->mapToScene({0, 0}).y()
            > item(QStringLiteral("manualConnectionToggle"))->mapToScene({0, 0}).y());
}

void TestConnectView::expandingShowsFieldsBoundToTheStore()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.settings().setServerURL(QStringLiteral("https://royalties.example"));
    store.session().setApiKey(QStringLiteral("secret"));
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    QVERIFY(shown(QStringLiteral("manualConnection")));
    QQuickItem *server = item(QStringLiteral("serverField"));
    QCOMPARE(text(QStringLiteral("fieldTitle"), server), QStringLiteral("Server"));
    QCOMPARE(text(QStringLiteral("fieldHint"), server), QStringLiteral("http://localhost:8000"));
    QCOMPARE(text(QStringLiteral("serverURLInput")), QStringLiteral("https://royalties.example"));
    QCOMPARE(item(QStringLiteral("serverURLInput"))->property("placeholderText").toString(),
             QStringLiteral("Server URL"));
    QQuickItem *key = item(QStringLiteral("apiKeyField"));
    QCOMPARE(text(QStringLiteral("fieldTitle"), key), QStringLiteral("API key"));
    QCOMPARE(text(QStringLiteral("fieldHint"), key),
             QString(QStringLiteral("My Account ") + QChar(0x2192) + QStringLiteral(" Settings ") + QChar(0x2192)
                     + QStringLiteral(" API Access ") + QChar(0x00B7)
                     + QStringLiteral(" Stored securely in your system keyring")));
    QQuickItem *keyInput = item(QStringLiteral("apiKeyInput"));
    QCOMPARE(ViewHarness::text(keyInput), QStringLiteral("secret"));
    QCOMPARE(keyInput->property("echoMode").toInt(), 2); // TextInput.Password
    QCOMPARE(keyInput->property("placeholderText").toString(), QStringLiteral("Inkwarden API key"));
    QCOMPARE(text(QStringLiteral("connectButton")), QStringLiteral("Connect with API key"));
    QVERIFY(enabled(QStringLiteral("connectButton")));
}

void TestConnectView::typingWritesIntoTheStore()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.settings().setServerURL(QString());
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    view->typeInto(item(QStringLiteral("serverURLInput")), QStringLiteral(" http://x "));
    QCOMPARE(store.serverURL(), QStringLiteral(" http://x ")); // untrimmed: connect() trims
    view->typeInto(item(QStringLiteral("apiKeyInput")), QStringLiteral("k1"));
    QCOMPARE(store.apiKey(), QStringLiteral("k1"));
}

void TestConnectView::connectButtonCallsConnect()
{
    RoyaltiesStore &store = fixture->makeStore();
    store.settings().setServerURL(fixture->server->baseUrl().toString());
    store.session().setApiKey(ApiKeys::demoKey());
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    QVERIFY(click(QStringLiteral("connectButton")));
    // connect(): the key is checked against the server, then the store connects.
    QTRY_VERIFY(store.isConnected());
    QCOMPARE(fixture->secrets.saves, 1);
    QTRY_VERIFY(shown(QStringLiteral("dashboardView")));
    QVERIFY(fixture->waitUntilIdle());
}

void TestConnectView::emptyVersionGivesVersionLineWithNothingAfter()
{
    fixture->appInfo.version = QString();
    fixture->makeStore();
    show();
    QCOMPARE(text(QStringLiteral("versionLine")), QStringLiteral("Version "));
}

void TestConnectView::newConnectViewStartsCollapsed()
{
    RoyaltiesStore &store = fixture->makeStore();
    show();
    QVERIFY(click(QStringLiteral("manualConnectionToggle")));
    QVERIFY(shown(QStringLiteral("manualConnection")));
    store.session().setIsConnected(true);
    view->settle();
    QVERIFY(shown(QStringLiteral("dashboardView")));
    store.session().setIsConnected(false);
    view->settle();
    QVERIFY(shown(QStringLiteral("connectView")));
    QVERIFY(!shown(QStringLiteral("manualConnection")));
    QVERIFY(!item(QStringLiteral("manualConnectionToggle"))->property("checked").toBool());
}

void TestConnectView::quitButtonQuitsTheApplication()
{
    fixture->makeStore();
    show();
    QSignalSpy quit(&view->engine(), &QQmlEngine::quit);
    QVERIFY(click(QStringLiteral("quitButton")));
    QCOMPARE(quit.size(), 1);
}

QTEST_MAIN(TestConnectView)
#include "tst_ui_connectview.moc"
