#include "SingleInstance.h"

#include "ApplicationAdaptor.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>

namespace {

constexpr int handOverTimeoutMs = 5000;

// One URL a line; a line with no URL asks the running Inkwarden to show itself.
QByteArray encodeForSocket(const QStringList &urls)
{
    return urls.isEmpty() ? QByteArray("\n") : urls.join(u'\n').toUtf8() + '\n';
}

} // namespace

SingleInstance::SingleInstance(QDBusConnection bus, QString runtimeFolder, QString serviceName, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_runtimeFolder(std::move(runtimeFolder))
    , m_serviceName(std::move(serviceName))
{}

SingleInstance::~SingleInstance()
{
    if (m_bus.isConnected()) {
        m_bus.unregisterObject(objectPath(m_serviceName));
    }
}

QString SingleInstance::objectPath(const QString &serviceName)
{
    // The freedesktop convention: the bus name with dots as slashes.
    return u'/' + QString(serviceName).replace(u'.', u'/');
}

SingleInstance::Role SingleInstance::claim(const QStringList &urls)
{
    return m_bus.isConnected() ? claimOnBus(urls) : claimWithLockFile(urls);
}

SingleInstance::Role SingleInstance::claimOnBus(const QStringList &urls)
{
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = m_bus.interface()->registerService(
        m_serviceName, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        auto *adaptor = new ApplicationAdaptor(this);
        QObject::connect(adaptor, &ApplicationAdaptor::urlsOpened, this, &SingleInstance::urlsReceived);
        QObject::connect(adaptor, &ApplicationAdaptor::activationRequested, this, &SingleInstance::activationRequested);
        if (!m_bus.registerObject(objectPath(m_serviceName), this)) {
            return Role::failed;
        }
        return Role::primary;
    }

    QDBusMessage call =
        urls.isEmpty()
            ? QDBusMessage::createMethodCall(m_serviceName, objectPath(m_serviceName),
                                             QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"))
            : QDBusMessage::createMethodCall(m_serviceName, objectPath(m_serviceName),
                                             QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
    if (urls.isEmpty()) {
        call << QVariantMap();
    } else {
        call << urls << QVariantMap();
    }
    const QDBusMessage answer = m_bus.call(call, QDBus::Block, handOverTimeoutMs);
    return answer.type() == QDBusMessage::ReplyMessage ? Role::handedOver : Role::failed;
}

QString SingleInstance::socketName() const
{
    return m_runtimeFolder + QStringLiteral("/inkwarden.socket");
}

SingleInstance::Role SingleInstance::claimWithLockFile(const QStringList &urls)
{
    QDir().mkpath(m_runtimeFolder);
    m_lock = std::make_unique<QLockFile>(m_runtimeFolder + QStringLiteral("/inkwarden.lock"));
    // A lock left by a process that crashed is taken over: QLockFile checks whether its owner lives.
    if (m_lock->tryLock(0)) {
        QLocalServer::removeServer(socketName());
        m_server = std::make_unique<QLocalServer>();
        m_server->setSocketOptions(QLocalServer::UserAccessOption);
        if (!m_server->listen(socketName())) {
            return Role::failed;
        }
        QObject::connect(m_server.get(), &QLocalServer::newConnection, this, [this] {
            while (QLocalSocket *socket = m_server->nextPendingConnection()) {
                QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
                // One launch sends one message: everything up to its end belongs to one delivery.
                QObject::connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
                    QStringList delivered;
                    while (socket->canReadLine()) {
                        const QString line = QString::fromUtf8(socket->readLine()).trimmed();
                        if (!line.isEmpty()) {
                            delivered.append(line);
                        }
                    }
                    if (delivered.isEmpty()) {
                        Q_EMIT activationRequested();
                    } else {
                        Q_EMIT urlsReceived(delivered);
                    }
                });
            }
        });
        return Role::primary;
    }
    m_lock.reset();

    QLocalSocket socket;
    socket.connectToServer(socketName());
    if (!socket.waitForConnected(handOverTimeoutMs)) {
        return Role::failed;
    }
    socket.write(encodeForSocket(urls));
    if (!socket.waitForBytesWritten(handOverTimeoutMs)) {
        return Role::failed;
    }
    socket.disconnectFromServer();
    return Role::handedOver;
}
