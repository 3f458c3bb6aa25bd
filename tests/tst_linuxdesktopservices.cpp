// The desktop adapter against real parts where they can run unseen: files are opened by the real
// gio and xdg-open, with an application of the test's own as the default for installer packages;
// the file manager is a stand-in that this process puts on a private session bus, which
// tests/desktop/run-with-session-bus.sh starts. Settings programs are never really started.
#include "platform/LinuxDesktopServices.h"
#include "support/Await.h"
#include "support/FakeFileManager.h"
#include "support/ScopedEnvironment.h"
#include "support/TestFiles.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusError>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

QString readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestLinuxDesktopServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void openURLHandsTheURLToTheDesktop();

    void revealSendsTheFileURIToTheFileManager();
    void revealOpensTheFolderWithoutAFileManager();
    void revealOpensTheFolderWhenTheFileManagerFails();
    void revealOpensTheFolderWithoutASessionBus();

    void openFileStartsTheDefaultApplication();
    void openFileOfAMissingFileGivesAReason();
    void openFileWithoutAnApplicationForItsTypeGivesGLibsReason();
    void openFileWhoseApplicationCannotStartGivesTheReason();
    void openFileFallsBackToXdgOpenWithoutGio();
    void openFileThroughXdgOpenGivesItsReason();
    void openFileWithoutAnyOpenerGivesAReason();
    void openFileWithAnOpenerThatCannotStartGivesAReason();
    void openFileWithAnOpenerThatCrashesGivesAReason();
    void openFileMapsXdgOpenExitStatusWithoutMessage();
    void openFileTakesAnOpenerStillRunningAsOpened();

    void autostartSettingsFollowTheDesktop_data();
    void autostartSettingsFollowTheDesktop();
    void autostartSettingsFallBackToTheFolderWhenTheProgramDoesNotStart();

private:
    LinuxDesktopServices::System system();
    bool onPrivateBus() const { return qEnvironmentVariable("INKWARDEN_PRIVATE_SESSION_BUS") == QStringLiteral("1"); }
    // An opener that does what INKWARDEN_TEST_OPENER_MODE says.
    QString fakeOpener() const { return m_scratch->filePath(QStringLiteral("bin/fake-opener")); }

    std::unique_ptr<QTemporaryDir> m_environment;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_openedLog;
    QList<QUrl> m_openedURLs;
    bool m_openURLResult = true;
    QList<QStringList> m_started;
    bool m_startResult = true;
    QStringList m_hiddenPrograms;
    QHash<QString, QString> m_replacedPrograms;
};

void TestLinuxDesktopServices::initTestCase()
{
    // gio and xdg-open find applications through these folders: only the test's own are there, with
    // the system's MIME database so that an installer package is recognised as one.
    m_environment = std::make_unique<QTemporaryDir>();
    QVERIFY(m_environment->isValid());
    const QString root = m_environment->path();
    QVERIFY(QDir().mkpath(root + QStringLiteral("/system-data")));
    QVERIFY(QDir().mkpath(root + QStringLiteral("/system-config")));
    QVERIFY2(QFileInfo(QStringLiteral("/usr/share/mime/packages")).isDir(), "install shared-mime-info");
    QVERIFY(QFile::link(QStringLiteral("/usr/share/mime"), root + QStringLiteral("/system-data/mime")));
    qputenv("XDG_DATA_HOME", QFile::encodeName(root + QStringLiteral("/data")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(root + QStringLiteral("/config")));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(root + QStringLiteral("/system-data")));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(root + QStringLiteral("/system-config")));
    qputenv("GIO_USE_VFS", "local");
    qunsetenv("DISPLAY");
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("XDG_CURRENT_DESKTOP");
    m_openedLog = root + QStringLiteral("/opened.log");
    qputenv("INKWARDEN_TEST_OPENED_LOG", QFile::encodeName(m_openedLog));

    // The default application for installer packages writes down what it was given.
    const QString recorder = root + QStringLiteral("/bin/record-opened");
    QVERIFY(writeFile(recorder, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$INKWARDEN_TEST_OPENED_LOG\"\n",
                      executablePermissions));
    QVERIFY(writeFile(root + QStringLiteral("/data/applications/inkwarden-test-installer.desktop"),
                      "[Desktop Entry]\nType=Application\nName=Test installer\nExec=" + QFile::encodeName(recorder)
                          + " %f\nMimeType=application/vnd.debian.binary-package;\n"));
    // The one for PDF documents asks D-Bus to start it, and the bus has no such service.
    QVERIFY(writeFile(root + QStringLiteral("/data/applications/org.inkwarden.TestViewer.desktop"),
                      "[Desktop Entry]\nType=Application\nName=Test viewer\nDBusActivatable=true\nExec="
                          + QFile::encodeName(recorder) + " %f\nMimeType=application/pdf;\n"));
    QVERIFY(writeFile(root + QStringLiteral("/config/mimeapps.list"),
                      "[Default Applications]\n"
                      "application/vnd.debian.binary-package=inkwarden-test-installer.desktop\n"
                      "application/pdf=org.inkwarden.TestViewer.desktop\n"));
}

