#pragma once

#include <QCoreApplication>
#include <QString>

// The failures that Inkwarden itself recognises when it talks to the royalties service. Each has
// the message the user sees.
class RoyaltiesError
{
    Q_DECLARE_TR_FUNCTIONS(RoyaltiesError)

public:
    enum class Kind : quint8 { server, rateLimited, invalidServerURL, missingAPIKey, invalidResponse };

    static RoyaltiesError server(QString message) { return RoyaltiesError(Kind::server, std::move(message), 0); }
    static RoyaltiesError rateLimited(double retryAfter) { return RoyaltiesError(Kind::rateLimited, {}, retryAfter); }
    static RoyaltiesError invalidServerURL() { return RoyaltiesError(Kind::invalidServerURL, {}, 0); }
    static RoyaltiesError missingAPIKey() { return RoyaltiesError(Kind::missingAPIKey, {}, 0); }
    static RoyaltiesError invalidResponse() { return RoyaltiesError(Kind::invalidResponse, {}, 0); }

    Kind kind() const { return m_kind; }
    // The server's own text, for `server`.
    const QString &message() const { return m_message; }
    // Seconds the server asked to wait, for `rateLimited`.
    double retryAfter() const { return m_retryAfter; }

    QString errorDescription() const;

    friend bool operator==(const RoyaltiesError &, const RoyaltiesError &) = default;

private:
    RoyaltiesError(Kind kind, QString message, double retryAfter)
        : m_kind(kind)
        , m_message(std::move(message))
        , m_retryAfter(retryAfter)
    {}

    Kind m_kind;
    QString m_message;
    double m_retryAfter;
};
