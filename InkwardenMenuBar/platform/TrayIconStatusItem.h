#pragma once

#include "StatusIcon.h"
#include "StatusItem.h"

#include <QColor>

#include <memory>
#include <optional>

class QMenu;
class QSystemTrayIcon;

// The fallback for X11 desktops without a StatusNotifierWatcher: an XEmbed tray icon through
// QSystemTrayIcon with the same menu. Such trays draw only a square icon, so the title goes into the
// tool tip. Needs a QApplication.
class TrayIconStatusItem : public StatusItem
{
    Q_OBJECT

public:
    explicit TrayIconStatusItem(const QString &iconSource = StatusIcon::defaultSource(),
                                std::optional<QColor> color = std::nullopt, QObject *parent = nullptr);
    ~TrayIconStatusItem() override;

    // An XEmbed tray is there to take the icon (and the process is a QApplication).
    static bool isAvailable();

    void setTitle(const MenuBarTitle &title) override;
    void setToolTip(const QString &title, const QString &body) override;
    // An XEmbed icon has no name a screen reader could read; its tool tip says the same.
    void setAccessibleTitle(const QString &title) override { Q_UNUSED(title); }

    QSystemTrayIcon *trayIcon() const { return m_trayIcon.get(); }
    QMenu *menu() const { return m_menu.get(); }
    QString toolTipText() const;

private:
    void updateToolTip();

    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_trayIcon;
    MenuBarTitle m_title;
    QString m_toolTipTitle;
    QString m_toolTipBody;
};
