#include "LinuxDesktopServices.h"

#include "XdgAutostart.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <qcoro/qcoroprocess.h>
#include <qcoro/qcorosignal.h>

#include <memory>

namespace {

// A sentence for the end of "The system did not open the installer: …".
QString asSentence(QString text)
{
    text = text.trimmed();
    if (text.isEmpty()) {
        return text;
    }
    text[0] = text.at(0).toUpper();
    if (!text.endsWith(u'.') && !text.endsWith(u'!') && !text.endsWith(u'?')) {
        text += u'.';
    }
    return text;
}

// The programs that hand a file to the application the user chose for its type. gio comes first:
// it reports GLib's own reason ("Failed to find default application for content type …"), where
// xdg-open mostly passes on whatever it ran, or only an exit status.
struct Opener {
    QString name;
    QStringList arguments;
};

// The last line an opener wrote to its error output, without the "gio: file:///…: " that names the
// program and the file: the user knows both. xdg-open passes on the words of the opener it ran.
QString openerMessage(const QByteArray &errorOutput)
{
    static const QStringList openerNames = {
        QStringLiteral("gio"),        QStringLiteral("xdg-open"),   QStringLiteral("xdg-mime"),
        QStringLiteral("kde-open"),   QStringLiteral("kde-open5"),  QStringLiteral("kde-open6"),
        QStringLiteral("kioclient"),  QStringLiteral("kioclient5"), QStringLiteral("exo-open"),
        QStringLiteral("gvfs-open"),  QStringLiteral("gnome-open"), QStringLiteral("mimeopen"),
        QStringLiteral("run-mailcap")};
    const QStringList lines = QString::fromLocal8Bit(errorOutput).split(u'\n', Qt::SkipEmptyParts);
    QString message;
    for (auto line = lines.crbegin(); line != lines.crend() && message.isEmpty(); ++line) {
        message = line->trimmed();
    }
    for (;;) {
        const qsizetype separator = message.indexOf(QStringLiteral(": "));
        if (separator <= 0) {
            break;
        }
        const QString prefix = message.left(separator);
        const QString programName = prefix.mid(prefix.lastIndexOf(u'/') + 1);
        const bool namesProgramOrFile =
            !prefix.contains(u' ')
            && (openerNames.contains(programName) || prefix.contains(QStringLiteral("://")) || prefix.startsWith(u'/'));
        if (!namesProgramOrFile) {
            break;
        }
        message = message.mid(separator + 2).trimmed();
    }
    return message;
}

QString describeOpenerFailure(const QString &name, int exitCode, const QByteArray &errorOutput)
{
    const QString message = openerMessage(errorOutput);
    if (!message.isEmpty()) {
        return asSentence(message);
    }
    if (name == QStringLiteral("xdg-open")) {
        // xdg-open's documented exit statuses.
        switch (exitCode) {
        case 2:
            //: Why a downloaded update's installer did not open (follows "The system did not open the installer: ").
            return QCoreApplication::translate("LinuxDesktopServices", "The file could not be found.");
        case 3:
            //: Why a downloaded update's installer did not open (follows "The system did not open the installer: ").
            return QCoreApplication::translate("LinuxDesktopServices",
                                               "A program needed to open the file is not installed.");
        case 4:
            //: Why a downloaded update's installer did not open (follows "The system did not open the installer: ").
            return QCoreApplication::translate("LinuxDesktopServices", "No application could open the file.");
        default:
            break;
        }
    }
    //: Why a downloaded update's installer did not open: %1 is a program's name ("xdg-open"), %2 the number
    //: it ended with.
    return QCoreApplication::translate("LinuxDesktopServices", "The file opener %1 ended with exit status %2.")
        .arg(name, QString::number(exitCode));
}

// Tells once a process is past starting, whether it runs or failed to. QProcess says so in a private
// signal, whose tag argument QCoro would bind to a null reference.
class StartWatcher : public QObject
{
    Q_OBJECT

public:
    explicit StartWatcher(QProcess *process)
    {
        connect(process, &QProcess::stateChanged, this, [this](QProcess::ProcessState state) {
            if (state != QProcess::Starting) {
                Q_EMIT settled();
            }
        });
    }

Q_SIGNALS:
    void settled();
};

struct AutostartSettings {
    QStringList desktops;        // as XDG_CURRENT_DESKTOP names them, compared without regard to case
    QList<QStringList> commands; // program and arguments, the preferred first
};

// Where each desktop keeps the list of programs that start at login.
const QList<AutostartSettings> &autostartSettingsTable()
{
    static const QList<AutostartSettings> table = {
        {{QStringLiteral("KDE")},
         {{QStringLiteral("systemsettings"), QStringLiteral("kcm_autostart")},
          {QStringLiteral("kcmshell6"), QStringLiteral("kcm_autostart")},
          {QStringLiteral("kcmshell5"), QStringLiteral("kcm_autostart")}}},
        // GNOME's own Settings has no such page: some distributions still ship the session
        // properties dialog, and Tweaks has a page of startup applications.
        {{QStringLiteral("GNOME"), QStringLiteral("Unity")},
         {{QStringLiteral("gnome-session-properties")}, {QStringLiteral("gnome-tweaks")}}},
        {{QStringLiteral("XFCE")}, {{QStringLiteral("xfce4-session-settings")}}},
        {{QStringLiteral("X-Cinnamon"), QStringLiteral("Cinnamon")},
         {{QStringLiteral("cinnamon-settings"), QStringLiteral("startup")}}},
        {{QStringLiteral("MATE")}, {{QStringLiteral("mate-session-properties")}}},
        {{QStringLiteral("LXQt")}, {{QStringLiteral("lxqt-config-session")}}},
    };
    return table;
}

} // namespace

