// The key store against a real gnome-keyring on a private session bus: run through
// tests/keyring/run-with-keyring.sh, never against the keyring of the person running the tests.
#include "platform/KWalletLock.h"
#include "platform/KeychainStore.h"
#include "store/PlatformTexts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QFile>
#include <QMutex>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <qcoro/qcorotask.h>
#include <qt6keychain/keychain.h>

#include <chrono>
#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const QString secretsName = QStringLiteral("org.freedesktop.secrets");
const QString secretsPath = QStringLiteral("/org/freedesktop/secrets");
// The tests keep to items of their own, even on the private keyring.
const QString testService = QStringLiteral("com.inkwarden.menubar.tests");
const QString neighbourService = QStringLiteral("com.inkwarden.menubar.tests.neighbour");
// Set in the child process that runs one scenario on a bus of its own.
const char *const scenarioVariable = "INKWARDEN_KEYCHAIN_SCENARIO";

bool isScenarioProcess()
{
    return qEnvironmentVariableIsSet(scenarioVariable);
}

// Saving succeeded; else the test fails with the save's message.
#define INKWARDEN_VERIFY_SAVED(saving)                                                                                 \
    do {                                                                                                               \
        const std::optional<RoyaltiesError> error_ = (saving);                                                         \
        QVERIFY2(!error_.has_value(), error_ ? qPrintable(error_->message()) : "");                                    \
    } while (false)

