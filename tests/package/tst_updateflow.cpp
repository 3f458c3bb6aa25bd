// The update flow end to end, with real parts up to the last step: the development server program
// announces a version newer than this build's and serves the freshly built Inkwarden package at
// "/download_for_linux/"; the store, on the real network stack, learns the version, prompts once,
// downloads into "Inkwarden Updates" in the user's cache folder and opens the file through the real
// desktop adapter, whose real gio asks the MIME database and mimeapps.list for the default
// application of Debian packages. Only that application is the test's own (standing in for the
// software installer, it writes down what it was given), and so is the file manager that "Show in
// Files" asks on the private session bus of tests/desktop/run-with-session-bus.sh.
#include "ApiKeys.h"
#include "platform/LinuxDesktopServices.h"
#include "store/AppInfo.h"
#include "store/AppUpdates.h"
#include "store/PlatformTexts.h"
#include "store/Preferences.h"
#include "store/RoyaltiesStore.h"
#include "support/FakeFileManager.h"
#include "support/TestDoubles.h"
#include "support/TestFiles.h"
#include "support/VirtualClock.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The next version after `version`: its last number one higher ("0.1.0" gives "0.1.1").
QString nextVersion(const QString &version)
{
    QStringList parts = version.split(u'.');
    parts.last() = QString::number(parts.last().toLongLong() + 1);
    return parts.join(u'.');
}

} // namespace

class TestUpdateFlow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void updateIsPromptedOnceDownloadedOpenedAndRevealed();

private:
    // GETs the development server's log of the requests it answered, by path.
    QStringList requestedPaths();

    QTemporaryDir m_scratch;
    QString m_packageFile;
    QString m_newerVersion;
    QString m_openedLog;
    QProcess m_server;
    QUrl m_serverURL;
    QNetworkAccessManager m_adminNetwork;
    std::unique_ptr<FakeFileManager> m_fileManager;
};

void TestUpdateFlow::initTestCase()
{
    if (qEnvironmentVariable("INKWARDEN_PRIVATE_SESSION_BUS") != QStringLiteral("1")) {
        QFAIL("run this test through tests/desktop/run-with-session-bus.sh: it owns names on the session bus");
    }
    QVERIFY(m_scratch.isValid());
    m_packageFile = QStringLiteral(INKWARDEN_PACKAGE_FILE);
    QVERIFY2(QFileInfo(m_packageFile).isFile(), "the package is built by the package_build test first");
    QVERIFY(readAll(m_packageFile).startsWith("!<arch>\ndebian-binary"));

    const std::optional<QString> ownVersion = AppInfo::compiledIn().version;
    QVERIFY(ownVersion);
    m_newerVersion = nextVersion(*ownVersion);

    // The desktop as gio sees it: the system's MIME database, so that a .deb is recognised as a
    // Debian package, and the test's installer as the default application for those.
    const QString root = m_scratch.path();
    QVERIFY(QDir().mkpath(root + QStringLiteral("/system-data")));
    QVERIFY(QDir().mkpath(root + QStringLiteral("/system-config")));
    QVERIFY2(QFileInfo(QStringLiteral("/usr/share/mime/packages")).isDir(), "install shared-mime-info");
    QVERIFY(QFile::link(QStringLiteral("/usr/share/mime"), root + QStringLiteral("/system-data/mime")));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(root + QStringLiteral("/system-data")));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(root + QStringLiteral("/system-config")));
    qputenv("GIO_USE_VFS", "local");
    m_openedLog = root + QStringLiteral("/installer-opened.log");
    qputenv("INKWARDEN_TEST_OPENED_LOG", QFile::encodeName(m_openedLog));
    const QString installer = root + QStringLiteral("/bin/record-installer");
    QVERIFY(writeFile(installer, "#!/bin/sh\nprintf '%s\\n' \"$@\" >> \"$INKWARDEN_TEST_OPENED_LOG\"\n",
                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString configHome = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QVERIFY(dataHome.startsWith(QDir::tempPath())); // the scratch folders of the wrapper, never a real home
    QVERIFY(writeFile(dataHome + QStringLiteral("/applications/inkwarden-test-software-installer.desktop"),
                      "[Desktop Entry]\nType=Application\nName=Software Installer\nExec=" + QFile::encodeName(installer)
                          + " %f\nMimeType=application/vnd.debian.binary-package;\n"));
    QVERIFY(writeFile(configHome + QStringLiteral("/mimeapps.list"),
                      "[Default Applications]\n"
                      "application/vnd.debian.binary-package=inkwarden-test-software-installer.desktop\n"));

    // On a connection of its own, as a file manager is a process of its own.
    m_fileManager = std::make_unique<FakeFileManager>();
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("file-manager"));
    QVERIFY(bus.isConnected());
    QVERIFY(bus.registerObject(FakeFileManager::path(), m_fileManager.get(), QDBusConnection::ExportAllSlots));
    QVERIFY(bus.registerService(FakeFileManager::service()));

    // The development server program, as a developer starts it to try an update.
    m_server.setProgram(QStringLiteral(INKWARDEN_DEVSERVER_PROGRAM));
    m_server.setArguments({QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--latest-app-version"),
                           m_newerVersion, QStringLiteral("--installer-file"), m_packageFile});
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start();
    QVERIFY2(m_server.waitForStarted(), qPrintable(m_server.errorString()));
    const QRegularExpression listening(QStringLiteral("listening on (http://\\S+)"));
    QByteArray banner;
    QTRY_VERIFY_WITH_TIMEOUT((banner += m_server.readAll(), listening.match(QString::fromUtf8(banner)).hasMatch()),
                             20000);
    m_serverURL = QUrl(listening.match(QString::fromUtf8(banner)).captured(1));
    QVERIFY(m_serverURL.isValid());
}

