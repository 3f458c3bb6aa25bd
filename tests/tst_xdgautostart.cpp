// Open at login through the XDG autostart folder, against a temporary configuration folder. The
// entries the adapter writes are checked by desktop-file-validate and started through GLib's own
// desktop-file parser (`gio launch`), the one GNOME's session uses.
#include "platform/XdgAutostart.h"
#include "support/ScopedEnvironment.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using Status = LoginItemService::Status;

namespace {

// A stand-in for Inkwarden that notes where it was started from.
QByteArray fakeProgram()
{
    return QByteArrayLiteral("#!/bin/sh\nprintf '%s\\n' \"$0\" > \"$INKWARDEN_TEST_STARTED\"\n");
}

// The reason of a failed change, or nothing when it worked: QCOMPARE then prints the reason.
QString failureText(const std::optional<QString> &failure)
{
    return failure.value_or(QString());
}

} // namespace

// Readable statuses in failure messages.
char *toString(LoginItemService::Status status)
{
    switch (status) {
    case Status::notRegistered:
        return qstrdup("notRegistered");
    case Status::enabled:
        return qstrdup("enabled");
    case Status::requiresApproval:
        return qstrdup("requiresApproval");
    case Status::notFound:
        return qstrdup("notFound");
    }
    return qstrdup("?");
}

class TestXdgAutostart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void noEntryIsNotRegistered();
    void registerWritesAnEnabledEntry();
    void registeredEntryPassesDesktopFileValidate();
    void registeredEntryStartsTheProgramThroughGLib();
    void unusualProgramPathIsQuotedForExec();
    void percentSignInProgramPathIsDoubled();
    void unregisterRemovesTheEntry();
    void unregisterWithoutEntryIsNoError();
    void hiddenEntryRequiresApproval();
    void gnomeDisabledEntryRequiresApproval();
    void entryWhoseCommandIsMissingIsNotFound();
    void entryWhoseTryExecIsMissingIsNotFound();
    void entryWithoutApplicationTypeIsNotFound();
    void commandFoundOnPathIsEnabled();
    void registerOverHiddenEntryEnablesIt();
    void registerOverEntryWithMissingCommandEnablesIt();
    void registerFailsWhenTheFolderCannotBeCreated();
    void registerFailsWhenTheEntryPathIsAFolder();
    void registerFailsWhenTheProgramIsMissing();
    void unregisterFailsWhenTheEntryCannotBeRemoved();
    void parserReadsOnlyTheDesktopEntryGroup_data();
    void parserReadsOnlyTheDesktopEntryGroup();
    void defaultFolderHonoursXdgConfigHome();
    void defaultFolderFallsBackToDotConfig();

private:
    QString entryPath() const { return m_config + QStringLiteral("/autostart/com.inkwarden.menubar.desktop"); }
    void writeEntry(const QByteArray &contents) { QVERIFY(writeFile(entryPath(), contents)); }
    QByteArray entryFor(const QString &exec, const QByteArray &extra = {}) const
    {
        return QByteArrayLiteral("[Desktop Entry]\nType=Application\nName=Inkwarden\nExec=") + exec.toUtf8()
               + QByteArrayLiteral("\n") + extra;
    }
    QString validate(const QString &path) const;

    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_config;
    QString m_program;
};

void TestXdgAutostart::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    QVERIFY(m_scratch->isValid());
    m_config = m_scratch->filePath(QStringLiteral("config"));
    m_program = m_scratch->filePath(QStringLiteral("bin/inkwarden"));
    QVERIFY(writeFile(m_program, fakeProgram(), executablePermissions));
}

void TestXdgAutostart::cleanup()
{
    m_scratch.reset();
}

QString TestXdgAutostart::validate(const QString &path) const
{
    QProcess validator;
    validator.setProcessChannelMode(QProcess::MergedChannels);
    validator.start(QStringLiteral("desktop-file-validate"), {path});
    if (!validator.waitForFinished(30000)) {
        return QStringLiteral("desktop-file-validate did not run (install desktop-file-utils): ")
               + validator.errorString();
    }
    const QString output = QString::fromLocal8Bit(validator.readAll()).trimmed();
    if (validator.exitStatus() != QProcess::NormalExit || validator.exitCode() != 0) {
        return QStringLiteral("desktop-file-validate failed: ") + output;
    }
    return output; // warnings and hints count as failures too
}

void TestXdgAutostart::noEntryIsNotRegistered()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(autostart.status(), Status::notRegistered);
    QVERIFY(!QFileInfo::exists(m_config));
}

