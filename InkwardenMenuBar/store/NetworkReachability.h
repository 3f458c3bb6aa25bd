#pragma once

#include <QObject>

// Reports whether the machine has a usable network path. The first report comes soon after
// `start()`; later ones on every change. A source that cannot tell never reports.
class NetworkReachability : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void start() = 0;

Q_SIGNALS:
    // Delivered on the main thread.
    void availabilityChanged(bool available);
};
