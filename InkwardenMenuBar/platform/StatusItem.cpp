#include "StatusItem.h"

QList<StatusMenuEntry> StatusItem::menuEntries()
{
    return {StatusMenuEntry::Open, StatusMenuEntry::Refresh, StatusMenuEntry::Settings, StatusMenuEntry::HideAmounts,
            StatusMenuEntry::Quit};
}

QString StatusItem::menuLabel(StatusMenuEntry entry)
{
    switch (entry) {
    case StatusMenuEntry::Open:
        //: Entry of the panel icon's menu: shows the popover with the royalties.
        return tr("Open Inkwarden");
    case StatusMenuEntry::Refresh:
        //: Entry of the panel icon's menu: fetches the royalties again now.
        return tr("Refresh");
    case StatusMenuEntry::Settings:
        //: Entry of the panel icon's menu: opens Inkwarden's settings.
        return tr("Settings");
    case StatusMenuEntry::HideAmounts:
        //: Check box entry of the panel icon's menu: hides the money figures next to the icon and in the popover.
        return tr("Hide amounts");
    case StatusMenuEntry::Quit:
        //: Entry of the panel icon's menu: ends Inkwarden.
        return tr("Quit Inkwarden");
    }
    return {};
}

void StatusItem::setAmountsHidden(bool hidden)
{
    if (hidden == m_amountsHidden) {
        return;
    }
    m_amountsHidden = hidden;
    Q_EMIT amountsHiddenChanged(hidden);
}

void StatusItem::triggerMenuEntry(StatusMenuEntry entry)
{
    switch (entry) {
    case StatusMenuEntry::Open:
        Q_EMIT menuOpenRequested();
        return;
    case StatusMenuEntry::Refresh:
        Q_EMIT refreshRequested();
        return;
    case StatusMenuEntry::Settings:
        Q_EMIT settingsRequested();
        return;
    case StatusMenuEntry::HideAmounts:
        Q_EMIT hideAmountsToggled();
        return;
    case StatusMenuEntry::Quit:
        Q_EMIT quitRequested();
        return;
    }
}
