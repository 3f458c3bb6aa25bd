#include "ReplySender.h"

#include <QTimer>

#include <sys/socket.h>

ReplySender::ReplySender(QObject *parent)
    : QObject(parent)
{}

ReplySender::~ReplySender() = default;

void ReplySender::send(QHttpServerResponder &&responder, const HttpReply &reply, const Fault &fault)
{
    QTcpSocket *socket = responder.socket();
    if (!fault.hang && !fault.reset && fault.delayMs <= 0) {
        write(responder, reply);
        return;
    }
    if (fault.reset && fault.delayMs <= 0) {
        // Not from inside QHttpServer's read handler: it still uses the connection afterwards.
        QTimer::singleShot(0, socket, [socket] { resetConnection(socket); });
        return;
    }

    const quint64 id = m_nextId++;
    auto held = std::make_unique<Held>(Held{std::move(responder), socket, reply, fault.reset, {}});
    // A client that gives up takes its held answer with it.
    held->disconnectWatch = connect(socket, &QTcpSocket::disconnected, this, [this, id] { forget(id); });
    m_held.emplace(id, std::move(held));
    if (!fault.hang || fault.reset) {
        QTimer::singleShot(fault.delayMs, this, [this, id] { finish(id); });
    }
}

void ReplySender::finish(quint64 id)
{
    const auto it = m_held.find(id);
    if (it == m_held.end()) {
        return;
    }
    const std::unique_ptr<Held> held = std::move(it->second);
    m_held.erase(it);
    disconnect(held->disconnectWatch);
    if (!held->socket || held->socket->state() != QAbstractSocket::ConnectedState) {
        return;
    }
    if (held->reset) {
        resetConnection(held->socket);
    } else {
        write(held->responder, held->reply);
    }
}

void ReplySender::releaseAll()
{
    auto held = std::move(m_held);
    m_held.clear();
    for (const auto &[id, entry] : held) {
        if (entry->socket) {
            entry->socket->disconnectFromHost();
        }
    }
}

void ReplySender::write(QHttpServerResponder &responder, const HttpReply &reply)
{
    QTcpSocket *socket = responder.socket();
    if (!socket || !socket->isOpen()) {
        return;
    }
    responder.writeStatusLine(static_cast<QHttpServerResponder::StatusCode>(reply.status));
    if (!reply.contentType.isEmpty()) {
        responder.writeHeader(QByteArrayLiteral("Content-Type"), reply.contentType);
    }
    responder.writeHeader(QByteArrayLiteral("Content-Length"), QByteArray::number(reply.body.size()));
    for (const auto &[name, value] : reply.headers) {
        responder.writeHeader(name, value);
    }
    responder.writeBody(reply.body);
}

void ReplySender::resetConnection(QTcpSocket *socket)
{
    const qintptr descriptor = socket->socketDescriptor();
    if (descriptor != -1) {
        // Lingering for zero seconds makes close() send RST instead of FIN.
        const linger abortive{1, 0};
        ::setsockopt(int(descriptor), SOL_SOCKET, SO_LINGER, &abortive, sizeof abortive);
    }
    socket->abort();
}
