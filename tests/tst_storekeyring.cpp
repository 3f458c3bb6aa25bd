// The stored key as the keyring gives it: read without blocking, a locked or silent keyring told
// apart from no key (a message, one unlock request, no browser sign-in, a connection as soon as the
// key reads), and a callback that arrives while the keyring still takes its time.
#include "ApiKeys.h"
#include "store/PlatformTexts.h"
#include "store/SettingsKeys.h"
#include "support/StoreFixture.h"

#include <QTest>

using namespace std::chrono_literals;

class TestStoreKeyring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        m_fixture->preferences().setString(SettingsKeys::serverURL, m_fixture->server->baseUrl().toString());
    }
    void cleanup() { m_fixture.reset(); }

    void aLockedKeyringAtStartShowsTheMessageAndConnectsOnceUnlocked()
    {
        m_fixture->secrets.key = ApiKeys::demoKey();
        m_fixture->secrets.lock = StoredKey::State::locked;
        RoyaltiesStore &store = m_fixture->makeStore();
        store.start();
        m_fixture->clock.advance(10s);

        QVERIFY(!store.isConnected());
        QVERIFY(store.isWaitingForKeyring());
        QCOMPARE(store.errorMessage(), std::optional<QString>(PlatformTexts::keyringLocked()));
        QCOMPARE(m_fixture->secrets.unlockRequests, 1);
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
        QVERIFY(!store.isAuthenticating());
        QVERIFY(m_fixture->server->requests().isEmpty());

        // The user unlocks the keyring: the key reads and the figures come, without a browser.
        m_fixture->secrets.change(std::nullopt);
        QTRY_VERIFY(store.isConnected());
        QVERIFY(!store.isWaitingForKeyring());
        QCOMPARE(store.apiKey(), ApiKeys::demoKey());
        QVERIFY(m_fixture->waitUntilIdle());
        QVERIFY(!m_fixture->statisticsRequests().isEmpty());
        QCOMPARE(store.errorMessage(), std::nullopt);
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
        // Nothing about the key was written or removed on the way.
        QCOMPARE(m_fixture->secrets.saves, 0);
        QCOMPARE(m_fixture->secrets.deletes, 0);
    }

    void aDismissedPromptIsNotAskedAgainAndTheKeyringIsReadNowAndThen()
    {
        m_fixture->secrets.key = ApiKeys::demoKey();
        m_fixture->secrets.lock = StoredKey::State::locked;
        RoyaltiesStore &store = m_fixture->makeStore();
        store.start();
        const int readsAtStart = m_fixture->secrets.reads;
        // The prompt was dismissed: the keyring says it changed, and is still locked.
        m_fixture->secrets.change(StoredKey::State::locked);
        QCOMPARE(m_fixture->secrets.reads, readsAtStart + 1);
        QCOMPARE(m_fixture->secrets.unlockRequests, 1);
        QCOMPARE(store.errorMessage(), std::optional<QString>(PlatformTexts::keyringLocked()));

        // A slow retry, never a busy loop: one read a minute.
        m_fixture->clock.advance(59s);
        QCOMPARE(m_fixture->secrets.reads, readsAtStart + 1);
        m_fixture->clock.advance(1s);
        QCOMPARE(m_fixture->secrets.reads, readsAtStart + 2);
        m_fixture->clock.advance(10min);
        QCOMPARE(m_fixture->secrets.reads, readsAtStart + 12);
        QCOMPARE(m_fixture->secrets.unlockRequests, 1);
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());

        // Unlocked without a word from the keyring: the next retry finds the key.
        m_fixture->secrets.lock.reset();
        m_fixture->clock.advance(60s);
        QTRY_VERIFY(store.isConnected());
        m_fixture->clock.advance(10min);
        QCOMPARE(m_fixture->secrets.reads, readsAtStart + 13);
    }

    void aSilentKeyringIsNotNoKey()
    {
        m_fixture->secrets.key = ApiKeys::demoKey();
        m_fixture->secrets.lock = StoredKey::State::unreachable;
        RoyaltiesStore &store = m_fixture->makeStore();
        store.start();
        m_fixture->clock.advance(5s);
        QCOMPARE(store.errorMessage(), std::optional<QString>(PlatformTexts::keyringUnreachable()));
        // Nothing to unlock: it is asked again instead.
        QCOMPARE(m_fixture->secrets.unlockRequests, 0);
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
        m_fixture->secrets.lock.reset();
        m_fixture->clock.advance(60s);
        QTRY_VERIFY(store.isConnected());
        QCOMPARE(store.errorMessage(), std::nullopt);
    }

    void theStoreDoesNotWaitForTheKeyring()
    {
        m_fixture->secrets.holdReads = true;
        RoyaltiesStore &store = m_fixture->makeStore();
        QVERIFY(store.isWaitingForKeyring());
        QVERIFY(!store.isConnected());
        store.start();
        m_fixture->clock.advance(5s);
        // No answer, no sign-in.
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());

        // No key after all: the sign-in begins half a second later, as on a first launch.
        m_fixture->secrets.release();
        QTRY_VERIFY(!store.isWaitingForKeyring());
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
        m_fixture->clock.advance(500ms);
        QCOMPARE(m_fixture->desktop.openedURLs.size(), 1);
    }

    void aCallbackWhileTheKeyIsStillReadConnects()
    {
        // A sign-in begun in an earlier run, whose callback arrives while this run's keyring is slow.
        RoyaltiesStore &first = m_fixture->makeStore();
        first.beginBrowserAuthentication();
        const QUrl page = m_fixture->desktop.openedURLs.first();
        m_fixture->destroyStore();
        m_fixture->reopenPreferences();
        m_fixture->desktop.openedURLs.clear();

        m_fixture->secrets.holdReads = true;
        RoyaltiesStore &store = m_fixture->makeStore();
        store.start();
        store.handleAuthenticationCallback(m_fixture->authorizeInBrowser(page));
        QTRY_VERIFY_WITH_TIMEOUT(store.isConnected(), 5000);
        const QString signedInKey = store.apiKey();
        QVERIFY(!signedInKey.isEmpty());

        // The old read answers at last, with no key: the new key stands, and no sign-in begins.
        m_fixture->secrets.key.clear();
        m_fixture->secrets.release();
        QTRY_VERIFY(!store.isWaitingForKeyring());
        m_fixture->clock.advance(5s);
        QVERIFY(store.isConnected());
        QCOMPARE(store.apiKey(), signedInKey);
        QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
    }

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

QTEST_GUILESS_MAIN(TestStoreKeyring)
#include "tst_storekeyring.moc"