void TestXdgAutostart::registerWritesAnEnabledEntry()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(autostart.entryPath(), entryPath());
    QVERIFY(QFileInfo(entryPath()).isFile());
    QCOMPARE(autostart.status(), Status::enabled);

    QFile entry(entryPath());
    QVERIFY(entry.open(QIODevice::ReadOnly));
    const QByteArray contents = entry.readAll();
    QVERIFY(contents.contains("\n[Desktop Entry]\n"));
    QVERIFY(contents.contains("\nType=Application\n"));
    QVERIFY(contents.contains("\nName=Inkwarden\n"));
    QVERIFY(contents.contains(QByteArray("\nExec=" + m_program.toUtf8() + "\n")));
    QVERIFY(contents.contains("\nIcon=com.inkwarden.menubar\n"));
    QVERIFY(contents.contains("\nTerminal=false\n"));
    QVERIFY(contents.contains("\nX-GNOME-Autostart-enabled=true\n"));
    QVERIFY(!contents.contains("NoDisplay=true"));
    QVERIFY(!contents.contains("Hidden=true"));
}

void TestXdgAutostart::registeredEntryPassesDesktopFileValidate()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(validate(entryPath()), QString());
}

void TestXdgAutostart::registeredEntryStartsTheProgramThroughGLib()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(failureText(autostart.registerItem()), QString());

    const QString started = m_scratch->filePath(QStringLiteral("started"));
    QProcess launcher;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("INKWARDEN_TEST_STARTED"), started);
    launcher.setProcessEnvironment(environment);
    launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    launcher.start(QStringLiteral("gio"), {QStringLiteral("launch"), entryPath()});
    QVERIFY2(launcher.waitForFinished(30000), "gio launch did not run (install libglib2.0-bin)");
    QCOMPARE(launcher.exitCode(), 0);

    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(started).size() > 0, 10000);
    QFile record(started);
    QVERIFY(record.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(record.readAll()).trimmed(), m_program);
}

void TestXdgAutostart::unusualProgramPathIsQuotedForExec()
{
    // Every character the Desktop Entry rules reserve in Exec, and the field-code '%'.
    const QString folder = m_scratch->filePath(QStringLiteral("Apps & more; $HOME \"q\" 'a' `b` (x) back\\slash"));
    const QString program = folder + QStringLiteral("/inkwarden");
    QVERIFY(writeFile(program, fakeProgram(), executablePermissions));

    XdgAutostart autostart(m_config, program);
    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(autostart.status(), Status::enabled);
    QCOMPARE(validate(entryPath()), QString());

    const QString started = m_scratch->filePath(QStringLiteral("started"));
    QProcess launcher;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("INKWARDEN_TEST_STARTED"), started);
    launcher.setProcessEnvironment(environment);
    launcher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    launcher.start(QStringLiteral("gio"), {QStringLiteral("launch"), entryPath()});
    QVERIFY(launcher.waitForFinished(30000));
    QCOMPARE(launcher.exitCode(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(started).size() > 0, 10000);
    QFile record(started);
    QVERIFY(record.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(record.readAll()).trimmed(), program);

    // The same program becomes missing: the quoted path is what the status looks for.
    QVERIFY(QFile::remove(program));
    QCOMPARE(autostart.status(), Status::notFound);
}

void TestXdgAutostart::percentSignInProgramPathIsDoubled()
{
    // '%' starts a field code, so Exec holds it doubled. (GLib checks the program before undoing the
    // doubling and skips such an entry; KDE's session starts it.)
    const QString program = m_scratch->filePath(QStringLiteral("50% done/inkwarden"));
    QVERIFY(writeFile(program, fakeProgram(), executablePermissions));
    XdgAutostart autostart(m_config, program);
    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(validate(entryPath()), QString());
    QFile entry(entryPath());
    QVERIFY(entry.open(QIODevice::ReadOnly));
    QVERIFY(entry.readAll().contains("/50%% done/inkwarden\"\n"));
    QCOMPARE(autostart.status(), Status::enabled);
}

void TestXdgAutostart::unregisterRemovesTheEntry()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(autostart.status(), Status::enabled);

    QCOMPARE(failureText(autostart.unregisterItem()), QString());
    QVERIFY(!QFileInfo::exists(entryPath()));
    QCOMPARE(autostart.status(), Status::notRegistered);
}

void TestXdgAutostart::unregisterWithoutEntryIsNoError()
{
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(failureText(autostart.unregisterItem()), QString());
    QCOMPARE(autostart.status(), Status::notRegistered);
}

void TestXdgAutostart::hiddenEntryRequiresApproval()
{
    writeEntry(entryFor(m_program, "Hidden=true\n"));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::requiresApproval);
}

void TestXdgAutostart::gnomeDisabledEntryRequiresApproval()
{
    writeEntry(entryFor(m_program, "X-GNOME-Autostart-enabled=false\n"));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::requiresApproval);
}

