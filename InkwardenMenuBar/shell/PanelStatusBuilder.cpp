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
    status.toolTipTitle = QStringLiteral("Inkwarden Royalties");
    status.state = state(store);
    QStringList lines;
    if (status.state == PanelState::signedOut && store.isWaitingForKeyring() && store.errorMessage()) {
        // Not signed out at all: the key is behind a locked keyring, or one that does not answer.
        lines.append(*store.errorMessage());
    } else if (status.state == PanelState::signedOut) {
        lines.append(QStringLiteral("Not signed in"));
        // Why a sign-in just failed, say, where the user looks first.
        if (store.errorMessage()) {
            lines.append(*store.errorMessage());
        }
    } else {
        lines.append(shownTitle.figure() + QStringLiteral(u" \u00B7 ")
                     + refreshedText(store.lastUpdated(), now, locale));
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
        return QStringLiteral("Not refreshed yet");
    }
    const QDateTime local = lastUpdated->toLocalTime();
    if (local.date() == now.toLocalTime().date()) {
        return QStringLiteral("Refreshed at ") + locale.toString(local.time(), QLocale::ShortFormat);
    }
    return QStringLiteral("Refreshed ") + locale.toString(local, QLocale::ShortFormat);
}
