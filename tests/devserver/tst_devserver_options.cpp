#include "DevServerOptions.h"
#include "FaultSwitches.h"

#include <QTemporaryFile>
#include <QTest>

using namespace std::chrono_literals;

namespace {

ParsedCommandLine parse(const QStringList &arguments)
{
    return DevServerOptions::parse(QStringList{QStringLiteral("inkwarden-devserver")} + arguments);
}

} // namespace

class TestDevServerOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsListenOnLoopbackPort8000()
    {
        const ParsedCommandLine parsed = parse({});
        QCOMPARE(parsed.outcome, ParsedCommandLine::Outcome::Run);
        QCOMPARE(parsed.options.address, QHostAddress(QHostAddress::LocalHost));
        QCOMPARE(parsed.options.port, 8000);
        QCOMPARE(parsed.options.config.latestAppVersion, QStringLiteral("0.2.0"));
        QCOMPARE(parsed.options.config.basePath, QString());
        QCOMPARE(parsed.options.config.rateLimitWindow, 3000ms);
        QVERIFY(parsed.options.faultSpecs.isEmpty());
    }

    void everyOptionIsRead()
    {
        QTemporaryFile installer;
        QVERIFY(installer.open());
        const ParsedCommandLine parsed = parse({
            QStringLiteral("--address"),
            QStringLiteral("0.0.0.0"),
            QStringLiteral("--port"),
            QStringLiteral("0"),
            QStringLiteral("--latest-app-version"),
            QStringLiteral("1.10"),
            QStringLiteral("--base-path"),
            QStringLiteral("inkwarden/"),
            QStringLiteral("--installer-file"),
            installer.fileName(),
            QStringLiteral("--rate-limit-seconds"),
            QStringLiteral("0.5"),
            QStringLiteral("--fault"),
            QStringLiteral("stats=status:500"),
            QStringLiteral("--fault"),
            QStringLiteral("stats=retry-after:2.2"),
        });
        QCOMPARE(parsed.outcome, ParsedCommandLine::Outcome::Run);
        QCOMPARE(parsed.options.address, QHostAddress(QHostAddress::AnyIPv4));
        QCOMPARE(parsed.options.port, 0);
        QCOMPARE(parsed.options.config.latestAppVersion, QStringLiteral("1.10"));
        QCOMPARE(parsed.options.config.basePath, QStringLiteral("/inkwarden"));
        QCOMPARE(parsed.options.config.installerFile, QFileInfo(installer.fileName()).absoluteFilePath());
        QCOMPARE(parsed.options.config.rateLimitWindow, 500ms);
        QCOMPARE(parsed.options.faultSpecs.size(), 2);
    }

    void emptyLatestVersionIsAllowed()
    {
        const ParsedCommandLine parsed = parse({QStringLiteral("--latest-app-version="), QString()});
        QCOMPARE(parsed.outcome, ParsedCommandLine::Outcome::Invalid); // a stray empty positional argument
        const ParsedCommandLine empty = parse({QStringLiteral("--latest-app-version=")});
        QCOMPARE(empty.outcome, ParsedCommandLine::Outcome::Run);
        QVERIFY(empty.options.config.latestAppVersion.isEmpty());
    }

    void helpIsOffered()
    {
        const ParsedCommandLine parsed = parse({QStringLiteral("--help")});
        QCOMPARE(parsed.outcome, ParsedCommandLine::Outcome::ShowHelp);
        QVERIFY(parsed.message.contains(QStringLiteral("--fault")));
        QVERIFY(parsed.message.contains(QStringLiteral("--base-path")));
    }

    void badValuesAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("port too large") << QStringList{QStringLiteral("--port"), QStringLiteral("70000")};
        QTest::newRow("port not a number") << QStringList{QStringLiteral("--port"), QStringLiteral("http")};
        QTest::newRow("address") << QStringList{QStringLiteral("--address"), QStringLiteral("example.com")};
        QTest::newRow("base path") << QStringList{QStringLiteral("--base-path"), QStringLiteral("/a b")};
        QTest::newRow("installer") << QStringList{QStringLiteral("--installer-file"), QStringLiteral("/nonexistent")};
        QTest::newRow("rate limit") << QStringList{QStringLiteral("--rate-limit-seconds"), QStringLiteral("-1")};
        QTest::newRow("fault") << QStringList{QStringLiteral("--fault"), QStringLiteral("stats=explode")};
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--colour")};
        QTest::newRow("positional") << QStringList{QStringLiteral("serve")};
    }

    void badValuesAreRefused()
    {
        QFETCH(QStringList, arguments);
        const ParsedCommandLine parsed = parse(arguments);
        QCOMPARE(parsed.outcome, ParsedCommandLine::Outcome::Invalid);
        QVERIFY(!parsed.message.isEmpty());
    }

    void basePathIsNormalised()
    {
        QCOMPARE(DevServerConfig::normalizedBasePath(QStringLiteral("/inkwarden/")), QStringLiteral("/inkwarden"));
        QCOMPARE(DevServerConfig::normalizedBasePath(QStringLiteral("tools/inkwarden")),
                 QStringLiteral("/tools/inkwarden"));
        QCOMPARE(DevServerConfig::normalizedBasePath(QStringLiteral("/")), QString());
        QCOMPARE(DevServerConfig::normalizedBasePath(QString()), QString());
        QCOMPARE(DevServerConfig::normalizedBasePath(QStringLiteral("/a//b")), std::nullopt);
        QCOMPARE(DevServerConfig::normalizedBasePath(QStringLiteral("/a?b")), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(TestDevServerOptions)
#include "tst_devserver_options.moc"
