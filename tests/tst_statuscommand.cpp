// `inkwarden --status`, the real binary, against the status interface of a stand-in Inkwarden (this
// test process) on a private session bus (tests/desktop/run-with-session-bus.sh starts it).
#include "platform/StatusBus.h"
#include "platform/StatusService.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

struct Result {
    int exitCode = -1;
    QString output;
    QString errors;
};

PanelStatus status(const QString &title, PanelState state = PanelState::ok)
{
    return PanelStatus{title, QStringLiteral("Inkwarden Royalties"), QStringLiteral("$1,235 \u00B7 Refreshed at 9:05"),
                       state};
}

// Runs `inkwarden ARGUMENTS` to its end with the event loop turning, so that this process can answer.
Result runInkwarden(const QStringList &arguments)
{
    QProcess process;
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(QStringLiteral(INKWARDEN_BINARY), arguments);
    if (!process.waitForStarted(5000) || (!finished.size() && !finished.wait(20000))) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// A running `inkwarden --status --follow …` and the lines it has printed.
class Follower
{
public:
    explicit Follower(const QStringList &extraArguments)
    {
        m_process.start(QStringLiteral(INKWARDEN_BINARY),
                        QStringList{QStringLiteral("--status"), QStringLiteral("--follow")} + extraArguments);
    }
    ~Follower()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    // Waits until at least `count` lines have come.
    bool waitForLines(qsizetype count, int timeoutMs = 15000)
    {
        QElapsedTimer timer;
        timer.start();
        while (lines().size() < count && timer.elapsed() < timeoutMs) {
            QTest::qWait(20);
        }
        return lines().size() >= count;
    }
    QStringList lines()
    {
        m_output += QString::fromUtf8(m_process.readAllStandardOutput());
        QStringList all = m_output.split(u'\n');
        all.removeLast(); // what follows the last line break is not a whole line yet
        return all;
    }
    QProcess &process() { return m_process; }

private:
    QProcess m_process;
    QString m_output;
};

QJsonObject json(const QString &line)
{
    return QJsonDocument::fromJson(line.toUtf8()).object();
}

} // namespace

