#pragma once

#include "HttpReply.h"
#include "IncomingRequest.h"

class ServerClock;

// "/dashboard_lite/": today's figures of the demo accounts as a web page. The app opens it without
// a key, so it shows the demo catalogue; "?account_id=…" narrows it to one account.
class DashboardPage
{
public:
    explicit DashboardPage(const ServerClock &clock);

    HttpReply render(const IncomingRequest &request) const;

    static QString formatMoney(double amount, const QString &currency);

private:
    const ServerClock &m_clock;
};