LinuxDesktopServices::LinuxDesktopServices()
    : LinuxDesktopServices(System{})
{}

LinuxDesktopServices::LinuxDesktopServices(System system)
    : m_system(std::move(system))
{}

LinuxDesktopServices::~LinuxDesktopServices() = default;

QString LinuxDesktopServices::defaultFindProgram(const QString &name)
{
    return QStandardPaths::findExecutable(name);
}

bool LinuxDesktopServices::defaultStartDetached(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setWorkingDirectory(QDir::homePath());
    process.setStandardInputFile(QProcess::nullDevice());
    return process.startDetached();
}

bool LinuxDesktopServices::defaultOpenURL(const QUrl &url)
{
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        return QDesktopServices::openUrl(url);
    }
    // Without a GUI application Qt has no desktop to ask; xdg-open is the desktop's own opener.
    const QString opener = defaultFindProgram(QStringLiteral("xdg-open"));
    return !opener.isEmpty() && defaultStartDetached(opener, {QString::fromUtf8(url.toEncoded())});
}

QString LinuxDesktopServices::defaultAutostartFolder()
{
    return XdgAutostart::defaultAutostartFolder();
}

bool LinuxDesktopServices::openURL(const QUrl &url)
{
    return m_system.openURL(url);
}

QCoro::Task<std::optional<QString>> LinuxDesktopServices::openFile(QString path)
{
    if (path.isEmpty()) {
        //: Why a downloaded update's installer did not open (follows "The system did not open the installer: ").
        co_return tr("No file was given to open.");
    }
    const QFileInfo file(path);
    if (!file.exists()) {
        //: Why a downloaded update's installer did not open: %1 is the file's name.
        co_return tr("The file “%1” does not exist.").arg(file.fileName());
    }
    const QString absolutePath = file.absoluteFilePath();
    // Copied, because the adapter may be gone by the time an opener answers.
    const std::function<QString(const QString &)> findProgram = m_system.findProgram;
    const std::chrono::milliseconds patience = m_system.openerPatience;

    const QList<Opener> openers = {{QStringLiteral("gio"), {QStringLiteral("open")}}, {QStringLiteral("xdg-open"), {}}};
    std::optional<QString> notStarted;
    for (const Opener &opener : openers) {
        const QString program = findProgram(opener.name);
        if (program.isEmpty()) {
            continue;
        }
        auto process = std::make_unique<QProcess>();
        process->setProgram(program);
        process->setArguments(opener.arguments + QStringList{absolutePath});
        process->setStandardInputFile(QProcess::nullDevice());
        process->setStandardOutputFile(QProcess::nullDevice());
        process->start(QIODevice::ReadOnly);
        // Whether the program could be run is known a moment later, from the event loop. (QCoro's
        // waitForStarted() notices a failure only when its time-out runs out.)
        if (process->state() == QProcess::Starting) {
            StartWatcher watcher(process.get());
            auto settled = qCoro(&watcher, &StartWatcher::settled, patience);
            co_await std::move(settled);
        }
        if (process->state() != QProcess::Running) {
            //: Why a downloaded update's installer did not open: %1 is a program's name ("gio"), %2 Qt's reason.
            notStarted =
                asSentence(tr("The file opener %1 could not be started: %2").arg(opener.name, process->errorString()));
            continue;
        }

        auto coroProcess = qCoro(process.get());
        QCoro::Task<bool> finished = coroProcess.waitForFinished(patience);
        const bool finishedInTime = co_await std::move(finished);
        if (!finishedInTime) {
            // Still running: xdg-open without a known desktop waits until the application it
            // started quits, and that application is what was asked for. The opener is left to end
            // in its own time.
            QProcess *running = process.release();
            QObject::connect(running, &QProcess::finished, running, &QObject::deleteLater);
            co_return std::nullopt;
        }
        if (process->exitStatus() == QProcess::CrashExit) {
            //: Why a downloaded update's installer did not open: %1 is a program's name ("gio").
            co_return tr("The file opener %1 stopped unexpectedly.").arg(opener.name);
        }
        if (process->exitCode() == 0) {
            co_return std::nullopt;
        }
        co_return describeOpenerFailure(opener.name, process->exitCode(), process->readAllStandardError());
    }
    if (notStarted) {
        co_return *notStarted;
    }
    //: Why a downloaded update's installer did not open. Keep the program and package names as they are.
    co_return tr("No program that opens files is installed: Inkwarden needs gio (package "
                 "libglib2.0-bin) or xdg-open (package xdg-utils).");
}

