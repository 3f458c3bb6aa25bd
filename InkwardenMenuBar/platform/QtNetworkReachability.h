#pragma once

#include "store/NetworkReachability.h"

#include <QNetworkInformation>

#include <optional>

// Reachability from Qt's network information plugins: NetworkManager's global state where it runs,
// else GLib's network monitor. Without either, it never reports and Inkwarden assumes the network.
class QtNetworkReachability final : public NetworkReachability
{
    Q_OBJECT

public:
    using NetworkReachability::NetworkReachability;

    void start() override;

    // Whether Inkwarden may try the network; nothing while the platform cannot tell yet.
    static std::optional<bool> availability(QNetworkInformation::Reachability reachability);

private:
    void report(QNetworkInformation::Reachability reachability);

    bool m_started = false;
    std::optional<bool> m_lastReported;
};
