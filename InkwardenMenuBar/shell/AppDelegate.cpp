#include "AppDelegate.h"

#include "PanelStatusBuilder.h"
#include "Popover.h"
#include "model/Clock.h"
#include "platform/StatusItem.h"
#include "store/AppInfo.h"
#include "store/Preferences.h"
#include "store/RoyaltiesStore.h"
#include "store/SettingsKeys.h"

AppDelegate::AppDelegate(RoyaltiesStore &store, StatusItem &statusItem, Popover &popover, Preferences &preferences,
                         Clock &clock, const AppInfo &appInfo, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_statusItem(statusItem)
    , m_popover(popover)
    , m_preferences(preferences)
    , m_clock(clock)
    , m_version(appInfo.version)
{
    QObject::connect(&m_statusItem, &StatusItem::activated, this,
                     [this](QPoint point) { togglePopover(point.isNull() ? std::nullopt : std::optional(point)); });
    QObject::connect(&m_statusItem, &StatusItem::menuOpenRequested, this, [this] { showPopover(); });
    QObject::connect(&m_statusItem, &StatusItem::refreshRequested, &m_store, &RoyaltiesStore::refresh);
    QObject::connect(&m_statusItem, &StatusItem::settingsRequested, this, [this] {
        m_store.showSettings();
        showPopover();
    });
    QObject::connect(&m_statusItem, &StatusItem::quitRequested, this, &AppDelegate::quitRequested);
    // The menu's check box and the settings' switch are one setting.
    QObject::connect(&m_statusItem, &StatusItem::hideAmountsToggled, this,
                     [this] { m_store.setHideAmounts(!m_store.hideAmounts()); });
    QObject::connect(&m_store, &RoyaltiesStore::hideAmountsChanged, this, [this] {
        m_statusItem.setAmountsHidden(m_store.hideAmounts());
        applyMenuBarTitle();
        updatePanelStatus();
    });
    m_statusItem.setAmountsHidden(m_store.hideAmounts());
    QObject::connect(&m_popover, &Popover::quitRequested, this, &AppDelegate::quitRequested);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    applyMenuBarTitle();
    updatePanelStatus();
    // Every assignment of the title re-renders the item, as the store publishes each refresh's outcome.
    QObject::connect(&m_store, &RoyaltiesStore::menuBarTitleChanged, this, [this] {
        applyMenuBarTitle();
        updatePanelStatus();
    });
    // The tool tip, the item's name in words and the state also follow what happens between two titles
    // (the period they name changes with the figures).
    for (auto changed :
         {&RoyaltiesStore::lastUpdatedChanged, &RoyaltiesStore::isLoadingChanged, &RoyaltiesStore::isConnectedChanged,
          &RoyaltiesStore::errorMessageChanged, &RoyaltiesStore::isNetworkAvailableChanged}) {
        QObject::connect(&m_store, changed, this, &AppDelegate::updatePanelStatus);
    }
    m_store.start();
    presentPopoverForNewVersionIfNeeded();
}

void AppDelegate::applyMenuBarTitle()
{
    m_shownTitle = MenuBarTitle{m_store.menuBarTitle(), m_store.menuBarMoneyParts()};
    m_statusItem.setTitle(m_shownTitle);
}

void AppDelegate::updatePanelStatus()
{
    m_statusItem.setAccessibleTitle(PanelStatusBuilder::accessibleTitle(m_store, m_shownTitle));
    const PanelStatus status = PanelStatusBuilder::build(m_store, m_shownTitle, m_clock.now());
    // The first status always differs: no title is empty.
    if (status == m_panelStatus) {
        return;
    }
    m_panelStatus = status;
    m_statusItem.setToolTip(status.toolTipTitle, status.toolTipBody);
    Q_EMIT panelStatusChanged(m_panelStatus);
}

void AppDelegate::togglePopover(std::optional<QPoint> anchor)
{
    if (m_popover.isShown()) {
        m_popover.close();
        return;
    }
    // The click that closed the popover by landing outside it also lands on the item.
    if (m_popover.closedJustNow()) {
        return;
    }
    showPopover(anchor);
}

void AppDelegate::showPopover(std::optional<QPoint> anchor)
{
    // Opening after a sleep catches up a missed refresh at once.
    m_store.recoverAutomaticRefreshIfNeeded(false);
    m_popover.show(anchor);
    m_store.presentUpdatePromptIfNeeded();
}

void AppDelegate::openURLs(const QStringList &urls)
{
    if (urls.isEmpty()) {
        return;
    }
    m_store.handleAuthenticationCallback(urls.first());
    showPopover();
}

void AppDelegate::presentPopoverForNewVersionIfNeeded()
{
    if (!m_version) {
        return;
    }
    if (m_preferences.string(SettingsKeys::lastPresentedAppVersion) == m_version) {
        return;
    }
    m_preferences.setString(SettingsKeys::lastPresentedAppVersion, *m_version);
    m_newVersionTimer = m_clock.startTimer(std::chrono::milliseconds(newVersionDelayMilliseconds), false, [this] {
        m_newVersionTimer.reset();
        showPopover();
    });
}
