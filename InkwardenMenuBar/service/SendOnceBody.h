#pragma once

#include <QByteArray>
#include <QIODevice>

// The body of a request that Qt's network layer may send once and never again.
//
// Qt's HTTP/1 layer quietly sends a request a second (and third) time when the connection closes
// before any reply arrives, for a GET as much as for a POST and on a fresh connection too. The
// server then sees requests Inkwarden never made, which would break its promise of one statistics
// request every 3 seconds at most, and spend a sign-in code twice. A body that cannot be rewound
// stops that: Qt has to give up on the request and report it instead of sending it again.
class SendOnceBody : public QIODevice
{
    Q_OBJECT

public:
    explicit SendOnceBody(QByteArray bytes, QObject *parent = nullptr);

    // Always false: the body is read from its start exactly once.
    bool reset() override;
    bool seek(qint64 position) override;
    qint64 size() const override;

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *data, qint64 length) override;

private:
    QByteArray m_bytes;
    qint64 m_sent = 0;
};
