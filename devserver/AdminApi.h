#pragma once

#include "HttpReply.h"
#include "IncomingRequest.h"

#include <functional>

class FaultSwitches;
class RequestLog;

// "/__admin/…", for tests and demos driving a running server from outside:
//   GET  /__admin/faults    the switches now set
//   POST /__admin/faults    {"stats": {"status": 500}, "accounts": null} or {"spec": "stats=status:500"}
//   DELETE /__admin/faults  clears every switch
//   GET  /__admin/requests  the request log; DELETE clears it
//   POST /__admin/reset     switches, log, rate limits, codes, issued keys and held replies
// It answers only to peers on the loopback interface.
class AdminApi
{
public:
    AdminApi(FaultSwitches &faults, RequestLog &log, std::function<void()> resetAll);

    // `endpoint` is the last path segment: "faults", "requests" or "reset".
    HttpReply handle(const IncomingRequest &request, const QString &endpoint);

    static bool isLoopbackPeer(const QHostAddress &peer);

private:
    HttpReply faults(const IncomingRequest &request);
    HttpReply requests(const IncomingRequest &request);

    FaultSwitches &m_faults;
    RequestLog &m_log;
    std::function<void()> m_resetAll;
};