void TestLinuxDesktopServices::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    QVERIFY(m_scratch->isValid());
    QFile::remove(m_openedLog);
    m_openedURLs.clear();
    m_openURLResult = true;
    m_started.clear();
    m_startResult = true;
    m_hiddenPrograms.clear();
    m_replacedPrograms.clear();
    QVERIFY(writeFile(fakeOpener(),
                      "#!/bin/sh\n"
                      "case \"$INKWARDEN_TEST_OPENER_MODE\" in\n"
                      "slow) sleep 1; printf '%s\\n' \"$@\" > \"$INKWARDEN_TEST_OPENED_LOG\" ;;\n"
                      "crash) kill -SEGV $$ ;;\n"
                      "exit-*) exit \"${INKWARDEN_TEST_OPENER_MODE#exit-}\" ;;\n"
                      "esac\n",
                      executablePermissions));
}

void TestLinuxDesktopServices::cleanup()
{
    m_scratch.reset();
}

LinuxDesktopServices::System TestLinuxDesktopServices::system()
{
    LinuxDesktopServices::System system;
    system.findProgram = [this](const QString &name) {
        if (m_hiddenPrograms.contains(name)) {
            return QString();
        }
        return m_replacedPrograms.value(name, LinuxDesktopServices::defaultFindProgram(name));
    };
    system.startDetached = [this](const QString &program, const QStringList &arguments) {
        m_started.append(QStringList{program} + arguments);
        return m_startResult;
    };
    system.openURL = [this](const QUrl &url) {
        m_openedURLs.append(url);
        return m_openURLResult;
    };
    system.autostartFolder = m_scratch->filePath(QStringLiteral("config/autostart"));
    return system;
}

void TestLinuxDesktopServices::openURLHandsTheURLToTheDesktop()
{
    LinuxDesktopServices desktop(system());
    const QUrl dashboard(QStringLiteral("http://localhost:8000/dashboard_lite/"));
    QVERIFY(desktop.openURL(dashboard));
    m_openURLResult = false;
    QVERIFY(!desktop.openURL(dashboard));
    QCOMPARE(m_openedURLs, (QList<QUrl>{dashboard, dashboard}));
}

