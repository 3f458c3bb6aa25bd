#include "HttpTestClient.h"
#include "store/AppUpdates.h"
#include "store/ConnectionSession.h"
#include "store/SettingsKeys.h"
#include "store/StoreSettings.h"
#include "store/StoreStatus.h"
#include "support/StoreFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace std::chrono_literals;

namespace {

QString installerNotFound()
{
    return QStringLiteral("The downloaded installer could not be found. Download the update again.");
}

// The device of the file system that holds `path`.
dev_t deviceOf(const QString &path)
{
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_dev : dev_t(0);
}

// Points the temporary folder (QDir::tempPath()) at `path` while it lives.
class TemporaryFolderAt
{
public:
    explicit TemporaryFolderAt(const QString &path)
        : m_saved(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", QFile::encodeName(path));
    }
    ~TemporaryFolderAt()
    {
        if (m_saved.isNull()) {
            qunsetenv("TMPDIR");
        } else {
            qputenv("TMPDIR", m_saved);
        }
    }
    TemporaryFolderAt(const TemporaryFolderAt &) = delete;
    TemporaryFolderAt &operator=(const TemporaryFolderAt &) = delete;

private:
    QByteArray m_saved;
};

} // namespace

class TestStoreUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }

    void versionsCompareNumerically_data();
    void versionsCompareNumerically();
    void unknownOwnVersionNeverOffersAnUpdate();
    void promptIsRaisedOncePerVersion();
    void connectingPromptsForANewerVersion();
    void updateActionTitleFollowsTheDownload();

    void checkSetsTheLatestVersionAndPrompts();
    void checkWithoutLatestVersionClearsItAndSaysSo();
    void checkWithoutAccountsIsNoFailure();
    void checkFailureIsReported();
    void checkDoesNothingWhenSignedOutOrAlreadyChecking();

    void downloadSavesTheInstallerAndOpensIt();
    void downloadAgainOpensTheSavedFileWithoutTraffic();
    void downloadLandsFromATemporaryFolderOnAnotherFileSystem();
    void downloadPageAnswering404();
    void downloadCutOffIsReported();
    void downloadWithUnusableAddress();
    void downloadKeepsTheBasePath();
    void downloadWhileDownloadingDoesNothing();
    void downloadWithoutKnownVersionIsSavedAsLatest();
    void installerThatWillNotOpenIsRevealed();
    void openingWithoutInstallerSaysSo();
    void openingAFileThatHasGoneReportsTheReason();
    void revealWithoutInstallerSaysSo();

    void dashboardOpensInTheBrowser();
    void dashboardKeepsBasePathQueryAndFragment();
    void dashboardWithUnusableAddress();

private:
    RoyaltiesStore &connectedStoreAt(const QString &latestVersion);
    QString updatesFolder() const { return m_fixture->cacheFolder() + QStringLiteral("/Inkwarden Updates"); }

    std::unique_ptr<StoreFixture> m_fixture;
};

void TestStoreUpdates::init()
{
    m_fixture = std::make_unique<StoreFixture>();
}

RoyaltiesStore &TestStoreUpdates::connectedStoreAt(const QString &latestVersion)
{
    DevServerConfig config;
    config.latestAppVersion = latestVersion;
    m_fixture->restartServer(config);
    return m_fixture->makeConnectedStore();
}

void TestStoreUpdates::versionsCompareNumerically_data()
{
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("latest");
    QTest::addColumn<bool>("available");
    QTest::newRow("1.9 then 1.10") << QStringLiteral("1.9") << QStringLiteral("1.10") << true;
    QTest::newRow("1.10 then 1.9") << QStringLiteral("1.10") << QStringLiteral("1.9") << false;
    QTest::newRow("equal") << QStringLiteral("2.0") << QStringLiteral("2.0") << false;
    QTest::newRow("longer") << QStringLiteral("1.4") << QStringLiteral("1.4.1") << true;
    QTest::newRow("leading zeros") << QStringLiteral("1.04") << QStringLiteral("1.4") << false;
    QTest::newRow("big numbers") << QStringLiteral("1.99999999999999999998") << QStringLiteral("1.99999999999999999999")
                                 << true;
}

void TestStoreUpdates::versionsCompareNumerically()
{
    QFETCH(QString, own);
    QFETCH(QString, latest);
    m_fixture->appInfo.version = own;
    RoyaltiesStore &store = m_fixture->makeStore();
    store.updates().setLatestAppVersion(latest);
    QTEST(store.isUpdateAvailable(), "available");
}

void TestStoreUpdates::unknownOwnVersionNeverOffersAnUpdate()
{
    m_fixture->appInfo.version.reset();
    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.currentAppVersion(), QStringLiteral("Unknown"));
    store.updates().setLatestAppVersion(QStringLiteral("99.0"));
    QVERIFY(!store.isUpdateAvailable());
    store.presentUpdatePromptIfNeeded();
    QVERIFY(!store.isShowingUpdatePrompt());
}

