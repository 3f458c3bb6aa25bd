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
        return QStringLiteral("Open Inkwarden");
    case StatusMenuEntry::Refresh:
        return QStringLiteral("Refresh");
    case StatusMenuEntry::Settings:
        return QStringLiteral("Settings");
    case StatusMenuEntry::HideAmounts:
        return QStringLiteral("Hide amounts");
    case StatusMenuEntry::Quit:
        return QStringLiteral("Quit Inkwarden");
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
