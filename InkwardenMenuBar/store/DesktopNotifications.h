#pragma once

#include <QObject>
#include <QString>

// The desktop's notification bubbles. Inkwarden keeps at most one on screen: each new one takes the
// place of the one before.
class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    struct Notification {
        QString title;
        QString body;
        // With the desktop's short "new message" sound, where the notification server plays sounds.
        bool withSound = false;
    };

    using QObject::QObject;

    // Shows `notification` in place of the one shown before, if that one is still there. Never
    // blocks and never fails aloud: a desktop without a notification server shows nothing.
    virtual void show(const Notification &notification) = 0;

Q_SIGNALS:
    // The user clicked the notification (its default action).
    void activated();
};
