// Reachability through Qt's real NetworkManager plugin. NetworkManager itself is python3-dbusmock's
// template on a private bus that tests/reachability/run-with-mock-networkmanager.sh exports as the
// system bus; the tests change its global state through the mock's own D-Bus interface.
#include "platform/QtNetworkReachability.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QNetworkInformation>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <optional>

using Reachability = QNetworkInformation::Reachability;

namespace {

// NetworkManager's NMState values and the reachability that Qt's plugin derives from each.
struct NetworkManagerState {
    quint32 value;
    Reachability reachability;
};
constexpr NetworkManagerState Unknown{0, Reachability::Unknown};
constexpr NetworkManagerState Asleep{10, Reachability::Unknown};
constexpr NetworkManagerState Disconnected{20, Reachability::Disconnected};
constexpr NetworkManagerState Disconnecting{30, Reachability::Disconnected};
constexpr NetworkManagerState Connecting{40, Reachability::Unknown};
constexpr NetworkManagerState ConnectedLocal{50, Reachability::Local};
constexpr NetworkManagerState ConnectedSite{60, Reachability::Site};
constexpr NetworkManagerState ConnectedGlobal{70, Reachability::Online};

// NetworkManager's NMConnectivityState values.
constexpr quint32 ConnectivityNone = 1;
constexpr quint32 ConnectivityPortal = 2;
constexpr quint32 ConnectivityFull = 4;

const char *const ProbeVariable = "INKWARDEN_REACHABILITY_PROBE";

bool callMock(const QString &method, quint32 argument)
{
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.NetworkManager"),
                                                       QStringLiteral("/org/freedesktop"),
                                                       QStringLiteral("org.freedesktop.DBus.Mock"), method);
    call << argument;
    const QDBusMessage reply = QDBusConnection::systemBus().call(call, QDBus::Block, 5000);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qWarning() << "The mock NetworkManager refused" << method << reply.errorName() << reply.errorMessage();
        return false;
    }
    return true;
}

// Lets Qt's plugin take in the new state before the test goes on, so that an adapter started next
// reads it, and the reports it queued for adapters already running are delivered.
bool waitForReachability(Reachability expected)
{
    QNetworkInformation *information = QNetworkInformation::instance();
    if (!information)
        return true; // not loaded yet: it reads the state when it loads
    if (!QTest::qWaitFor([&] { return information->reachability() == expected; }, 5000)) {
        qWarning() << "Qt's plugin stayed at" << information->reachability() << "instead of" << expected;
        return false;
    }
    QCoreApplication::processEvents();
    return true;
}

[[nodiscard]] bool setNetworkManagerState(NetworkManagerState state)
{
    return callMock(QStringLiteral("SetGlobalConnectionState"), state.value) && waitForReachability(state.reachability);
}

[[nodiscard]] bool setConnectivity(quint32 connectivity)
{
    if (!callMock(QStringLiteral("SetConnectivity"), connectivity))
        return false;
    // Connectivity reaches Qt only as its captive-portal flag; that flag is the sign that it arrived.
    QNetworkInformation *information = QNetworkInformation::instance();
    if (!information)
        return true;
    const bool portal = connectivity == ConnectivityPortal;
    if (!QTest::qWaitFor([&] { return information->isBehindCaptivePortal() == portal; }, 5000))
        return false;
    QCoreApplication::processEvents();
    return true;
}

// Delivers the reports that start() queued.
void deliverQueuedReports()
{
    QCoreApplication::processEvents();
}

QList<bool> reports(const QSignalSpy &spy)
{
    QList<bool> values;
    for (const QList<QVariant> &arguments : spy)
        values.append(arguments.at(0).toBool());
    return values;
}

// Runs in a child process, where no plugin may have been loaded yet: starts one adapter, lets the event loop
// run for a while and prints which plugin Qt took and every report.
int runProbe(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QtNetworkReachability reachability;
    QList<bool> seen;
    QObject::connect(&reachability, &NetworkReachability::availabilityChanged, &app,
                     [&seen](bool available) { seen.append(available); });
    reachability.start();
    QTimer::singleShot(500, &app, &QCoreApplication::quit);
    app.exec();

    const QNetworkInformation *information = QNetworkInformation::instance();
    std::printf("backend: %s\n", information ? qPrintable(information->backendName()) : "none");
    std::printf("reports: %lld\n", static_cast<long long>(seen.size()));
    return 0;
}

struct ProbeResult {
    QString backend;
    int reports = -1;
};

std::optional<ProbeResult> probe(const QProcessEnvironment &environment)
{
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {});
    if (!child.waitForFinished(10000) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
        qWarning().noquote() << "The probe failed:" << child.readAllStandardError();
        return std::nullopt;
    }
    ProbeResult result;
    const QList<QByteArray> lines = child.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("backend: "))
            result.backend = QString::fromUtf8(line.mid(9));
        else if (line.startsWith("reports: "))
            result.reports = line.mid(9).toInt();
    }
    return result;
}

