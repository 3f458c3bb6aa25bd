#include "FreedesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
const QString defaultAction = QStringLiteral("default");

} // namespace

FreedesktopNotifications::FreedesktopNotifications(QDBusConnection bus, QObject *parent)
    : DesktopNotifications(parent)
    , m_bus(std::move(bus))
{
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                  SLOT(handleActionInvoked(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                  SLOT(handleNotificationClosed(uint, uint)));
}

void FreedesktopNotifications::show(const Notification &notification)
{
    QVariantMap hints{
        {QStringLiteral("desktop-entry"), QStringLiteral("com.inkwarden.menubar")},
        {QStringLiteral("category"), QStringLiteral("transfer.complete")},
    };
    if (notification.withSound) {
        hints.insert(QStringLiteral("sound-name"), soundName());
    } else {
        hints.insert(QStringLiteral("suppress-sound"), true);
    }
    //: The notification's action (a button, or a click on it with some desktops): shows the popover.
    const QString openLabel = tr("Open Inkwarden");
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Notify"));
    call << QStringLiteral("Inkwarden") << m_shownId << QStringLiteral("com.inkwarden.menubar") << notification.title
         << notification.body << QStringList{defaultAction, openLabel} << hints << qint32(-1);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        const QDBusPendingReply<uint> reply = *finished;
        // No server, or one that failed: nothing is on screen to replace.
        m_shownId = reply.isValid() ? reply.value() : 0;
        finished->deleteLater();
    });
}

void FreedesktopNotifications::handleActionInvoked(uint id, const QString &actionKey)
{
    if (id != 0 && id == m_shownId && actionKey == defaultAction) {
        Q_EMIT activated();
    }
}

void FreedesktopNotifications::handleNotificationClosed(uint id, uint /*reason*/)
{
    if (id != 0 && id == m_shownId) {
        m_shownId = 0;
    }
}
