#include "platform/AccessibleApplication.h"
#include "platform/SingleInstance.h"
#include "platform/StatusCommand.h"
#include "platform/TerminationSignals.h"
#include "shell/AppTranslations.h"
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
    //: What `inkwarden --version` shows in place of the version number when the build has none.
    QCoreApplication::setApplicationVersion(
        AppInfo::compiledIn().version.value_or(QCoreApplication::translate("main", "Unknown")));
}

// Inkwarden's own options. Made once the application object is there and its translations are
// installed, so that --help speaks the user's language.
struct CommandLineOptions {
    QCommandLineOption status;
    QCommandLineOption format;
    QCommandLineOption follow;
};

CommandLineOptions describeOptions(QCommandLineParser &parser)
{
    CommandLineOptions options{
        QCommandLineOption(QStringLiteral("status"),
                           //: Description of the --status option in `inkwarden --help`.
                           QCoreApplication::translate("main", "Print the running Inkwarden's panel title and exit; "
                                                               "exits with status 3 when Inkwarden is not running.")),
        QCommandLineOption(
            QStringLiteral("format"),
            //: Description of the --format option in `inkwarden --help`. Keep the option and format names
            //: (--status, text, waybar, genmon, xfce4-genmon-plugin) as they are.
            QCoreApplication::translate("main", "With --status: text (the default), waybar (JSON for waybar's "
                                                "custom modules) or genmon (for xfce4-genmon-plugin)."),
            //: The value's name after --format in `inkwarden --help` ("--format <format>").
            QCoreApplication::translate("main", "format"), QStringLiteral("text")),
        QCommandLineOption(QStringLiteral("follow"),
                           //: Description of the --follow option in `inkwarden --help`.
                           QCoreApplication::translate("main", "With --status: keep running and print a new line on "
                                                               "every change, waiting for Inkwarden while it is not "
                                                               "running.")),
    };
    //: The first line of `inkwarden --help`.
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "Your book royalties at a glance, in the panel."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(options.status);
    parser.addOption(options.format);
    parser.addOption(options.follow);
    //: Description of the address argument in `inkwarden --help`. Keep "inkwarden://" as it is.
    parser.addPositionalArgument(
        QStringLiteral("url"),
        QCoreApplication::translate("main", "An inkwarden:// address to open, such as the browser's sign-in."));
    return options;
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
    const AppTranslations translations;
    nameApplication();
    QCommandLineParser parser;
    const CommandLineOptions described = describeOptions(parser);
    parser.process(core);
    const std::optional<StatusLine::Format> format = StatusLine::formatFromName(parser.value(described.format));
    if (!format) {
        //: Printed by `inkwarden --status --format …`: %1 is the format asked for. Keep text, waybar and genmon
        //: as they are.
        writeLine(stderr, QCoreApplication::translate("main", "Unknown format \"%1\": use text, waybar or genmon.")
                              .arg(parser.value(described.format)));
        return 2;
    }
    if (!parser.positionalArguments().isEmpty()) {
        //: Printed by `inkwarden --status` given an address as well.
        writeLine(stderr, QCoreApplication::translate("main", "--status takes no address."));
        return 2;
    }
    StatusCommand::Options options;
    options.format = *format;
    options.follow = parser.isSet(described.follow);
    options.clickCommand = QCoreApplication::applicationFilePath();
    StatusCommand command(
        QDBusConnection::sessionBus(), options, [](const QString &line) { writeLine(stdout, line); },
        [](const QString &line) { writeLine(stderr, line); });
    if (!parser.isSet(described.follow)) {
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
        const AppTranslations translations;
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
    AccessibleApplication::install();
    const AppTranslations translations;
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
        //: Printed to the terminal when a second Inkwarden is started and the first does not answer.
        QTextStream(stderr) << QCoreApplication::translate("main",
                                                           "Inkwarden is already running but could not be reached.")
                            << '\n';
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
