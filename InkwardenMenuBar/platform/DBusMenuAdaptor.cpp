#include "DBusMenuAdaptor.h"

#include "DBusMenu.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>

DBusMenuAdaptor::DBusMenuAdaptor(DBusMenu *menu)
    : QDBusAbstractAdaptor(menu)
    , m_menu(menu)
{
    connect(menu, &DBusMenu::layoutUpdated, this, &DBusMenuAdaptor::LayoutUpdated);
    connect(menu, &DBusMenu::itemsPropertiesUpdated, this, &DBusMenuAdaptor::ItemsPropertiesUpdated);
}

QString DBusMenuAdaptor::textDirection() const
{
    return QGuiApplication::layoutDirection() == Qt::RightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

bool DBusMenuAdaptor::knows(int id) const
{
    return id == DBusMenu::RootId || m_menu->contains(id);
}

void DBusMenuAdaptor::replyUnknownId(int id)
{
    if (m_menu->calledFromDBus()) {
        m_menu->sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No menu entry with id %1").arg(id));
    }
}

uint DBusMenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                                DBusMenuLayoutItem &layout)
{
    if (!knows(parentId)) {
        replyUnknownId(parentId);
        return 0;
    }
    layout = m_menu->layout(parentId, recursionDepth, propertyNames);
    return DBusMenu::LayoutRevision;
}

DBusMenuItemList DBusMenuAdaptor::GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames)
{
    DBusMenuItemList items;
    for (int id : ids) {
        if (knows(id)) {
            items.append(DBusMenuItem{id, m_menu->properties(id, propertyNames)});
        }
    }
    return items;
}

QDBusVariant DBusMenuAdaptor::GetProperty(int id, const QString &name)
{
    const QVariantMap properties = m_menu->properties(id, {name});
    if (!knows(id) || !properties.contains(name)) {
        if (m_menu->calledFromDBus()) {
            m_menu->sendErrorReply(QDBusError::InvalidArgs,
                                   QStringLiteral("Menu entry %1 has no property %2").arg(id).arg(name));
        }
        return QDBusVariant(QVariant(0));
    }
    return QDBusVariant(properties.value(name));
}

void DBusMenuAdaptor::Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp)
{
    Q_UNUSED(data);
    Q_UNUSED(timestamp);
    if (!m_menu->handleEvent(id, eventId)) {
        replyUnknownId(id);
    }
}

QList<int> DBusMenuAdaptor::EventGroup(const DBusMenuEventList &events)
{
    QList<int> idErrors;
    for (const DBusMenuEvent &event : events) {
        if (!m_menu->handleEvent(event.id, event.eventId)) {
            idErrors.append(event.id);
        }
    }
    if (!events.isEmpty() && idErrors.size() == events.size() && m_menu->calledFromDBus()) {
        m_menu->sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("None of the events names a menu entry"));
    }
    return idErrors;
}

bool DBusMenuAdaptor::AboutToShow(int id)
{
    if (!knows(id)) {
        replyUnknownId(id);
    }
    // The entries never change, so the host never needs to fetch the layout again.
    return false;
}

QList<int> DBusMenuAdaptor::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    idErrors.clear();
    for (int id : ids) {
        if (!knows(id)) {
            idErrors.append(id);
        }
    }
    return {};
}
