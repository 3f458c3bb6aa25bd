#include "RoyaltiesApi.h"

#include "ApiKeys.h"
#include "AuthCodes.h"
#include "DemoData.h"
#include "DevServerConfig.h"
#include "RateLimiter.h"
#include "ServerClock.h"
#include "StatisticsGenerator.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

HttpReply methodNotAllowed(const char *allowed)
{
    HttpReply reply = HttpReply::error(405, QStringLiteral("Use %1 for this endpoint.").arg(QLatin1String(allowed)));
    reply.headers.append({QByteArrayLiteral("Allow"), QByteArray(allowed)});
    return reply;
}

HttpReply unauthorized(const QString &message)
{
    HttpReply reply = HttpReply::error(401, message);
    reply.headers.append({QByteArrayLiteral("WWW-Authenticate"), QByteArrayLiteral("Bearer")});
    return reply;
}

// Only the exact form YYYY-MM-DD, as the app sends it.
std::optional<QDate> parseDate(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    if (!form.match(text).hasMatch()) {
        return std::nullopt;
    }
    const QDate date = QDate::fromString(text, Qt::ISODate);
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

} // namespace

RoyaltiesApi::RoyaltiesApi(const DevServerConfig &config, ApiKeys &keys, AuthCodes &codes, RateLimiter &limiter,
                           const ServerClock &clock)
    : m_config(config)
    , m_keys(keys)
    , m_codes(codes)
    , m_limiter(limiter)
    , m_clock(clock)
{}

std::variant<const ApiKeyGrant *, HttpReply> RoyaltiesApi::authorize(const IncomingRequest &request) const
{
    const QByteArray authorization = request.header("Authorization").trimmed();
    if (authorization.isEmpty()) {
        return unauthorized(QStringLiteral("Missing API key. Send it as \"Authorization: Bearer <key>\"."));
    }
    if (!authorization.left(7).toLower().startsWith("bearer ")) {
        return unauthorized(QStringLiteral("Send the API key as \"Authorization: Bearer <key>\"."));
    }
    const QString key = QString::fromUtf8(authorization.mid(7).trimmed());
    const ApiKeyGrant *grant = m_keys.find(key);
    if (!grant) {
        return unauthorized(QStringLiteral("Invalid API key."));
    }
    return grant;
}

HttpReply RoyaltiesApi::statistics(const IncomingRequest &request)
{
    if (request.method != QLatin1String("GET")) {
        return methodNotAllowed("GET");
    }
    const auto authorized = authorize(request);
    if (const HttpReply *refusal = std::get_if<HttpReply>(&authorized)) {
        return *refusal;
    }
    const ApiKeyGrant &grant = *std::get<const ApiKeyGrant *>(authorized);

    const std::optional<QDate> start = parseDate(request.queryValue(QStringLiteral("start_date")));
    const std::optional<QDate> end = parseDate(request.queryValue(QStringLiteral("end_date")));
    if (!start || !end) {
        return HttpReply::error(400, QStringLiteral("start_date and end_date must be dates written as YYYY-MM-DD."));
    }
    if (*start > *end) {
        return HttpReply::error(400, QStringLiteral("start_date must not be after end_date."));
    }
    if (start->daysTo(*end) >= maximumRangeDays) {
        return HttpReply::error(400, QStringLiteral("Ask for at most %1 days at a time.").arg(maximumRangeDays));
    }

    const QString requestedAccount = request.queryValue(QStringLiteral("account_id"));
    if (grant.accountIds.isEmpty()) {
        return HttpReply::error(403, QStringLiteral("This API key does not have access to any accounts."));
    }
    const QString accountId = requestedAccount.isEmpty() ? grant.accountIds.first() : requestedAccount;
    const DemoAccount *account = grant.accountIds.contains(accountId) ? DemoData::account(accountId) : nullptr;
    if (!account) {
        return HttpReply::error(403, QStringLiteral("This API key cannot read the account \"%1\".").arg(accountId));
    }

    const QDateTime now = m_clock.now();
    if (const auto wait = m_limiter.admit(grant.key, now)) {
        const QByteArray seconds = RateLimiter::retryAfterSeconds(*wait);
        HttpReply reply = HttpReply::error(
            429, QStringLiteral("Too many requests. Try again in %1 seconds.").arg(QString::fromLatin1(seconds)));
        reply.headers.append({QByteArrayLiteral("Retry-After"), seconds});
        return reply;
    }

    const StatisticsGenerator generator(*account);
    return HttpReply::json(QJsonObject{{QStringLiteral("table_data"), generator.rows(*start, *end, now)}});
}

HttpReply RoyaltiesApi::accounts(const IncomingRequest &request)
{
    if (request.method != QLatin1String("GET")) {
        return methodNotAllowed("GET");
    }
    const auto authorized = authorize(request);
    if (const HttpReply *refusal = std::get_if<HttpReply>(&authorized)) {
        return *refusal;
    }
    const ApiKeyGrant &grant = *std::get<const ApiKeyGrant *>(authorized);

    QJsonArray accounts;
    for (const QString &id : grant.accountIds) {
        const DemoAccount *account = DemoData::account(id);
        if (!account) {
            continue;
        }
        QJsonObject entry{
            {QStringLiteral("account_id"), account->id},
            {QStringLiteral("user_email"), grant.userEmail},
            {QStringLiteral("access_type"), account->accessType},
            {QStringLiteral("currency"), account->currency},
        };
        if (account->displayName) {
            entry.insert(QStringLiteral("display_name"), *account->displayName);
        }
        accounts.append(entry);
    }
    QJsonObject body{{QStringLiteral("accounts"), accounts}};
    if (!m_config.latestAppVersion.isEmpty()) {
        body.insert(QStringLiteral("latest_app_version"), m_config.latestAppVersion);
    }
    return HttpReply::json(body);
}

HttpReply RoyaltiesApi::exchange(const IncomingRequest &request)
{
    if (request.method != QLatin1String("POST")) {
        return methodNotAllowed("POST");
    }
    const QJsonDocument document = QJsonDocument::fromJson(request.body);
    const QJsonObject body = document.object();
    const QJsonValue code = body.value(QStringLiteral("code"));
    const QJsonValue verifier = body.value(QStringLiteral("code_verifier"));
    if (!document.isObject() || !code.isString() || !verifier.isString() || code.toString().isEmpty()
        || verifier.toString().isEmpty()) {
        return HttpReply::error(400, QStringLiteral("Send a JSON object with \"code\" and \"code_verifier\"."));
    }
    if (const std::optional<QString> refusal = m_codes.redeem(code.toString(), verifier.toString())) {
        return HttpReply::error(400, *refusal);
    }
    const ApiKeyGrant grant = m_keys.issueSignInKey();
    return HttpReply::json(QJsonObject{
        {QStringLiteral("api_key"), grant.key},
        {QStringLiteral("user_email"), grant.userEmail},
    });
}
