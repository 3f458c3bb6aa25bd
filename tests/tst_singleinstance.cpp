#include "platform/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

const QString callback = QStringLiteral("inkwarden://authenticated?code=C0DE&state=S");

// A second, separate connection to the same bus: as another process would have.
QDBusConnection otherConnection(const QString &name)
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

} // namespace

class TestSingleInstance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QDBusConnection::sessionBus().isConnected()) {
            QSKIP("needs a private session bus: run through dbus-run-session");
        }
    }

    void firstProcessOwnsTheName();
    void secondLaunchHandsItsUrlsOver();
    void secondLaunchWithoutUrlsAsksToShow();
    void objectPathFollowsTheName();
    void nameIsFreedWhenTheFirstEnds();
    void withoutBusTheLockFileDecides();
    void withoutBusTheSocketCarriesAllUrlsOfOneLaunch();
    void staleLockOfACrashedProcessIsTakenOver();

private:
    QTemporaryDir m_dir;
};

void TestSingleInstance::firstProcessOwnsTheName()
{
    SingleInstance first(QDBusConnection::sessionBus(), m_dir.path(), QStringLiteral("com.inkwarden.test.first"));
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
    QVERIFY(QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("com.inkwarden.test.first")));
}

void TestSingleInstance::secondLaunchHandsItsUrlsOver()
{
    const QString name = QStringLiteral("com.inkwarden.test.second");
    SingleInstance first(QDBusConnection::sessionBus(), m_dir.path(), name);
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
    QSignalSpy received(&first, &SingleInstance::urlsReceived);

    // The second launch blocks on its call, so it runs in its own thread of control: a child process
    // of gdbus stands in for it here, and the real binary's hand-over is tested with the app.
    QProcess second;
    second.start(QStringLiteral("gdbus"),
                 {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), name,
                  QStringLiteral("--object-path"), SingleInstance::objectPath(name), QStringLiteral("--method"),
                  QStringLiteral("org.freedesktop.Application.Open"),
                  QStringLiteral("['%1', 'inkwarden://authenticated?code=2&state=S']").arg(callback),
                  QStringLiteral("{}")});
    QVERIFY(received.wait(5000));
    QVERIFY(second.waitForFinished(5000));
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(received.first().first().toStringList(),
             (QStringList{callback, QStringLiteral("inkwarden://authenticated?code=2&state=S")}));
}

void TestSingleInstance::secondLaunchWithoutUrlsAsksToShow()
{
    const QString name = QStringLiteral("com.inkwarden.test.third");
    SingleInstance first(QDBusConnection::sessionBus(), m_dir.path(), name);
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
    QSignalSpy shown(&first, &SingleInstance::activationRequested);
    QProcess second;
    second.start(QStringLiteral("gdbus"),
                 {QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"), name,
                  QStringLiteral("--object-path"), SingleInstance::objectPath(name), QStringLiteral("--method"),
                  QStringLiteral("org.freedesktop.Application.Activate"), QStringLiteral("{}")});
    QVERIFY(shown.wait(5000));
    QVERIFY(second.waitForFinished(5000));
}

void TestSingleInstance::objectPathFollowsTheName()
{
    QCOMPARE(SingleInstance::objectPath(QStringLiteral("com.inkwarden.menubar")),
             QStringLiteral("/com/inkwarden/menubar"));
}

void TestSingleInstance::nameIsFreedWhenTheFirstEnds()
{
    const QString name = QStringLiteral("com.inkwarden.test.fourth");
    {
        QDBusConnection connection = otherConnection(QStringLiteral("fourth"));
        {
            SingleInstance first(connection, m_dir.path(), name);
            QCOMPARE(first.claim({}), SingleInstance::Role::primary);
        }
        QDBusConnection::disconnectFromBus(QStringLiteral("fourth"));
    }
    QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(name));
    SingleInstance next(QDBusConnection::sessionBus(), m_dir.path(), name);
    QCOMPARE(next.claim({}), SingleInstance::Role::primary);
}

void TestSingleInstance::withoutBusTheLockFileDecides()
{
    const QDBusConnection noBus(QStringLiteral("no bus"));
    QVERIFY(!noBus.isConnected());
    const QString folder = m_dir.filePath(QStringLiteral("no-bus"));
    SingleInstance first(noBus, folder);
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
    QSignalSpy received(&first, &SingleInstance::urlsReceived);
    QSignalSpy shown(&first, &SingleInstance::activationRequested);

    // The hand-over blocks until written, which the listening side in this same process only
    // accepts from its event loop: the second launch runs in a thread.
    std::unique_ptr<QThread> launch(QThread::create([&] {
        SingleInstance second(QDBusConnection(QStringLiteral("no bus")), folder);
        QCOMPARE(second.claim({callback}), SingleInstance::Role::handedOver);
    }));
    launch->start();
    QVERIFY(received.wait(5000));
    QVERIFY(launch->wait(5000));
    QCOMPARE(received.first().first().toStringList(), QStringList{callback});

    std::unique_ptr<QThread> plainLaunch(QThread::create([&] {
        SingleInstance second(QDBusConnection(QStringLiteral("no bus")), folder);
        QCOMPARE(second.claim({}), SingleInstance::Role::handedOver);
    }));
    plainLaunch->start();
    QVERIFY(shown.wait(5000));
    QVERIFY(plainLaunch->wait(5000));
}

void TestSingleInstance::withoutBusTheSocketCarriesAllUrlsOfOneLaunch()
{
    const QString folder = m_dir.filePath(QStringLiteral("no-bus-2"));
    SingleInstance first(QDBusConnection(QStringLiteral("no bus")), folder);
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
    QSignalSpy received(&first, &SingleInstance::urlsReceived);
    const QStringList urls{callback, QStringLiteral("inkwarden://authenticated?code=2&state=S")};
    std::unique_ptr<QThread> launch(QThread::create([&] {
        SingleInstance second(QDBusConnection(QStringLiteral("no bus")), folder);
        QCOMPARE(second.claim(urls), SingleInstance::Role::handedOver);
    }));
    launch->start();
    QVERIFY(received.wait(5000));
    QVERIFY(launch->wait(5000));
    QCOMPARE(received.size(), 1);
    QCOMPARE(received.first().first().toStringList(), urls);
}

void TestSingleInstance::staleLockOfACrashedProcessIsTakenOver()
{
    const QString folder = m_dir.filePath(QStringLiteral("stale"));
    QVERIFY(QDir().mkpath(folder));
    {
        // A lock file whose owner no longer runs, as a crash leaves it.
        QFile lock(folder + QStringLiteral("/inkwarden.lock"));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.write("999999\ninkwarden\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    }
    SingleInstance first(QDBusConnection(QStringLiteral("no bus")), folder);
    QCOMPARE(first.claim({}), SingleInstance::Role::primary);
}

QTEST_GUILESS_MAIN(TestSingleInstance)
#include "tst_singleinstance.moc"