void TestLinuxDesktopServices::revealSendsTheFileURIToTheFileManager()
{
    if (!onPrivateBus()) {
        QSKIP("needs the private session bus of tests/desktop/run-with-session-bus.sh");
    }
    QDBusConnection fileManagerBus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake-file-manager"));
    QVERIFY(fileManagerBus.isConnected());
    FakeFileManager fileManager;
    QVERIFY(fileManagerBus.registerObject(FakeFileManager::path(), &fileManager, QDBusConnection::ExportAllSlots));
    QVERIFY(fileManagerBus.registerService(FakeFileManager::service()));

    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden Updates/Inkwarden-1.2.deb"));
    const QString accented = m_scratch->filePath(QStringLiteral(u"Inkwarden Updates/Tanti\u00E8me #1.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    QVERIFY(writeFile(accented, "!<arch>\n"));
    {
        LinuxDesktopServices desktop(system());
        desktop.revealFile(installer);
        desktop.revealFile(accented);
        QTRY_COMPARE(fileManager.shownItems.size(), 2);
        QTest::qWait(100); // the replies come back: no folder may open on top
    }
    fileManagerBus.unregisterService(FakeFileManager::service());
    fileManagerBus.unregisterObject(FakeFileManager::path());
    QDBusConnection::disconnectFromBus(QStringLiteral("fake-file-manager"));

    const QString folderURI = QStringLiteral("file://") + m_scratch->path() + QStringLiteral("/Inkwarden%20Updates/");
    QCOMPARE(fileManager.shownItems.at(0), QStringList{folderURI + QStringLiteral("Inkwarden-1.2.deb")});
    QCOMPARE(fileManager.shownItems.at(1), QStringList{folderURI + QStringLiteral("Tanti%C3%A8me%20%231.deb")});
    QCOMPARE(fileManager.startupIds, (QStringList{QString(), QString()}));
    QVERIFY(m_openedURLs.isEmpty());
}

void TestLinuxDesktopServices::revealOpensTheFolderWithoutAFileManager()
{
    if (!onPrivateBus()) {
        QSKIP("needs the private session bus of tests/desktop/run-with-session-bus.sh");
    }
    QVERIFY(QDBusConnection::sessionBus().isConnected());
    QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(FakeFileManager::service()).value());
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden Updates/Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));

    LinuxDesktopServices desktop(system());
    desktop.revealFile(installer);
    QTRY_COMPARE(m_openedURLs,
                 QList<QUrl>{QUrl::fromLocalFile(m_scratch->filePath(QStringLiteral("Inkwarden Updates")))});
}

void TestLinuxDesktopServices::revealOpensTheFolderWhenTheFileManagerFails()
{
    if (!onPrivateBus()) {
        QSKIP("needs the private session bus of tests/desktop/run-with-session-bus.sh");
    }
    QDBusConnection fileManagerBus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("refusing-file-manager"));
    FakeFileManager fileManager;
    fileManager.refuse = true;
    QVERIFY(fileManagerBus.registerObject(FakeFileManager::path(), &fileManager, QDBusConnection::ExportAllSlots));
    QVERIFY(fileManagerBus.registerService(FakeFileManager::service()));

    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    LinuxDesktopServices desktop(system());
    desktop.revealFile(installer);
    QTRY_COMPARE(m_openedURLs, QList<QUrl>{QUrl::fromLocalFile(m_scratch->path())});

    fileManagerBus.unregisterService(FakeFileManager::service());
    fileManagerBus.unregisterObject(FakeFileManager::path());
    QDBusConnection::disconnectFromBus(QStringLiteral("refusing-file-manager"));
}

void TestLinuxDesktopServices::revealOpensTheFolderWithoutASessionBus()
{
    LinuxDesktopServices::System noBus = system();
    noBus.bus = QDBusConnection(QStringLiteral("inkwarden-no-such-connection"));
    QVERIFY(!noBus.bus.isConnected());
    LinuxDesktopServices desktop(std::move(noBus));
    desktop.revealFile(m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb")));
    QCOMPARE(m_openedURLs, QList<QUrl>{QUrl::fromLocalFile(m_scratch->path())});
}

void TestLinuxDesktopServices::openFileStartsTheDefaultApplication()
{
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden Updates/Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\ndebian-binary   "));
    LinuxDesktopServices desktop(system());
    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()), QString());
    QTRY_COMPARE(readFile(m_openedLog), installer + u'\n');
}