// A process that sees a bus with no NetworkManager on it as its system bus.
QProcessEnvironment environmentWithoutNetworkManager()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"),
                       qEnvironmentVariable("INKWARDEN_TEST_BUS_WITHOUT_NETWORKMANAGER"));
    environment.insert(QString::fromLatin1(ProbeVariable), QStringLiteral("1"));
    return environment;
}

} // namespace

class TestNetworkReachability : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariable("INKWARDEN_TEST_MOCK_NETWORKMANAGER") != QStringLiteral("1"))
            QSKIP("Run through tests/reachability/run-with-mock-networkmanager.sh, which provides the mock "
                  "NetworkManager on a private system bus");
        QVERIFY(QDBusConnection::systemBus().isConnected());
    }

    void init()
    {
        QVERIFY(setConnectivity(ConnectivityFull));
        QVERIFY(setNetworkManagerState(ConnectedGlobal));
    }

    void eachReachabilityHasItsAvailability()
    {
        QCOMPARE(QtNetworkReachability::availability(Reachability::Unknown), std::optional<bool>());
        QCOMPARE(QtNetworkReachability::availability(Reachability::Disconnected), std::optional(false));
        QCOMPARE(QtNetworkReachability::availability(Reachability::Local), std::optional(false));
        QCOMPARE(QtNetworkReachability::availability(Reachability::Site), std::optional(true));
        QCOMPARE(QtNetworkReachability::availability(Reachability::Online), std::optional(true));
    }

    void firstReportOfConnectedNetworkIsAvailable()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QCOMPARE(QNetworkInformation::instance()->backendName(), QStringLiteral("networkmanager"));
    }

    void firstReportArrivesAfterStartReturns()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QCOMPARE(spy.count(), 0);
        deliverQueuedReports();
        QCOMPARE(reports(spy), QList<bool>{true});
    }

    void firstReportOfDisconnectedNetworkIsUnavailable()
    {
        QVERIFY(setNetworkManagerState(Disconnected));
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{false});
    }

    void firstReportFollowsNetworkManagerState_data()
    {
        QTest::addColumn<quint32>("state");
        QTest::addColumn<Reachability>("reachability");
        QTest::addColumn<QList<bool>>("expected");
        const auto row = [](const char *name, NetworkManagerState state, QList<bool> expected) {
            QTest::newRow(name) << state.value << state.reachability << expected;
        };
        row("unknown", Unknown, {});
        row("asleep", Asleep, {});
        row("disconnected", Disconnected, {false});
        row("disconnecting", Disconnecting, {false});
        row("connecting", Connecting, {});
        row("connected local", ConnectedLocal, {false});
        row("connected site", ConnectedSite, {true});
        row("connected global", ConnectedGlobal, {true});
    }

    void firstReportFollowsNetworkManagerState()
    {
        QFETCH(quint32, state);
        QFETCH(Reachability, reachability);
        QFETCH(QList<bool>, expected);
        QVERIFY(setNetworkManagerState({state, reachability}));
        QtNetworkReachability adapter;
        QSignalSpy spy(&adapter, &NetworkReachability::availabilityChanged);
        adapter.start();
        deliverQueuedReports();
        QCOMPARE(reports(spy), expected);
    }

    void goingOfflineReportsUnavailable()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(Disconnected));
        QTRY_COMPARE(reports(spy), (QList<bool>{true, false}));
    }

    void comingBackOnlineReportsAvailable()
    {
        QVERIFY(setNetworkManagerState(Disconnected));
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{false});
        QVERIFY(setNetworkManagerState(Connecting));
        QVERIFY(setNetworkManagerState(ConnectedGlobal));
        QTRY_COMPARE(reports(spy), (QList<bool>{false, true}));
    }

    void siteConnectivityCountsAsAvailable()
    {
        QVERIFY(setNetworkManagerState(Disconnected));
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{false});
        QVERIFY(setNetworkManagerState(ConnectedSite));
        QTRY_COMPARE(reports(spy), (QList<bool>{false, true}));
    }

    void localOnlyCountsAsUnavailable()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(ConnectedLocal));
        QTRY_COMPARE(reports(spy), (QList<bool>{true, false}));
    }

    void unchangedAvailabilityIsNotReportedAgain()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(ConnectedSite));
        QVERIFY(setNetworkManagerState(ConnectedGlobal));
        QVERIFY(setNetworkManagerState(ConnectedLocal));
        QVERIFY(setNetworkManagerState(Disconnected));
        QCOMPARE(reports(spy), (QList<bool>{true, false}));
    }

    void unknownStateSendsNoReport()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(Connecting));
        QVERIFY(setNetworkManagerState(Asleep));
        QCOMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(Disconnected));
        QCOMPARE(reports(spy), (QList<bool>{true, false}));
    }

    void firstReportWaitsWhileStateIsUnknown()
    {
        QVERIFY(setNetworkManagerState(Connecting));
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        deliverQueuedReports();
        QCOMPARE(spy.count(), 0);
        QVERIFY(setNetworkManagerState(ConnectedGlobal));
        QTRY_COMPARE(reports(spy), QList<bool>{true});
    }

    // Qt's plugin derives reachability from NetworkManager's State alone; the Connectivity property only
    // feeds its captive-portal flag. NetworkManager moves State along with its connectivity check.
    void connectivityAloneDoesNotChangeAvailability()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        QVERIFY(setConnectivity(ConnectivityPortal));
        QVERIFY(setConnectivity(ConnectivityNone));
        QCOMPARE(reports(spy), QList<bool>{true});
    }

    void startTwiceReportsOnce()
    {
        QtNetworkReachability reachability;
        QSignalSpy spy(&reachability, &NetworkReachability::availabilityChanged);
        reachability.start();
        reachability.start();
        QTRY_COMPARE(reports(spy), QList<bool>{true});
        deliverQueuedReports();
        QCOMPARE(spy.count(), 1);
        QVERIFY(setNetworkManagerState(Disconnected));
        QTRY_COMPARE(reports(spy), (QList<bool>{true, false}));
        QVERIFY(setNetworkManagerState(ConnectedGlobal));
        QTRY_COMPARE(reports(spy), (QList<bool>{true, false, true}));
    }

    // Qt keeps one network information object per process; every adapter still gets its own first report.
    void laterAdapterGetsItsOwnFirstReport()
    {
        QtNetworkReachability first;
        QSignalSpy firstSpy(&first, &NetworkReachability::availabilityChanged);
        first.start();
        QTRY_COMPARE(reports(firstSpy), QList<bool>{true});
        QVERIFY(setNetworkManagerState(Disconnected));
        QTRY_COMPARE(reports(firstSpy), (QList<bool>{true, false}));

        QtNetworkReachability second;
        QSignalSpy secondSpy(&second, &NetworkReachability::availabilityChanged);
        second.start();
        QTRY_COMPARE(reports(secondSpy), QList<bool>{false});
        QCOMPARE(reports(firstSpy), (QList<bool>{true, false}));
    }

    void reportsArriveOnTheMainThread()
    {
        QtNetworkReachability reachability;
        QList<QThread *> threads;
        connect(
            &reachability, &NetworkReachability::availabilityChanged, this,
            [&threads] { threads.append(QThread::currentThread()); }, Qt::DirectConnection);
        reachability.start();
        QTRY_COMPARE(threads.size(), 1);
        QVERIFY(setNetworkManagerState(Disconnected));
        QTRY_COMPARE(threads.size(), 2);
        for (QThread *thread : std::as_const(threads))
            QCOMPARE(thread, QCoreApplication::instance()->thread());
    }

    // Without NetworkManager, and with GLib told to use its placeholder monitor (which Qt's GLib plugin
    // refuses as meaningless), no plugin can load. Qt keeps its network information for the life of the
    // process, so this runs in a fresh child process.
    void noBackendNeverReports()
    {
        QProcessEnvironment environment = environmentWithoutNetworkManager();
        environment.insert(QStringLiteral("GIO_USE_NETWORK_MONITOR"), QStringLiteral("base"));
        const std::optional<ProbeResult> result = probe(environment);
        QVERIFY(result);
        QCOMPARE(result->backend, QStringLiteral("none"));
        QCOMPARE(result->reports, 0);
    }

    // Without NetworkManager, GLib's own monitor (netlink, reading the kernel's routes) takes over. What it
    // says depends on this machine's routes, but it always says something once.
    void glibMonitorIsTheFallbackWithoutNetworkManager()
    {
        QProcessEnvironment environment = environmentWithoutNetworkManager();
        environment.insert(QStringLiteral("GIO_USE_NETWORK_MONITOR"), QStringLiteral("netlink"));
        const std::optional<ProbeResult> result = probe(environment);
        QVERIFY(result);
        if (result->backend == QStringLiteral("none"))
            QSKIP("GLib has no working netlink monitor here");
        QCOMPARE(result->backend, QStringLiteral("glib"));
        QCOMPARE(result->reports, 1);
    }
};

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(ProbeVariable))
        return runProbe(argc, argv);
    QCoreApplication app(argc, argv);
    TestNetworkReachability test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_networkreachability.moc"
