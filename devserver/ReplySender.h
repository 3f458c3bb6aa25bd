#pragma once

#include "FaultSwitches.h"
#include "HttpReply.h"

#include <QHttpServerResponder>
#include <QObject>
#include <QPointer>
#include <QTcpSocket>

#include <map>
#include <memory>

// Puts replies on the wire, honouring a fault's delay, hang and reset. QHttpServer 6.4 lets a
// handler keep its QHttpServerResponder and answer later, and gives the connection's socket, which
// is all that slow, silent and cut-off answers need.
class ReplySender : public QObject
{
    Q_OBJECT

public:
    explicit ReplySender(QObject *parent = nullptr);
    ~ReplySender() override;

    void send(QHttpServerResponder &&responder, const HttpReply &reply, const Fault &fault);

    // Delayed and hanging answers not yet sent.
    qsizetype heldCount() const { return qsizetype(m_held.size()); }
    // Drops delayed answers and closes the connections of hanging ones.
    void releaseAll();

    static void write(QHttpServerResponder &responder, const HttpReply &reply);
    // Closes the connection with a TCP reset rather than an orderly close.
    static void resetConnection(QTcpSocket *socket);

private:
    struct Held {
        QHttpServerResponder responder;
        QPointer<QTcpSocket> socket;
        HttpReply reply;
        bool reset = false;
        QMetaObject::Connection disconnectWatch;
    };

    void finish(quint64 id);
    void forget(quint64 id) { m_held.erase(id); }

    std::map<quint64, std::unique_ptr<Held>> m_held;
    quint64 m_nextId = 1;
};
