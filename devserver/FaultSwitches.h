#pragma once

#include "HttpReply.h"
#include "Route.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <optional>

// How one route misbehaves on purpose. Any switch but the delay replaces the real answer (the
// handler does not run, so a failed exchange spends no code and a failed statistics request uses
// no rate-limit slot); a delay on its own holds back the real answer.
struct Fault {
    std::optional<int> status;
    bool malformedBody = false;
    bool emptyBody = false;
    // An HTML error page instead of a JSON body, as a proxy in front of the service would send.
    bool htmlBody = false;
    // A body sent as it stands (as JSON), for figures a test wants exactly.
    std::optional<QByteArray> body;
    int delayMs = 0;
    bool hang = false;
    bool reset = false;
    // Sent verbatim as "Retry-After"; on its own it makes the status 429.
    std::optional<QByteArray> retryAfter;
    // How many more requests the fault applies to; absent means until it is cleared.
    std::optional<int> remainingUses;

    bool isActive() const;
    bool replacesReply() const;
    // The answer sent instead of the real one (not used for hang and reset).
    HttpReply reply() const;

    QJsonObject toJson() const;
    // Text form "status:500,delay:200"; see FaultSwitches::applySpec.
    QString toText() const;

    static std::optional<Fault> fromJson(const QJsonObject &object, QString *error);
    static std::optional<Fault> fromText(const QString &text, QString *error);

    friend bool operator==(const Fault &, const Fault &) = default;

    // A body that starts like the expected JSON and stops half-way.
    static QByteArray malformedBodyBytes();
};

// The fault of every route, set from the command line, the admin endpoint or a test.
class FaultSwitches
{
public:
    void set(Route route, const Fault &fault);
    void clear(Route route);
    void clearAll();
    Fault fault(Route route) const;

    // The fault for a request arriving now: counts down a limited fault and retires it when spent.
    Fault take(Route route);

    // "ROUTE=KIND[:VALUE][,KIND[:VALUE]…]", e.g. "stats=status:500" or "accounts=malformed,delay:300";
    // "ROUTE=off" clears. Kinds: status:CODE, malformed, empty, delay:MS, hang, reset,
    // retry-after:VALUE (takes the rest of the text, so it may hold an HTTP date), times:N.
    bool applySpec(const QString &spec, QString *error);
    // {"stats": {"status": 500, …}, "accounts": null, …}: null or {} clears a route.
    bool applyJson(const QJsonObject &object, QString *error);

    QJsonObject toJson() const;

    // Status codes that may be forced: final statuses (200 to 599) QHttpServerResponder can write.
    static bool isWritableStatus(int status);

private:
    QMap<Route, Fault> m_faults;
};
