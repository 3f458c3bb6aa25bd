#pragma once

#include "HttpReply.h"
#include "IncomingRequest.h"

class AuthCodes;
struct DevServerConfig;

// The browser half of sign-in: "/mac-app/connect/" asks the author to let the app in, and its form
// posts to "/mac-app/connect/authorize/", which issues a code for the PKCE challenge and sends the
// browser back to the app with inkwarden://authenticated?code=…&state=….
class SignInPages
{
public:
    SignInPages(const DevServerConfig &config, AuthCodes &codes);

    HttpReply connectPage(const IncomingRequest &request) const;
    HttpReply authorize(const IncomingRequest &request);

    static QString connectPath() { return QStringLiteral("/mac-app/connect/"); }
    static QString authorizePath() { return QStringLiteral("/mac-app/connect/authorize/"); }

private:
    static HttpReply problemPage(int status, const QString &message);

    const DevServerConfig &m_config;
    AuthCodes &m_codes;
};
