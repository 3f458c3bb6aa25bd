#include "InkwardenApplication.h"

#include "AppDelegate.h"
#include "LoadedPopover.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/KeychainStore.h"
#include "platform/LinuxDesktopServices.h"
#include "platform/QtNetworkReachability.h"
#include "platform/ResidentCode.h"
#include "platform/StatusItemSelector.h"
#include "platform/StatusService.h"
#include "platform/SystemClock.h"
#include "platform/XdgAutostart.h"
#include "store/AppInfo.h"
#include "store/Preferences.h"
#include "store/RoyaltiesStore.h"

#include <QNetworkAccessManager>

// Declared in the order they are made; each part only refers to parts made before it.
struct InkwardenApplication::Parts {
    AppInfo appInfo = AppInfo::compiledIn();
    SystemClock clock;
    QNetworkAccessManager network;
    KeychainStore keyring;
    Preferences preferences;
    QtNetworkReachability reachability;
    LinuxDesktopServices desktop;
    XdgAutostart autostart;
    FreedesktopNotifications notifications;
    RoyaltiesStore store{StoreEnvironment{clock, keyring, preferences, reachability, desktop, autostart, notifications,
                                          network, appInfo}};
    StatusItemSelector statusItem;
    LoadedPopover popover{store};
    AppDelegate delegate{store, statusItem, popover, preferences, clock, appInfo};
    // On the bus name that this process owns, for bars and `inkwarden --status`.
    StatusService status;
    std::unique_ptr<ClockTimer> settled;
};

namespace {

// By then the key is read, the item is in the panel and the first figures have usually arrived:
// what only starting up needed (its code, its freed allocations) can go.
constexpr std::chrono::seconds startUpSettles{10};

} // namespace

InkwardenApplication::InkwardenApplication()
    : m_parts(std::make_unique<Parts>())
{
    QObject::connect(&m_parts->delegate, &AppDelegate::quitRequested, this, &InkwardenApplication::quitRequested);
    QObject::connect(&m_parts->delegate, &AppDelegate::panelStatusChanged, &m_parts->status, &StatusService::setStatus);
    // A click on a new-royalty notification opens the popover.
    QObject::connect(&m_parts->notifications, &DesktopNotifications::activated, &m_parts->delegate,
                     [this] { m_parts->delegate.showPopover(); });
}

InkwardenApplication::~InkwardenApplication() = default;

void InkwardenApplication::start()
{
    m_parts->delegate.applicationDidFinishLaunching();
    m_parts->settled = m_parts->clock.startTimer(startUpSettles, false, [this] {
        m_parts->settled.reset();
        ResidentCode::releaseAfterWork();
    });
}

void InkwardenApplication::openURLs(const QStringList &urls)
{
    m_parts->delegate.openURLs(urls);
}

void InkwardenApplication::showPopover()
{
    m_parts->delegate.showPopover();
}
