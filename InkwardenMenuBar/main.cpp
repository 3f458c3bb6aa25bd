#include "platform/AppInfo.h"
#include "platform/SingleInstance.h"
#include "platform/TerminationSignals.h"
#include "shell/InkwardenApplication.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QStandardPaths>
#include <QTextStream>

#include <cstring>

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("inkwarden"));
    QCoreApplication::setOrganizationName(QStringLiteral("inkwarden"));
    QCoreApplication::setApplicationVersion(AppInfo::compiledIn().version.value_or(QStringLiteral("Unknown")));
}

void describeOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Your book royalties at a glance, in the panel."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("url"),
                                 QStringLiteral("An inkwarden:// address to open, such as the browser's sign-in."));
}

// --help and --version only print text, and a terminal without a desktop (or a package check) must
// get it: they are answered before anything opens a display.
bool onlyAsksForText(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"-h", "-?", "--help", "-v", "--version"}) {
            if (std::strcmp(argv[i], option) == 0) {
                return true;
            }
        }
    }
    return false;
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
