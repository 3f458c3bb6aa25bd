// Inkwarden's notifications as a real notification server on a private session bus receives them:
// python3-dbusmock's notification daemon, which logs every call it gets and answers Notify as a
// desktop does (a new id, or the id it was asked to replace).
#include "platform/FreedesktopNotifications.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString busName = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");

} // namespace

class TestFreedesktopNotifications : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aNotificationCarriesTheTextsIconEntryAndAction();
    void theNextOneReplacesTheFirstAndCanSound();
    void aClickOnTheNotificationOpensInkwarden();
    void aClosedNotificationIsNotReplaced();
    void withoutAServerNothingBreaks();

private:
    void startServer();
    // The Notify calls the server has logged, one line each.
    QStringList notifyCalls() const;
    void emitFromServer(const QString &signal, const QString &signature, const QVariantList &arguments);

    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_server;
};

void TestFreedesktopNotifications::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("INKWARDEN_PRIVATE_SESSION_BUS"), "run me through run-with-session-bus.sh");
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void TestFreedesktopNotifications::init()
{
    QFile::remove(m_folder.filePath(QStringLiteral("calls.log")));
}

void TestFreedesktopNotifications::cleanup()
{
    if (m_server) {
        m_server->terminate();
        m_server->waitForFinished(5000);
        m_server.reset();
    }
    QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(busName));
}

void TestFreedesktopNotifications::startServer()
{
    m_server = std::make_unique<QProcess>();
    m_server->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server->start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--session"),
                     QStringLiteral("-t"), QStringLiteral("notification_daemon"), QStringLiteral("-l"),
                     m_folder.filePath(QStringLiteral("calls.log"))});
    QVERIFY2(m_server->waitForStarted(), "python3-dbusmock does not start");
    QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::sessionBus().interface()->isServiceRegistered(busName), 10000);
}

QStringList TestFreedesktopNotifications::notifyCalls() const
{
    QFile log(m_folder.filePath(QStringLiteral("calls.log")));
    if (!log.open(QIODevice::ReadOnly)) {
        return {};
    }
    QStringList calls;
    for (const QString &line : QString::fromUtf8(log.readAll()).split(u'\n')) {
        if (line.contains(QStringLiteral(" Notify "))) {
            calls.append(line.mid(line.indexOf(QStringLiteral(" Notify ")) + 8));
        }
    }
    return calls;
}

void TestFreedesktopNotifications::emitFromServer(const QString &signal, const QString &signature,
                                                  const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(busName, objectPath, QStringLiteral("org.freedesktop.DBus.Mock"),
                                                       QStringLiteral("EmitSignal"));
    QVariantList wrapped;
    for (const QVariant &argument : arguments) {
        wrapped.append(QVariant::fromValue(QDBusVariant(argument)));
    }
    call << QStringLiteral("org.freedesktop.Notifications") << signal << signature << wrapped;
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
}

void TestFreedesktopNotifications::aNotificationCarriesTheTextsIconEntryAndAction()
{
    startServer();
    FreedesktopNotifications notifications;
    notifications.show({QStringLiteral("+$4.99 in royalties"), QStringLiteral("Today: $1,239.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 1);
    const QString call = notifyCalls().first();
    QVERIFY2(
        call.startsWith(QStringLiteral(
            R"("Inkwarden" 0 "com.inkwarden.menubar" "+$4.99 in royalties" "Today: $1,239.55" ["default", "Open Inkwarden"] {)")),
        qPrintable(call));
    QVERIFY2(call.contains(QStringLiteral(R"("desktop-entry": "com.inkwarden.menubar")")), qPrintable(call));
    QVERIFY2(call.contains(QStringLiteral(R"("suppress-sound": True)")), qPrintable(call));
    QVERIFY2(!call.contains(QStringLiteral("sound-name")), qPrintable(call));
    QVERIFY2(call.endsWith(QStringLiteral("} -1")), qPrintable(call));
}

void TestFreedesktopNotifications::theNextOneReplacesTheFirstAndCanSound()
{
    startServer();
    FreedesktopNotifications notifications;
    notifications.show({QStringLiteral("+$4.99 in royalties"), QStringLiteral("Today: $1,239.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 1);
    // The server's answer (id 1) arrives after the call is logged.
    QTest::qWait(200);
    notifications.show({QStringLiteral("+$2.00 in royalties"), QStringLiteral("Today: $1,241.55"), true});
    QTRY_COMPARE(notifyCalls().size(), 2);
    const QString second = notifyCalls().at(1);
    QVERIFY2(second.startsWith(QStringLiteral(R"("Inkwarden" 1 "com.inkwarden.menubar" "+$2.00 in royalties")")),
             qPrintable(second));
    QVERIFY2(second.contains(QStringLiteral(R"("sound-name": "message-new-instant")")), qPrintable(second));
    QVERIFY2(!second.contains(QStringLiteral("suppress-sound")), qPrintable(second));
}

void TestFreedesktopNotifications::aClickOnTheNotificationOpensInkwarden()
{
    startServer();
    FreedesktopNotifications notifications;
    QSignalSpy activated(&notifications, &DesktopNotifications::activated);
    notifications.show({QStringLiteral("+$4.99 in royalties"), QStringLiteral("Today: $1,239.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 1);
    QTest::qWait(200);
    // Another notification's click, and another action, are not ours.
    emitFromServer(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {7U, QStringLiteral("default")});
    emitFromServer(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {1U, QStringLiteral("other")});
    emitFromServer(QStringLiteral("ActionInvoked"), QStringLiteral("us"), {1U, QStringLiteral("default")});
    QTRY_COMPARE(activated.count(), 1);
    QTest::qWait(200);
    QCOMPARE(activated.count(), 1);
}

void TestFreedesktopNotifications::aClosedNotificationIsNotReplaced()
{
    startServer();
    FreedesktopNotifications notifications;
    notifications.show({QStringLiteral("+$4.99 in royalties"), QStringLiteral("Today: $1,239.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 1);
    QTest::qWait(200);
    emitFromServer(QStringLiteral("NotificationClosed"), QStringLiteral("uu"), {1U, 2U});
    QTest::qWait(200);
    notifications.show({QStringLiteral("+$2.00 in royalties"), QStringLiteral("Today: $1,241.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 2);
    QVERIFY2(notifyCalls().at(1).startsWith(QStringLiteral(R"("Inkwarden" 0 )")), qPrintable(notifyCalls().at(1)));
}

void TestFreedesktopNotifications::withoutAServerNothingBreaks()
{
    FreedesktopNotifications notifications;
    notifications.show({QStringLiteral("+$4.99 in royalties"), QStringLiteral("Today: $1,239.55"), false});
    // The call fails without a server; nothing waits for it.
    QTest::qWait(500);
    startServer();
    notifications.show({QStringLiteral("+$2.00 in royalties"), QStringLiteral("Today: $1,241.55"), false});
    QTRY_COMPARE(notifyCalls().size(), 1);
    QVERIFY2(notifyCalls().first().startsWith(QStringLiteral(R"("Inkwarden" 0 )")), qPrintable(notifyCalls().first()));
}

QTEST_GUILESS_MAIN(TestFreedesktopNotifications)
#include "tst_freedesktopnotifications.moc"