void TestLinuxDesktopServices::openFileOfAMissingFileGivesAReason()
{
    LinuxDesktopServices desktop(system());
    const std::optional<QString> failure =
        awaitResult(desktop.openFile(m_scratch->filePath(QStringLiteral("Inkwarden-9.9.deb"))));
    QVERIFY(failure);
    QCOMPARE(*failure, QStringLiteral(u"The file \u201CInkwarden-9.9.deb\u201D does not exist."));
    QVERIFY(!QFileInfo::exists(m_openedLog));

    QVERIFY(awaitResult(desktop.openFile(QString())));
}

void TestLinuxDesktopServices::openFileWithoutAnApplicationForItsTypeGivesGLibsReason()
{
    const QString notes = m_scratch->filePath(QStringLiteral("notes.txt"));
    QVERIFY(writeFile(notes, "plain words\n"));
    LinuxDesktopServices desktop(system());
    const std::optional<QString> failure = awaitResult(desktop.openFile(notes));
    QVERIFY(failure);
    // GLib's words, without the "gio: file:///…: " in front of them.
    QVERIFY2(failure->startsWith(QStringLiteral("Failed to find default application for content type")),
             qPrintable(*failure));
    QVERIFY2(failure->endsWith(u'.'), qPrintable(*failure));
    QVERIFY2(!failure->contains(QStringLiteral("file://")), qPrintable(*failure));
}

void TestLinuxDesktopServices::openFileWhoseApplicationCannotStartGivesTheReason()
{
    // The default application for PDF documents is started over D-Bus, and nothing provides it.
    // (Without a session bus GLib runs its Exec line instead.)
    if (!onPrivateBus()) {
        QSKIP("needs the private session bus of tests/desktop/run-with-session-bus.sh");
    }
    const QString document = m_scratch->filePath(QStringLiteral("statement.pdf"));
    QVERIFY(writeFile(document, "%PDF-1.4\n"));
    LinuxDesktopServices desktop(system());
    const std::optional<QString> failure = awaitResult(desktop.openFile(document));
    QVERIFY(failure);
    QVERIFY2(failure->endsWith(u'.'), qPrintable(*failure));
    if (onPrivateBus()) {
        QCOMPARE(*failure, QStringLiteral("The name org.inkwarden.TestViewer was not provided by any .service files."));
    }
    QVERIFY(!QFileInfo::exists(m_openedLog));
}

void TestLinuxDesktopServices::openFileFallsBackToXdgOpenWithoutGio()
{
    // xdg-open hands the file to the opener of the desktop it runs in; as GNOME, that is gio.
    const ScopedEnvironment desktopName("XDG_CURRENT_DESKTOP", QStringLiteral("GNOME"));
    m_hiddenPrograms = {QStringLiteral("gio")};
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\ndebian-binary   "));
    LinuxDesktopServices desktop(system());
    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()), QString());
    QTRY_COMPARE(readFile(m_openedLog), installer + u'\n');
}

void TestLinuxDesktopServices::openFileThroughXdgOpenGivesItsReason()
{
    const ScopedEnvironment desktopName("XDG_CURRENT_DESKTOP", QStringLiteral("GNOME"));
    m_hiddenPrograms = {QStringLiteral("gio")};
    const QString notes = m_scratch->filePath(QStringLiteral("notes.txt"));
    QVERIFY(writeFile(notes, "plain words\n"));
    LinuxDesktopServices desktop(system());
    const std::optional<QString> failure = awaitResult(desktop.openFile(notes));
    QVERIFY(failure);
    QVERIFY2(failure->startsWith(QStringLiteral("Failed to find default application for content type")),
             qPrintable(*failure));
}

void TestLinuxDesktopServices::openFileWithoutAnyOpenerGivesAReason()
{
    m_hiddenPrograms = {QStringLiteral("gio"), QStringLiteral("xdg-open")};
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    LinuxDesktopServices desktop(system());
    const std::optional<QString> failure = awaitResult(desktop.openFile(installer));
    QVERIFY(failure);
    QVERIFY2(failure->contains(QStringLiteral("gio")) && failure->contains(QStringLiteral("xdg-open")),
             qPrintable(*failure));
}

