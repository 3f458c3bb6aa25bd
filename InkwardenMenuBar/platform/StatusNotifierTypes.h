#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

// The D-Bus structures of the StatusNotifierItem and com.canonical.dbusmenu interfaces, with their
// marshalling. Call registerStatusNotifierTypes() before exporting an object that uses them.

// One icon size: (iiay), width, height and ARGB32 pixels in network byte order.
struct SniIconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static SniIconPixmap fromImage(const QImage &image);
};
using SniIconPixmapList = QList<SniIconPixmap>;

// The ToolTip property: (sa(iiay)ss), icon name, icon pixmaps, title and body.
struct SniToolTip {
    QString iconName;
    SniIconPixmapList iconPixmaps;
    QString title;
    QString description;
};

// One node of a dbusmenu layout: (ia{sv}av), whose children are variants holding nodes.
struct DBusMenuLayoutItem {
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayoutItem> children;
};

// (ia{sv}): the properties of one entry, as GetGroupProperties returns them.
struct DBusMenuItem {
    int id = 0;
    QVariantMap properties;
};
using DBusMenuItemList = QList<DBusMenuItem>;

// (ias): names of properties removed from one entry.
struct DBusMenuItemKeys {
    int id = 0;
    QStringList names;
};
using DBusMenuItemKeysList = QList<DBusMenuItemKeys>;

// (isvu): one event of EventGroup.
struct DBusMenuEvent {
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEventList = QList<DBusMenuEvent>;

// The dbusmenu "shortcut" property: aas, one list of key names per key combination.
using DBusMenuShortcut = QList<QStringList>;

QDBusArgument &operator<<(QDBusArgument &argument, const SniIconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, SniIconPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const SniToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, SniToolTip &toolTip);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayoutItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayoutItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemKeys &keys);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemKeys &keys);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event);

void registerStatusNotifierTypes();

Q_DECLARE_METATYPE(SniIconPixmap)
Q_DECLARE_METATYPE(SniToolTip)
Q_DECLARE_METATYPE(DBusMenuLayoutItem)
Q_DECLARE_METATYPE(DBusMenuItem)
Q_DECLARE_METATYPE(DBusMenuItemKeys)
Q_DECLARE_METATYPE(DBusMenuEvent)
