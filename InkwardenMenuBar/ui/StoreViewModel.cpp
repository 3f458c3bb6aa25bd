#include "StoreViewModel.h"

#include "store/RoyaltiesStore.h"

#include <utility>

StoreViewModel::StoreViewModel(QList<StoreSignal> watched, QObject *parent)
    : QObject(parent)
    , m_watched(std::move(watched))
{}

void StoreViewModel::setStore(RoyaltiesStore *store)
{
    if (m_store == store) {
        return;
    }
    if (m_store) {
        QObject::disconnect(m_store, nullptr, this, nullptr);
    }
    for (const QMetaObject::Connection &connection : std::as_const(m_partConnections)) {
        QObject::disconnect(connection);
    }
    m_partConnections.clear();
    m_store = store;
    if (m_store) {
        for (const StoreSignal signal : std::as_const(m_watched)) {
            QObject::connect(m_store, signal, this, &StoreViewModel::changed);
        }
        m_partConnections = watchParts(*m_store);
    }
    Q_EMIT storeChanged();
    Q_EMIT changed();
}
