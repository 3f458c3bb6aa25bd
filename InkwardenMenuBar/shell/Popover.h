#pragma once

#include <QObject>
#include <QPoint>

#include <optional>

// The panel that opens from the item, 360 by 560, with the dashboard in it.
class Popover : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isShown() const = 0;
    // Shows the popover against the panel, near `anchor` (the click) or, without one, the pointer,
    // and gives it the keyboard.
    virtual void show(std::optional<QPoint> anchor) = 0;

public Q_SLOTS:
    virtual void close() = 0;

public:
    // True right after a click outside closed it: the same click on the item must not open it again.
    virtual bool closedJustNow() const = 0;

Q_SIGNALS:
    void quitRequested();
};
