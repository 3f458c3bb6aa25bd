#include "ConnectViewModel.h"

#include "store/PlatformTexts.h"
#include "store/RoyaltiesStore.h"

ConnectViewModel::ConnectViewModel(QObject *parent)
    : StoreViewModel({&RoyaltiesStore::isAuthenticatingChanged, &RoyaltiesStore::isLoadingChanged}, parent)
{}

QString ConnectViewModel::signInButtonTitle() const
{
    const bool waiting = fromStore([](const RoyaltiesStore &store) { return store.isAuthenticating(); });
    if (waiting) {
        //: Title of the sign-in button while the browser sign-in is under way.
        return tr("Waiting for browser sign-in…");
    }
    //: Button that signs in through the browser.
    return tr("Sign in with Inkwarden");
}

QString ConnectViewModel::connectButtonTitle() const
{
    const bool connecting = fromStore([](const RoyaltiesStore &store) { return store.isLoading(); });
    if (connecting) {
        //: Title of the connect button while the API key is being checked.
        return tr("Connecting…");
    }
    //: Button that connects with the API key typed in above it.
    return tr("Connect with API key");
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
    //: Under the sign-in form: %1 is Inkwarden's version number ("1.4.0").
    return tr("Version %1").arg(fromStore([](const RoyaltiesStore &store) { return store.currentAppVersion(); }));
}
