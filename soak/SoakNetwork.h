#pragma once

#include "Route.h"

#include <QHash>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSet>

#include <functional>
#include <optional>

// The store's network during a soak. Every request carries a number in a header of its own, so the
// soak can tell when the development server has it, and whether it arrived more than once. While
// the soak has the network down, requests go to a port nobody listens on and fail as they would
// without a network, never reaching the server.
class SoakNetwork final : public QNetworkAccessManager
{
public:
    struct Sent {
        qint64 tag = 0;
        std::optional<Route> route;
        bool online = true;
    };
    struct Finished {
        qint64 tag = 0;
        std::optional<Route> route;
        bool online = true;
        int status = 0; // 0 when no HTTP answer came
        QByteArray retryAfter;
        bool hasRetryAfter = false;
        QNetworkReply::NetworkError error = QNetworkReply::NoError;
        // As the store asked for it (not the rewritten address of an offline request).
        QUrl url;
    };

    static QByteArray tagHeader() { return QByteArrayLiteral("X-Inkwarden-Soak-Request"); }
    static std::optional<Route> routeOfPath(const QString &path);

    explicit SoakNetwork(QObject *parent = nullptr);

    void setOnline(bool online) { m_online = online; }
    bool isOnline() const { return m_online; }

    // Sent to the server and not yet seen there.
    bool allArrived() const { return m_awaitingArrival.isEmpty(); }
    // The server logged the request with this tag; true when it had been logged before.
    bool markArrived(qint64 tag);
    int unfinishedReplies() const { return m_unfinished; }
    int unfinishedReplies(Route route) const { return m_unfinishedByRoute.value(route); }
    // Statistics requests sent and not answered yet; more than one means two overlap.
    int statisticsInFlight() const { return unfinishedReplies(Route::Stats); }

    std::function<void(const Sent &)> onSent;
    std::function<void(const Finished &)> onFinished;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoingData) override;

private:
    bool m_online = true;
    quint16 m_unreachablePort = 0;
    qint64 m_nextTag = 1;
    QSet<qint64> m_awaitingArrival;
    QSet<qint64> m_arrived;
    int m_unfinished = 0;
    QHash<Route, int> m_unfinishedByRoute;
};
