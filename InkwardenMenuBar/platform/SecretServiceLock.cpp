#include "SecretServiceLock.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <qcoro/qcorodbuspendingcall.h>

Q_LOGGING_CATEGORY(lcSecretService, "inkwarden.keychain.service", QtCriticalMsg)

namespace {

const QString secretsName = QStringLiteral("org.freedesktop.secrets");
const QString secretsPath = QStringLiteral("/org/freedesktop/secrets");
const QString serviceInterface = QStringLiteral("org.freedesktop.Secret.Service");
const QString promptInterface = QStringLiteral("org.freedesktop.Secret.Prompt");

using Attributes = QMap<QString, QString>;

QList<QDBusObjectPath> pathsFrom(const QVariant &value)
{
    if (value.canConvert<QDBusArgument>()) {
        return qdbus_cast<QList<QDBusObjectPath>>(value.value<QDBusArgument>());
    }
    return value.value<QList<QDBusObjectPath>>();
}

bool isNoService(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected
           || error.type() == QDBusError::UnknownObject || error.type() == QDBusError::UnknownMethod
           || error.type() == QDBusError::UnknownInterface || error.type() == QDBusError::NotSupported;
}

} // namespace

SecretServiceLock::SecretServiceLock(QDBusConnection bus, QString service, QString keyName,
                                     std::chrono::milliseconds timeout, QObject *parent)
    : KeyringLock(parent)
    , m_bus(std::move(bus))
    , m_service(std::move(service))
    , m_keyName(std::move(keyName))
    , m_timeout(timeout)
{
    // The attributes go out as a{ss}.
    qDBusRegisterMetaType<Attributes>();
    // The slots' argument types must be known before the first connection is made.
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
    if (!m_bus.isConnected()) {
        return;
    }
    // A collection that is locked or unlocked is "changed"; so is one that is created.
    m_bus.connect(secretsName, secretsPath, serviceInterface, QStringLiteral("CollectionChanged"), this,
                  SLOT(onCollectionChanged(QDBusObjectPath)));
    m_bus.connect(secretsName, secretsPath, serviceInterface, QStringLiteral("CollectionCreated"), this,
                  SLOT(onCollectionChanged(QDBusObjectPath)));
    auto *watcher = new QDBusServiceWatcher(secretsName, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &SecretServiceLock::changed);
}

QCoro::Task<QDBusMessage> SecretServiceLock::searchItems()
{
    // The attributes QtKeychain files the item under.
    const Attributes attributes{{QStringLiteral("server"), m_service}, {QStringLiteral("user"), m_keyName}};
    QDBusMessage call =
        QDBusMessage::createMethodCall(secretsName, secretsPath, serviceInterface, QStringLiteral("SearchItems"));
    call << QVariant::fromValue(attributes);
    // Named, not a temporary: g++ 12 mishandles temporaries inside a co_await expression.
    QDBusPendingCall pending = m_bus.asyncCall(call, int(m_timeout.count()));
    co_return co_await pending;
}

QCoro::Task<KeyringLock::ItemState> SecretServiceLock::itemState()
{
    if (!m_bus.isConnected()) {
        co_return ItemState::noService;
    }
    QCoro::Task<QDBusMessage> searching = searchItems();
    const QDBusMessage reply = co_await std::move(searching);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        const QDBusError error(reply);
        qCWarning(lcSecretService) << "SearchItems:" << error.name() << error.message();
        co_return isNoService(error) ? ItemState::noService : ItemState::unreachable;
    }
    if (reply.arguments().size() != 2) {
        co_return ItemState::unreachable;
    }
    if (!pathsFrom(reply.arguments().at(0)).isEmpty()) {
        co_return ItemState::unlocked;
    }
    if (!pathsFrom(reply.arguments().at(1)).isEmpty()) {
        co_return ItemState::locked;
    }
    co_return ItemState::absent;
}

QCoro::Task<bool> SecretServiceLock::isLockedForSaving()
{
    if (!m_bus.isConnected()) {
        co_return false;
    }
    QDBusMessage get =
        QDBusMessage::createMethodCall(secretsName, QStringLiteral("/org/freedesktop/secrets/aliases/default"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << QStringLiteral("org.freedesktop.Secret.Collection") << QStringLiteral("Locked");
    QDBusPendingCall pending = m_bus.asyncCall(get, int(m_timeout.count()));
    const QDBusMessage reply = co_await pending;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        co_return false;
    }
    co_return reply.arguments().at(0).value<QDBusVariant>().variant().toBool();
}

QCoro::Task<> SecretServiceLock::askToUnlock()
{
    if (m_asking || !m_bus.isConnected()) {
        co_return;
    }
    m_asking = true;
    QCoro::Task<QDBusMessage> searching = searchItems();
    const QDBusMessage found = co_await std::move(searching);
    const QList<QDBusObjectPath> locked = found.type() == QDBusMessage::ReplyMessage && found.arguments().size() == 2
                                              ? pathsFrom(found.arguments().at(1))
                                              : QList<QDBusObjectPath>();
    if (locked.isEmpty()) {
        m_asking = false;
        co_return;
    }
    QDBusMessage unlock =
        QDBusMessage::createMethodCall(secretsName, secretsPath, serviceInterface, QStringLiteral("Unlock"));
    unlock << QVariant::fromValue(locked);
    QDBusPendingCall unlocking = m_bus.asyncCall(unlock, int(m_timeout.count()));
    const QDBusMessage unlocked = co_await unlocking;
    if (unlocked.type() != QDBusMessage::ReplyMessage || unlocked.arguments().size() != 2) {
        qCWarning(lcSecretService) << "Unlock was refused:" << QDBusError(unlocked).message();
        m_asking = false;
        co_return;
    }
    const QString prompt = unlocked.arguments().at(1).value<QDBusObjectPath>().path();
    if (prompt.isEmpty() || prompt == u"/") {
        // Unlocked without asking anyone.
        m_asking = false;
        Q_EMIT changed();
        co_return;
    }
    m_prompt = prompt;
    m_bus.connect(secretsName, prompt, promptInterface, QStringLiteral("Completed"), this,
                  SLOT(onPromptCompleted(bool, QDBusVariant)));
    QDBusMessage show = QDBusMessage::createMethodCall(secretsName, prompt, promptInterface, QStringLiteral("Prompt"));
    // No window to attach the prompt to: the keyring shows its own.
    show << QString();
    QDBusPendingCall showing = m_bus.asyncCall(show, int(m_timeout.count()));
    const QDBusMessage shown = co_await showing;
    if (shown.type() != QDBusMessage::ReplyMessage) {
        qCWarning(lcSecretService) << "The unlock prompt did not show:" << QDBusError(shown).message();
        forgetPrompt();
    }
}

void SecretServiceLock::onCollectionChanged(const QDBusObjectPath &)
{
    Q_EMIT changed();
}

void SecretServiceLock::onPromptCompleted(bool dismissed, const QDBusVariant &)
{
    qCDebug(lcSecretService) << "Unlock prompt completed, dismissed:" << dismissed;
    forgetPrompt();
    Q_EMIT changed();
}

void SecretServiceLock::forgetPrompt()
{
    if (!m_prompt.isEmpty()) {
        m_bus.disconnect(secretsName, m_prompt, promptInterface, QStringLiteral("Completed"), this,
                         SLOT(onPromptCompleted(bool, QDBusVariant)));
        m_prompt.clear();
    }
    m_asking = false;
}