void TestXdgAutostart::entryWhoseCommandIsMissingIsNotFound()
{
    writeEntry(entryFor(m_scratch->filePath(QStringLiteral("gone/inkwarden")) + QStringLiteral(" %u")));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);

    writeEntry(entryFor(QStringLiteral("inkwarden-no-such-program-on-path")));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);

    // A file that is there but cannot be run is as good as missing.
    const QString notExecutable = m_scratch->filePath(QStringLiteral("plain-file"));
    QVERIFY(writeFile(notExecutable, "data", QFile::ReadOwner | QFile::WriteOwner));
    writeEntry(entryFor(notExecutable));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);

    writeEntry(QByteArrayLiteral("[Desktop Entry]\nType=Application\nName=Inkwarden\n"));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);
}

void TestXdgAutostart::entryWhoseTryExecIsMissingIsNotFound()
{
    writeEntry(entryFor(m_program, "TryExec=" + m_scratch->filePath(QStringLiteral("gone/inkwarden")).toUtf8() + "\n"));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);
}

void TestXdgAutostart::entryWithoutApplicationTypeIsNotFound()
{
    writeEntry("[Desktop Entry]\nType=Link\nName=Inkwarden\nExec=" + m_program.toUtf8() + "\n");
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::notFound);
}

void TestXdgAutostart::commandFoundOnPathIsEnabled()
{
    writeEntry(entryFor(QStringLiteral("sh -c true")));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::enabled);
}

void TestXdgAutostart::registerOverHiddenEntryEnablesIt()
{
    writeEntry(entryFor(m_program, "Hidden=true\nX-GNOME-Autostart-enabled=false\n"));
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(autostart.status(), Status::requiresApproval);

    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(autostart.status(), Status::enabled);
    QFile entry(entryPath());
    QVERIFY(entry.open(QIODevice::ReadOnly));
    QVERIFY(!entry.readAll().contains("Hidden"));
}

void TestXdgAutostart::registerOverEntryWithMissingCommandEnablesIt()
{
    writeEntry(entryFor(QStringLiteral("/opt/old-inkwarden/inkwarden")));
    XdgAutostart autostart(m_config, m_program);
    QCOMPARE(autostart.status(), Status::notFound);

    QCOMPARE(failureText(autostart.registerItem()), QString());
    QCOMPARE(autostart.status(), Status::enabled);
}

void TestXdgAutostart::registerFailsWhenTheFolderCannotBeCreated()
{
    // Tests may run as root, whom permission bits do not stop: a regular file where a folder must
    // go stops everyone.
    const QString blocker = m_scratch->filePath(QStringLiteral("not-a-folder"));
    QVERIFY(writeFile(blocker, "x"));
    XdgAutostart autostart(blocker + QStringLiteral("/config"), m_program);

    const std::optional<QString> failure = autostart.registerItem();
    QVERIFY(failure);
    QVERIFY2(failure->contains(blocker), qPrintable(*failure));
    QVERIFY2(failure->contains(QStringLiteral("not a folder")), qPrintable(*failure));
    QVERIFY2(!failure->endsWith(u'.'), "the message goes in the middle of a sentence");
    QCOMPARE(autostart.status(), Status::notRegistered);

    // Deeper down, the system's own reason.
    XdgAutostart deeper(blocker + QStringLiteral("/a/b"), m_program);
    const std::optional<QString> deeperFailure = deeper.registerItem();
    QVERIFY(deeperFailure);
    QVERIFY2(deeperFailure->contains(blocker), qPrintable(*deeperFailure));
}

void TestXdgAutostart::registerFailsWhenTheEntryPathIsAFolder()
{
    QVERIFY(QDir().mkpath(entryPath()));
    XdgAutostart autostart(m_config, m_program);
    const std::optional<QString> failure = autostart.registerItem();
    QVERIFY(failure);
    QVERIFY2(failure->contains(entryPath()), qPrintable(*failure));
    QCOMPARE(autostart.status(), Status::notFound);
}

void TestXdgAutostart::registerFailsWhenTheProgramIsMissing()
{
    XdgAutostart autostart(m_config, m_scratch->filePath(QStringLiteral("gone/inkwarden")));
    const std::optional<QString> failure = autostart.registerItem();
    QVERIFY(failure);
    QVERIFY2(failure->contains(QStringLiteral("gone/inkwarden")), qPrintable(*failure));
    QVERIFY(!QFileInfo::exists(entryPath()));

    XdgAutostart unknown(m_config, QString());
    QVERIFY(unknown.registerItem());
}

void TestXdgAutostart::unregisterFailsWhenTheEntryCannotBeRemoved()
{
    // A folder with something in it where the entry should be: no one can remove that as a file.
    QVERIFY(writeFile(entryPath() + QStringLiteral("/inside"), "x"));
    XdgAutostart autostart(m_config, m_program);
    const std::optional<QString> failure = autostart.unregisterItem();
    QVERIFY(failure);
    QVERIFY2(failure->contains(entryPath()), qPrintable(*failure));
}

