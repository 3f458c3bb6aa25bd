// SIGTERM, SIGINT and SIGHUP reach the event loop as a Qt signal instead of ending the process.
#include "platform/TerminationSignals.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

class TestTerminationSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSignalIsReportedOnTheEventLoop_data();
    void eachSignalIsReportedOnTheEventLoop();
    void signalsRaisedTogetherAreAllReported();
    void defaultActionIsBackOnceTheWatcherIsGone();
};

void TestTerminationSignals::eachSignalIsReportedOnTheEventLoop_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGTERM") << int(SIGTERM);
    QTest::newRow("SIGINT") << int(SIGINT);
    QTest::newRow("SIGHUP") << int(SIGHUP);
}

void TestTerminationSignals::eachSignalIsReportedOnTheEventLoop()
{
    QFETCH(int, signalNumber);
    TerminationSignals watcher;
    QVERIFY(watcher.isActive());
    QSignalSpy spy(&watcher, &TerminationSignals::terminationRequested);
    QCOMPARE(::raise(signalNumber), 0);
    // The handler only writes into the socket: nothing is reported until the event loop runs.
    QCOMPARE(spy.size(), 0);
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), signalNumber);
}

void TestTerminationSignals::signalsRaisedTogetherAreAllReported()
{
    TerminationSignals watcher;
    QSignalSpy spy(&watcher, &TerminationSignals::terminationRequested);
    QCOMPARE(::raise(SIGTERM), 0);
    QCOMPARE(::raise(SIGINT), 0);
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0).at(0).toInt(), int(SIGTERM));
    QCOMPARE(spy.at(1).at(0).toInt(), int(SIGINT));
}

void TestTerminationSignals::defaultActionIsBackOnceTheWatcherIsGone()
{
    {
        TerminationSignals watcher;
        QVERIFY(watcher.isActive());
    }
    struct sigaction current = {};
    QCOMPARE(::sigaction(SIGTERM, nullptr, &current), 0);
    QVERIFY(current.sa_handler == SIG_DFL);

    // A new watcher can take the signals again.
    TerminationSignals again;
    QVERIFY(again.isActive());
    QCOMPARE(::sigaction(SIGTERM, nullptr, &current), 0);
    QVERIFY(current.sa_handler != SIG_DFL);
}

QTEST_GUILESS_MAIN(TestTerminationSignals)
#include "tst_terminationsignals.moc"
