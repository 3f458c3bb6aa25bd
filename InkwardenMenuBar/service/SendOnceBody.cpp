#include "SendOnceBody.h"

#include <algorithm>
#include <cstring>

SendOnceBody::SendOnceBody(QByteArray bytes, QObject *parent)
    : QIODevice(parent)
    , m_bytes(std::move(bytes))
{
    open(QIODevice::ReadOnly);
}

bool SendOnceBody::reset()
{
    return false;
}

bool SendOnceBody::seek(qint64)
{
    return false;
}

qint64 SendOnceBody::size() const
{
    return m_bytes.size();
}

qint64 SendOnceBody::readData(char *data, qint64 maximum)
{
    const qint64 count = std::min<qint64>(maximum, m_bytes.size() - m_sent);
    if (count <= 0) {
        return 0;
    }
    std::memcpy(data, m_bytes.constData() + m_sent, size_t(count));
    m_sent += count;
    return count;
}

qint64 SendOnceBody::writeData(const char *, qint64)
{
    return -1;
}
