#include "StatusService.h"

#include "StatusBus.h"

#include <QDBusMessage>
#include <QVariantMap>

StatusService::StatusService(QDBusConnection bus, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
{
    m_published =
        m_bus.isConnected()
        && m_bus.registerObject(StatusBus::objectPath(), this,
                                QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSignals);
}

StatusService::~StatusService()
{
    if (m_published) {
        m_bus.unregisterObject(StatusBus::objectPath());
    }
}

void StatusService::setStatus(const PanelStatus &status)
{
    if (status == m_status) {
        return;
    }
    m_status = status;
    if (!m_published) {
        return;
    }
    Q_EMIT Changed(title(), toolTip(), state());
    // The standard signal as well, for generic D-Bus tools that watch properties.
    QDBusMessage changed =
        QDBusMessage::createSignal(StatusBus::objectPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    const QVariantMap properties{
        {QStringLiteral("Title"), title()}, {QStringLiteral("ToolTip"), toolTip()}, {QStringLiteral("State"), state()}};
    changed << StatusBus::interface() << properties << QStringList();
    m_bus.send(changed);
}
