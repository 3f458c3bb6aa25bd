#include "platform/SingleInstance.h"
#include "platform/StatusCommand.h"
#include "platform/TerminationSignals.h"
#include "shell/InkwardenApplication.h"
#include "store/AppInfo.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QStandardPaths>
#include <QTextStream>

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <optional>

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("inkwarden"));
    QCoreApplication::setOrganizationName(QStringLiteral("inkwarden"));
    QCoreApplication::setApplicationVersion(AppInfo::compiledIn().version.value_or(QStringLiteral("Unknown")));
}

const QCommandLineOption statusOption(QStringLiteral("status"),
                                      QStringLiteral("Print the running Inkwarden's panel title and exit; exits with "
                                                     "status 3 when Inkwarden is not running."));
const QCommandLineOption formatOption(QStringLiteral("format"),
                                      QStringLiteral("With --status: text (the default), waybar (JSON for waybar's "
                                                     "custom modules) or genmon (for xfce4-genmon-plugin)."),
                                      QStringLiteral("format"), QStringLiteral("text"));
const QCommandLineOption followOption(QStringLiteral("follow"),
                                      QStringLiteral("With --status: keep running and print a new line on every "
                                                     "change, waiting for Inkwarden while it is not running."));

void describeOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Your book royalties at a glance, in the panel."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(statusOption);
    parser.addOption(formatOption);
    parser.addOption(followOption);
    parser.addPositionalArgument(QStringLiteral("url"),
                                 QStringLiteral("An inkwarden:// address to open, such as the browser's sign-in."));
}

bool hasArgument(int argc, char *argv[], std::initializer_list<const char *> options)
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : options) {
            if (std::strcmp(argv[i], option) == 0) {
                return true;
            }
        }
    }
    return false;
}

// --help and --version only print text, and a terminal without a desktop (or a package check) must
// get it: they are answered before anything opens a display.
bool onlyAsksForText(int argc, char *argv[])
{
    return hasArgument(argc, argv, {"-h", "-?", "--help", "-v", "--version"});
}

// Bars run `inkwarden --status` from wherever they are, with or without a display.
bool asksForStatus(int argc, char *argv[])
{
    return hasArgument(argc, argv, {"--status", "--follow"});
}

void writeLine(std::FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    // A bar reads line by line from a pipe: each line must reach it at once.
    std::fflush(stream);
}

int printStatus(int argc, char *argv[])
{
    QCoreApplication core(argc, argv);
    nameApplication();
    QCommandLineParser parser;
    describeOptions(parser);
    parser.process(core);
    const std::optional<StatusLine::Format> format = StatusLine::formatFromName(parser.value(formatOption));
    if (!format) {
        writeLine(stderr,
                  QStringLiteral("Unknown format \"%1\": use text, waybar or genmon.").arg(parser.value(formatOption)));
        return 2;
    }
    if (!parser.positionalArguments().isEmpty()) {
        writeLine(stderr, QStringLiteral("--status takes no address."));
        return 2;
    }
    StatusCommand::Options options;
    options.format = *format;
    options.follow = parser.isSet(followOption);
    options.clickCommand = QCoreApplication::applicationFilePath();
    StatusCommand command(
        QDBusConnection::sessionBus(), options, [](const QString &line) { writeLine(stdout, line); },
        [](const QString &line) { writeLine(stderr, line); });
    if (!parser.isSet(followOption)) {
        return command.printOnce();
    }
    // A bar that goes away closes the pipe: the next write ends the command by SIGPIPE, as intended.
    TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::terminationRequested, &core, &QCoreApplication::quit);
    if (!command.follow()) {
        return StatusCommand::failureExitCode;
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (onlyAsksForText(argc, argv)) {
        QCoreApplication core(argc, argv);
        nameApplication();
        QCommandLineParser parser;
        describeOptions(parser);
        parser.process(core); // prints and exits
        return 0;
    }
    if (asksForStatus(argc, argv)) {
        return printStatus(argc, argv);
    }

    QApplication app(argc, argv);
    // Logging out, or `kill`, ends Inkwarden the way its Quit item does; a signal that comes while it
    // is still starting is acted on once the event loop runs.
    TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::terminationRequested, &app, &QApplication::quit);
    nameApplication();
    QApplication::setApplicationDisplayName(QStringLiteral("Inkwarden"));
    QApplication::setDesktopFileName(QStringLiteral("com.inkwarden.menubar"));
    // Inkwarden lives in the panel: closing the popover is not quitting.
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    describeOptions(parser);
    parser.process(app);
    const QStringList urls = parser.positionalArguments();

    QString runtimeFolder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (runtimeFolder.isEmpty()) {
        runtimeFolder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    }
    SingleInstance instance(QDBusConnection::sessionBus(), runtimeFolder + QStringLiteral("/inkwarden"));
    switch (instance.claim(urls)) {
    case SingleInstance::Role::handedOver:
        return 0;
    case SingleInstance::Role::failed:
        QTextStream(stderr) << "Inkwarden is already running but could not be reached.\n";
        return 1;
    case SingleInstance::Role::primary:
        break;
    }

    InkwardenApplication inkwarden;
    QObject::connect(&inkwarden, &InkwardenApplication::quitRequested, &app, &QApplication::quit);
    QObject::connect(&instance, &SingleInstance::urlsReceived, &inkwarden, &InkwardenApplication::openURLs);
    QObject::connect(&instance, &SingleInstance::activationRequested, &inkwarden, &InkwardenApplication::showPopover);
    inkwarden.start();
    if (!urls.isEmpty()) {
        inkwarden.openURLs(urls);
    }
    return QApplication::exec();
}
