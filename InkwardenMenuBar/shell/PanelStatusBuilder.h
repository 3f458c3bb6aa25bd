#pragma once

#include "platform/PanelStatus.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

class RoyaltiesStore;
struct MenuBarTitle;

// Puts together what the panel item says besides its title: the tool tip and the state, from the
// store and the title the item shows. The tool tip names the time of the last refresh rather than
// its age, so that it stays true however long it sits unchanged.
class PanelStatusBuilder
{
    Q_DECLARE_TR_FUNCTIONS(PanelStatusBuilder)

public:
    static PanelState state(const RoyaltiesStore &store);
    static PanelStatus build(const RoyaltiesStore &store, const MenuBarTitle &shownTitle, const QDateTime &now,
                             const QLocale &locale = QLocale::system());
    // "Refreshed at 14:05", or with the date when that was not today; "Not refreshed yet".
    static QString refreshedText(const std::optional<QDateTime> &lastUpdated, const QDateTime &now,
                                 const QLocale &locale);
    // The item's name in words for screen readers: the period and the figure the item shows
    // ("Inkwarden: Today $1,235", masked while amounts are hidden), else why there is none
    // ("Inkwarden: Not signed in", "Inkwarden: Not refreshed yet").
    static QString accessibleTitle(const RoyaltiesStore &store, const MenuBarTitle &shownTitle);

private:
    // Why a signed-out item shows no figure: "Not signed in", or the locked keyring's message.
    static QString signedOutReason(const RoyaltiesStore &store);
    static QString notRefreshedText();
};