void TestUpdateFlow::cleanupTestCase()
{
    if (m_server.state() != QProcess::NotRunning) {
        m_server.terminate();
        if (!m_server.waitForFinished(10000)) {
            m_server.kill();
            m_server.waitForFinished();
        }
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("file-manager"));
}

QStringList TestUpdateFlow::requestedPaths()
{
    QUrl url = m_serverURL;
    url.setPath(QStringLiteral("/__admin/requests"));
    std::unique_ptr<QNetworkReply> reply(m_adminNetwork.get(QNetworkRequest(url)));
    if (!QTest::qWaitFor([&] { return reply->isFinished(); }, 10000) || reply->error() != QNetworkReply::NoError) {
        return {QStringLiteral("(the request log could not be read)")};
    }
    QStringList paths;
    for (const QJsonValue &entry : QJsonDocument::fromJson(reply->readAll()).array()) {
        paths.append(entry.toObject().value(QStringLiteral("path")).toString());
    }
    return paths;
}

void TestUpdateFlow::updateIsPromptedOnceDownloadedOpenedAndRevealed()
{
    QTemporaryDir settingsFolder;
    Preferences preferences(settingsFolder.filePath(QStringLiteral("inkwarden.conf")));
    preferences.setString(QStringLiteral("serverURL"), m_serverURL.toString());
    MemorySecretStore keyring;
    keyring.key = ApiKeys::demoKey();
    VirtualClock clock;
    FakeReachability reachability;
    FakeLoginItems loginItems;
    RecordedNotifications notifications;
    LinuxDesktopServices desktop;
    QNetworkAccessManager network;
    RoyaltiesStore store(StoreEnvironment{clock, keyring, preferences, reachability, desktop, loginItems, notifications,
                                          network, AppInfo::compiledIn()});
    QVERIFY(store.isConnected());
    QVERIFY(!store.isUpdateAvailable());

    // The account list announces the newer version: one prompt.
    store.loadAccounts();
    QTRY_VERIFY_WITH_TIMEOUT(!store.isLoadingAccounts(), 20000);
    QCOMPARE(store.latestAppVersion(), std::optional<QString>(m_newerVersion));
    QVERIFY(store.isUpdateAvailable());
    QVERIFY(store.isShowingUpdatePrompt());
    QCOMPARE(store.updateActionTitle(), QStringLiteral("Update"));

    // Dismissed, it stays dismissed for this version: neither a check nor showing the popover again
    // raises it.
    store.updates().setIsShowingUpdatePrompt(false);
    store.checkForUpdates();
    QTRY_VERIFY_WITH_TIMEOUT(!store.isCheckingForUpdates(), 20000);
    QCOMPARE(store.errorMessage(), std::optional<QString>());
    store.presentUpdatePromptIfNeeded();
    QVERIFY(!store.isShowingUpdatePrompt());

    // The download: into "Inkwarden Updates" in the cache folder, the same bytes as the package.
    const QString updates =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/Inkwarden Updates");
    const QString downloaded = updates + QStringLiteral("/Inkwarden-") + m_newerVersion + QStringLiteral(".deb");
    QVERIFY(!QFileInfo::exists(downloaded));
    store.downloadLatestUpdate();
    QVERIFY(store.isDownloadingUpdate());
    QCOMPARE(store.updateActionTitle(), QStringLiteral(u"Downloading\u2026"));
    QTRY_VERIFY_WITH_TIMEOUT(!store.isDownloadingUpdate(), 30000);
    QCOMPARE(store.errorMessage(), std::optional<QString>());
    QCOMPARE(store.downloadedUpdateURL(), std::optional<QUrl>(QUrl::fromLocalFile(downloaded)));
    QCOMPARE(store.updateActionTitle(), QStringLiteral("Open installer"));
    const QByteArray package = readAll(m_packageFile);
    QCOMPARE(QFileInfo(downloaded).size(), package.size());
    QVERIFY2(readAll(downloaded) == package, "the download differs from the package the server was given");
    QVERIFY(QFileInfo(downloaded).permissions().testFlag(QFile::ReadOther));

    // Opened with the desktop's application for Debian packages, which got the downloaded file.
    QTRY_COMPARE_WITH_TIMEOUT(store.updateStatusMessage(), std::optional<QString>(PlatformTexts::installerOpened()),
                              20000);
    QCOMPARE(store.errorMessage(), std::optional<QString>());
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromUtf8(readAll(m_openedLog)), downloaded + u'\n', 10000);

    // "Show in Files" shows that file selected.
    store.revealDownloadedUpdate();
    QTRY_COMPARE_WITH_TIMEOUT(m_fileManager->shownItems.size(), 1, 10000);
    QCOMPARE(m_fileManager->shownItems.first(),
             QStringList{QString::fromUtf8(QUrl::fromLocalFile(downloaded).toEncoded())});

    // The server was asked for the package once; asking again opens the saved file without traffic.
    QCOMPARE(requestedPaths().count(QStringLiteral("/download_for_linux/")), 1);
    QFile::remove(m_openedLog);
    store.updates().setDownloadedUpdateURL(std::nullopt);
    store.downloadLatestUpdate();
    QVERIFY(!store.isDownloadingUpdate());
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromUtf8(readAll(m_openedLog)), downloaded + u'\n', 20000);
    QCOMPARE(requestedPaths().count(QStringLiteral("/download_for_linux/")), 1);
}

QTEST_GUILESS_MAIN(TestUpdateFlow)
#include "tst_updateflow.moc"
