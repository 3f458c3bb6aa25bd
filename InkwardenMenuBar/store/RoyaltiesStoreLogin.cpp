#include "DesktopServices.h"
#include "LoginItemService.h"
#include "PlatformTexts.h"
#include "RoyaltiesStore.h"
#include "model/Clock.h"

using namespace std::chrono_literals;

void RoyaltiesStore::refreshLaunchAtLoginStatus()
{
    const LoginItemService::Status status = m_environment.loginItems.status();
    publishOpensAtLogin(status == LoginItemService::Status::enabled);
    setLaunchAtLoginRequiresApproval(status == LoginItemService::Status::requiresApproval);
}

void RoyaltiesStore::setOpensAtLogin(bool enabled)
{
    using Status = LoginItemService::Status;
    setErrorMessage(std::nullopt);
    LoginItemService &loginItems = m_environment.loginItems;
    const Status status = loginItems.status();

    std::optional<QString> failure;
    if (enabled) {
        if (status != Status::enabled && status != Status::requiresApproval) {
            failure = loginItems.registerItem();
        }
        if (!failure) {
            refreshLaunchAtLoginStatus();
        }
    } else {
        if (status != Status::notRegistered && status != Status::notFound) {
            failure = loginItems.unregisterItem();
        }
        if (!failure) {
            publishOpensAtLogin(false);
            setLaunchAtLoginRequiresApproval(false);
        }
    }

    if (failure) {
        setErrorMessage(PlatformTexts::couldNotUpdateOpenAtLogin(*failure));
        refreshLaunchAtLoginStatus();
        return;
    }
    // The system may refuse quietly: a second look a moment later tells.
    m_loginStatusLookTimer = m_environment.clock.startTimer(1s, false, [this, enabled] {
        m_loginStatusLookTimer.reset();
        refreshLaunchAtLoginStatus();
        if (enabled && !m_opensAtLogin && !m_launchAtLoginRequiresApproval) {
            setErrorMessage(PlatformTexts::couldNotEnableOpenAtLogin());
        }
    });
}

void RoyaltiesStore::openLoginItemsSettings()
{
    m_environment.desktop.openLoginItemsSettings();
}