void TestStoreUpdates::promptIsRaisedOncePerVersion()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.presentUpdatePromptIfNeeded();
    QVERIFY(store.isShowingUpdatePrompt());
    store.updates().setIsShowingUpdatePrompt(false);
    store.presentUpdatePromptIfNeeded();
    QVERIFY(!store.isShowingUpdatePrompt());
    store.updates().setLatestAppVersion(QStringLiteral("1.6.0"));
    store.presentUpdatePromptIfNeeded();
    QVERIFY(store.isShowingUpdatePrompt());
    QCOMPARE(store.updates().promptedUpdateVersion(), std::optional<QString>(QStringLiteral("1.6.0")));
}

void TestStoreUpdates::connectingPromptsForANewerVersion()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(store.latestAppVersion(), std::optional<QString>(QStringLiteral("1.5.0")));
    QVERIFY(store.isShowingUpdatePrompt());
    store.updates().setIsShowingUpdatePrompt(false);
    m_fixture->clock.advance(10s);
    store.session().setAccounts({});
    store.loadAccounts();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!store.isShowingUpdatePrompt());
}

void TestStoreUpdates::updateActionTitleFollowsTheDownload()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    QCOMPARE(store.updateActionTitle(), QStringLiteral("Update"));
    store.updates().setIsDownloadingUpdate(true);
    QCOMPARE(store.updateActionTitle(), QStringLiteral(u"Downloading\u2026"));
    store.updates().setIsDownloadingUpdate(false);
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(QStringLiteral("/tmp/Inkwarden-1.5.0.deb")));
    QCOMPARE(store.updateActionTitle(), QStringLiteral("Open installer"));
}

void TestStoreUpdates::checkSetsTheLatestVersionAndPrompts()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.10.0"));
    store.status().setErrorMessage(QStringLiteral("old"));
    store.checkForUpdates();
    QVERIFY(store.isCheckingForUpdates());
    QVERIFY(!store.errorMessage().has_value());
    QTRY_VERIFY(!store.isCheckingForUpdates());
    QCOMPARE(store.latestAppVersion(), std::optional<QString>(QStringLiteral("1.10.0")));
    QVERIFY(store.isShowingUpdatePrompt());
    QVERIFY(!store.errorMessage().has_value());
}

void TestStoreUpdates::checkWithoutLatestVersionClearsItAndSaysSo()
{
    RoyaltiesStore &store = connectedStoreAt(QString());
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.checkForUpdates();
    QTRY_VERIFY(!store.isCheckingForUpdates());
    QVERIFY(!store.latestAppVersion().has_value());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("Inkwarden could not determine the latest available version.")));
}

void TestStoreUpdates::checkWithoutAccountsIsNoFailure()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.session().setApiKey(ApiKeys::noAccountsKey());
    store.checkForUpdates();
    QTRY_VERIFY(!store.isCheckingForUpdates());
    QVERIFY(!store.errorMessage().has_value());
    QCOMPARE(store.latestAppVersion(), std::optional<QString>(QStringLiteral("1.5.0")));
}

void TestStoreUpdates::checkFailureIsReported()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    Fault fault;
    fault.status = 503;
    m_fixture->server->faults().set(Route::Accounts, fault);
    store.checkForUpdates();
    QTRY_VERIFY(!store.isCheckingForUpdates());
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral("Update check failed: Injected failure: HTTP 503.")));
}

void TestStoreUpdates::checkDoesNothingWhenSignedOutOrAlreadyChecking()
{
    RoyaltiesStore &signedOut = m_fixture->makeStore();
    signedOut.checkForUpdates();
    QVERIFY(!signedOut.isCheckingForUpdates());
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.checkForUpdates();
    store.checkForUpdates();
    QTRY_VERIFY(!store.isCheckingForUpdates());
    QCOMPARE(m_fixture->server->requests().size(), 1);
}

