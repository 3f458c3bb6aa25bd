#include "QtNetworkReachability.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QPointer>
#include <QThread>

namespace {
// Silent unless a developer turns it on (QT_LOGGING_RULES="inkwarden.*=true"): Inkwarden writes no log.
Q_LOGGING_CATEGORY(lcReachability, "inkwarden.reachability", QtCriticalMsg)
} // namespace

void QtNetworkReachability::start()
{
    if (m_started)
        return;
    m_started = true;

    // Qt creates its network information once per process and wants that done on the application's thread.
    Q_ASSERT(QCoreApplication::instance() && thread() == QCoreApplication::instance()->thread());

    // Picks the plugin with the most features that can run here: NetworkManager when its service is on the
    // system bus, else GLib's monitor, which refuses to load when GLib has no real monitor either.
    if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability)) {
        qCInfo(lcReachability) << "No network information backend: reachability will not be reported";
        return;
    }
    QNetworkInformation *information = QNetworkInformation::instance();
    qCDebug(lcReachability) << "Using the" << information->backendName() << "network information backend";

    // A backend may signal from a thread of its own; queued, every report is handled on ours.
    connect(information, &QNetworkInformation::reachabilityChanged, this, &QtNetworkReachability::report,
            Qt::QueuedConnection);
    // The first report comes from the event loop, never from inside start(), like any later one.
    QMetaObject::invokeMethod(
        this,
        [this, information = QPointer<QNetworkInformation>(information)] {
            if (information)
                report(information->reachability());
        },
        Qt::QueuedConnection);
}

std::optional<bool> QtNetworkReachability::availability(QNetworkInformation::Reachability reachability)
{
    using Reachability = QNetworkInformation::Reachability;
    switch (reachability) {
    case Reachability::Unknown:
        return std::nullopt;
    case Reachability::Disconnected:
    case Reachability::Local:
        return false;
    // NetworkManager says "site" when its connectivity check cannot reach its own check host, as behind a
    // firewall that may still let the royalties service through. Trying is cheap: a real failure then shows
    // as the request's own error instead of Inkwarden waiting for a network it already has.
    case Reachability::Site:
    case Reachability::Online:
        return true;
    }
    return std::nullopt;
}

void QtNetworkReachability::report(QNetworkInformation::Reachability reachability)
{
    const std::optional<bool> available = availability(reachability);
    qCDebug(lcReachability) << "Reachability" << reachability;
    if (!available || available == m_lastReported)
        return;
    m_lastReported = available;
    Q_EMIT availabilityChanged(*available);
}
