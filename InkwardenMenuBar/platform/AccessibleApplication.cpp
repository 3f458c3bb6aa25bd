#include "AccessibleApplication.h"

#include <QGuiApplication>
#include <QWindow>

namespace {

QAccessibleInterface *describeApplication(const QString & /*className*/, QObject *object)
{
    if (object && object == QCoreApplication::instance()) {
        return new AccessibleApplication;
    }
    return nullptr;
}

} // namespace

void AccessibleApplication::install()
{
    QAccessible::installFactory(describeApplication);
}

QObjectList AccessibleApplication::windowRoots()
{
    QObjectList roots;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (window->type() == Qt::Desktop) {
            continue;
        }
        if (QAccessibleInterface *root = window->accessibleRoot(); root && root->object()) {
            roots.append(root->object());
        }
    }
    return roots;
}

int AccessibleApplication::childCount() const
{
    return int(windowRoots().size());
}

int AccessibleApplication::indexOfChild(const QAccessibleInterface *child) const
{
    return child ? int(windowRoots().indexOf(child->object())) : -1;
}

QAccessibleInterface *AccessibleApplication::child(int index) const
{
    const QObjectList roots = windowRoots();
    return index >= 0 && index < roots.size() ? QAccessible::queryAccessibleInterface(roots.at(index)) : nullptr;
}

QString AccessibleApplication::text(QAccessible::Text t) const
{
    // "Inkwarden", not the program's file name.
    if (t == QAccessible::Name && !QGuiApplication::applicationDisplayName().isEmpty()) {
        return QGuiApplication::applicationDisplayName();
    }
    return QAccessibleApplication::text(t);
}