void TestLinuxDesktopServices::openFileWithAnOpenerThatCannotStartGivesAReason()
{
    const QString notRunnable = m_scratch->filePath(QStringLiteral("bin/not-runnable"));
    QVERIFY(writeFile(notRunnable, "#!/bin/sh\n", QFile::ReadOwner | QFile::WriteOwner));
    m_replacedPrograms.insert(QStringLiteral("gio"), notRunnable);
    m_hiddenPrograms = {QStringLiteral("xdg-open")};
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));

    LinuxDesktopServices desktop(system());
    QElapsedTimer clock;
    clock.start();
    const std::optional<QString> failure = awaitResult(desktop.openFile(installer));
    QVERIFY(failure);
    QVERIFY2(failure->startsWith(QStringLiteral("The file opener gio could not be started: ")), qPrintable(*failure));
    QVERIFY2(clock.elapsed() < 4000, "a program that cannot start is known at once, not after the patience");
}

void TestLinuxDesktopServices::openFileWithAnOpenerThatCrashesGivesAReason()
{
    const ScopedEnvironment mode("INKWARDEN_TEST_OPENER_MODE", QStringLiteral("crash"));
    m_replacedPrograms.insert(QStringLiteral("gio"), fakeOpener());
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    LinuxDesktopServices desktop(system());
    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()),
             QStringLiteral("The file opener gio stopped unexpectedly."));
}

void TestLinuxDesktopServices::openFileMapsXdgOpenExitStatusWithoutMessage()
{
    const ScopedEnvironment mode("INKWARDEN_TEST_OPENER_MODE", QStringLiteral("exit-4"));
    m_hiddenPrograms = {QStringLiteral("gio")};
    m_replacedPrograms.insert(QStringLiteral("xdg-open"), fakeOpener());
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    LinuxDesktopServices desktop(system());
    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()),
             QStringLiteral("No application could open the file."));

    const ScopedEnvironment otherMode("INKWARDEN_TEST_OPENER_MODE", QStringLiteral("exit-9"));
    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()),
             QStringLiteral("The file opener xdg-open ended with exit status 9."));
}

void TestLinuxDesktopServices::openFileTakesAnOpenerStillRunningAsOpened()
{
    const ScopedEnvironment mode("INKWARDEN_TEST_OPENER_MODE", QStringLiteral("slow"));
    m_replacedPrograms.insert(QStringLiteral("gio"), fakeOpener());
    const QString installer = m_scratch->filePath(QStringLiteral("Inkwarden-1.2.deb"));
    QVERIFY(writeFile(installer, "!<arch>\n"));
    LinuxDesktopServices::System patient = system();
    patient.openerPatience = std::chrono::milliseconds(100);
    LinuxDesktopServices desktop(std::move(patient));

    QCOMPARE(awaitResult(desktop.openFile(installer)).value_or(QString()), QString());
    QVERIFY(!QFileInfo::exists(m_openedLog));
    // The opener goes on and ends by itself; the adapter lets go of it then.
    QTRY_COMPARE_WITH_TIMEOUT(readFile(m_openedLog), QStringLiteral("open\n") + installer + u'\n', 10000);
    QTest::qWait(200);
}