void TestStoreUpdates::downloadSavesTheInstallerAndOpensIt()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.checkForUpdates();
    QTRY_VERIFY(!store.isCheckingForUpdates());
    store.downloadLatestUpdate();
    QVERIFY(store.isDownloadingUpdate());
    QCOMPARE(store.updateStatusMessage(),
             std::optional<QString>(QStringLiteral(u"Downloading update\u2026 You can keep using Inkwarden.")));
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QTRY_COMPARE(store.updateStatusMessage(), std::optional<QString>(QStringLiteral(
                                                  "Installer opened. If it is not visible, choose Show in Files.")));

    const QString expected = updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb");
    QCOMPARE(store.downloadedUpdateURL(), std::optional<QUrl>(QUrl::fromLocalFile(expected)));
    QCOMPARE(m_fixture->desktop.openedFiles, QStringList{expected});
    QFile saved(expected);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const HttpResult direct = HttpTestClient().get(m_fixture->server->url(QStringLiteral("/download_for_linux/")));
    QCOMPARE(saved.readAll(), direct.body);
    QVERIFY(!store.errorMessage().has_value());
    // The public page gets no key.
    const QList<RecordedRequest> requests = m_fixture->server->requests();
    const auto download = std::find_if(requests.cbegin(), requests.cend(), [](const RecordedRequest &r) {
        return r.request.path == u"/download_for_linux/";
    });
    QVERIFY(download != requests.cend());
    QVERIFY(download->header("Authorization").isEmpty());
}

void TestStoreUpdates::downloadAgainOpensTheSavedFileWithoutTraffic()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    QVERIFY(QDir().mkpath(updatesFolder()));
    QFile earlier(updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb"));
    QVERIFY(earlier.open(QIODevice::WriteOnly));
    earlier.write("saved before");
    earlier.close();
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    QCOMPARE(store.existingDownloadedUpdateURL(), std::optional<QUrl>(QUrl::fromLocalFile(earlier.fileName())));

    store.downloadLatestUpdate();
    QVERIFY(!store.isDownloadingUpdate());
    QTRY_COMPARE(m_fixture->desktop.openedFiles, QStringList{earlier.fileName()});
    QVERIFY(m_fixture->server->requests().isEmpty());
    QCOMPARE(store.updateActionTitle(), QStringLiteral("Open installer"));
}

void TestStoreUpdates::downloadLandsFromATemporaryFolderOnAnotherFileSystem()
{
    // /dev/shm is a tmpfs on every Linux system, as /tmp is on many; the updates folder is on disk.
    QTemporaryDir elsewhere(QStringLiteral("/dev/shm/inkwarden-test-XXXXXX"));
    QVERIFY(elsewhere.isValid());
    QVERIFY(QDir().mkpath(updatesFolder()));
    QVERIFY2(deviceOf(elsewhere.path()) != deviceOf(updatesFolder()),
             "the temporary folder and the updates folder must be on two file systems");
    const TemporaryFolderAt temporary(elsewhere.path());
    QCOMPARE(QDir::tempPath(), elsewhere.path());

    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QCOMPARE(store.errorMessage(), std::nullopt);

    const QString expected = updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb");
    QCOMPARE(store.downloadedUpdateURL(), std::optional<QUrl>(QUrl::fromLocalFile(expected)));
    QTRY_COMPARE(m_fixture->desktop.openedFiles, QStringList{expected});
    QFile saved(expected);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const HttpResult direct = HttpTestClient().get(m_fixture->server->url(QStringLiteral("/download_for_linux/")));
    QCOMPARE(saved.readAll(), direct.body);
    QVERIFY(saved.permissions().testFlag(QFileDevice::ReadOther));
    // Nothing left behind on either side.
    QCOMPARE(QDir(updatesFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("Inkwarden-1.5.0.deb")});
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

void TestStoreUpdates::downloadPageAnswering404()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    Fault missing;
    missing.status = 404;
    m_fixture->server->faults().set(Route::Download, missing);
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral(
                                       "Update failed: The latest Inkwarden update could not be downloaded.")));
    QVERIFY(!store.updateStatusMessage().has_value());
    QVERIFY(!store.downloadedUpdateURL().has_value());
    QVERIFY(!QFile::exists(updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb")));
    QVERIFY(m_fixture->desktop.openedFiles.isEmpty());
}

void TestStoreUpdates::downloadCutOffIsReported()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    Fault reset;
    reset.reset = true;
    m_fixture->server->faults().set(Route::Download, reset);
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QVERIFY(store.errorMessage().has_value());
    QVERIFY(store.errorMessage()->startsWith(QStringLiteral("Update failed: ")));
    QVERIFY(!QFile::exists(updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb")));
    // No partial file under another name either.
    QCOMPARE(QDir(updatesFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

void TestStoreUpdates::downloadWithUnusableAddress()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral("not a server"));
    store.downloadLatestUpdate();
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral(
                                       "Enter a valid server URL in Settings before downloading an update.")));
    QVERIFY(!store.isDownloadingUpdate());
}

void TestStoreUpdates::downloadKeepsTheBasePath()
{
    DevServerConfig config;
    config.basePath = QStringLiteral("/inkwarden");
    config.latestAppVersion = QStringLiteral("1.5.0");
    m_fixture->restartServer(config);
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(m_fixture->server->baseUrl().toString() + QStringLiteral("/?utm=1"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QVERIFY(!store.errorMessage().has_value());
    QCOMPARE(m_fixture->server->requests().first().request.path, QStringLiteral("/inkwarden/download_for_linux/"));
    QVERIFY(m_fixture->server->requests().first().request.query.isEmpty());
}

void TestStoreUpdates::downloadWhileDownloadingDoesNothing()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    store.downloadLatestUpdate();
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    QTRY_COMPARE(m_fixture->desktop.openedFiles.size(), 1);
    QCOMPARE(m_fixture->server->requests().size(), 1);
}

void TestStoreUpdates::downloadWithoutKnownVersionIsSavedAsLatest()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.downloadLatestUpdate();
    QTRY_VERIFY(!store.isDownloadingUpdate());
    const QString saved = updatesFolder() + QStringLiteral("/Inkwarden-latest.deb");
    QVERIFY(QFile::exists(saved));
    // A file saved under "latest" is never found again by version.
    store.updates().setDownloadedUpdateURL(std::nullopt);
    QVERIFY(!store.existingDownloadedUpdateURL().has_value());
}

void TestStoreUpdates::installerThatWillNotOpenIsRevealed()
{
    RoyaltiesStore &store = connectedStoreAt(QStringLiteral("1.5.0"));
    store.updates().setLatestAppVersion(QStringLiteral("1.5.0"));
    m_fixture->desktop.openFileFailure = QStringLiteral("No application is registered for Debian packages");
    store.downloadLatestUpdate();
    QTRY_VERIFY(!m_fixture->desktop.revealedFiles.isEmpty());
    const QString saved = updatesFolder() + QStringLiteral("/Inkwarden-1.5.0.deb");
    QCOMPARE(m_fixture->desktop.revealedFiles, QStringList{saved});
    QCOMPARE(store.errorMessage(),
             std::optional<QString>(QStringLiteral(
                 "The system did not open the installer: No application is registered for Debian packages")));
    QCOMPARE(store.updateStatusMessage(),
             std::optional<QString>(
                 QStringLiteral("The update is downloaded. Open it from your file manager to continue.")));
    QCOMPARE(store.downloadedUpdateURL(), std::optional<QUrl>(QUrl::fromLocalFile(saved)));
    QVERIFY(QFile::exists(saved));
}

void TestStoreUpdates::openingWithoutInstallerSaysSo()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.updates().setUpdateStatusMessage(QStringLiteral("old"));
    store.openDownloadedUpdate();
    QCOMPARE(store.errorMessage(), std::optional<QString>(installerNotFound()));
    QVERIFY(!store.updateStatusMessage().has_value());
    QVERIFY(m_fixture->desktop.openedFiles.isEmpty());
}

