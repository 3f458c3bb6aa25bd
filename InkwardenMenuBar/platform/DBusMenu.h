#pragma once

#include "StatusItem.h"
#include "StatusNotifierTypes.h"

#include <QDBusContext>
#include <QObject>

#include <optional>

// The item's menu as com.canonical.dbusmenu publishes it: Open Inkwarden, Refresh, Settings, Hide
// amounts, a separator and Quit Inkwarden, each label with its access key. The host draws it; a
// "clicked" event comes back as `triggered`. DBusMenuAdaptor puts it on the bus; QtDBus gives the
// call's context to the adaptor's parent, so the menu carries it for the adaptor's error replies.
class DBusMenu
    : public QObject
    , public QDBusContext
{
    Q_OBJECT

public:
    static constexpr int RootId = 0;
    // Fixed entry ids: the menu never changes shape, so the layout keeps one revision.
    static constexpr int SeparatorId = 4;
    static constexpr uint LayoutRevision = 1;
    // Whether "Hide amounts" is checked; a change reaches the host as ItemsPropertiesUpdated.
    void setAmountsHidden(bool hidden);

    explicit DBusMenu(QObject *parent = nullptr);

    static QString objectPath() { return QStringLiteral("/MenuBar"); }

    // A label marked for QMenu ("&Refresh", "Fish && &Chips") as dbusmenu marks it: "_" before the
    // access key, a "_" of the text doubled, "&&" a plain "&" ("_Refresh", "Fish & _Chips").
    static QString accessKeyLabel(const QString &mnemonicLabel);

    static int idOf(StatusMenuEntry entry);
    static std::optional<StatusMenuEntry> entryOf(int id);
    static QList<int> ids();

    bool contains(int id) const { return ids().contains(id); }

    // All of an entry's properties, or only `names` of them when it is not empty.
    QVariantMap properties(int id, const QStringList &names = {}) const;

    // The subtree under `parentId`, `depth` levels deep (-1: all of it).
    DBusMenuLayoutItem layout(int parentId, int depth, const QStringList &names) const;

    // Handles a dbusmenu event; false when `id` is not an entry. "clicked" on an entry is
    // reported once control is back in the event loop, after the bus has its reply.
    bool handleEvent(int id, const QString &eventId);

Q_SIGNALS:
    void triggered(StatusMenuEntry entry);
    // Never emitted today: the menu has one layout. Kept on the interface so a later change of
    // shape reaches the host.
    void layoutUpdated(uint revision, int parentId);
    void itemsPropertiesUpdated(const DBusMenuItemList &updated, const DBusMenuItemKeysList &removed);

private:
    bool m_amountsHidden = false;
};
