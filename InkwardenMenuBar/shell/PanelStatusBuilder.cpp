#include "PanelStatusBuilder.h"

#include "platform/MenuBarTitle.h"
#include "store/RoyaltiesStore.h"

PanelState PanelStatusBuilder::state(const RoyaltiesStore &store)
{
    if (!store.isConnected()) {
        return PanelState::signedOut;
    }
    if (!store.isNetworkAvailable()) {
        return PanelState::offline;
    }
    if (store.isLoading()) {
        return PanelState::loading;
    }
    if (store.errorMessage()) {
        return PanelState::error;
    }
    // Connected but no figure yet: the first refresh is queued behind the request cooldown.
    return store.lastUpdated() ? PanelState::ok : PanelState::loading;
}

PanelStatus PanelStatusBuilder::build(const RoyaltiesStore &store, const MenuBarTitle &shownTitle, const QDateTime &now,
                                      const QLocale &locale)
{
    PanelStatus status;
    status.title = shownTitle.text();
    //: Heading of the panel icon's tool tip.
    status.toolTipTitle = tr("Inkwarden Royalties");
    status.state = state(store);
    QStringList lines;
    if (status.state == PanelState::signedOut) {
        lines.append(signedOutReason(store));
        // Why a sign-in just failed, say, where the user looks first.
        if (!store.isWaitingForKeyring() && store.errorMessage()) {
            lines.append(*store.errorMessage());
        }
    } else if (!store.lastUpdated()) {
        // No figure yet: the item shows its placeholder, which says nothing in words.
        lines.append(refreshedText(store.lastUpdated(), now, locale));
    } else {
        //: Line of the panel icon's tool tip: %1 is the period the figure covers ("Today"), %2 the figure shown
        //: in the panel ("$1,235"), %3 when it was refreshed ("Refreshed at 14:05"). The dot separates the last
        //: two.
        lines.append(tr("%1: %2 · %3")
                         .arg(store.figuresPeriod().title(), shownTitle.figure(),
                              refreshedText(store.lastUpdated(), now, locale)));
    }
    switch (status.state) {
    case PanelState::offline:
    case PanelState::loading:
        // What the popover's status line says: "Waiting for internet…", "Refreshing now…".
        lines.append(store.nextRefreshText(now));
        break;
    case PanelState::error:
        lines.append(*store.errorMessage());
        break;
    case PanelState::signedOut:
    case PanelState::ok:
        break;
    }
    status.toolTipBody = lines.join(u'\n');
    return status;
}

QString PanelStatusBuilder::refreshedText(const std::optional<QDateTime> &lastUpdated, const QDateTime &now,
                                          const QLocale &locale)
{
    if (!lastUpdated) {
        return notRefreshedText();
    }
    const QDateTime local = lastUpdated->toLocalTime();
    if (local.date() == now.toLocalTime().date()) {
        //: In the panel icon's tool tip, after the figure: %1 is a time of today ("14:05").
        return tr("Refreshed at %1").arg(locale.toString(local.time(), QLocale::ShortFormat));
    }
    //: In the panel icon's tool tip, after the figure: %1 is a date and time before today ("3/4/25 14:05").
    return tr("Refreshed %1").arg(locale.toString(local, QLocale::ShortFormat));
}

QString PanelStatusBuilder::accessibleTitle(const RoyaltiesStore &store, const MenuBarTitle &shownTitle)
{
    if (state(store) != PanelState::signedOut && shownTitle.isStyled()) {
        //: The panel icon's name, as screen readers read it: %1 is the period the figure covers ("Today"), %2
        //: the figure shown in the panel ("$1,235", or "$•••" while amounts are hidden).
        return tr("Inkwarden: %1 %2").arg(store.figuresPeriod().title(), shownTitle.figure());
    }
    const QString reason = state(store) == PanelState::signedOut ? signedOutReason(store) : notRefreshedText();
    //: The panel icon's name, as screen readers read it, while it shows no figure: %1 says why ("Not signed
    //: in", "Not refreshed yet").
    return tr("Inkwarden: %1").arg(reason);
}

QString PanelStatusBuilder::signedOutReason(const RoyaltiesStore &store)
{
    if (store.isWaitingForKeyring() && store.errorMessage()) {
        // Not signed out at all: the key is behind a locked keyring, or one that does not answer.
        return *store.errorMessage();
    }
    //: Line of the panel icon's tool tip, also said by its name for screen readers, while no account is
    //: connected.
    return tr("Not signed in");
}

QString PanelStatusBuilder::notRefreshedText()
{
    //: In the panel icon's tool tip after the figure, and in its name for screen readers: no royalties were
    //: fetched yet.
    return tr("Not refreshed yet");
}
