#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QtQml/qqml.h>

#include <optional>

class RoyaltiesStore;

// What one view shows beside the store's own state: its texts, choices and enabled states, read
// from the store. Every property notifies `changed` whenever a store property it reads changes, so
// the view only binds and calls.
class StoreViewModel : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(RoyaltiesStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)

public:
    using StoreSignal = void (RoyaltiesStore::*)();

    RoyaltiesStore *store() const { return m_store; }
    void setStore(RoyaltiesStore *store);

Q_SIGNALS:
    void storeChanged();
    void changed();

protected:
    StoreViewModel(QList<StoreSignal> watched, QObject *parent);

    // What a view model reads beyond the store's own signals (a part of the store that tells its
    // own changes): connect those to `changed` here and return the connections, which are dropped
    // when the store changes.
    virtual QList<QMetaObject::Connection> watchParts(RoyaltiesStore & /*store*/) { return {}; }

    // `read` applied to the store, or `fallback` while the view has none yet.
    template <typename Read, typename Value = std::invoke_result_t<Read, const RoyaltiesStore &>>
    Value fromStore(Read read, Value fallback = {}) const
    {
        return m_store ? read(*m_store) : fallback;
    }

private:
    QList<StoreSignal> m_watched;
    QPointer<RoyaltiesStore> m_store;
    // What watchParts connected, dropped when the store changes.
    QList<QMetaObject::Connection> m_partConnections;
};
