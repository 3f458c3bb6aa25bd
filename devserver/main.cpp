#include "DevServer.h"
#include "DevServerOptions.h"
#include "StartupBanner.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("inkwarden-devserver"));

    QTextStream out(stdout);
    QTextStream err(stderr);
    const ParsedCommandLine parsed = DevServerOptions::parse(QCoreApplication::arguments());
    if (parsed.outcome == ParsedCommandLine::Outcome::ShowHelp) {
        out << parsed.message;
        return 0;
    }
    if (parsed.outcome == ParsedCommandLine::Outcome::Invalid) {
        err << "inkwarden-devserver: " << parsed.message << "\nTry --help.\n";
        return 2;
    }

    DevServer server(parsed.options.config);
    for (const QString &spec : parsed.options.faultSpecs) {
        server.faults().applySpec(spec, nullptr);
    }
    if (server.listen(parsed.options.address, parsed.options.port) == 0) {
        err << "inkwarden-devserver: cannot listen on " << parsed.options.address.toString() << ':'
            << parsed.options.port << '\n';
        return 1;
    }
    out << startupBanner(server);
    out.flush();
    return QCoreApplication::exec();
}