void TestLinuxDesktopServices::autostartSettingsFollowTheDesktop_data()
{
    QTest::addColumn<QString>("currentDesktop");
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QStringList>("expected"); // empty: the folder opens

    const QString all = QStringLiteral("systemsettings kcmshell6 kcmshell5 gnome-session-properties gnome-tweaks "
                                       "xfce4-session-settings cinnamon-settings mate-session-properties "
                                       "lxqt-config-session");
    const QStringList everything = all.split(u' ');
    const auto program = [](const char *name) -> QString {
        return QStringLiteral("/usr/bin/") + QLatin1StringView(name);
    };

    QTest::newRow("KDE") << QStringLiteral("KDE") << everything
                         << QStringList{program("systemsettings"), QStringLiteral("kcm_autostart")};
    QTest::newRow("KDE, lower case") << QStringLiteral("kde") << everything
                                     << QStringList{program("systemsettings"), QStringLiteral("kcm_autostart")};
    QTest::newRow("KDE with only kcmshell5") << QStringLiteral("KDE") << QStringList{QStringLiteral("kcmshell5")}
                                             << QStringList{program("kcmshell5"), QStringLiteral("kcm_autostart")};
    QTest::newRow("GNOME") << QStringLiteral("GNOME") << everything << QStringList{program("gnome-session-properties")};
    QTest::newRow("Ubuntu's GNOME with Tweaks only")
        << QStringLiteral("ubuntu:GNOME") << QStringList{QStringLiteral("gnome-tweaks")}
        << QStringList{program("gnome-tweaks")};
    QTest::newRow("Budgie on GNOME") << QStringLiteral("Budgie:GNOME") << QStringList{QStringLiteral("gnome-tweaks")}
                                     << QStringList{program("gnome-tweaks")};
    QTest::newRow("GNOME without either")
        << QStringLiteral("GNOME") << QStringList{QStringLiteral("systemsettings")} << QStringList{};
    QTest::newRow("XFCE") << QStringLiteral("XFCE") << everything << QStringList{program("xfce4-session-settings")};
    QTest::newRow("Cinnamon") << QStringLiteral("X-Cinnamon") << everything
                              << QStringList{program("cinnamon-settings"), QStringLiteral("startup")};
    QTest::newRow("MATE") << QStringLiteral("MATE") << everything << QStringList{program("mate-session-properties")};
    QTest::newRow("LXQt") << QStringLiteral("LXQt") << everything << QStringList{program("lxqt-config-session")};
    QTest::newRow("unknown desktop") << QStringLiteral("Hyprland") << everything << QStringList{};
    QTest::newRow("no desktop named") << QString() << everything << QStringList{};
}

void TestLinuxDesktopServices::autostartSettingsFollowTheDesktop()
{
    QFETCH(QString, currentDesktop);
    QFETCH(QStringList, installed);
    QFETCH(QStringList, expected);

    const ScopedEnvironment desktopName("XDG_CURRENT_DESKTOP", currentDesktop);
    LinuxDesktopServices::System system = this->system();
    system.findProgram = [&](const QString &name) -> QString {
        return installed.contains(name) ? QStringLiteral("/usr/bin/") + name : QString();
    };
    const QString folder = system.autostartFolder;
    LinuxDesktopServices desktop(std::move(system));
    desktop.openLoginItemsSettings();

    if (expected.isEmpty()) {
        QVERIFY(m_started.isEmpty());
        QCOMPARE(m_openedURLs, QList<QUrl>{QUrl::fromLocalFile(folder)});
        QVERIFY(QFileInfo(folder).isDir());
    } else {
        QCOMPARE(m_started, QList<QStringList>{expected});
        QVERIFY(m_openedURLs.isEmpty());
    }
}

void TestLinuxDesktopServices::autostartSettingsFallBackToTheFolderWhenTheProgramDoesNotStart()
{
    const ScopedEnvironment desktopName("XDG_CURRENT_DESKTOP", QStringLiteral("KDE"));
    m_startResult = false;
    LinuxDesktopServices::System system = this->system();
    system.findProgram = [](const QString &name) -> QString { return QStringLiteral("/usr/bin/") + name; };
    const QString folder = system.autostartFolder;
    LinuxDesktopServices desktop(std::move(system));
    desktop.openLoginItemsSettings();

    QCOMPARE(m_started.size(), 1);
    QCOMPARE(m_openedURLs, QList<QUrl>{QUrl::fromLocalFile(folder)});
}

QTEST_GUILESS_MAIN(TestLinuxDesktopServices)
#include "tst_linuxdesktopservices.moc"
