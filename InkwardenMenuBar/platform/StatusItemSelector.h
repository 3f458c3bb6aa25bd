#pragma once

#include "StatusItem.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

// The status item the app keeps: a StatusNotifierItem while a StatusNotifierWatcher runs or may
// still come, the XEmbed tray icon when none has appeared after a few seconds and an XEmbed tray is
// there. Never both at once: the one that goes is destroyed (and leaves the bus) before the other is
// made. Title and tool tip are kept here and handed to each new item; its signals come out of this
// object.
class StatusItemSelector : public StatusItem
{
    Q_OBJECT

public:
    enum class Kind { None, StatusNotifier, TrayIcon };
    Q_ENUM(Kind)

    struct Options {
        QDBusConnection bus = QDBusConnection::sessionBus();
        // How long to wait for a watcher before falling back.
        std::chrono::milliseconds watcherPatience{3000};
        // Makes the item of a kind; by default StatusNotifierItem and TrayIconStatusItem.
        std::function<std::unique_ptr<StatusItem>(Kind)> create;
        // Whether the fallback can be shown; by default TrayIconStatusItem::isAvailable() on X11.
        std::function<bool()> trayAvailable;
    };

    StatusItemSelector();
    explicit StatusItemSelector(Options options, QObject *parent = nullptr);
    ~StatusItemSelector() override;

    // The kind to show: a watcher wins; without one, the tray icon once the wait is over and a tray
    // is there; else the StatusNotifierItem stays, ready for a watcher that comes later.
    static Kind choose(bool watcherPresent, bool waitIsOver, bool trayAvailable);

    Kind kind() const { return m_kind; }
    StatusItem *current() const { return m_current.get(); }

    void setTitle(const MenuBarTitle &title) override;
    void setToolTip(const QString &title, const QString &body) override;
    void setAccessibleTitle(const QString &title) override;

Q_SIGNALS:
    void kindChanged(StatusItemSelector::Kind kind);

private:
    void update();
    void show(Kind kind);

    Options m_options;
    QDBusServiceWatcher m_watcherWatcher;
    QTimer m_patience;
    bool m_watcherPresent = false;
    bool m_waitIsOver = false;
    Kind m_kind = Kind::None;
    std::unique_ptr<StatusItem> m_current;
    std::optional<MenuBarTitle> m_title;
    std::optional<std::pair<QString, QString>> m_toolTip;
    std::optional<QString> m_accessibleTitle;
};