void LinuxDesktopServices::revealFile(const QString &path)
{
    const QFileInfo file(path);
    const QUrl folder = QUrl::fromLocalFile(file.absolutePath());
    if (!m_system.bus.isConnected()) {
        m_system.openURL(folder);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    // File URIs, percent-encoded as the interface asks; Inkwarden has no startup ID to pass on.
    call << QStringList{QString::fromUtf8(QUrl::fromLocalFile(file.absoluteFilePath()).toEncoded())} << QString();
    const QDBusPendingCall pending = m_system.bus.asyncCall(call, int(m_system.fileManagerTimeout.count()));

    // Without a file manager on the bus, or when it fails, the folder opens in whatever the desktop
    // uses for folders.
    auto *watcher = new QDBusPendingCallWatcher(pending, &m_pendingCalls);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, folder, openURL = m_system.openURL] {
                         if (watcher->isError()) {
                             openURL(folder);
                         }
                         watcher->deleteLater();
                     });
}

QStringList LinuxDesktopServices::autostartSettingsCommand(const QStringList &currentDesktops,
                                                           const std::function<QString(const QString &)> &findProgram)
{
    for (const QString &desktop : currentDesktops) {
        for (const AutostartSettings &settings : autostartSettingsTable()) {
            if (!settings.desktops.contains(desktop, Qt::CaseInsensitive)) {
                continue;
            }
            for (const QStringList &command : settings.commands) {
                const QString program = findProgram(command.first());
                if (!program.isEmpty()) {
                    return QStringList{program} + command.mid(1);
                }
            }
        }
    }
    return {};
}

void LinuxDesktopServices::openLoginItemsSettings()
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const QStringList command = autostartSettingsCommand(desktops, m_system.findProgram);
    if (!command.isEmpty() && m_system.startDetached(command.first(), command.mid(1))) {
        return;
    }
    // The folder itself, made first so that there is something to open.
    QDir().mkpath(m_system.autostartFolder);
    m_system.openURL(QUrl::fromLocalFile(m_system.autostartFolder));
}

#include "LinuxDesktopServices.moc"
