#pragma once

#include <QObject>

#include <memory>

class Clock;
class ClockTimer;
class DesktopServices;
class LoginItemService;
class StoreStatus;

// Whether Inkwarden opens at login: read from the desktop's login items, changed at the user's
// request, and looked at again a moment later, since the desktop may refuse without a word.
class OpenAtLogin : public QObject
{
    Q_OBJECT

public:
    OpenAtLogin(LoginItemService &loginItems, DesktopServices &desktop, Clock &clock, StoreStatus &status,
                QObject *parent = nullptr);
    ~OpenAtLogin() override;

    bool opensAtLogin() const { return m_opensAtLogin; }
    bool launchAtLoginRequiresApproval() const { return m_launchAtLoginRequiresApproval; }
    // Tests and the settings view's state.
    void setLaunchAtLoginRequiresApproval(bool value);

    void refreshStatus();
    // The user's request; a failure is told through the status.
    void setOpensAtLogin(bool enabled);
    void openLoginItemsSettings();

Q_SIGNALS:
    void opensAtLoginChanged();
    void launchAtLoginRequiresApprovalChanged();

private:
    void publishOpensAtLogin(bool value);

    LoginItemService &m_loginItems;
    DesktopServices &m_desktop;
    Clock &m_clock;
    StoreStatus &m_status;
    bool m_opensAtLogin = false;
    bool m_launchAtLoginRequiresApproval = false;
    std::unique_ptr<ClockTimer> m_secondLookTimer;
};
