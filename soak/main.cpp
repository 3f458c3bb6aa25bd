#include "SoakOptions.h"
#include "SoakRun.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);

    QString message;
    bool isHelp = false;
    const std::optional<SoakOptions> options = SoakOptions::parse(QCoreApplication::arguments(), &message, &isHelp);
    if (!options) {
        QTextStream(isHelp ? stdout : stderr) << message;
        return isHelp ? 0 : 2;
    }

    SoakRun run(*options, out);
    return run.run() ? 0 : 1;
}
