#pragma once

#include "StatusNotifierTypes.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

class StatusNotifierItem;

// org.kde.StatusNotifierItem for StatusNotifierItem, with the Ayatana label extension.
class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(SniIconPixmapList IconPixmap READ iconPixmap)
    Q_PROPERTY(QString OverlayIconName READ emptyName)
    Q_PROPERTY(SniIconPixmapList OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ emptyName)
    Q_PROPERTY(SniIconPixmapList AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ emptyName)
    Q_PROPERTY(SniToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ ayatanaLabel)
    Q_PROPERTY(QString XAyatanaLabelGuide READ ayatanaLabelGuide)

public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem *item);

    QString category() const;
    QString id() const;
    QString title() const;
    QString status() const;
    int windowId() const { return 0; }
    QString iconThemePath() const;
    QString iconName() const;
    SniIconPixmapList iconPixmap() const;
    QString emptyName() const { return {}; }
    SniIconPixmapList noPixmaps() const { return {}; }
    SniToolTip toolTip() const;
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const;
    QString ayatanaLabel() const;
    QString ayatanaLabelGuide() const;

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString &status);
    void XAyatanaNewLabel(const QString &label, const QString &guide);

private:
    StatusNotifierItem *m_item;
};
