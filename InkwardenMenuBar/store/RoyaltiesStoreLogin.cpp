#include "RoyaltiesStore.h"
#include "platform/LoginItemService.h"

void RoyaltiesStore::refreshLaunchAtLoginStatus()
{
    const LoginItemService::Status status = m_environment.loginItems.status();
    setOpensAtLogin(status == LoginItemService::Status::enabled);
    setLaunchAtLoginRequiresApproval(status == LoginItemService::Status::requiresApproval);
}
