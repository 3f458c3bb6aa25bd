#include "StatusItemSelector.h"

#include "StatusNotifierItem.h"
#include "TrayIconStatusItem.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>

namespace {

std::unique_ptr<StatusItem> createDefault(StatusItemSelector::Kind kind, const QDBusConnection &bus)
{
    switch (kind) {
    case StatusItemSelector::Kind::StatusNotifier: {
        StatusNotifierItem::Options options;
        options.bus = bus;
        return std::make_unique<StatusNotifierItem>(options);
    }
    case StatusItemSelector::Kind::TrayIcon:
        return std::make_unique<TrayIconStatusItem>();
    case StatusItemSelector::Kind::None:
        break;
    }
    return nullptr;
}

bool defaultTrayAvailable()
{
    return QGuiApplication::platformName() == QLatin1String("xcb") && TrayIconStatusItem::isAvailable();
}

} // namespace

StatusItemSelector::StatusItemSelector()
    : StatusItemSelector(Options{})
{}

StatusItemSelector::StatusItemSelector(Options options, QObject *parent)
    : StatusItem(parent)
    , m_options(std::move(options))
    , m_watcherWatcher(StatusNotifierItem::watcherService(), m_options.bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    if (!m_options.create) {
        m_options.create = [bus = m_options.bus](Kind kind) { return createDefault(kind, bus); };
    }
    if (!m_options.trayAvailable) {
        m_options.trayAvailable = defaultTrayAvailable;
    }
    connect(this, &StatusItem::amountsHiddenChanged, this, [this](bool hidden) {
        if (m_current) {
            m_current->setAmountsHidden(hidden);
        }
    });
    connect(&m_watcherWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                m_watcherPresent = !newOwner.isEmpty();
                update();
            });
    m_patience.setSingleShot(true);
    m_patience.setInterval(m_options.watcherPatience);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_waitIsOver = true;
        update();
    });

    const QDBusConnectionInterface *busInterface = m_options.bus.interface();
    m_watcherPresent =
        busInterface != nullptr && busInterface->isServiceRegistered(StatusNotifierItem::watcherService());
    m_patience.start();
    update();
}

StatusItemSelector::~StatusItemSelector() = default;

StatusItemSelector::Kind StatusItemSelector::choose(bool watcherPresent, bool waitIsOver, bool trayAvailable)
{
    if (watcherPresent || !waitIsOver || !trayAvailable) {
        return Kind::StatusNotifier;
    }
    return Kind::TrayIcon;
}

void StatusItemSelector::setTitle(const MenuBarTitle &title)
{
    m_title = title;
    if (m_current) {
        m_current->setTitle(title);
    }
}

void StatusItemSelector::setToolTip(const QString &title, const QString &body)
{
    m_toolTip = std::make_pair(title, body);
    if (m_current) {
        m_current->setToolTip(title, body);
    }
}

void StatusItemSelector::setAccessibleTitle(const QString &title)
{
    m_accessibleTitle = title;
    if (m_current) {
        m_current->setAccessibleTitle(title);
    }
}

void StatusItemSelector::update()
{
    // A watcher that goes away (a panel restarting) gets the same few seconds to come back before
    // the tray icon takes over; the StatusNotifierItem registers again when it returns.
    if (m_watcherPresent) {
        m_patience.stop();
        m_waitIsOver = false;
    } else if (!m_waitIsOver && !m_patience.isActive()) {
        m_patience.start();
    }
    show(choose(m_watcherPresent, m_waitIsOver, m_options.trayAvailable()));
}

void StatusItemSelector::show(Kind kind)
{
    if (kind == m_kind) {
        return;
    }
    // The old item goes first, so that a panel never sees two Inkwarden icons.
    m_current.reset();
    m_kind = Kind::None;
    m_current = m_options.create(kind);
    if (!m_current) {
        Q_EMIT kindChanged(m_kind);
        return;
    }
    m_kind = kind;
    StatusItem *item = m_current.get();
    connect(item, &StatusItem::activated, this, &StatusItem::activated);
    connect(item, &StatusItem::menuOpenRequested, this, &StatusItem::menuOpenRequested);
    connect(item, &StatusItem::refreshRequested, this, &StatusItem::refreshRequested);
    connect(item, &StatusItem::settingsRequested, this, &StatusItem::settingsRequested);
    connect(item, &StatusItem::quitRequested, this, &StatusItem::quitRequested);
    connect(item, &StatusItem::hideAmountsToggled, this, &StatusItem::hideAmountsToggled);
    item->setAmountsHidden(amountsHidden());
    if (m_title) {
        item->setTitle(*m_title);
    }
    if (m_toolTip) {
        item->setToolTip(m_toolTip->first, m_toolTip->second);
    }
    if (m_accessibleTitle) {
        item->setAccessibleTitle(*m_accessibleTitle);
    }
    Q_EMIT kindChanged(m_kind);
}
