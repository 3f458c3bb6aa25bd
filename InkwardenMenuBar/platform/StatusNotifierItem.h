#pragma once

#include "DBusMenu.h"
#include "MenuBarTitleRenderer.h"
#include "StatusIcon.h"
#include "StatusItem.h"
#include "StatusNotifierTypes.h"

#include <QColor>
#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <optional>

// Inkwarden's own org.kde.StatusNotifierItem on the session bus: a unique service name
// "org.kde.StatusNotifierItem-<pid>-<n>" with the item at /StatusNotifierItem and its dbusmenu at
// /MenuBar, registered with org.kde.StatusNotifierWatcher and registered again whenever a watcher
// (re)appears or drops the item while Inkwarden runs (GNOME's AppIndicator extension sometimes
// gives up on an item as it sets it up).
//
// The icon is given both as IconPixmap and, for hosts that read only the name, as IconName with
// IconThemePath pointing at a PNG that the item writes. The title goes into XAyatanaLabel with a
// XAyatanaLabelGuide, which GNOME's AppIndicator extension, MATE, Budgie and XFCE's indicator plugin
// draw next to the icon. On request (INKWARDEN_STATUS_TITLE_IMAGE=1) the icon and the title's three
// runs are drawn into one PNG whose absolute path is the IconName instead, for a host that shows a
// wide image but no text; the label is then empty so that the figure does not show twice.
//
// The Title is the figure in words ("Inkwarden: Today $1,235"): screen readers read it for the item
// and some hosts name the item by it. Hosts that remember items (hidden, pinned) go by the Id, which
// never changes.
class StatusNotifierItem : public StatusItem
{
    Q_OBJECT

public:
    enum class TitleImage {
        // Only where INKWARDEN_STATUS_TITLE_IMAGE is 1: no host is known to need it.
        Auto,
        Never,
        Always,
    };

    struct Options {
        QDBusConnection bus = QDBusConnection::sessionBus();
        QString iconSource = StatusIcon::defaultSource();
        TitleImage titleImage = TitleImage::Auto;
        // The colour of icon and drawn title; by default StatusIcon::panelColor().
        std::optional<QColor> color;
        // Where the icon files go; by default a folder of this item's own under $XDG_RUNTIME_DIR,
        // removed with the item.
        QString fileDirectory;
        // The host's icon box for the drawn title, logical pixels; device pixel ratio 0: the screen's.
        int titleImageHeight = 16;
        qreal devicePixelRatio = 0;
    };

    StatusNotifierItem();
    explicit StatusNotifierItem(Options options, QObject *parent = nullptr);
    ~StatusNotifierItem() override;

    static QString watcherService() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
    static QString objectPath() { return QStringLiteral("/StatusNotifierItem"); }
    static QString category() { return QStringLiteral("ApplicationStatus"); }
    static QString itemId() { return QStringLiteral("com.inkwarden.menubar"); }
    // The Title until the app gives the one with the figure in words (setAccessibleTitle).
    static QString itemTitle() { return QStringLiteral("Inkwarden"); }
    static QString status() { return QStringLiteral("Active"); }
    static QString defaultToolTipTitle()
    {
        //: Tool tip of the panel icon before any figure is known.
        return tr("Inkwarden Royalties");
    }
    // How long after the watcher dropped the item it registers again, and how many times per watcher.
    static constexpr int registerAgainMilliseconds = 1000;
    static constexpr int registerAgainTimes = 5;

    // Whether the title is drawn into the icon, for `mode` and the value of
    // INKWARDEN_STATUS_TITLE_IMAGE (empty when unset).
    static bool wantsTitleImage(TitleImage mode, const QString &override);

    const QString &serviceName() const { return m_serviceName; }
    // True while the watcher has accepted the item.
    bool isRegistered() const { return m_registered; }
    bool drawsTitleImage() const { return m_drawsTitleImage; }

    void setTitle(const MenuBarTitle &title) override;
    void setToolTip(const QString &title, const QString &body) override;
    void setAccessibleTitle(const QString &title) override;

    // What the adaptor publishes.
    const QString &iconThemePath() const { return m_iconThemePath; }
    const QString &iconName() const { return m_iconName; }
    const SniIconPixmapList &iconPixmaps() const { return m_iconPixmaps; }
    const SniToolTip &toolTip() const { return m_toolTip; }
    const QString &label() const { return m_label; }
    const QString &labelGuide() const { return m_labelGuide; }
    // The Title property: the accessible title once given, else itemTitle().
    QString accessibleTitle() const { return m_accessibleTitle.isEmpty() ? itemTitle() : m_accessibleTitle; }
    const MenuBarTitle &title() const { return m_title; }

    // A click on the icon at (x, y); (0, 0) is what hosts send when they do not know.
    void activate(int x, int y);

Q_SIGNALS:
    void registeredChanged(bool registered);
    void iconChanged();
    void toolTipChanged();
    void labelChanged(const QString &label, const QString &guide);
    void accessibleTitleChanged();

private Q_SLOTS:
    void watcherDroppedItem(const QString &item);

private:
    // Whether `item`, as a watcher names items ("service", "service/path", ":1.2@/path"), is this one.
    bool isThisItem(const QString &item) const;
    void registerWithWatcher();
    void setRegistered(bool registered);
    QString fileDirectory();
    void writeSquareIcon();
    void writeTitleImage();
    qreal devicePixelRatio() const;

    Options m_options;
    QString m_serviceName;
    bool m_registered = false;
    int m_registerAgainTimesLeft = registerAgainTimes;
    bool m_drawsTitleImage = false;
    bool m_ownsFileDirectory = false;
    QColor m_color;
    StatusIcon m_icon;
    MenuBarTitleRenderer m_renderer;
    DBusMenu *m_menu;
    QDBusServiceWatcher m_watcherWatcher;
    MenuBarTitle m_title;
    QString m_iconThemePath;
    QString m_iconName;
    SniIconPixmapList m_iconPixmaps;
    SniToolTip m_toolTip;
    QString m_label;
    QString m_labelGuide;
    QString m_accessibleTitle;
    // The drawn titles still on disk, newest last: the host may still be reading the one before.
    QStringList m_titleImages;
};
