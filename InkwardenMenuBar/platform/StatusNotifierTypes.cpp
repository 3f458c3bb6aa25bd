#include "StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

SniIconPixmap SniIconPixmap::fromImage(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    SniIconPixmap pixmap;
    pixmap.width = argb.width();
    pixmap.height = argb.height();
    pixmap.bytes.resize(qsizetype(argb.width()) * argb.height() * 4);
    auto *out = reinterpret_cast<quint32 *>(pixmap.bytes.data());
    for (int y = 0; y < argb.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            *out++ = qToBigEndian<quint32>(line[x]);
        }
    }
    return pixmap;
}

QDBusArgument &operator<<(QDBusArgument &argument, const SniIconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, SniIconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const SniToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmaps << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, SniToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmaps >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayoutItem &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.beginArray(qMetaTypeId<QDBusVariant>());
    for (const DBusMenuLayoutItem &child : item.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayoutItem &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    item.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant variant;
        argument >> variant;
        const QDBusArgument child = variant.variant().value<QDBusArgument>();
        DBusMenuLayoutItem childItem;
        child >> childItem;
        item.children.append(childItem);
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItem &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItem &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemKeys &keys)
{
    argument.beginStructure();
    argument << keys.id << keys.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemKeys &keys)
{
    argument.beginStructure();
    argument >> keys.id >> keys.names;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.eventId << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.eventId >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes()
{
    static const bool registered = [] {
        qDBusRegisterMetaType<SniIconPixmap>();
        qDBusRegisterMetaType<SniIconPixmapList>();
        qDBusRegisterMetaType<SniToolTip>();
        qDBusRegisterMetaType<DBusMenuLayoutItem>();
        qDBusRegisterMetaType<DBusMenuItem>();
        qDBusRegisterMetaType<DBusMenuItemList>();
        qDBusRegisterMetaType<DBusMenuItemKeys>();
        qDBusRegisterMetaType<DBusMenuItemKeysList>();
        qDBusRegisterMetaType<DBusMenuEvent>();
        qDBusRegisterMetaType<DBusMenuEventList>();
        qDBusRegisterMetaType<DBusMenuShortcut>();
        // The adaptors' methods name these by their aliases, which QtDBus looks up by name.
        qRegisterMetaType<SniIconPixmapList>("SniIconPixmapList");
        qRegisterMetaType<DBusMenuItemList>("DBusMenuItemList");
        qRegisterMetaType<DBusMenuItemKeysList>("DBusMenuItemKeysList");
        qRegisterMetaType<DBusMenuEventList>("DBusMenuEventList");
        qRegisterMetaType<DBusMenuShortcut>("DBusMenuShortcut");
        return true;
    }();
    Q_UNUSED(registered);
}
