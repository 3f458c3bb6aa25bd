#pragma once

#include "HttpReply.h"
#include "IncomingRequest.h"

#include <variant>

class ApiKeys;
class AuthCodes;
class ServerClock;
class RateLimiter;
struct ApiKeyGrant;
struct DevServerConfig;

// The JSON API under "/api/v1/mac/": statistics, the account list and the sign-in code exchange.
class RoyaltiesApi
{
public:
    RoyaltiesApi(const DevServerConfig &config, ApiKeys &keys, AuthCodes &codes, RateLimiter &limiter,
                 const ServerClock &clock);

    HttpReply statistics(const IncomingRequest &request);
    HttpReply accounts(const IncomingRequest &request);
    HttpReply exchange(const IncomingRequest &request);

    // Longest range the statistics endpoint answers, in days.
    static constexpr qint64 maximumRangeDays = 400;

private:
    // The grant of the request's bearer key, or the 401 answer.
    std::variant<const ApiKeyGrant *, HttpReply> authorize(const IncomingRequest &request) const;

    const DevServerConfig &m_config;
    ApiKeys &m_keys;
    AuthCodes &m_codes;
    RateLimiter &m_limiter;
    const ServerClock &m_clock;
};
