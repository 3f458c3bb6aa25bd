#include "ApplicationAdaptor.h"

ApplicationAdaptor::ApplicationAdaptor(QObject *parent)
    : QDBusAbstractAdaptor(parent)
{
    setAutoRelaySignals(false);
}

void ApplicationAdaptor::Activate(const QVariantMap &)
{
    Q_EMIT activationRequested();
}

void ApplicationAdaptor::Open(const QStringList &uris, const QVariantMap &)
{
    Q_EMIT urlsOpened(uris);
}

void ApplicationAdaptor::ActivateAction(const QString &, const QVariantList &, const QVariantMap &)
{
    // Inkwarden offers no actions; asking for one simply brings it forward.
    Q_EMIT activationRequested();
}
