#pragma once

#include "MenuBarTitle.h"

#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

// The entries of the item's menu, in their order; a separator stands before Quit. Hide amounts is a
// check box.
enum class StatusMenuEntry { Open, Refresh, Settings, HideAmounts, Quit };

// The Inkwarden icon in the panel with its figure and small menu. The app talks to this interface;
// behind it is a StatusNotifierItem on the session bus, or the XEmbed tray icon where no
// StatusNotifierWatcher runs. StatusItemSelector picks one and keeps it up to date.
class StatusItem : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // The menu's entries and their labels, shared by every implementation. The label marks the
    // entry's access key with "&" as QMenu takes it ("&Refresh").
    static QList<StatusMenuEntry> menuEntries();
    static QString menuMnemonicLabel(StatusMenuEntry entry);
    // `text` without its access key mark: "&Refresh" as "Refresh", "Fish && &Chips" as "Fish & Chips",
    // and the whole "(&S)" that Japanese and Chinese labels end with, "設定(&S)" as "設定".
    static QString withoutMnemonic(const QString &text);

    // Shows `title` next to the icon (or, where the host cannot, in the tool tip). Pass the store's
    // `menuBarTitle` and `menuBarMoneyParts()` each time the title changes.
    virtual void setTitle(const MenuBarTitle &title) = 0;

    // The tool tip: `title` is the figure, `body` the line below it ("Refreshed …"), may be empty.
    virtual void setToolTip(const QString &title, const QString &body) = 0;

    // The item's name in words, as a screen reader reads it when the item gets the focus and as hosts
    // that list items name it: "Inkwarden: Today $1,235", "Inkwarden: Not signed in". It holds what
    // the item shows, so hidden amounts stay hidden here too.
    virtual void setAccessibleTitle(const QString &title) = 0;

    // Whether the menu's "Hide amounts" shows its check mark.
    bool amountsHidden() const { return m_amountsHidden; }
    void setAmountsHidden(bool hidden);

Q_SIGNALS:
    // The icon was clicked: toggle the popover. `point` is where, in screen coordinates, or a null
    // point when the host does not say.
    void activated(QPoint point);
    // "Open Inkwarden" was chosen in the menu: show the popover.
    void menuOpenRequested();
    void refreshRequested();
    void settingsRequested();
    void quitRequested();
    // "Hide amounts" was chosen: switch the hiding on or off.
    void hideAmountsToggled();
    void amountsHiddenChanged(bool hidden);

protected:
    // Emits the signal that belongs to `entry`.
    void triggerMenuEntry(StatusMenuEntry entry);

private:
    bool m_amountsHidden = false;
};
