// The popover loaded from its module on the first opening: nothing of it before, the window made by
// the module after, and a module that is missing or broken reported once without taking anything
// else down. Offscreen, against the module the build made.
#include "shell/LoadedPopover.h"
#include "support/StoreFixture.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>
#include <QWindow>

namespace {

QWindow *popoverWindow()
{
    for (QWindow *window : QGuiApplication::allWindows()) {
        if (window->title() == u"Inkwarden Royalties") {
            return window;
        }
    }
    return nullptr;
}

bool moduleIsMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("inkwarden-popover.so");
}

} // namespace

class TestLoadedPopover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        m_fixture->makeStore();
    }
    void cleanup() { m_fixture.reset(); }

    void theModuleIsLoadedOnTheFirstOpeningAndMakesTheWindow()
    {
        LoadedPopover popover(m_fixture->store(), QStringLiteral(INKWARDEN_POPOVER_MODULE));
        QVERIFY(!popover.isLoaded());
        QVERIFY(!popover.isShown());
        QVERIFY(!popover.closedJustNow());
        QVERIFY(!moduleIsMapped());
        QCOMPARE(popoverWindow(), nullptr);

        popover.show(std::nullopt);
        QVERIFY(popover.isLoaded());
        QVERIFY(moduleIsMapped());
        QVERIFY(popover.loadError().isEmpty());
        QVERIFY(popover.isShown());
        QWindow *window = popoverWindow();
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));

        popover.close();
        QVERIFY(!popover.isShown());
        QVERIFY(!window->isVisible());
        QVERIFY(popover.closedJustNow());
        popover.show(std::nullopt);
        QVERIFY(popover.isShown());
    }

    void aMissingModuleIsReportedOnceAndNothingOpens()
    {
        const QString path = QStringLiteral("/nonexistent/inkwarden-popover.so");
        LoadedPopover popover(m_fixture->store(), path);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^Inkwarden cannot open its popover: .*")));
        popover.show(std::nullopt);
        QVERIFY(!popover.isLoaded());
        QVERIFY(!popover.isShown());
        QVERIFY(popover.loadError().contains(path));
        QCOMPARE(popoverWindow(), nullptr);
        // Not tried again on every click: the next opening stays quiet (a second warning would fail).
        popover.show(std::nullopt);
        popover.close();
        QVERIFY(!popover.isShown());
        QVERIFY(!popover.closedJustNow());
    }

    void aFileThatIsNoModuleIsReported()
    {
        QTemporaryFile notAModule(QDir::tempPath() + QStringLiteral("/inkwarden-popover-XXXXXX.so"));
        QVERIFY(notAModule.open());
        notAModule.write("not a shared object");
        notAModule.close();
        LoadedPopover popover(m_fixture->store(), notAModule.fileName());
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^Inkwarden cannot open its popover: .*")));
        popover.show(std::nullopt);
        QVERIFY(!popover.isLoaded());
        QVERIFY(!popover.loadError().isEmpty());
        QCOMPARE(popoverWindow(), nullptr);
    }

    void theBuildFindsTheModuleBesideTheExecutableAndAnInstallationInItsLibraryFolder()
    {
        // This test's folder holds no module: the installed place, relative to the executable.
        const QString path = LoadedPopover::defaultModulePath();
        QVERIFY2(path.endsWith(QLatin1String("/lib/inkwarden/inkwarden-popover.so")), qPrintable(path));
        QVERIFY(!path.contains(QLatin1String("..")));
    }

private:
    std::unique_ptr<StoreFixture> m_fixture;
};

QTEST_MAIN(TestLoadedPopover)
#include "tst_loadedpopover.moc"
