#include "platform/AppInfo.h"
#include "platform/SingleInstance.h"
#include "shell/InkwardenApplication.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QStandardPaths>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("inkwarden"));
    QApplication::setOrganizationName(QStringLiteral("inkwarden"));
    QApplication::setApplicationDisplayName(QStringLiteral("Inkwarden"));
    QApplication::setDesktopFileName(QStringLiteral("com.inkwarden.menubar"));
    QApplication::setApplicationVersion(AppInfo::compiledIn().version.value_or(QStringLiteral("Unknown")));
    // Inkwarden lives in the panel: closing the popover is not quitting.
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Your book royalties at a glance, in the panel."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("url"),
                                 QStringLiteral("An inkwarden:// address to open, such as the browser's sign-in."));
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
