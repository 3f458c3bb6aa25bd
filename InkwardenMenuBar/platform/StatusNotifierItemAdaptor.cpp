#include "StatusNotifierItemAdaptor.h"

#include "StatusNotifierItem.h"

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(StatusNotifierItem *item)
    : QDBusAbstractAdaptor(item)
    , m_item(item)
{
    // Hosts read every property again on these signals; the adaptor only relays them.
    connect(item, &StatusNotifierItem::iconChanged, this, &StatusNotifierItemAdaptor::NewIcon);
    connect(item, &StatusNotifierItem::toolTipChanged, this, &StatusNotifierItemAdaptor::NewToolTip);
    connect(item, &StatusNotifierItem::accessibleTitleChanged, this, &StatusNotifierItemAdaptor::NewTitle);
    connect(item, &StatusNotifierItem::labelChanged, this, &StatusNotifierItemAdaptor::XAyatanaNewLabel);
}

QString StatusNotifierItemAdaptor::category() const
{
    return StatusNotifierItem::category();
}

QString StatusNotifierItemAdaptor::id() const
{
    return StatusNotifierItem::itemId();
}

QString StatusNotifierItemAdaptor::title() const
{
    return m_item->accessibleTitle();
}

QString StatusNotifierItemAdaptor::status() const
{
    return StatusNotifierItem::status();
}

QString StatusNotifierItemAdaptor::iconThemePath() const
{
    return m_item->iconThemePath();
}

QString StatusNotifierItemAdaptor::iconName() const
{
    return m_item->iconName();
}

SniIconPixmapList StatusNotifierItemAdaptor::iconPixmap() const
{
    return m_item->iconPixmaps();
}

SniToolTip StatusNotifierItemAdaptor::toolTip() const
{
    return m_item->toolTip();
}

QDBusObjectPath StatusNotifierItemAdaptor::menu() const
{
    return QDBusObjectPath(DBusMenu::objectPath());
}

QString StatusNotifierItemAdaptor::ayatanaLabel() const
{
    return m_item->label();
}

QString StatusNotifierItemAdaptor::ayatanaLabelGuide() const
{
    return m_item->labelGuide();
}

void StatusNotifierItemAdaptor::Activate(int x, int y)
{
    m_item->activate(x, y);
}

void StatusNotifierItemAdaptor::SecondaryActivate(int x, int y)
{
    // A middle click does what a click does: there is only one thing to show.
    m_item->activate(x, y);
}

void StatusNotifierItemAdaptor::ContextMenu(int x, int y)
{
    // Hosts draw the dbusmenu themselves; one that asks the item instead gets the popover.
    m_item->activate(x, y);
}

void StatusNotifierItemAdaptor::Scroll(int delta, const QString &orientation)
{
    Q_UNUSED(delta);
    Q_UNUSED(orientation);
}