class TestStatusCommand : public QObject
{
    Q_OBJECT

private:
    // This process plays the running Inkwarden: its bus name and its status.
    void publish(const PanelStatus &initial)
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerService(StatusBus::service()));
        m_service = std::make_unique<StatusService>(bus);
        QVERIFY(m_service->isPublished());
        m_service->setStatus(initial);
    }
    void unpublish()
    {
        m_service.reset();
        QDBusConnection::sessionBus().unregisterService(StatusBus::service());
    }

    std::unique_ptr<StatusService> m_service;

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariable("INKWARDEN_PRIVATE_SESSION_BUS") != QLatin1String("1")) {
            QSKIP("runs only on the private session bus of tests/desktop/run-with-session-bus.sh");
        }
    }

    void cleanup() { unpublish(); }

    void statusPrintsTheTitleAndExitsZero()
    {
        publish(status(QStringLiteral(u"\u00B7 $1,235")));
        const Result result = runInkwarden({QStringLiteral("--status")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output, QStringLiteral(u"\u00B7 $1,235\n"));
        QCOMPARE(result.errors, QString());
    }

    void waybarFormatPrintsTextToolTipAndState()
    {
        publish(status(QStringLiteral(u"\u25C9 \u2014"), PanelState::signedOut));
        const Result result =
            runInkwarden({QStringLiteral("--status"), QStringLiteral("--format"), QStringLiteral("waybar")});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.output.endsWith(u'\n'));
        QCOMPARE(result.output.count(u'\n'), 1);
        const QJsonObject object = json(result.output.trimmed());
        QCOMPARE(object.value(QStringLiteral("text")).toString(), QStringLiteral(u"\u25C9 \u2014"));
        QCOMPARE(object.value(QStringLiteral("tooltip")).toString(),
                 QStringLiteral("Inkwarden Royalties\n$1,235 \u00B7 Refreshed at 9:05"));
        QCOMPARE(object.value(QStringLiteral("class")).toString(), QStringLiteral("signedOut"));
        QCOMPARE(object.value(QStringLiteral("alt")).toString(), QStringLiteral("signedOut"));
    }

    void withoutInkwardenItSaysSoAndExitsThree()
    {
        const Result result = runInkwarden({QStringLiteral("--status")});
        QCOMPARE(result.exitCode, 3);
        QCOMPARE(result.output, QString());
        QCOMPARE(result.errors, QStringLiteral("Inkwarden is not running.\n"));
    }

    void anUnknownFormatIsAUsageError()
    {
        publish(status(QStringLiteral(u"\u00B7 $1")));
        const Result result = runInkwarden({QStringLiteral("--status"), QStringLiteral("--format=xml")});
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.output, QString());
        QVERIFY(result.errors.contains(QStringLiteral("xml")));
    }

    void followPrintsEachChangeOnce()
    {
        publish(status(QStringLiteral(u"\u00B7 $1,235")));
        Follower follower({QStringLiteral("--format"), QStringLiteral("waybar")});
        QVERIFY2(follower.waitForLines(1), follower.process().readAllStandardError().constData());
        QCOMPARE(json(follower.lines().at(0)).value(QStringLiteral("text")).toString(),
                 QStringLiteral(u"\u00B7 $1,235"));

        m_service->setStatus(status(QStringLiteral(u"\u00B7 $1,235"), PanelState::loading));
        QVERIFY(follower.waitForLines(2));
        QCOMPARE(json(follower.lines().at(1)).value(QStringLiteral("class")).toString(), QStringLiteral("loading"));

        m_service->setStatus(status(QStringLiteral(u"\u00B7 $1,240")));
        QVERIFY(follower.waitForLines(3));
        const QJsonObject third = json(follower.lines().at(2));
        QCOMPARE(third.value(QStringLiteral("text")).toString(), QStringLiteral(u"\u00B7 $1,240"));
        QCOMPARE(third.value(QStringLiteral("class")).toString(), QStringLiteral("ok"));

        // The same status again is no change: no new line.
        m_service->setStatus(status(QStringLiteral(u"\u00B7 $1,240")));
        QVERIFY(!follower.waitForLines(4, 1000));
        QVERIFY(follower.process().state() == QProcess::Running);
    }

    void followWaitsForInkwardenAndShowsNothingWhileItIsGone()
    {
        Follower follower({});
        QVERIFY(follower.waitForLines(1));
        QCOMPARE(follower.lines().at(0), QString());

        publish(status(QStringLiteral(u"\u25C9 \u2014"), PanelState::signedOut));
        QVERIFY(follower.waitForLines(2));
        QCOMPARE(follower.lines().at(1), QStringLiteral(u"\u25C9 \u2014"));

        unpublish();
        QVERIFY(follower.waitForLines(3));
        QCOMPARE(follower.lines().at(2), QString());

        publish(status(QStringLiteral(u"\u00B7 $7")));
        QVERIFY(follower.waitForLines(4));
        QCOMPARE(follower.lines().at(3), QStringLiteral(u"\u00B7 $7"));
        QVERIFY(follower.process().state() == QProcess::Running);
    }

    void followAsksOnceAndThenOnlyListens()
    {
        // A bus monitor counts the reads that reach Inkwarden's bus name.
        QProcess monitor;
        monitor.start(QStringLiteral("dbus-monitor"),
                      {QStringLiteral("--session"), QStringLiteral("type='method_call',member='GetAll'")});
        QVERIFY(monitor.waitForStarted(5000));
        QString monitored;
        QElapsedTimer timer;
        timer.start();
        while (!monitored.contains(QStringLiteral("NameLost")) && timer.elapsed() < 10000) {
            QTest::qWait(20);
            monitored += QString::fromUtf8(monitor.readAllStandardOutput());
        }
        QVERIFY2(monitored.contains(QStringLiteral("NameLost")), "dbus-monitor did not start monitoring");

        publish(status(QStringLiteral(u"\u00B7 $1,235")));
        {
            Follower follower({});
            QVERIFY(follower.waitForLines(1));
            m_service->setStatus(status(QStringLiteral(u"\u00B7 $1,300")));
            QVERIFY(follower.waitForLines(2));
            // A while with nothing new: a follower that polled would ask again meanwhile.
            QTest::qWait(2500);
            QCOMPARE(follower.lines().size(), 2);
        }
        monitored += QString::fromUtf8(monitor.readAllStandardOutput());
        monitor.kill();
        monitor.waitForFinished();
        QCOMPARE(monitored.count(QStringLiteral("member=GetAll")), 1);
    }
};

QTEST_GUILESS_MAIN(TestStatusCommand)
#include "tst_statuscommand.moc"
