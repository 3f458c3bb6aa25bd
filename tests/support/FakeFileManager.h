#pragma once

#include <QDBusContext>
#include <QDBusError>
#include <QObject>
#include <QString>
#include <QStringList>

// The desktop's file manager (org.freedesktop.FileManager1) as a test plays it: it notes what it
// was asked to show, or refuses when told to.
class FakeFileManager
    : public QObject
    , protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    static QString service() { return QStringLiteral("org.freedesktop.FileManager1"); }
    static QString path() { return QStringLiteral("/org/freedesktop/FileManager1"); }

    QList<QStringList> shownItems;
    QStringList startupIds;
    bool refuse = false;

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &startupId)
    {
        if (refuse) {
            sendErrorReply(QDBusError::Failed, QStringLiteral("The file manager is not in the mood"));
            return;
        }
        shownItems.append(uris);
        startupIds.append(startupId);
    }
};
