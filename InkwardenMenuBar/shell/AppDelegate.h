#pragma once

#include "platform/MenuBarTitle.h"
#include "platform/PanelStatus.h"

#include <QObject>
#include <QPoint>
#include <QStringList>

#include <memory>
#include <optional>

struct AppInfo;
class Clock;
class ClockTimer;
class Popover;
class Preferences;
class RoyaltiesStore;
class StatusItem;

// Inkwarden's shell: it starts the store, keeps the panel item's title in step with it, opens the
// popover from the item and by itself on the first launch of a version, and hands the browser's
// sign-in callback to the store.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    static constexpr int newVersionDelayMilliseconds = 350;

    AppDelegate(RoyaltiesStore &store, StatusItem &statusItem, Popover &popover, Preferences &preferences, Clock &clock,
                const AppInfo &appInfo, QObject *parent = nullptr);
    ~AppDelegate() override;

    // The start sequence: item title, title subscription, the store's start, the new-version opening.
    void applicationDidFinishLaunching();
    // URLs the system opened Inkwarden with: the first goes to the store, then the popover opens.
    void openURLs(const QStringList &urls);
    // A click on the item.
    void togglePopover(std::optional<QPoint> anchor);
    void showPopover(std::optional<QPoint> anchor = std::nullopt);

    // What the item shows and says, for bars that read it instead (the status interface).
    const PanelStatus &panelStatus() const { return m_panelStatus; }

Q_SIGNALS:
    void quitRequested();
    void panelStatusChanged(const PanelStatus &status);

private:
    void applyMenuBarTitle();
    void updatePanelStatus();
    void presentPopoverForNewVersionIfNeeded();

    RoyaltiesStore &m_store;
    StatusItem &m_statusItem;
    Popover &m_popover;
    Preferences &m_preferences;
    Clock &m_clock;
    std::optional<QString> m_version;
    MenuBarTitle m_shownTitle;
    PanelStatus m_panelStatus;
    std::unique_ptr<ClockTimer> m_newVersionTimer;
};
