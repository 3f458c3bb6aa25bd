#pragma once

#include <QDBusConnection>
#include <QLockFile>
#include <QObject>
#include <QStringList>

#include <memory>

class QLocalServer;

// Keeps Inkwarden to one process per user. The first process owns the name com.inkwarden.menubar on
// the session bus and serves org.freedesktop.Application; a later launch hands its URLs (the
// browser's sign-in callback) to it and ends. Without a session bus, a lock file and a local socket
// do the same.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Role : quint8 {
        // This process is Inkwarden; urlsReceived and activationRequested will arrive.
        primary,
        // Another process is Inkwarden and has been given the URLs; this one should end.
        handedOver,
        // Neither owning nor reaching the running Inkwarden was possible.
        failed,
    };

    static QString defaultServiceName() { return QStringLiteral("com.inkwarden.menubar"); }

    // `bus` is the session bus to use (a disconnected one means there is none); `runtimeFolder` holds
    // the lock file and socket name of the fallback.
    SingleInstance(QDBusConnection bus, QString runtimeFolder, QString serviceName = defaultServiceName(),
                   QObject *parent = nullptr);
    ~SingleInstance() override;

    // Becomes the one Inkwarden, or hands `urls` (or, with none, a request to show itself) to it.
    Role claim(const QStringList &urls);

    static QString objectPath(const QString &serviceName);

Q_SIGNALS:
    void urlsReceived(const QStringList &urls);
    void activationRequested();

private:
    Role claimOnBus(const QStringList &urls);
    Role claimWithLockFile(const QStringList &urls);
    QString socketName() const;

    QDBusConnection m_bus;
    QString m_runtimeFolder;
    QString m_serviceName;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QLocalServer> m_server;
};