QVariant secretsProperty(const QString &path, const QString &interface, const QString &name)
{
    auto call = QDBusMessage::createMethodCall(secretsName, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << interface << name;
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 5000);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return {};
    }
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QList<QDBusObjectPath> collections()
{
    return qdbus_cast<QList<QDBusObjectPath>>(
        secretsProperty(secretsPath, QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Collections")));
}

// Every item in every collection of the keyring, whoever wrote it.
QList<QDBusObjectPath> keyringItems()
{
    QList<QDBusObjectPath> items;
    for (const QDBusObjectPath &collection : collections()) {
        items += qdbus_cast<QList<QDBusObjectPath>>(secretsProperty(
            collection.path(), QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("Items")));
    }
    return items;
}

QMap<QString, QString> itemAttributes(const QDBusObjectPath &item)
{
    return qdbus_cast<QMap<QString, QString>>(
        secretsProperty(item.path(), QStringLiteral("org.freedesktop.Secret.Item"), QStringLiteral("Attributes")));
}

bool callSecrets(const QString &path, const QString &interface, const QString &method, const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(secretsName, path, interface, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage;
}

// The services whose items are in the keyring, one entry per item.
QStringList servicesInKeyring()
{
    QStringList services;
    for (const QDBusObjectPath &item : keyringItems()) {
        services << itemAttributes(item).value(QStringLiteral("server"));
    }
    services.sort();
    return services;
}

// The status number in a failed save's message, or nothing when the message has another form.
std::optional<int> saveFailureStatus(const RoyaltiesError &error)
{
    static const QRegularExpression form(
        QStringLiteral("^Could not save the API key in the keyring \\((-?\\d+)\\)\\.$"));
    const auto match = form.match(error.message());
    if (error.kind() != RoyaltiesError::Kind::server || !match.hasMatch()) {
        return std::nullopt;
    }
    return match.captured(1).toInt();
}

bool lockLogin()
{
    return callSecrets(secretsPath, QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Lock"),
                       {QVariant::fromValue(collections())})
           && secretsProperty(QStringLiteral("/org/freedesktop/secrets/collection/login"),
                              QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("Locked"))
                  .toBool();
}

// Unlocks the login keyring with its password, as the keyring's own prompt would, through
// gnome-keyring's interface for tests and tools. run-with-keyring.sh made the keyring from what
// `echo` wrote: a line break.
bool unlockLogin()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto open = QDBusMessage::createMethodCall(
        secretsName, secretsPath, QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("OpenSession"));
    open << QStringLiteral("plain") << QVariant::fromValue(QDBusVariant(QString()));
    const QDBusMessage opened = bus.call(open, QDBus::Block, 5000);
    if (opened.type() != QDBusMessage::ReplyMessage || opened.arguments().size() != 2) {
        return false;
    }
    const auto session = opened.arguments().at(1).value<QDBusObjectPath>();
    QDBusArgument secret;
    secret.beginStructure();
    secret << session << QByteArray() << QByteArray("\n") << QStringLiteral("text/plain");
    secret.endStructure();
    auto unlock = QDBusMessage::createMethodCall(
        secretsName, secretsPath, QStringLiteral("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"),
        QStringLiteral("UnlockWithMasterPassword"));
    unlock << QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/freedesktop/secrets/collection/login")))
           << QVariant::fromValue(secret);
    const QDBusMessage unlocked = bus.call(unlock, QDBus::Block, 5000);
    if (unlocked.type() != QDBusMessage::ReplyMessage) {
        qWarning() << "UnlockWithMasterPassword:" << unlocked.errorMessage();
        return false;
    }
    return !secretsProperty(QStringLiteral("/org/freedesktop/secrets/collection/login"),
                            QStringLiteral("org.freedesktop.Secret.Collection"), QStringLiteral("Locked"))
                .toBool();
}

QString load(const QString &service)
{
    return KeychainStore(service).loadAPIKey();
}

std::optional<RoyaltiesError> save(const QString &service, const QString &key)
{
    KeychainStore store(service);
    return QCoro::waitFor(store.saveAPIKey(key));
}

void remove(const QString &service)
{
    KeychainStore store(service);
    QCoro::waitFor(store.deleteAPIKey());
}

// A session bus of the test's own with nothing on it and nothing it could start: no Secret Service.
class EmptyBus
{
public:
    EmptyBus()
    {
        QFile config(m_folder.filePath(QStringLiteral("bus.conf")));
        if (!m_folder.isValid() || !config.open(QIODevice::WriteOnly)) {
            return;
        }
        // No <servicedir>: nothing can be started on demand.
        config.write(
            QStringLiteral("<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
                           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                           "<busconfig>\n"
                           "  <type>session</type>\n"
                           "  <listen>unix:dir=%1</listen>\n"
                           "  <policy context=\"default\">\n"
                           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                           "    <allow eavesdrop=\"true\"/>\n"
                           "    <allow own=\"*\"/>\n"
                           "  </policy>\n"
                           "</busconfig>\n")
                .arg(m_folder.path())
                .toUtf8());
        config.close();
        m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                                                       QStringLiteral("--config-file=") + config.fileName()});
        while (m_daemon.waitForReadyRead(5000) && !m_daemon.canReadLine()) {
        }
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }

    ~EmptyBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    // Empty when the bus did not start.
    QString address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

// Owns a bus name and leaves every call to it unanswered, as a hung keyring daemon or a prompt
// nobody answers would, until answerEverything() fails them all, the waiting ones included.
class SilentService : public QDBusVirtualObject
{
public:
    SilentService(const QString &address, const QString &name, const QString &path)
        : m_connection(QDBusConnection::connectToBus(address, QStringLiteral("silent ") + name))
        , m_path(path)
    {
        m_onBus = m_connection.registerVirtualObject(path, this, QDBusConnection::SubPath)
                  && m_connection.registerService(name);
    }

    ~SilentService() override
    {
        m_connection.unregisterObject(m_path);
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    bool isOnBus() const { return m_onBus; }

    qsizetype unansweredCalls() const
    {
        QMutexLocker locker(&m_mutex);
        return m_unanswered.size();
    }

    void answerEverything()
    {
        QMutexLocker locker(&m_mutex);
        m_answering = true;
        for (const QDBusMessage &call : std::as_const(m_unanswered)) {
            m_connection.send(refusal(call));
        }
        m_unanswered.clear();
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        QMutexLocker locker(&m_mutex);
        if (m_answering) {
            connection.send(refusal(message));
        } else {
            m_unanswered << message;
        }
        return true;
    }

private:
    static QDBusMessage refusal(const QDBusMessage &call)
    {
        return call.createErrorReply(QDBusError::Failed, QStringLiteral("The test keyring refuses."));
    }

    QDBusConnection m_connection;
    QString m_path;
    bool m_onBus = false;
    mutable QMutex m_mutex;
    bool m_answering = false;
    QList<QDBusMessage> m_unanswered;
};

// Runs the current test function again in a child process with `environment`, under `wrapper` when
// given. GLib keeps the first session bus a process connects to, and a time-out leaves a job that
// holds up QtKeychain's queue, so each scenario on a bus of its own gets a process of its own.
void runScenario(QProcessEnvironment environment, const QString &wrapper = {})
{
    environment.insert(QString::fromLatin1(scenarioVariable), QStringLiteral("1"));
    QString program = QCoreApplication::applicationFilePath();
    QStringList arguments{QString::fromLatin1(QTest::currentTestFunction())};
    if (!wrapper.isEmpty()) {
        arguments.prepend(program);
        program = wrapper;
    }
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(program, arguments);
    const bool finished = child.waitForFinished(60'000);
    const QByteArray output = child.readAll();
    if (!finished || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
        qWarning().noquote() << "The scenario's own process says:\n" << QString::fromUtf8(output);
        QFAIL("The scenario failed in its own process (its output is above).");
    }
}

QProcessEnvironment environmentWithBus(const QString &address)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    return environment;
}

} // namespace

class TestKeychainStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (isScenarioProcess()) {
            return;
        }
        QVERIFY2(qEnvironmentVariable("INKWARDEN_PRIVATE_KEYRING") == QStringLiteral("1"),
                 "Run this test through tests/keyring/run-with-keyring.sh: it changes and locks the keyring.");
        QVERIFY2(!collections().isEmpty(), "No Secret Service on the session bus");
    }

    void init()
    {
        if (isScenarioProcess()) {
            return;
        }
        for (const QDBusObjectPath &item : keyringItems()) {
            QVERIFY(
                callSecrets(item.path(), QStringLiteral("org.freedesktop.Secret.Item"), QStringLiteral("Delete"), {}));
        }
        QCOMPARE(keyringItems().size(), 0);
    }

    void loadingWhenNoItemGivesEmptyText()
    {
        QCOMPARE(load(testService), QString());
        QCOMPARE(keyringItems().size(), 0);
    }

    void savingTwiceKeepsOneItemHoldingSecondKey()
    {
        INKWARDEN_VERIFY_SAVED(save(testService, QStringLiteral("first-key")));
        INKWARDEN_VERIFY_SAVED(save(testService, QStringLiteral("second-key")));

        QCOMPARE(servicesInKeyring(), QStringList{testService});
        QCOMPARE(load(testService), QStringLiteral("second-key"));
    }

    void deletingWhenNoItemDoesNothing()
    {
        INKWARDEN_VERIFY_SAVED(save(neighbourService, QStringLiteral("neighbour-key")));

        remove(testService);

        QCOMPARE(servicesInKeyring(), QStringList{neighbourService});
        QCOMPARE(load(neighbourService), QStringLiteral("neighbour-key"));
        QCOMPARE(load(testService), QString());
    }

    void saveThenLoadRoundTripsUnicodeKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("several scripts") << QStringLiteral("ключ-鍵-clé-🔑");
        QTest::newRow("white space kept as given") << QStringLiteral(" key\twith spaces \n");
        QTest::newRow("long") << QString(4096, QLatin1Char('k'));
    }

    void saveThenLoadRoundTripsUnicodeKey()
    {
        QFETCH(QString, key);
        INKWARDEN_VERIFY_SAVED(save(testService, key));
        // A new store, as after a restart of the app.
        QCOMPARE(load(testService), key);
    }

    void deleteRemovesTheKey()
    {
        INKWARDEN_VERIFY_SAVED(save(testService, QStringLiteral("doomed-key")));
        INKWARDEN_VERIFY_SAVED(save(neighbourService, QStringLiteral("neighbour-key")));

        remove(testService);

        QCOMPARE(load(testService), QString());
        QCOMPARE(servicesInKeyring(), QStringList{neighbourService});
    }

    void itemIsNamedAfterInkwarden()
    {
        KeychainStore store;
        INKWARDEN_VERIFY_SAVED(QCoro::waitFor(store.saveAPIKey(QStringLiteral("named-key"))));

        const auto items = keyringItems();
        QCOMPARE(items.size(), 1);
        const auto attributes = itemAttributes(items.first());
        QCOMPARE(attributes.value(QStringLiteral("server")), QStringLiteral("com.inkwarden.menubar"));
        QCOMPARE(attributes.value(QStringLiteral("user")), QStringLiteral("inkwarden-api-key"));
        QCOMPARE(store.loadAPIKey(), QStringLiteral("named-key"));

        QCoro::waitFor(store.deleteAPIKey());
        QCOMPARE(keyringItems().size(), 0);
    }

    void loadingBytesThatAreNotUtf8GivesEmptyText()
    {
        auto *job = new QKeychain::WritePasswordJob(testService);
        job->setKey(KeychainStore::apiKeyName());
        job->setBinaryData(QByteArray("\xff\xfe not text \xc3"));
        QSignalSpy finished(job, &QKeychain::Job::finished);
        job->start();
        QVERIFY(finished.wait(5000));
        QCOMPARE(job->error(), QKeychain::NoError);
        QCOMPARE(keyringItems().size(), 1);

        QCOMPARE(load(testService), QString());
    }

    void failedSaveMessageCarriesTheStatus()
    {
        QCOMPARE(KeychainStore::saveFailureMessage(QKeychain::NoBackendAvailable),
                 QStringLiteral("Could not save the API key in the keyring (5)."));
        QCOMPARE(KeychainStore::saveFailureMessage(KeychainStore::timedOutStatus),
                 QStringLiteral("Could not save the API key in the keyring (-1)."));
    }

    // QtKeychain keeps the key in KWallet on Plasma 5 only; the keyring Inkwarden asks about a lock
    // must be the one the key is in.
    void plasma5SessionsKeepTheKeyInKWallet_data()
    {
        QTest::addColumn<QStringList>("environment");
        QTest::addColumn<bool>("kwallet");
        QTest::newRow("Plasma 5") << QStringList{u"XDG_CURRENT_DESKTOP=KDE"_s, u"KDE_SESSION_VERSION=5"_s} << true;
        QTest::newRow("Plasma 6") << QStringList{u"XDG_CURRENT_DESKTOP=KDE"_s, u"KDE_SESSION_VERSION=6"_s} << false;
        QTest::newRow("KDE without a version") << QStringList{u"XDG_CURRENT_DESKTOP=KDE"_s} << false;
        QTest::newRow("GNOME") << QStringList{u"XDG_CURRENT_DESKTOP=GNOME"_s, u"KDE_SESSION_VERSION=5"_s} << false;
        QTest::newRow("XFCE") << QStringList{u"XDG_CURRENT_DESKTOP=XFCE"_s, u"KDE_FULL_SESSION=true"_s} << false;
        QTest::newRow("Ubuntu's GNOME") << QStringList{u"XDG_CURRENT_DESKTOP=ubuntu:GNOME"_s,
                                                       u"DESKTOP_SESSION=ubuntu"_s}
                                        << false;
        QTest::newRow("kde session") << QStringList{u"DESKTOP_SESSION=kde"_s, u"KDE_SESSION_VERSION=5"_s} << true;
        QTest::newRow("full KDE session")
            << QStringList{u"KDE_FULL_SESSION=true"_s, u"KDE_SESSION_VERSION=5"_s} << true;
        QTest::newRow("GNOME session id first") << QStringList{u"GNOME_DESKTOP_SESSION_ID=this-is-deprecated"_s,
                                                               u"KDE_FULL_SESSION=true"_s, u"KDE_SESSION_VERSION=5"_s}
                                                << false;
        QTest::newRow("nothing") << QStringList{} << false;
    }

    void plasma5SessionsKeepTheKeyInKWallet()
    {
        QFETCH(QStringList, environment);
        QFETCH(bool, kwallet);
        QProcessEnvironment session;
        for (const QString &setting : environment) {
            session.insert(setting.section(u'=', 0, 0), setting.section(u'=', 1));
        }
        QCOMPARE(KWalletLock::isUsedIn(session), kwallet);
    }

    void missingSecretServiceLoadsNoKey()
    {
        if (!isScenarioProcess()) {
            EmptyBus bus;
            QVERIFY2(!bus.address().isEmpty(), "dbus-daemon did not start");
            runScenario(environmentWithBus(bus.address()));
            return;
        }
        expectFailureWithoutWaiting();
    }

    void unreachableSessionBusLoadsNoKey()
    {
        if (!isScenarioProcess()) {
            QTemporaryDir folder;
            QVERIFY(folder.isValid());
            runScenario(environmentWithBus(QStringLiteral("unix:path=") + folder.filePath(QStringLiteral("no-bus"))));
            return;
        }
        expectFailureWithoutWaiting();
    }

    void silentSecretServiceTimesOut()
    {
        if (!isScenarioProcess()) {
            EmptyBus bus;
            QVERIFY2(!bus.address().isEmpty(), "dbus-daemon did not start");
            runScenario(environmentWithBus(bus.address()));
            return;
        }
        SilentService secrets(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), secretsName, secretsPath);
        QVERIFY(secrets.isOnBus());
        KeychainStore store(testService, 300ms);

        expectTimeOuts(store, 300ms);
        QVERIFY(secrets.unansweredCalls() > 0);
    }

    void lateAnswerAfterTimeOutIsHarmless()
    {
        if (!isScenarioProcess()) {
            EmptyBus bus;
            QVERIFY2(!bus.address().isEmpty(), "dbus-daemon did not start");
            runScenario(environmentWithBus(bus.address()));
            return;
        }
        SilentService secrets(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), secretsName, secretsPath);
        QVERIFY(secrets.isOnBus());
        auto store = std::make_unique<KeychainStore>(testService, 200ms);
        QCOMPARE(store->loadAPIKey(), QString());
        // The store goes while its save still waits; the save carries on without it.
        auto pendingSave = store->saveAPIKey(QStringLiteral("key"));
        store.reset();
        const auto timedOut = QCoro::waitFor(pendingSave);
        QVERIFY(timedOut.has_value());
        QCOMPARE(saveFailureStatus(*timedOut).value_or(0), KeychainStore::timedOutStatus);

        // Now the keyring answers the abandoned jobs. QtKeychain runs one job at a time, so a new job
        // can only finish once they have.
        secrets.answerEverything();
        KeychainStore later(testService, 10s);
        QElapsedTimer elapsed;
        elapsed.start();
        QCOMPARE(later.loadAPIKey(), QString());
        const auto refused = QCoro::waitFor(later.saveAPIKey(QStringLiteral("key")));
        QVERIFY(refused.has_value());
        const auto status = saveFailureStatus(*refused);
        QVERIFY2(status.has_value() && *status > 0, qPrintable(refused->message()));
        QVERIFY(elapsed.elapsed() < 5000);
        // Time for anything still queued to arrive.
        QTest::qWait(100);
    }

    void lockedKeyringIsToldApartAndReadOnceUnlocked()
    {
        if (!isScenarioProcess()) {
            // A keyring of its own, as it gets locked.
            runScenario(QProcessEnvironment::systemEnvironment(),
                        QStringLiteral(INKWARDEN_KEYRING_DIR "/run-with-keyring.sh"));
            return;
        }
        INKWARDEN_VERIFY_SAVED(save(testService, QStringLiteral("locked-away")));
        // gnome-keyring asks for the password through this prompter; it never answers, like a prompt
        // on a screen nobody looks at.
        SilentService prompter(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                               QStringLiteral("org.gnome.keyring.SystemPrompter"),
                               QStringLiteral("/org/gnome/keyring/Prompter"));
        QVERIFY(prompter.isOnBus());
        KeychainStore store(testService, 5s);
        int changes = 0;
        store.setChangeHandler([&changes] { ++changes; });

        QVERIFY(lockLogin());
        QTRY_VERIFY(changes > 0);
        // Locked is not "no key", and telling it takes no prompt and no time-out.
        QElapsedTimer elapsed;
        elapsed.start();
        const StoredKey locked = QCoro::waitFor(store.readAPIKey());
        QCOMPARE(locked.state, StoredKey::State::locked);
        QVERIFY(locked.key.isEmpty());
        QVERIFY2(elapsed.elapsed() < 2000, "reading a locked keyring waited");
        QCOMPARE(prompter.unansweredCalls(), 0);

        // Asking to unlock shows the keyring's own prompt (here, one nobody answers).
        store.askToUnlock();
        QTRY_VERIFY(prompter.unansweredCalls() > 0);

        // Unlocked by other means (the user at the keyring's own window): the store hears of it
        // and the key reads.
        changes = 0;
        QVERIFY(unlockLogin());
        QTRY_VERIFY(changes > 0);
        const StoredKey unlocked = QCoro::waitFor(store.readAPIKey());
        QCOMPARE(unlocked.state, StoredKey::State::found);
        QCOMPARE(unlocked.key, QStringLiteral("locked-away"));
    }

    void aSaveIntoALockedKeyringSaysSo()
    {
        if (!isScenarioProcess()) {
            runScenario(QProcessEnvironment::systemEnvironment(),
                        QStringLiteral(INKWARDEN_KEYRING_DIR "/run-with-keyring.sh"));
            return;
        }
        SilentService prompter(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                               QStringLiteral("org.gnome.keyring.SystemPrompter"),
                               QStringLiteral("/org/gnome/keyring/Prompter"));
        QVERIFY(prompter.isOnBus());
        QVERIFY(lockLogin());
        KeychainStore store(testService, 500ms);
        const std::optional<RoyaltiesError> failure = QCoro::waitFor(store.saveAPIKey(QStringLiteral("new-key")));
        QVERIFY(failure.has_value());
        QCOMPARE(failure->kind(), RoyaltiesError::Kind::server);
        QCOMPARE(failure->message(), PlatformTexts::keyringLockedSaveFailure());
        QVERIFY(prompter.unansweredCalls() > 0);
    }

    void aLockedKeyringWithoutOurItemIsNoKey()
    {
        if (!isScenarioProcess()) {
            runScenario(QProcessEnvironment::systemEnvironment(),
                        QStringLiteral(INKWARDEN_KEYRING_DIR "/run-with-keyring.sh"));
            return;
        }
        INKWARDEN_VERIFY_SAVED(save(neighbourService, QStringLiteral("someone else's")));
        QVERIFY(lockLogin());
        KeychainStore store(testService, 5s);
        QCOMPARE(QCoro::waitFor(store.readAPIKey()), StoredKey{});
    }