void TestStoreUpdates::openingAFileThatHasGoneReportsTheReason()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    // The remembered file is handed to the desktop as it is; what it says about it is shown.
    store.updates().setDownloadedUpdateURL(QUrl::fromLocalFile(QStringLiteral("/nonexistent/Inkwarden-1.5.0.deb")));
    m_fixture->desktop.openFileFailure = QStringLiteral("The file does not exist");
    store.openDownloadedUpdate();
    QTRY_COMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral(
                                           "The system did not open the installer: The file does not exist")));
}

void TestStoreUpdates::revealWithoutInstallerSaysSo()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.revealDownloadedUpdate();
    QCOMPARE(store.errorMessage(), std::optional<QString>(installerNotFound()));
    QVERIFY(m_fixture->desktop.revealedFiles.isEmpty());
}

void TestStoreUpdates::dashboardOpensInTheBrowser()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral(" http://localhost:8000 "));
    store.openDashboard();
    QCOMPARE(m_fixture->desktop.openedURLs, QList<QUrl>{QUrl(QStringLiteral("http://localhost:8000/dashboard_lite/"))});
}

void TestStoreUpdates::dashboardKeepsBasePathQueryAndFragment()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral("https://royalties.example/app/?team=7#top"));
    store.openDashboard();
    QCOMPARE(m_fixture->desktop.openedURLs,
             QList<QUrl>{QUrl(QStringLiteral("https://royalties.example/app/dashboard_lite/?team=7#top"))});
    QVERIFY(!m_fixture->desktop.openedURLs.first().toString().contains(QStringLiteral("key")));
}

void TestStoreUpdates::dashboardWithUnusableAddress()
{
    RoyaltiesStore &store = m_fixture->makeStore();
    store.settings().setServerURL(QStringLiteral("localhost"));
    store.openDashboard();
    QCOMPARE(store.errorMessage(), std::optional<QString>(QStringLiteral(
                                       "Enter a valid server URL in Settings before opening the dashboard.")));
    QVERIFY(m_fixture->desktop.openedURLs.isEmpty());
}

QTEST_GUILESS_MAIN(TestStoreUpdates)
#include "tst_storeupdates.moc"
