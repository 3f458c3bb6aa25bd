#include "platform/AppInfo.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Inkwarden"));
    const QString version = AppInfo::compiledIn().version.value_or(QStringLiteral("Unknown"));
    QCoreApplication::setApplicationVersion(version);

    // The panel item and its popover are not part of this build yet: say what this is and stop.
    QTextStream(stdout) << "Inkwarden " << version << '\n';
    return 0;
}