private:
    // No Secret Service to talk to: every operation fails at once, without waiting for the time-out.
    void expectFailureWithoutWaiting()
    {
        KeychainStore store(testService, 5s);
        QElapsedTimer elapsed;
        elapsed.start();
        // No keyring at all: no key, so that signing in can say why it is not kept.
        QCOMPARE(QCoro::waitFor(store.readAPIKey()), StoredKey{});
        QVERIFY2(elapsed.elapsed() < 2000, "loading waited for the time-out");

        elapsed.restart();
        const auto error = QCoro::waitFor(store.saveAPIKey(QStringLiteral("key")));
        QVERIFY(error.has_value());
        const auto status = saveFailureStatus(*error);
        QVERIFY2(status.has_value() && *status > 0, qPrintable(error->message()));
        qInfo().noquote() << "The save failed with:" << error->message();

        QCoro::waitFor(store.deleteAPIKey());
        QVERIFY2(elapsed.elapsed() < 2000, "saving or deleting waited for the time-out");
    }

    // A keyring that never answers: every operation ends after about `timeout`, a save with the
    // time-out status.
    void expectTimeOuts(KeychainStore &store, std::chrono::milliseconds timeout)
    {
        // The store's timers may fire up to 5% early (Qt's coarse timers).
        const auto atLeast = timeout.count() * 9 / 10;
        const auto bound = timeout.count() + 2000;
        QElapsedTimer elapsed;
        elapsed.start();
        QCOMPARE(store.loadAPIKey(), QString());
        QVERIFY(elapsed.elapsed() >= atLeast);
        QVERIFY(elapsed.elapsed() < bound);

        elapsed.restart();
        const auto error = QCoro::waitFor(store.saveAPIKey(QStringLiteral("key")));
        QVERIFY(error.has_value());
        QCOMPARE(error->message(), QStringLiteral("Could not save the API key in the keyring (-1)."));
        QVERIFY(elapsed.elapsed() < bound);

        elapsed.restart();
        QCoro::waitFor(store.deleteAPIKey());
        QVERIFY(elapsed.elapsed() >= atLeast);
        QVERIFY(elapsed.elapsed() < bound);
    }
};

QTEST_GUILESS_MAIN(TestKeychainStore)
#include "tst_keychainstore.moc"
