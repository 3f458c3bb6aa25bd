#include "ConnectViewModel.h"

#include "store/PlatformTexts.h"
#include "store/RoyaltiesStore.h"

ConnectViewModel::ConnectViewModel(QObject *parent)
    : StoreViewModel({&RoyaltiesStore::isAuthenticatingChanged, &RoyaltiesStore::isLoadingChanged}, parent)
{}

QString ConnectViewModel::signInButtonTitle() const
{
    const bool waiting = fromStore([](const RoyaltiesStore &store) { return store.isAuthenticating(); });
    return waiting ? QStringLiteral(u"Waiting for browser sign-in\u2026") : QStringLiteral("Sign in with Inkwarden");
}

QString ConnectViewModel::connectButtonTitle() const
{
    const bool connecting = fromStore([](const RoyaltiesStore &store) { return store.isLoading(); });
    return connecting ? QStringLiteral(u"Connecting\u2026") : QStringLiteral("Connect with API key");
}

QString ConnectViewModel::builtInServerURLText()
{
    return RoyaltiesStore::builtInServerURL();
}

QString ConnectViewModel::apiKeyHint()
{
    return PlatformTexts::apiKeyStorageNote();
}

QString ConnectViewModel::versionLine() const
{
    return QStringLiteral("Version ")
           + fromStore([](const RoyaltiesStore &store) { return store.currentAppVersion(); });
}