void TestXdgAutostart::parserReadsOnlyTheDesktopEntryGroup_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<Status>("expected");

    const QByteArray exec = "Exec=@PROGRAM@\n";
    const QByteArray head = "[Desktop Entry]\nType=Application\nName=Inkwarden\n";

    QTest::newRow("comments") << "# Hidden=true\n[Desktop Entry]\n#Hidden=true\n  # X-GNOME-Autostart-enabled=false\n"
                                 "Type=Application\n"
                                     + exec
                              << Status::enabled;
    QTest::newRow("localised keys") << head + exec + "Hidden[de]=true\nX-GNOME-Autostart-enabled[fr]=false\n"
                                    << Status::enabled;
    QTest::newRow("other groups") << "[X-Something Else]\nHidden=true\nExec=/nowhere/else\n" + head + exec
                                         + "[Desktop Action quit]\nHidden=true\nX-GNOME-Autostart-enabled=false\n"
                                           "Exec=/nowhere/at-all\n"
                                  << Status::enabled;
    QTest::newRow("exec only in another group")
        << head + "[Desktop Action open]\nName=Open\n" + exec << Status::notFound;
    QTest::newRow("white space around equals") << head + exec + "Hidden = true\n" << Status::requiresApproval;
    QTest::newRow("white space around key and value") << head + exec + "  X-GNOME-Autostart-enabled\t=  false  \n"
                                                      << Status::requiresApproval;
    QTest::newRow("capitalised true") << head + exec + "Hidden=True\n" << Status::requiresApproval;
    QTest::newRow("capitalised false") << head + exec + "X-GNOME-Autostart-enabled=FALSE\n" << Status::requiresApproval;
    QTest::newRow("hidden false") << head + exec + "Hidden=false\nX-GNOME-Autostart-enabled=true\n" << Status::enabled;
    QTest::newRow("not a truth value") << head + exec + "Hidden=maybe\n" << Status::enabled;
    QTest::newRow("last repeated key counts") << head + exec + "Hidden=true\nHidden=false\n" << Status::enabled;
    QTest::newRow("carriage returns") << QByteArray(head + exec + "Hidden=true\n").replace("\n", "\r\n")
                                      << Status::requiresApproval;
    QTest::newRow("arguments and field codes") << head + "Exec=@PROGRAM@ --minimized %u\n" << Status::enabled;
    QTest::newRow("quoted command") << head + "Exec=\"@PROGRAM@\" %U\n" << Status::enabled;
    QTest::newRow("malformed lines") << head + "this line has no equals sign\n=no key\n" + exec << Status::enabled;
    QTest::newRow("no desktop entry group") << "[Something]\nType=Application\n" + exec << Status::notFound;
    QTest::newRow("empty file") << QByteArray() << Status::notFound;
}

void TestXdgAutostart::parserReadsOnlyTheDesktopEntryGroup()
{
    QFETCH(QByteArray, contents);
    QFETCH(Status, expected);
    writeEntry(contents.replace("@PROGRAM@", m_program.toUtf8()));
    QCOMPARE(XdgAutostart(m_config, m_program).status(), expected);
}

void TestXdgAutostart::defaultFolderHonoursXdgConfigHome()
{
    std::optional<QString> failure;
    QString folder;
    QString written;
    {
        const ScopedEnvironment configHome("XDG_CONFIG_HOME", m_config);
        folder = XdgAutostart::defaultAutostartFolder();
        XdgAutostart autostart;
        failure = autostart.registerItem();
        written = autostart.entryPath();
    }
    QCOMPARE(folder, m_config + QStringLiteral("/autostart"));
    QCOMPARE(written, entryPath());
    QCOMPARE(failureText(failure), QString());
    // By default the entry starts the program that registered it: here, this test.
    QCOMPARE(XdgAutostart(m_config, m_program).status(), Status::enabled);
    QFile entry(entryPath());
    QVERIFY(entry.open(QIODevice::ReadOnly));
    QVERIFY(
        entry.readAll().contains(QByteArray("\nTryExec=" + QCoreApplication::applicationFilePath().toUtf8() + "\n")));
}

void TestXdgAutostart::defaultFolderFallsBackToDotConfig()
{
    QString folder;
    {
        const ScopedEnvironment noConfigHome("XDG_CONFIG_HOME", std::nullopt);
        const ScopedEnvironment home("HOME", m_scratch->path());
        folder = XdgAutostart::defaultAutostartFolder();
    }
    QCOMPARE(folder, m_scratch->path() + QStringLiteral("/.config/autostart"));
}

QTEST_GUILESS_MAIN(TestXdgAutostart)
#include "tst_xdgautostart.moc"
