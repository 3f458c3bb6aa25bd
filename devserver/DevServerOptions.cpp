#include "DevServerOptions.h"

#include "FaultSwitches.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <cmath>

namespace {

ParsedCommandLine invalid(const QString &message)
{
    return {ParsedCommandLine::Outcome::Invalid, {}, message};
}

} // namespace

ParsedCommandLine DevServerOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "A development royalties service for Inkwarden: bearer API keys, demo accounts, figures made from the "
        "date, browser sign-in with PKCE, rate limiting, the download and dashboard pages, and switches that "
        "make it fail on purpose."));
    const QCommandLineOption helpOption = parser.addHelpOption();
    const QCommandLineOption addressOption(QStringLiteral("address"), QStringLiteral("Address to listen on."),
                                           QStringLiteral("address"), QStringLiteral("127.0.0.1"));
    const QCommandLineOption portOption(QStringLiteral("port"),
                                        QStringLiteral("Port to listen on; 0 picks a free one."),
                                        QStringLiteral("port"), QStringLiteral("8000"));
    const QCommandLineOption versionOption(
        QStringLiteral("latest-app-version"),
        QStringLiteral("Version announced as latest_app_version; empty leaves it out."), QStringLiteral("version"),
        DevServerConfig().latestAppVersion);
    const QCommandLineOption basePathOption(QStringLiteral("base-path"),
                                            QStringLiteral("Serve everything under this prefix, e.g. /inkwarden."),
                                            QStringLiteral("path"));
    const QCommandLineOption installerOption(QStringLiteral("installer-file"),
                                             QStringLiteral("File served by /download_for_linux/ instead of the "
                                                            "placeholder."),
                                             QStringLiteral("path"));
    const QCommandLineOption rateLimitOption(QStringLiteral("rate-limit-seconds"),
                                             QStringLiteral("Minimum seconds between two statistics requests of one "
                                                            "key; 0 turns the limit off."),
                                             QStringLiteral("seconds"), QStringLiteral("3"));
    const QCommandLineOption faultOption(
        QStringLiteral("fault"),
        QStringLiteral("Make a route fail on purpose; repeatable. ROUTE=KIND[:VALUE][,KIND[:VALUE]...] with ROUTE one "
                       "of stats, accounts, exchange, download, dashboard, connect and KIND one of status:CODE, "
                       "malformed, empty, delay:MS, hang, reset, times:N, retry-after:VALUE (last; it takes the "
                       "rest). Example: --fault stats=status:503,delay:500"),
        QStringLiteral("spec"));
    parser.addOptions(
        {addressOption, portOption, versionOption, basePathOption, installerOption, rateLimitOption, faultOption});

    if (!parser.parse(arguments)) {
        return invalid(parser.errorText());
    }
    if (parser.isSet(helpOption)) {
        return {ParsedCommandLine::Outcome::ShowHelp, {}, parser.helpText()};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return invalid(QStringLiteral("Unexpected argument \"%1\".").arg(parser.positionalArguments().constFirst()));
    }

    DevServerOptions options;
    const QString addressText = parser.value(addressOption);
    if (addressText == QLatin1String("localhost")) {
        options.address = QHostAddress(QHostAddress::LocalHost);
    } else if (!options.address.setAddress(addressText)) {
        return invalid(QStringLiteral("\"%1\" is not an IP address.").arg(addressText));
    }

    bool ok = false;
    const uint port = parser.value(portOption).toUInt(&ok);
    if (!ok || port > 65535) {
        return invalid(QStringLiteral("\"%1\" is not a port number.").arg(parser.value(portOption)));
    }
    options.port = quint16(port);

    options.config.latestAppVersion = parser.value(versionOption).trimmed();

    const std::optional<QString> basePath = DevServerConfig::normalizedBasePath(parser.value(basePathOption));
    if (!basePath) {
        return invalid(QStringLiteral("\"%1\" is not a usable base path.").arg(parser.value(basePathOption)));
    }
    options.config.basePath = *basePath;

    if (parser.isSet(installerOption)) {
        const QFileInfo installer(parser.value(installerOption));
        if (!installer.isFile() || !installer.isReadable()) {
            return invalid(QStringLiteral("The installer file \"%1\" cannot be read.").arg(installer.filePath()));
        }
        options.config.installerFile = installer.absoluteFilePath();
    }

    const double seconds = parser.value(rateLimitOption).toDouble(&ok);
    if (!ok || !std::isfinite(seconds) || seconds < 0 || seconds > 86400) {
        return invalid(QStringLiteral("\"%1\" is not a number of seconds.").arg(parser.value(rateLimitOption)));
    }
    options.config.rateLimitWindow = std::chrono::milliseconds(qint64(std::llround(seconds * 1000)));

    FaultSwitches check;
    for (const QString &spec : parser.values(faultOption)) {
        QString error;
        if (!check.applySpec(spec, &error)) {
            return invalid(error);
        }
        options.faultSpecs.append(spec);
    }
    return {ParsedCommandLine::Outcome::Run, options, {}};
}
