// A minimal org.kde.StatusNotifierWatcher for the status item tests: it owns the watcher name on the
// session bus it is started on, keeps the registered items (dropping those whose service goes away)
// and claims a host is present. DropItem forgets an item as a host that gave up on it does. It prints "ready" once it
// owns the name, so that a test can wait for it; stopping the process makes the watcher go away as a panel's does.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QTextStream>

class TestStatusNotifierWatcher
    : public QObject
    , protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit TestStatusNotifierWatcher(const QDBusConnection &bus)
        : m_services(QString(), bus, QDBusServiceWatcher::WatchForUnregistration)
    {
        connect(&m_services, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString &service) {
            const QStringList gone = m_items.filter(service + QLatin1Char('/'));
            for (const QString &item : gone) {
                m_items.removeAll(item);
                Q_EMIT StatusNotifierItemUnregistered(item);
            }
            m_services.removeWatchedService(service);
        });
    }

    QStringList registeredItems() const { return m_items; }
    bool isHostRegistered() const { return true; }
    int protocolVersion() const { return 0; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &serviceOrPath)
    {
        // Items name either their service (the object is then /StatusNotifierItem) or their path on
        // the caller's own connection.
        const bool isPath = serviceOrPath.startsWith(QLatin1Char('/'));
        const QString service = isPath ? message().service() : serviceOrPath;
        const QString path = isPath ? serviceOrPath : QStringLiteral("/StatusNotifierItem");
        if (!connection().interface()->isServiceRegistered(service)) {
            sendErrorReply(QDBusError::ServiceUnknown, service);
            return;
        }
        const QString item = service + path;
        if (!m_items.contains(item)) {
            m_items.append(item);
            m_services.addWatchedService(service);
        }
        Q_EMIT StatusNotifierItemRegistered(item);
    }

    void RegisterStatusNotifierHost(const QString &service) { Q_UNUSED(service); }

    void DropItem(const QString &item)
    {
        if (m_items.removeAll(item) > 0) {
            Q_EMIT StatusNotifierItemUnregistered(item);
        }
    }

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &item);
    void StatusNotifierItemUnregistered(const QString &item);
    void StatusNotifierHostRegistered();

private:
    QStringList m_items;
    QDBusServiceWatcher m_services;
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    TestStatusNotifierWatcher watcher(bus);
    if (!bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
                                | QDBusConnection::ExportAllProperties)
        || !bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"))) {
        QTextStream(stderr) << "could not own org.kde.StatusNotifierWatcher: " << bus.lastError().message() << '\n';
        return 1;
    }
    QTextStream(stdout) << "ready" << Qt::endl;
    return app.exec();
}

#include "TestStatusNotifierWatcher.moc"
