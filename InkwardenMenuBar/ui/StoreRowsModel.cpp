#include "StoreRowsModel.h"

#include "store/RoyaltiesStore.h"

#include <utility>

StoreRowsModel::StoreRowsModel(QByteArrayList roles, QObject *parent)
    : QAbstractListModel(parent)
    , m_roles(std::move(roles))
{}

void StoreRowsModel::setStore(RoyaltiesStore *store)
{
    if (m_store == store) {
        return;
    }
    if (m_store) {
        QObject::disconnect(m_store, nullptr, this, nullptr);
    }
    m_store = store;
    if (m_store) {
        watch(*m_store);
    }
    refresh();
    Q_EMIT storeChanged();
}

void StoreRowsModel::refresh()
{
    QList<QVariantList> rows = m_store ? makeRows(*m_store) : QList<QVariantList>();
    if (rows.size() == m_rows.size()) {
        if (rows != m_rows) {
            m_rows = std::move(rows);
            Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1));
        }
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    Q_EMIT countChanged();
}

int StoreRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant StoreRowsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    return m_rows.at(index.row()).value(role - Qt::UserRole);
}

QHash<int, QByteArray> StoreRowsModel::roleNames() const
{
    QHash<int, QByteArray> names;
    for (qsizetype i = 0; i < m_roles.size(); ++i) {
        names.insert(Qt::UserRole + int(i), m_roles.at(i));
    }
    return names;
}

QVariant StoreRowsModel::value(int row, const QString &role) const
{
    const qsizetype column = m_roles.indexOf(role.toUtf8());
    if (row < 0 || row >= m_rows.size() || column < 0) {
        return {};
    }
    return m_rows.at(row).value(column);
}
