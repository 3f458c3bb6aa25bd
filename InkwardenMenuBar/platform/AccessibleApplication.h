#pragma once

#include <QAccessibleObject>
#include <QObjectList>

// Inkwarden as screen readers see it over AT-SPI: the application, named as the desktop names it,
// with every window of its own below it. Qt leaves popup windows out of an application's children
// (it announces menus by their events instead), and on X11 the popover is such a window: without
// this, Orca would find Inkwarden with nothing in it.
class AccessibleApplication : public QAccessibleApplication
{
public:
    // Makes Qt describe the application object with this class. Call once, right after the
    // application object exists and before anything asks for its accessibility.
    static void install();

    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *child(int index) const override;
    QString text(QAccessible::Text t) const override;

private:
    static QObjectList windowRoots();
};
