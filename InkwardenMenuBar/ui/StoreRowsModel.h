#pragma once

#include <QAbstractListModel>
#include <QByteArrayList>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqml.h>

class RoyaltiesStore;

// A list that a view shows, made from the store: each row holds one value per role. The rows are
// made again whenever the store says that what they show may have changed. While their number
// stays, they change in place, position by position (a toggled or moved format, new figures), so a
// view keeps its delegates and the keyboard focus in them; a list whose rows come or go is reset.
class StoreRowsModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(RoyaltiesStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    RoyaltiesStore *store() const { return m_store; }
    void setStore(RoyaltiesStore *store);
    int count() const { return int(m_rows.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The value of `role` in row `row`, for code and tests; nothing outside the list.
    Q_INVOKABLE QVariant value(int row, const QString &role) const;

Q_SIGNALS:
    void storeChanged();
    void countChanged();

protected:
    explicit StoreRowsModel(QByteArrayList roles, QObject *parent = nullptr);

    // The rows as they are now, one value per role in the order of the roles.
    virtual QList<QVariantList> makeRows(const RoyaltiesStore &store) const = 0;
    // Connects the store's signals after which the rows are made again to `refresh`.
    virtual void watch(RoyaltiesStore &store) = 0;
    void refresh();

private:
    QByteArrayList m_roles;
    QPointer<RoyaltiesStore> m_store;
    QList<QVariantList> m_rows;
};
