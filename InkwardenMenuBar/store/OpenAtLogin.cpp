#include "OpenAtLogin.h"

#include "DesktopServices.h"
#include "LoginItemService.h"
#include "PlatformTexts.h"
#include "StoreStatus.h"
#include "model/Clock.h"

using namespace std::chrono_literals;

OpenAtLogin::OpenAtLogin(LoginItemService &loginItems, DesktopServices &desktop, Clock &clock, StoreStatus &status,
                         QObject *parent)
    : QObject(parent)
    , m_loginItems(loginItems)
    , m_desktop(desktop)
    , m_clock(clock)
    , m_status(status)
{}

OpenAtLogin::~OpenAtLogin() = default;

void OpenAtLogin::publishOpensAtLogin(bool value)
{
    m_opensAtLogin = value;
    Q_EMIT opensAtLoginChanged();
}

void OpenAtLogin::setLaunchAtLoginRequiresApproval(bool value)
{
    m_launchAtLoginRequiresApproval = value;
    Q_EMIT launchAtLoginRequiresApprovalChanged();
}

void OpenAtLogin::refreshStatus()
{
    const LoginItemService::Status status = m_loginItems.status();
    publishOpensAtLogin(status == LoginItemService::Status::enabled);
    setLaunchAtLoginRequiresApproval(status == LoginItemService::Status::requiresApproval);
}

void OpenAtLogin::setOpensAtLogin(bool enabled)
{
    using Status = LoginItemService::Status;
    m_status.setErrorMessage(std::nullopt);
    const Status status = m_loginItems.status();

    std::optional<QString> failure;
    if (enabled) {
        if (status != Status::enabled && status != Status::requiresApproval) {
            failure = m_loginItems.registerItem();
        }
        if (!failure) {
            refreshStatus();
        }
    } else {
        if (status != Status::notRegistered && status != Status::notFound) {
            failure = m_loginItems.unregisterItem();
        }
        if (!failure) {
            publishOpensAtLogin(false);
            setLaunchAtLoginRequiresApproval(false);
        }
    }

    if (failure) {
        m_status.setErrorMessage(PlatformTexts::couldNotUpdateOpenAtLogin(*failure));
        refreshStatus();
        return;
    }
    // The system may refuse quietly: a second look a moment later tells.
    m_secondLookTimer = m_clock.startTimer(1s, false, [this, enabled] {
        m_secondLookTimer.reset();
        refreshStatus();
        if (enabled && !m_opensAtLogin && !m_launchAtLoginRequiresApproval) {
            m_status.setErrorMessage(PlatformTexts::couldNotEnableOpenAtLogin());
        }
    });
}

void OpenAtLogin::openLoginItemsSettings()
{
    m_desktop.openLoginItemsSettings();
}
