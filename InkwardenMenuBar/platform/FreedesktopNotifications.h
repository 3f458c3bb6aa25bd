#pragma once

#include "store/DesktopNotifications.h"

#include <QDBusConnection>

// Notifications through the desktop's notification server (org.freedesktop.Notifications on the
// session bus): Inkwarden's icon and desktop entry, a default action that opens the popover, and the
// id of the last one shown, so that the next takes its place. Calls never wait for the server.
class FreedesktopNotifications : public DesktopNotifications
{
    Q_OBJECT

public:
    explicit FreedesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    void show(const Notification &notification) override;

    // The desktop's name for a short "new message" sound.
    static QString soundName() { return QStringLiteral("message-new-instant"); }

private Q_SLOTS:
    void handleActionInvoked(uint id, const QString &actionKey);
    void handleNotificationClosed(uint id, uint reason);

private:
    QDBusConnection m_bus;
    // The server's id of the notification on screen; 0 for none.
    uint m_shownId = 0;
};
