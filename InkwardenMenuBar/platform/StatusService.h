#pragma once

#include "PanelStatus.h"

#include <QDBusConnection>
#include <QObject>

// The running Inkwarden's panel status on the session bus (StatusBus names where): the title, the
// tool tip and the state as properties, and a Changed signal carrying all three on every change, so
// that a bar follows it without ever asking twice. Reading it sends no request to the server.
class StatusService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.inkwarden.menubar.Status")
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString ToolTip READ toolTip)
    Q_PROPERTY(QString State READ state)

public:
    explicit StatusService(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);
    ~StatusService() override;

    // False when there is no session bus or the path is taken; Inkwarden runs on without it.
    bool isPublished() const { return m_published; }

    const PanelStatus &status() const { return m_status; }
    void setStatus(const PanelStatus &status);

    QString title() const { return m_status.title; }
    QString toolTip() const { return m_status.toolTip(); }
    QString state() const { return rawValue(m_status.state); }

Q_SIGNALS:
    Q_SCRIPTABLE void Changed(const QString &title, const QString &toolTip, const QString &state);

private:
    QDBusConnection m_bus;
    PanelStatus m_status;
    bool m_published = false;
};
